#include "Views/CellPool.h"

#include <QMetaProperty>
#include <QQmlEngine>
#include <cmath>

namespace ludarium {

namespace {

constexpr int rowNumber = -1;

} // namespace

CellPool::CellPool(QQuickItem *parent) : QQuickItem(parent) {}

CellPool::~CellPool() = default;

void CellPool::setModel(QAbstractItemModel *model) {
    if (model == m_model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (m_model) {
        connect(m_model, &QAbstractItemModel::modelReset, this, &CellPool::renew);
        connect(m_model, &QAbstractItemModel::rowsInserted, this, &CellPool::renew);
        connect(m_model, &QAbstractItemModel::rowsRemoved, this, &CellPool::renew);
        connect(m_model, &QAbstractItemModel::rowsMoved, this, &CellPool::renew);
        connect(m_model, &QAbstractItemModel::layoutChanged, this, &CellPool::renew);
        connect(m_model, &QAbstractItemModel::dataChanged, this, &CellPool::refresh);
    }
    Q_EMIT modelChanged();
    renew();
}

void CellPool::setDelegate(QQmlComponent *delegate) {
    m_delegate = delegate;
    Q_EMIT delegateChanged();
    polish();
}

void CellPool::setColumns(int columns) {
    if (std::exchange(m_columns, columns) != columns)
        reshape();
}

void CellPool::setCellWidth(qreal width) {
    if (std::exchange(m_cellWidth, width) != width)
        reshape();
}

void CellPool::setCellHeight(qreal height) {
    if (std::exchange(m_cellHeight, height) != height)
        reshape();
}

void CellPool::setViewTop(qreal top) {
    if (std::exchange(m_viewTop, top) == top)
        return;
    Q_EMIT viewChanged();
    polish();
}

void CellPool::setViewHeight(qreal height) {
    if (std::exchange(m_viewHeight, height) == height)
        return;
    Q_EMIT viewChanged();
    polish();
}

void CellPool::componentComplete() {
    QQuickItem::componentComplete();
    reshape();
}

void CellPool::reshape() {
    m_reshaped = true;
    if (m_columns > 0)
        setImplicitHeight((count() + m_columns - 1) / m_columns * m_cellHeight);
    Q_EMIT shapeChanged();
    polish();
}

void CellPool::renew() {
    m_stale = true;
    reshape();
}

void CellPool::refresh(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) {
    if (m_stale)
        return;
    for (auto cell = m_shown.lower_bound(first.row()); cell != m_shown.end() && cell->first <= last.row(); ++cell)
        show(*cell->second, cell->first, roles);
}

QQuickItem *CellPool::itemAtIndex(int row) const {
    const auto cell = m_shown.find(row);
    return cell == m_shown.end() || m_stale ? nullptr : cell->second;
}

int CellPool::indexAt(qreal x, qreal y) const {
    if (x < 0 || y < 0 || m_cellWidth <= 0 || m_cellHeight <= 0 || x >= m_columns * m_cellWidth)
        return -1;
    const qint64 row = qint64(y / m_cellHeight) * m_columns + qint64(x / m_cellWidth);
    return row < count() ? int(row) : -1;
}

void CellPool::updatePolish() {
    if (!m_delegate || m_columns < 1 || m_cellHeight <= 0 || !isComponentComplete())
        return;
    const int rows = count();
    const auto lineAt = [&](qreal y) { return int(std::floor(y / m_cellHeight)); };
    const int first = std::clamp((lineAt(m_viewTop) - 1) * m_columns, 0, rows);
    const int end = std::clamp((lineAt(m_viewTop + m_viewHeight) + 2) * m_columns, first, rows);

    bool changed = m_stale || m_reshaped;
    for (auto cell = m_shown.begin(); cell != m_shown.end();) {
        if (cell->first >= first && cell->first < end) {
            if (m_stale)
                show(*cell->second, cell->first);
            if (m_reshaped)
                cell->second->setPosition({cell->first % m_columns * m_cellWidth, topOf(cell->first)});
            ++cell;
            continue;
        }
        m_spare.append(cell->second);
        cell = m_shown.erase(cell);
        changed = true;
    }
    m_stale = m_reshaped = false;
    for (int row = first; row < end; ++row) {
        if (m_shown.contains(row))
            continue;
        QQuickItem *cell = m_spare.isEmpty() ? make(row) : m_spare.takeLast();
        if (!cell)
            return;
        show(*cell, row);
        cell->setPosition({row % m_columns * m_cellWidth, topOf(row)});
        cell->setVisible(true);
        m_shown.emplace(row, cell);
        changed = true;
    }
    for (QQuickItem *cell : std::as_const(m_spare))
        cell->setVisible(false);
    if (changed) {
        ++m_revision;
        Q_EMIT laidOut();
    }
}

QQuickItem *CellPool::make(int row) {
    QObject *made = m_delegate->beginCreate(m_delegate->creationContext());
    auto *cell = qobject_cast<QQuickItem *>(made);
    if (!cell) {
        qWarning("A cell cannot be made: %s", qUtf8Printable(m_delegate->errorString()));
        delete made;
        return nullptr;
    }
    if (m_properties.isEmpty()) {
        QHash<int, QByteArray> names = m_model->roleNames();
        names.insert(rowNumber, QByteArrayLiteral("index"));
        for (auto name = names.begin(); name != names.end(); ++name)
            if (const int property = cell->metaObject()->indexOfProperty(*name); property >= 0)
                m_properties.insert(name.key(), cell->metaObject()->property(property));
    }
    // Required properties count as set only when they are set so.
    QVariantMap values;
    for (auto property = m_properties.cbegin(); property != m_properties.cend(); ++property)
        values.insert(QString::fromUtf8(property->name()), value(row, property.key()));
    m_delegate->setInitialProperties(cell, values);
    cell->setParent(this);
    cell->setParentItem(this);
    m_delegate->completeCreate();
    return cell;
}

QVariant CellPool::value(int row, int role) const {
    return role == rowNumber ? QVariant(row) : m_model->data(m_model->index(row, 0), role);
}

void CellPool::show(QQuickItem &cell, int row, const QList<int> &roles) {
    for (auto property = m_properties.cbegin(); property != m_properties.cend(); ++property)
        if (roles.isEmpty() || roles.contains(property.key()))
            property->write(&cell, value(row, property.key()));
}

} // namespace ludarium

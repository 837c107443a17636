#pragma once

#include <QAbstractItemModel>
#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>
#include <map>
#include <qqmlregistration.h>

namespace ludarium {

/// The cells of a grid that scrolls. Only as many are made as fit into the view and one line more on each side; a cell
/// that leaves the view becomes one that comes, by new values for the properties that are called as the model's roles
/// and for `index`. (GridView makes every cell anew.) Its height is that of all lines.
class CellPool : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QAbstractItemModel *model READ model WRITE setModel NOTIFY modelChanged)
    Q_PROPERTY(QQmlComponent *delegate READ delegate WRITE setDelegate NOTIFY delegateChanged)
    Q_PROPERTY(int columns MEMBER m_columns WRITE setColumns NOTIFY shapeChanged)
    Q_PROPERTY(qreal cellWidth MEMBER m_cellWidth WRITE setCellWidth NOTIFY shapeChanged)
    Q_PROPERTY(qreal cellHeight MEMBER m_cellHeight WRITE setCellHeight NOTIFY shapeChanged)
    // The part that is in view, from the upper edge of the first line.
    Q_PROPERTY(qreal viewTop MEMBER m_viewTop WRITE setViewTop NOTIFY viewChanged)
    Q_PROPERTY(qreal viewHeight MEMBER m_viewHeight WRITE setViewHeight NOTIFY viewChanged)
    // Counts the times that cells became others.
    Q_PROPERTY(int revision MEMBER m_revision NOTIFY laidOut)
  public:
    explicit CellPool(QQuickItem *parent = nullptr);
    ~CellPool() override;

    QAbstractItemModel *model() const { return m_model; }
    void setModel(QAbstractItemModel *model);
    QQmlComponent *delegate() const { return m_delegate; }
    /// Set once; its root must be an item.
    void setDelegate(QQmlComponent *delegate);
    void setColumns(int columns);
    void setCellWidth(qreal width);
    void setCellHeight(qreal height);
    void setViewTop(qreal top);
    void setViewHeight(qreal height);

    /// The cell of a row of the model; null while it has none.
    Q_INVOKABLE QQuickItem *itemAtIndex(int row) const;
    /// The row at a place of this item; -1 where there is none.
    Q_INVOKABLE int indexAt(qreal x, qreal y) const;
    /// How far from the upper edge the line of a row begins.
    Q_INVOKABLE qreal topOf(int row) const { return m_columns > 0 ? row / m_columns * m_cellHeight : 0; }

  Q_SIGNALS:
    void modelChanged();
    void delegateChanged();
    void shapeChanged();
    void viewChanged();
    void laidOut();

  protected:
    void updatePolish() override;
    void componentComplete() override;

  private:
    void reshape();
    void renew();
    void refresh(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles);
    int count() const { return m_model ? m_model->rowCount() : 0; }
    QQuickItem *make(int row);
    QVariant value(int row, int role) const;
    void show(QQuickItem &cell, int row, const QList<int> &roles = {});

    QPointer<QAbstractItemModel> m_model;
    QPointer<QQmlComponent> m_delegate;
    QHash<int, QMetaProperty> m_properties; ///< of the delegate, by role; the row's own number is role -1
    int m_columns = 1;
    qreal m_cellWidth = 0;
    qreal m_cellHeight = 0;
    qreal m_viewTop = 0;
    qreal m_viewHeight = 0;
    int m_revision = 0;
    bool m_stale = false;                ///< rows have become others
    bool m_reshaped = false;             ///< cells have other places
    std::map<int, QQuickItem *> m_shown; ///< by row
    QList<QQuickItem *> m_spare;
};

} // namespace ludarium

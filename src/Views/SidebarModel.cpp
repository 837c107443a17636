#include "Views/SidebarModel.h"

#include "App/AppState.h"
#include "Host/Async.h"
#include "Services/Library/GameLibrary.h"

#include <QCollator>
#include <QHash>
#include <QPointer>
#include <algorithm>

namespace ludarium {

SidebarModel::SidebarModel(AppState &state, QObject *parent) : QAbstractListModel(parent), m_state(state) {
    const auto recountNow = [this] { spawn(recount(), "counting the games of the sidebar"); };
    connect(&state.gameLibrary(), &GameLibrary::gamesChanged, this, recountNow);
    connect(&state.gameLibrary(), &GameLibrary::platformsChanged, this, recountNow);
    connect(&state, &AppState::selectionChanged, this, &SidebarModel::currentRowChanged);
    recountNow();
}

int SidebarModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant SidebarModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const Row &row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case nameRole:
        return row.platform.isEmpty() ? QStringLiteral("All Games") : row.platform;
    case sectionRole:
        return row.platform.isEmpty() ? QStringLiteral("Library") : QStringLiteral("Platforms");
    case iconRole:
        return row.platform.isEmpty() ? QStringLiteral("library") : QStringLiteral("platform");
    case gamesRole:
        return row.games;
    default:
        return {};
    }
}

QHash<int, QByteArray> SidebarModel::roleNames() const {
    return {{nameRole, "name"}, {sectionRole, "section"}, {iconRole, "icon"}, {gamesRole, "games"}};
}

int SidebarModel::currentRow() const {
    const QString selected = m_state.selectedPlatform();
    const auto found =
        std::find_if(m_rows.begin(), m_rows.end(), [&](const Row &row) { return row.platform == selected; });
    return found == m_rows.end() ? -1 : int(found - m_rows.begin());
}

void SidebarModel::select(int row) {
    if (row >= 0 && row < m_rows.size())
        m_state.setSelectedPlatform(m_rows[row].platform);
}

QList<SidebarModel::Row> SidebarModel::makeRows(const GameList &games, const QStringList &platforms) {
    QHash<QString, int> counts;
    for (const QString &platform : platforms)
        counts.insert(platform, 0);
    for (const GamePtr &game : games)
        if (const auto count = counts.find(game->platform); count != counts.end())
            ++*count;
    QList<Row> rows;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        if (!it.key().isEmpty())
            rows.append({it.key(), it.value()});
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    std::sort(rows.begin(), rows.end(),
              [&](const Row &a, const Row &b) { return collator.compare(a.platform, b.platform) < 0; });
    rows.prepend({QString(), int(games.size())});
    return rows;
}

QCoro::Task<> SidebarModel::recount() {
    const QPointer<SidebarModel> self(this);
    const int generation = ++m_generation;
    QStringList platforms;
    for (const Platform &platform : m_state.gameLibrary().platforms())
        platforms.append(platform.name);
    const GameList games = m_state.gameLibrary().games();
    auto count = [games, platforms] { return makeRows(games, platforms); };
    QList<Row> rows = co_await runOnPool(count);
    if (self && generation == m_generation)
        setRows(std::move(rows));
}

void SidebarModel::setRows(QList<Row> rows) {
    const bool samePlatforms = std::equal(rows.begin(), rows.end(), m_rows.begin(), m_rows.end(),
                                          [](const Row &a, const Row &b) { return a.platform == b.platform; });
    if (samePlatforms) {
        m_rows = std::move(rows);
        Q_EMIT dataChanged(index(0), index(int(m_rows.size()) - 1), {gamesRole});
    } else {
        beginResetModel();
        m_rows = std::move(rows);
        endResetModel();
    }
    Q_EMIT countsChanged();
    Q_EMIT currentRowChanged();
}

} // namespace ludarium

#include "Views/SidebarModel.h"

#include "App/AppState.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Services/Library/GameLibrary.h"
#include "Views/GroupChange.h"
#include "Views/KeptSetting.h"
#include "Views/SidebarDrop.h"

#include <QPointer>
#include <algorithm>
#include <iterator>

namespace ludarium {

namespace {

using Kind = SidebarRow::Kind;

const QString byGameCount = QStringLiteral("byGameCount");

/// What is closed until the user opens it, so that the platforms are in reach.
QStringList closedAtFirst() {
    return {QStringLiteral("Studios"), QStringLiteral("Audio & Tech"), QStringLiteral("Progress"),
            QStringLiteral("Genres")};
}

/// Kept beside the titles of closed sections for each closed playlist, with its id.
const QString playlistMark = QStringLiteral("playlist:");

QString rowKey(Kind kind, const QString &id) {
    SidebarRow row;
    row.kind = kind;
    row.id = id;
    return row.key();
}

} // namespace

SidebarModel::SidebarModel(AppState &state, QObject *parent) : QAbstractListModel(parent), m_state(state) {
    SettingsStore &settings = state.host().settings;
    for (const QString &name : settings.storedValue(Settings::sidebarCollapsedSections).value_or(closedAtFirst()))
        m_source.collapsed.insert(name.startsWith(playlistMark) ? rowKey(Kind::playlist, name.mid(playlistMark.size()))
                                                                : rowKey(Kind::section, name));
    m_source.sortByCount = settings.value(Settings::platformSortOrder) == byGameCount;
    m_source.groups = state.platformGroups().groups();

    GameLibrary &library = state.gameLibrary();
    connect(&state.browser(), &LibraryBrowser::changed, this, &SidebarModel::refreshSoon);
    connect(&library, &GameLibrary::platformsChanged, this, &SidebarModel::refreshSoon);
    connect(&library, &GameLibrary::playlistsChanged, this, [this] {
        ++m_wholeChanges;
        refreshSoon();
    });
    // A change of one game is told by both signals, a new list by the first alone: that one can change what is in a
    // playlist.
    connect(&library, &GameLibrary::gamesChanged, this, [this] { ++m_wholeChanges; });
    connect(&library, &GameLibrary::gameChanged, this, [this] { --m_wholeChanges; });
    connect(&state.platformGroups(), &PlatformGroupManager::groupsChanged, this, [this] {
        m_source.groups = m_state.platformGroups().groups();
        rebuild();
    });
    connect(&state, &AppState::selectionChanged, this, &SidebarModel::followSelection);
    connect(&state, &AppState::filteredGamesChanged, this, &SidebarModel::followSelection);
    connect(&settings, &SettingsStore::changed, this, &SidebarModel::settingChanged);
    m_wholeChanges = 1;
    refresh();
}

int SidebarModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant SidebarModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    static const QStringList kinds{QStringLiteral("section"),  QStringLiteral("place"), QStringLiteral("collection"),
                                   QStringLiteral("playlist"), QStringLiteral("group"), QStringLiteral("platform")};
    const SidebarRow &row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case nameRole:
        return row.name;
    case kindRole:
        return kinds[int(row.kind)];
    case idRole:
        return row.id;
    case iconRole:
        return row.kind == Kind::group && row.expandable && row.expanded ? QStringLiteral("folder.open") : row.icon;
    case gamesRole:
        return row.games;
    case depthRole:
        return row.depth;
    case expandableRole:
        return row.expandable;
    case expandedRole:
        return row.expanded;
    default:
        return {};
    }
}

QHash<int, QByteArray> SidebarModel::roleNames() const {
    return {{nameRole, "name"},
            {kindRole, "kind"},
            {idRole, "rowId"},
            {iconRole, "icon"},
            {gamesRole, "games"},
            {depthRole, "depth"},
            {expandableRole, "expandable"},
            {expandedRole, "expanded"}};
}

// --- What the rows are made from

void SidebarModel::refreshSoon() {
    if (std::exchange(m_refreshing, true))
        return;
    QMetaObject::invokeMethod(this, &SidebarModel::refresh, Qt::QueuedConnection);
}

void SidebarModel::refresh() {
    m_refreshing = false;
    const GameLibrary &library = m_state.gameLibrary();
    m_source.games = int(library.games().size());
    m_source.recentlyPlayed = int(library.recentlyPlayed().size());
    m_source.counts = m_state.browser().counts();
    QStringList platforms;
    for (const Platform &platform : library.platforms())
        platforms.append(platform.name);
    // In the user's language sorting is slow: not again for every change of a game.
    if (std::exchange(m_platforms, platforms) != platforms)
        m_source.platforms = sortedByName(std::move(platforms));
    if (std::exchange(m_wholeChanges, 0) != 0) {
        m_source.playlists = library.playlists();
        spawn(countPlaylists(), "counting the games of the playlists");
    }
    rebuild();
}

QCoro::Task<> SidebarModel::countPlaylists() {
    const QPointer<SidebarModel> self(this);
    const int generation = ++m_generation;
    if (m_source.playlists.isEmpty()) {
        m_source.playlistCounts.clear();
        co_return;
    }
    auto work = [games = m_state.gameLibrary().games(), playlists = m_source.playlists] {
        return playlistCounts(games, playlists);
    };
    QHash<QString, int> counts = co_await runOnPool(work);
    if (!self || generation != m_generation)
        co_return;
    m_source.playlistCounts = std::move(counts);
    rebuild();
}

void SidebarModel::settingChanged(const QString &key) {
    if (key != QLatin1StringView(Settings::platformSortOrder.key))
        return;
    const bool byCount = m_state.host().settings.value(Settings::platformSortOrder) == byGameCount;
    if (std::exchange(m_source.sortByCount, byCount) == byCount)
        return;
    rebuild();
    Q_EMIT sortByCountChanged();
}

template<typename T>
void SidebarModel::keep(const Setting<T> &setting, const T &value) {
    if (const QString reason = keepSetting(m_state.host().settings, setting, value); !reason.isEmpty())
        Q_EMIT warned(tr("The sidebar is not kept for the next start: %1").arg(reason));
}

void SidebarModel::setSortByCount(bool byCount) {
    keep(Settings::platformSortOrder, byCount ? byGameCount : QStringLiteral("alphabetical"));
}

void SidebarModel::setFilter(const QString &filter) {
    if (std::exchange(m_filter, filter) == filter)
        return;
    show();
    Q_EMIT filterChanged();
}

bool SidebarModel::isShown() const {
    return m_state.host().settings.value(Settings::sidebarShown);
}

void SidebarModel::setShown(bool shown) {
    keep(Settings::sidebarShown, shown);
    Q_EMIT shownChanged();
}

int SidebarModel::width() const {
    return int(std::clamp<qint64>(m_state.host().settings.value(Settings::sidebarWidth), 0, 10'000));
}

void SidebarModel::setWidth(int width) {
    if (width == this->width())
        return;
    keep(Settings::sidebarWidth, qint64(width));
    Q_EMIT widthChanged();
}

// --- The rows on show

void SidebarModel::rebuild() {
    m_all = sidebarRows(m_source);
    show();
}

void SidebarModel::show() {
    setRows(visibleSidebarRows(m_all, m_filter));
}

/// Rows that stay, stay: what lies between the common beginning and the common end is taken out and put in.
void SidebarModel::setRows(QList<SidebarRow> rows) {
    const auto same = [](const SidebarRow &a, const SidebarRow &b) { return a.kind == b.kind && a.id == b.id; };
    const auto head = std::mismatch(m_rows.cbegin(), m_rows.cend(), rows.cbegin(), rows.cend(), same);
    const auto tail = std::mismatch(m_rows.crbegin(), std::make_reverse_iterator(head.first), rows.crbegin(),
                                    std::make_reverse_iterator(head.second), same);
    const int first = int(head.first - m_rows.cbegin());
    const int removed = int(tail.first.base() - head.first);
    const int added = int(tail.second.base() - head.second);
    const bool structure = removed > 0 || added > 0;
    if (removed > 0) {
        beginRemoveRows({}, first, first + removed - 1);
        m_rows.remove(first, removed);
        endRemoveRows();
    }
    if (added > 0) {
        beginInsertRows({}, first, first + added - 1);
        const QList<SidebarRow> old = std::exchange(m_rows, {});
        m_rows.reserve(rows.size());
        m_rows << old.first(first) << rows.sliced(first, added) << old.sliced(first);
        endInsertRows();
    }
    for (int row = 0; row < count(); ++row) {
        if (m_rows[row] == rows[row])
            continue;
        m_rows[row] = std::move(rows[row]);
        Q_EMIT dataChanged(index(row), index(row));
    }
    if (structure)
        Q_EMIT rowsChanged();
    followSelection();
}

void SidebarModel::followSelection() {
    const auto found = std::find_if(m_all.cbegin(), m_all.cend(), [this](const auto &row) { return isCurrent(row); });
    const QString key = found == m_all.cend() ? QString() : found->key();
    const int current = key.isEmpty() ? -1 : rowOf(key);
    if (std::exchange(m_currentRow, current) != current)
        Q_EMIT currentRowChanged();
    if (std::exchange(m_currentKey, key) != key)
        Q_EMIT currentKeyChanged();
}

/// Facets and the search narrow a place further and leave it where it is.
bool SidebarModel::isCurrent(const SidebarRow &row) const {
    if (!row.hasGames())
        return false;
    BrowseQuery shown;
    const BrowseQuery &query = m_state.query();
    shown.recentlyPlayed = query.recentlyPlayed;
    if (!shown.recentlyPlayed) {
        shown.platform = query.platform;
        shown.playlistId = query.playlistId;
        shown.smartCollectionId = query.smartCollectionId;
        if (shown == BrowseQuery()) {
            shown.favoritesOnly = query.favoritesOnly;
            shown.installedOnly = query.installedOnly && !query.favoritesOnly;
        }
    }
    return row.place() == shown;
}

void SidebarModel::select(int row) {
    if (row >= 0 && row < count() && m_rows[row].hasGames())
        m_state.goTo(m_rows[row].place());
}

void SidebarModel::activate(int row) {
    if (row < 0 || row >= count())
        return;
    if (m_rows[row].hasGames())
        select(row);
    else
        setExpanded(row, !m_rows[row].expanded);
}

// A filter opens everything; what is closed without it is not touched then.
void SidebarModel::setExpanded(int row, bool expanded) {
    if (row < 0 || row >= count() || !m_filter.simplified().isEmpty())
        return;
    const SidebarRow chosen = m_rows[row];
    if (!chosen.expandable || chosen.expanded == expanded)
        return;
    if (chosen.kind == Kind::group) {
        changeGroups(m_state.host(), [&] { m_state.platformGroups().setExpanded(QUuid(chosen.id), expanded); });
        return;
    }
    if (expanded)
        m_source.collapsed.remove(chosen.key());
    else
        m_source.collapsed.insert(chosen.key());
    keepCollapsed();
    rebuild();
}

void SidebarModel::setAllExpanded(bool expanded) {
    for (const SidebarRow &row : std::as_const(m_all)) {
        if (row.kind != Kind::section)
            continue;
        if (expanded)
            m_source.collapsed.remove(row.key());
        else
            m_source.collapsed.insert(row.key());
    }
    keepCollapsed();
    rebuild();
}

void SidebarModel::keepCollapsed() {
    QStringList names;
    const QString section = rowKey(Kind::section, {});
    for (const QString &key : std::as_const(m_source.collapsed))
        names.append((key.startsWith(section) ? QString() : playlistMark) + key.mid(section.size()));
    names.sort();
    keep(Settings::sidebarCollapsedSections, names);
}

int SidebarModel::parentRow(int row) const {
    return sidebarParent(m_rows, row);
}

int SidebarModel::rowStartingWith(const QString &text, int start) const {
    for (int i = 0; i < count(); ++i) {
        const int row = (std::max(start, 0) + i) % count();
        if (m_rows[row].name.startsWith(text, Qt::CaseInsensitive))
            return row;
    }
    return -1;
}

QString SidebarModel::keyOf(int row) const {
    return row < 0 || row >= count() ? QString() : m_rows[row].key();
}

int SidebarModel::rowOf(const QString &key) const {
    return sidebarRowOf(m_rows, key);
}

int SidebarModel::dropRow(const QString &source, int target) const {
    return SidebarDrop(m_rows, source, target).row();
}

void SidebarModel::drop(const QString &source, int target) {
    // The rows are others as soon as the groups are.
    const QList<SidebarRow> rows = m_rows;
    const SidebarDrop dropped(rows, source, target);
    changeGroups(m_state.host(), [&] { dropped.apply(m_state.platformGroups()); });
}

} // namespace ludarium

#include "Views/SidebarRow.h"

#include <QCollator>
#include <algorithm>
#include <vector>

namespace ludarium {

namespace {

using Kind = SidebarRow::Kind;

class RowMaker {
  public:
    explicit RowMaker(const SidebarSource &source) : m_source(source) {}

    QList<SidebarRow> make() {
        addPlaces();
        // Lists that would all be empty say nothing.
        if (m_source.games > 0) {
            for (const SmartCollectionSection &section : smartCollectionSections()) {
                addSection(section.title);
                for (const SmartCollection &collection : section.collections)
                    add(Kind::collection, collection.id, collection.name, collection.icon,
                        m_source.counts.collections.value(collection.id));
            }
        }
        addPlaylists();
        addPlatforms();
        return std::move(m_rows);
    }

  private:
    SidebarRow &add(Kind kind, const QString &id, const QString &name, const QString &icon, int games, int depth = 1) {
        // A line break or a run of blanks in a name would break the line.
        m_rows.append({kind, id, name.simplified(), icon, games, depth});
        return m_rows.last();
    }

    void addSection(const QString &title) {
        SidebarRow &row = add(Kind::section, title, title, {}, 0, 0);
        row.expandable = true;
        row.expanded = !m_source.collapsed.contains(row.key());
    }

    void addPlaces() {
        addSection(QStringLiteral("Library"));
        const auto place = [this](const char *name, const char *icon, int games) {
            const QString text = QLatin1StringView(name);
            add(Kind::place, text, text, QLatin1StringView(icon), games);
        };
        place("All Games", "library", m_source.games);
        place("Favorites", "star", m_source.counts.favorites);
        place("Recently Played", "clock", m_source.recentlyPlayed);
        place("Installed", "checkmark.circle", m_source.counts.collections.value(QStringLiteral("installed")));
    }

    void addPlaylists() {
        const QList<Playlist> &lists = m_source.playlists;
        if (lists.isEmpty())
            return;
        addSection(QStringLiteral("Playlists"));
        QHash<QString, qsizetype> places;
        for (qsizetype i = 0; i < lists.size(); ++i)
            if (!places.contains(lists[i].id))
                places.insert(lists[i].id, i);
        // Data may nest in circles: a list that is reached from none that stands by itself stands by itself.
        std::vector<bool> nested(size_t(lists.size()), false);
        for (const Playlist &list : lists)
            for (const QString &child : list.nestedPlaylistIds)
                if (const auto place = places.constFind(child); place != places.cend() && lists[*place].id != list.id)
                    nested[size_t(*place)] = true;
        std::vector<bool> done(size_t(lists.size()), false);
        for (const bool roots : {true, false})
            for (qsizetype i = 0; i < lists.size(); ++i)
                if (!roots || !nested[size_t(i)])
                    addPlaylistTree(i, places, done);
    }

    void addPlaylistTree(qsizetype root, const QHash<QString, qsizetype> &places, std::vector<bool> &done) {
        struct Step {
            qsizetype place;
            int depth;
        };
        std::vector<Step> open{{root, 1}};
        while (!open.empty()) {
            const Step step = open.back();
            open.pop_back();
            if (done[size_t(step.place)])
                continue;
            done[size_t(step.place)] = true;
            const Playlist &list = m_source.playlists[step.place];
            SidebarRow &row = add(Kind::playlist, list.id, list.name, QStringLiteral("playlist"),
                                  m_source.playlistCounts.value(list.id, -1), step.depth);
            row.expanded = !m_source.collapsed.contains(row.key());
            for (auto child = list.nestedPlaylistIds.crbegin(); child != list.nestedPlaylistIds.crend(); ++child)
                if (const auto place = places.constFind(*child); place != places.cend() && !done[size_t(*place)]) {
                    open.push_back({*place, step.depth + 1});
                    row.expandable = true;
                }
        }
    }

    void addPlatforms() {
        if (m_source.platforms.isEmpty() && m_source.groups.isEmpty())
            return;
        addSection(platformsSection);
        QStringList platforms = m_source.platforms;
        if (m_source.sortByCount)
            std::stable_sort(platforms.begin(), platforms.end(), [this](const QString &a, const QString &b) {
                return m_source.counts.platforms.value(a) > m_source.counts.platforms.value(b);
            });
        // By the place of the group; a platform stands in the first that has it, one in none comes behind all.
        QHash<QString, qsizetype> places;
        for (qsizetype group = m_source.groups.size() - 1; group >= 0; --group)
            for (const QString &platform : m_source.groups[group].platformNames)
                places.insert(platform, group);
        QList<QStringList> inside(m_source.groups.size() + 1);
        for (const QString &platform : std::as_const(platforms))
            inside[places.value(platform, m_source.groups.size())].append(platform);
        for (qsizetype i = 0; i < m_source.groups.size(); ++i) {
            const PlatformGroup &group = m_source.groups[i];
            int games = 0;
            for (const QString &platform : std::as_const(inside[i]))
                games += m_source.counts.platforms.value(platform);
            SidebarRow &row =
                add(Kind::group, group.id.toString(QUuid::WithoutBraces), group.name, QStringLiteral("folder"), games);
            row.expandable = !inside[i].isEmpty();
            row.expanded = group.isExpanded;
            addPlatforms(inside[i], 2);
        }
        addPlatforms(inside.last(), 1);
    }

    void addPlatforms(const QStringList &names, int depth) {
        for (const QString &name : names)
            add(Kind::platform, name, name, QStringLiteral("platform"), m_source.counts.platforms.value(name), depth);
    }

    const SidebarSource &m_source;
    QList<SidebarRow> m_rows;
};

QList<SidebarRow> filtered(const QList<SidebarRow> &rows, const QString &filter) {
    std::vector<bool> kept(size_t(rows.size()), false);
    // Forwards: what lies below a folder that matches. A section is no folder: "l" would bring back all of "Library".
    int openDepth = -1;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const SidebarRow &row = rows[i];
        if (openDepth >= 0 && row.depth <= openDepth)
            openDepth = -1;
        const bool matches = row.kind != Kind::section && row.name.contains(filter, Qt::CaseInsensitive);
        kept[size_t(i)] = matches || openDepth >= 0;
        if (matches && openDepth < 0)
            openDepth = row.depth;
    }
    // Backwards: the way to each.
    int wantedDepth = -1;
    for (qsizetype i = rows.size() - 1; i >= 0; --i) {
        if (kept[size_t(i)] || rows[i].depth < wantedDepth) {
            kept[size_t(i)] = true;
            wantedDepth = rows[i].depth;
        }
    }
    QList<SidebarRow> result;
    for (qsizetype i = 0; i < rows.size(); ++i)
        if (kept[size_t(i)]) {
            result.append(rows[i]);
            result.last().expanded = true;
        }
    return result;
}

} // namespace

BrowseQuery SidebarRow::place() const {
    BrowseQuery place;
    switch (kind) {
    case Kind::place:
        place.favoritesOnly = id == QLatin1StringView("Favorites");
        place.recentlyPlayed = id == QLatin1StringView("Recently Played");
        place.installedOnly = id == QLatin1StringView("Installed");
        break;
    case Kind::collection:
        place.smartCollectionId = id;
        break;
    case Kind::playlist:
        place.playlistId = id;
        break;
    case Kind::platform:
        place.platform = id;
        break;
    case Kind::section:
    case Kind::group:
        break;
    }
    return place;
}

QHash<QString, int> playlistCounts(const GameList &games, const QList<Playlist> &playlists) {
    QSet<QString> known;
    known.reserve(games.size());
    for (const GamePtr &game : games)
        known.insert(game->id);
    QHash<QString, int> counts;
    for (const Playlist &playlist : playlists) {
        if (counts.contains(playlist.id))
            continue;
        QSet<QString> inside;
        for (const QString &id : playlist.gameIds)
            if (known.contains(id))
                inside.insert(id);
        counts.insert(playlist.id, int(inside.size()));
    }
    return counts;
}

QStringList sortedByName(QStringList names) {
    names.removeDuplicates();
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    std::sort(names.begin(), names.end(), collator);
    return names;
}

int sidebarParent(const QList<SidebarRow> &rows, int row) {
    if (row < 0 || row >= rows.size())
        return -1;
    for (int above = row - 1; above >= 0; --above)
        if (rows[above].depth < rows[row].depth)
            return above;
    return -1;
}

int sidebarRowOf(const QList<SidebarRow> &rows, const QString &key) {
    const auto found =
        std::find_if(rows.cbegin(), rows.cend(), [&](const SidebarRow &row) { return row.key() == key; });
    return found == rows.cend() ? -1 : int(found - rows.cbegin());
}

QList<SidebarRow> sidebarRows(const SidebarSource &source) {
    return RowMaker(source).make();
}

QList<SidebarRow> visibleSidebarRows(const QList<SidebarRow> &rows, const QString &filter) {
    if (const QString text = filter.simplified(); !text.isEmpty())
        return filtered(rows, text);
    QList<SidebarRow> result;
    int closedDepth = -1;
    for (const SidebarRow &row : rows) {
        if (closedDepth >= 0 && row.depth > closedDepth)
            continue;
        closedDepth = row.expandable && !row.expanded ? row.depth : -1;
        result.append(row);
    }
    return result;
}

} // namespace ludarium

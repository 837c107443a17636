#pragma once

#include "Models/Playlist.h"
#include "Services/Library/LibraryBrowser.h"
#include "Services/Library/PlatformGroupManager.h"

#include <QSet>

namespace ludarium {

/// One line of the sidebar.
struct SidebarRow {
    enum class Kind { section, place, collection, playlist, group, platform };
    Kind kind = Kind::section;
    QString id; ///< of what it stands for: a title, an id or a platform's name
    QString name;
    QString icon;
    int games = 0; ///< -1 while it is not known
    int depth = 0; ///< 0 for a section
    bool expandable = false;
    bool expanded = false;

    /// Whether the main view can show it; a section and a group only open and close.
    bool hasGames() const { return kind != Kind::section && kind != Kind::group; }
    /// What the main view is narrowed to when the row is chosen.
    BrowseQuery place() const;
    /// Tells the rows of a sidebar apart.
    QString key() const { return QString::number(int(kind)) + id; }
    bool operator==(const SidebarRow &) const = default;
};

/// What the sidebar is made from.
struct SidebarSource {
    int games = 0;
    int recentlyPlayed = 0;
    LibraryBrowser::Counts counts;
    QStringList platforms; ///< as `sortedByName` gives them
    QList<Playlist> playlists;
    QHash<QString, int> playlistCounts; ///< by id
    QList<PlatformGroup> groups;
    bool sortByCount = false; ///< platforms: most games first
    QSet<QString> collapsed;  ///< keys of sections and playlists; a group knows itself
};

inline constexpr QLatin1StringView platformsSection{"Platforms"};

/// Each name once, by the rules of the user's language, numbers in names by their value.
QStringList sortedByName(QStringList names);

/// How many of the games each playlist holds, by its id.
QHash<QString, int> playlistCounts(const GameList &games, const QList<Playlist> &playlists);

/// Every row in display order, those below a collapsed one too. A nested playlist stands once, below the first that
/// nests it; a platform that the collection lacks is left out of its group.
QList<SidebarRow> sidebarRows(const SidebarSource &source);

/// The rows that are on show: those below no collapsed row. A filter shows what has it in its name, with everything
/// below and the way to it, collapsed or not.
QList<SidebarRow> visibleSidebarRows(const QList<SidebarRow> &rows, const QString &filter);

/// The row that this one stands below; -1 for a section.
int sidebarParent(const QList<SidebarRow> &rows, int row);
/// -1 for a key that none has.
int sidebarRowOf(const QList<SidebarRow> &rows, const QString &key);

} // namespace ludarium

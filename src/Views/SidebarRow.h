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

    /// Tells the rows of a sidebar apart.
    QString key() const { return QString::number(int(kind)) + id; }
    bool operator==(const SidebarRow &) const = default;
};

/// What the sidebar is made from.
struct SidebarSource {
    int games = 0;
    int recentlyPlayed = 0;
    LibraryBrowser::Counts counts;
    QStringList platforms;
    QList<Playlist> playlists;
    QHash<QString, int> playlistCounts; ///< by id
    QList<PlatformGroup> groups;
    bool sortByCount = false; ///< platforms: most games first
    QSet<QString> collapsed;  ///< keys of sections and playlists; a group knows itself
};

/// Every row in display order, those below a collapsed one too. A nested playlist stands once, below the first that
/// nests it; a platform that the collection lacks is left out of its group.
QList<SidebarRow> sidebarRows(const SidebarSource &source);

/// The rows that are on show: those below no collapsed row. A filter shows what has it in its name, with everything
/// below and the way to it, collapsed or not.
QList<SidebarRow> visibleSidebarRows(const QList<SidebarRow> &rows, const QString &filter);

} // namespace ludarium

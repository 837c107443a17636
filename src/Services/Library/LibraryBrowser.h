#pragma once

#include "Models/Game.h"
#include "Models/Playlist.h"
#include "Services/Library/BrowseQuery.h"
#include "Services/Library/GameGroup.h"
#include "Services/Library/LibraryCounts.h"
#include "Services/Library/LibraryIndex.h"
#include "Services/Library/SmartCollection.h"

#include <QObject>

namespace ludarium {

class GameLibrary;

/// The lists that the main view shows, worked out from the library and kept until the query or the library changes. A
/// change of one game that leaves it where it stands only replaces its record, and its group. Main thread only.
class LibraryBrowser : public QObject {
    Q_OBJECT
  public:
    explicit LibraryBrowser(GameLibrary &library, QObject *parent = nullptr);

    /// The games of a query in display order.
    const GameList &filteredGames(const BrowseQuery &query);
    /// The same with duplicates folded.
    const QList<GameGroup> &filteredGameGroups(const BrowseQuery &query);

    /// The games of a smart collection, in its own order.
    GameList games(const SmartCollection &collection) const;

    /// The counts of the sidebar: every smart collection by id, every platform by name.
    using Counts = LibraryCounts::Counts;
    const Counts &counts() { return m_counts.counts(); }

  Q_SIGNALS:
    /// What was returned before no longer holds.
    void changed();

  private:
    using Position = LibraryIndex::Position;

    void invalidate();
    void gamesChanged();
    void replaceGame(qsizetype position, const GamePtr &old);
    void replaceInGroup(Position position, const GamePtr &old, const GamePtr &changed);
    void userDataChanged();
    void recentlyPlayedChanged();
    std::vector<Position> members(const SmartCollection &collection) const;
    /// The positions of a query in display order, kept until another is asked for.
    const std::vector<Position> &positions(const BrowseQuery &query);
    std::vector<Position> filteredPositions(const BrowseQuery &query) const;
    QList<GameGroup> grouped(const std::vector<Position> &positions, SortOrder order) const;
    /// What groups are sorted by, ascending. `primary` is the place of the game that stands for the group.
    double sortKey(const GameGroup &group, Position primary, SortOrder order) const;

    GameLibrary &m_library;
    std::optional<BrowseQuery> m_positionsKey;
    std::optional<BrowseQuery> m_gamesKey;
    std::optional<BrowseQuery> m_groupsKey;
    GameList m_games;
    QList<GameGroup> m_groups;
    std::vector<Position> m_positions;
    LibraryCounts m_counts;
    bool m_followed = false; ///< what `gamesChanged` will tell is known already
};

} // namespace ludarium

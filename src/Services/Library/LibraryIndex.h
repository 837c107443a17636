#pragma once

#include "Models/Game.h"
#include "Models/ViewSettings.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace ludarium {

/// What can be known of a list of games once and for all, so that searching, sorting, grouping and counting touch
/// numbers instead of records. Positions are those of the list. Nothing in here depends on what the user or the disk
/// may change about a game (plays, favourites, installation), so an index stays valid while single games are replaced.
class LibraryIndex {
  public:
    using Position = std::uint32_t;

    /// Builds the index; for the thread pool. `mt32Titles` are the normalised titles that the MT-32 collection takes.
    static std::shared_ptr<const LibraryIndex> build(const GameList &games, const QSet<QString> &mt32Titles);

    size_t size() const { return m_platform.size(); }

    /// One flag a game: whether the lower-cased query is part of one of its six search texts. The query must not be
    /// empty.
    std::vector<bool> search(const QByteArray &lowerCasedQuery) const;

    /// All positions in a fixed sort order (title, year, developer or rating); stable.
    const std::vector<Position> &order(SortOrder order) const;

    /// Place of a game's developer among all developers, the same for the same: ranks sort like the texts.
    Position developerRank(Position game) const { return m_developerRank[game]; }

    /// Number of a game's platform, for comparing; -1 for a platform of no game.
    int platform(Position game) const { return m_platform[game]; }
    int platformNumber(const QString &name) const { return m_platformNumbers.value(name, -1); }
    int platformCount(int number) const { return m_platformCounts[static_cast<size_t>(number)]; }

    /// Number of a game's group of duplicates. Groups are numbered by their normalised title, ascending, so sorting
    /// numbers sorts titles.
    Position group(Position game) const { return m_group[game]; }
    size_t groupCount() const { return m_groupTitles.size(); }
    const QString &groupTitle(Position group) const { return m_groupTitles[group]; }

    /// Bits of the fixed smart collections that a game belongs to whatever the user does; see StaticCollection.
    std::uint32_t staticCollections(Position game) const { return m_static[game]; }
    int staticCollectionCount(int bit) const { return m_staticCounts[static_cast<size_t>(bit)]; }
    /// The bit of a smart collection that only depends on the collection's own data, -1 for others.
    static int staticBit(const QString &smartCollectionId);

  private:
    static constexpr int staticBits = 32;

    QByteArray m_searchText;           ///< all search texts, a NUL after each
    std::vector<std::uint32_t> m_ends; ///< end of each game's texts in m_searchText
    std::array<std::vector<Position>, 4> m_orders;
    std::vector<Position> m_developerRank;
    std::vector<int> m_platform;
    QHash<QString, int> m_platformNumbers;
    std::vector<int> m_platformCounts;
    std::vector<Position> m_group;
    std::vector<QString> m_groupTitles;
    std::vector<std::uint32_t> m_static;
    std::array<int, staticBits> m_staticCounts{};
};

/// The form in which titles are compared with the list of MT-32 games.
QString normalizeForMT32(const QString &title);

} // namespace ludarium

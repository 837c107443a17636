#include "Services/Library/LibraryBrowser.h"

#include "Host/AppLogger.h"
#include "Host/ShareOut.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/UserData.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSet>
#include <algorithm>
#include <array>
#include <numeric>

namespace ludarium {

namespace {

using Kind = SmartCollection::Kind;

constexpr qint64 recentSeconds = 604'800;
constexpr size_t randomLimit = 25;
constexpr qint64 slowMilliseconds = 10;
constexpr std::array shortGenres{"Puzzle", "Arcade", "Sports", "Racing", "Pinball", "Board", "Card"};

bool isShortGame(const Game &game) {
    return !game.genre.isNull() && std::any_of(shortGenres.begin(), shortGenres.end(), [&](const char *genre) {
        return game.genre.contains(QLatin1StringView(genre));
    });
}

qint64 playedAt(const Game &game) {
    return game.lastPlayed ? game.lastPlayed->toMSecsSinceEpoch() : std::numeric_limits<qint64>::min();
}

} // namespace

LibraryBrowser::LibraryBrowser(GameLibrary &library, QObject *parent)
    : QObject(parent), m_library(library), m_counts(library) {
    connect(&library, &GameLibrary::gameReplaced, this, &LibraryBrowser::replaceGame);
    connect(&library, &GameLibrary::gamesChanged, this, &LibraryBrowser::gamesChanged);
    connect(&library, &GameLibrary::platformsChanged, this, [this] { m_counts.forgetDetails(); });
    connect(&library, &GameLibrary::playlistsChanged, this, &LibraryBrowser::invalidate);
    connect(&library, &GameLibrary::userDataChanged, this, &LibraryBrowser::userDataChanged);
    connect(&library, &GameLibrary::recentlyPlayedChanged, this, &LibraryBrowser::recentlyPlayedChanged);
}

std::vector<LibraryBrowser::Position> LibraryBrowser::members(const SmartCollection &collection) const {
    const GameList &games = m_library.games();
    const LibraryIndex &index = m_library.index();
    const UserData &user = m_library.userData();
    std::vector<Position> result;
    const auto keep = [&](const auto &test) {
        for (Position i = 0; i < index.size(); ++i)
            if (test(*games[i], i))
                result.push_back(i);
    };
    const auto sortDescending = [&](const auto &key) {
        std::stable_sort(result.begin(), result.end(),
                         [&](Position a, Position b) { return key(*games[a]) > key(*games[b]); });
    };
    const auto progressIs = [&](auto... wanted) {
        keep([&](const Game &game, Position) { return ((game.gameProgress == wanted) || ...); });
    };
    const QByteArray lowerText = collection.filter.text.toLower().toUtf8();
    if (const int bit = LibraryIndex::staticBit(collection.id);
        bit >= 0 && smartCollection(collection.id)->filter == collection.filter) {
        keep([&](const Game &, Position i) { return (index.staticCollections(i) >> bit & 1) != 0; });
        return result;
    }
    switch (collection.filter.kind) {
    case Kind::byGenre:
        keep([&](const Game &g, Position) { return !g.genre.isNull() && g.genre.contains(collection.filter.text); });
        break;
    case Kind::byDecade:
        keep([&](const Game &g, Position) {
            return g.releaseYear && *g.releaseYear >= collection.filter.decade &&
                   *g.releaseYear <= collection.filter.decade + 9;
        });
        break;
    case Kind::byDeveloper:
        keep([&](const Game &g, Position) {
            return g.searchDeveloper.contains(lowerText) || g.searchPublisher.contains(lowerText);
        });
        break;
    case Kind::byPublisher:
        keep([&](const Game &g, Position) { return g.searchPublisher.contains(lowerText); });
        break;
    case Kind::unplayed:
        keep([](const Game &g, Position) { return g.playCount == 0; });
        break;
    case Kind::recentlyPlayed: {
        const qint64 since = m_library.now().toMSecsSinceEpoch() - recentSeconds * 1000;
        keep([&](const Game &g, Position) { return g.lastPlayed && playedAt(g) > since; });
        sortDescending(playedAt);
        break;
    }
    case Kind::mostPlayed:
        keep([](const Game &g, Position) { return g.playCount >= 1; });
        sortDescending([](const Game &g) { return g.playCount; });
        if (result.size() > SmartCollection::mostPlayedLimit)
            result.resize(SmartCollection::mostPlayedLimit);
        break;
    case Kind::highlyRated:
        keep([&](const Game &g, Position) { return user.rating(g.id) >= SmartCollection::highRating; });
        break;
    case Kind::hasNotes:
        keep([&](const Game &g, Position) { return !user.notes(g.id).isEmpty(); });
        break;
    case Kind::shortGames:
        keep([](const Game &g, Position) { return isShortGame(g); });
        break;
    case Kind::randomPicks:
        result.resize(index.size());
        std::iota(result.begin(), result.end(), Position(0));
        std::shuffle(result.begin(), result.end(), *QRandomGenerator::global());
        if (result.size() > randomLimit)
            result.resize(randomLimit);
        break;
    case Kind::installed:
        keep([](const Game &g, Position) { return g.isInstalled; });
        break;
    case Kind::progressPlaying:
        progressIs(GameProgress::playing);
        break;
    case Kind::progressBeaten:
        progressIs(GameProgress::beaten);
        break;
    case Kind::progressCompleted:
        progressIs(GameProgress::completed, GameProgress::mastered);
        break;
    case Kind::mt32Games:
    case Kind::scummvmGames:
        break; // rows of the sidebar, answered from the index
    }
    return result;
}

GameList LibraryBrowser::games(const SmartCollection &collection) const {
    GameList result;
    for (const Position position : members(collection))
        result.append(m_library.games()[position]);
    return result;
}

std::vector<LibraryBrowser::Position> LibraryBrowser::filteredPositions(const BrowseQuery &query) const {
    const GameList &games = m_library.games();
    const LibraryIndex &index = m_library.index();
    const size_t count = index.size();

    // Membership tests are sets of positions; field tests look at the record of what is left.
    std::vector<bool> kept(count, true);
    const auto intersect = [&](const std::vector<bool> &other) {
        for (size_t i = 0; i < count; ++i)
            kept[i] = kept[i] && other[i];
    };
    const auto among = [&](const auto &positions) {
        std::vector<bool> members(count, false);
        for (const auto position : positions)
            members[static_cast<size_t>(position)] = true;
        return members;
    };
    QByteArray text = query.search.toLower().toUtf8();
    text.replace('\0', ' ');
    if (!text.isEmpty())
        intersect(index.search(text));
    if (!query.platform.isEmpty()) {
        const int platform = index.platformNumber(query.platform);
        for (Position i = 0; i < count; ++i)
            kept[i] = kept[i] && index.platform(i) == platform;
    }
    if (!query.playlistId.isEmpty()) {
        std::vector<Position> positions;
        for (const Playlist &playlist : m_library.playlists())
            if (playlist.id == query.playlistId)
                for (const QString &id : playlist.gameIds)
                    if (const auto position = m_library.position(id))
                        positions.push_back(static_cast<Position>(*position));
        intersect(among(positions));
    }
    if (!query.smartCollectionId.isEmpty())
        if (const SmartCollection *collection = smartCollection(query.smartCollectionId))
            intersect(among(members(*collection)));
    const bool looksAtFields = !query.genre.isEmpty() || !query.developer.isEmpty() || !query.publisher.isEmpty() ||
                               query.year || query.installedOnly || query.favoritesOnly;
    if (looksAtFields)
        for (size_t i = 0; i < count; ++i) {
            if (!kept[i])
                continue;
            const Game &game = *games[static_cast<qsizetype>(i)];
            kept[i] = (query.genre.isEmpty() || game.genre.contains(query.genre)) &&
                      (query.developer.isEmpty() || game.developer == query.developer) &&
                      (query.publisher.isEmpty() || game.publisher == query.publisher) &&
                      (!query.year || game.releaseYear == query.year) && (!query.installedOnly || game.isInstalled) &&
                      (!query.favoritesOnly || game.isFavorite);
        }

    std::vector<Position> result;
    result.reserve(static_cast<size_t>(std::count(kept.begin(), kept.end(), true)));
    switch (query.sortOrder) {
    case SortOrder::title:
    case SortOrder::year:
    case SortOrder::developer:
    case SortOrder::rating:
        for (const Position position : index.order(query.sortOrder))
            if (kept[position])
                result.push_back(position);
        return result;
    case SortOrder::recentlyPlayed:
    case SortOrder::playCount:
        break;
    }
    std::vector<std::pair<qint64, Position>> keyed;
    for (Position i = 0; i < count; ++i)
        if (kept[i])
            keyed.emplace_back(query.sortOrder == SortOrder::playCount ? games[i]->playCount : playedAt(*games[i]), i);
    std::stable_sort(keyed.begin(), keyed.end(), [](const auto &a, const auto &b) { return a.first > b.first; });
    for (const auto &[key, position] : keyed)
        result.push_back(position);
    return result;
}

const std::vector<LibraryBrowser::Position> &LibraryBrowser::positions(const BrowseQuery &query) {
    if (m_positionsKey != query) {
        m_positions = filteredPositions(query);
        m_positionsKey = query;
    }
    return m_positions;
}

const GameList &LibraryBrowser::filteredGames(const BrowseQuery &query) {
    if (query.recentlyPlayed)
        return m_library.recentlyPlayed();
    if (m_gamesKey == query)
        return m_games;
    QElapsedTimer timer;
    timer.start();
    const std::vector<Position> &found = positions(query);
    m_games.clear();
    m_games.reserve(static_cast<qsizetype>(found.size()));
    for (const Position position : found)
        m_games.append(m_library.games()[position]);
    m_gamesKey = query;
    if (timer.elapsed() > slowMilliseconds)
        Log::debug(QStringLiteral("⏱️ filteredGames computed in %1ms").arg(timer.elapsed()));
    return m_games;
}

const QList<GameGroup> &LibraryBrowser::filteredGameGroups(const BrowseQuery &query) {
    if (m_groupsKey == query)
        return m_groups;
    QElapsedTimer timer;
    timer.start();
    if (query.recentlyPlayed) {
        std::vector<Position> recent;
        for (const GamePtr &game : m_library.recentlyPlayed())
            recent.push_back(static_cast<Position>(*m_library.position(game->id)));
        m_groups = grouped(recent, query.sortOrder);
    } else {
        m_groups = grouped(positions(query), query.sortOrder);
    }
    m_groupsKey = query;
    if (timer.elapsed() > slowMilliseconds)
        Log::debug(QStringLiteral("⏱️ filteredGameGroups computed in %1ms").arg(timer.elapsed()));
    return m_groups;
}

QList<GameGroup> LibraryBrowser::grouped(const std::vector<Position> &positions, SortOrder order) const {
    const GameList &games = m_library.games();
    const LibraryIndex &index = m_library.index();

    // The positions of each group side by side, the groups by number and so by title; ends[g] is the end of group g.
    std::vector<Position> ends(index.groupCount());
    for (const Position position : positions)
        ++ends[index.group(position)];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<Position> members(positions.size());
    std::vector<Position> next(ends.size());
    for (size_t group = 1; group < ends.size(); ++group)
        next[group] = ends[group - 1];
    for (const Position position : positions)
        members[next[index.group(position)]++] = position;

    // With a platform selected every variant is of that platform already, so no group has another to put in front.
    struct Keyed {
        Position number = 0;
        double key = 0; ///< ascending
        GameGroup group;
    };
    std::vector<Keyed> found;
    found.reserve(std::min(positions.size(), index.groupCount()));
    for (Position number = 0; number < ends.size(); ++number)
        if (ends[number] != (number == 0 ? 0 : ends[number - 1]))
            found.push_back({number, 0, {}});
    const auto fill = [&](Keyed &keyed) {
        const Position begin = keyed.number == 0 ? 0 : ends[keyed.number - 1];
        const Position end = ends[keyed.number];
        QList<GamePtr> variants;
        variants.reserve(end - begin);
        for (Position i = begin; i < end; ++i)
            variants.append(games[members[i]]);
        keyed.group = GameGroup(index.groupTitle(keyed.number), std::move(variants));
        const auto primary = std::find_if(members.begin() + begin, members.begin() + end - 1, [&](Position position) {
            return games[position] == keyed.group.primaryVariant;
        });
        keyed.key = sortKey(keyed.group, *primary, order);
    };
    constexpr size_t part = 2'000;
    const auto fillPart = [&](size_t number) {
        for (size_t i = number * part; i < std::min((number + 1) * part, found.size()); ++i)
            fill(found[i]);
    };
    shareOut((found.size() + part - 1) / part, fillPart);

    QList<GameGroup> groups;
    groups.reserve(static_cast<qsizetype>(found.size()));
    if (order == SortOrder::title) {
        for (Keyed &keyed : found)
            groups.append(std::move(keyed.group));
        return groups;
    }
    std::vector<std::pair<double, Position>> places;
    places.reserve(found.size());
    for (const Keyed &keyed : found)
        places.emplace_back(keyed.key, static_cast<Position>(places.size()));
    // By place among equals, which keeps them in the order of their titles.
    std::sort(places.begin(), places.end());
    for (const auto &[key, place] : places)
        groups.append(std::move(found[place].group));
    return groups;
}

double LibraryBrowser::sortKey(const GameGroup &group, Position primary, SortOrder order) const {
    switch (order) {
    case SortOrder::title:
        break;
    case SortOrder::year:
        return group.primaryVariant->releaseYear.value_or(0);
    case SortOrder::developer:
        return m_library.index().developerRank(primary);
    case SortOrder::rating:
        return -group.primaryVariant->communityRating.value_or(0.0);
    case SortOrder::recentlyPlayed: {
        const auto played = group.lastPlayed();
        return played ? -static_cast<double>(played->toMSecsSinceEpoch()) : std::numeric_limits<double>::infinity();
    }
    case SortOrder::playCount:
        return -group.playCount();
    }
    return 0;
}

} // namespace ludarium

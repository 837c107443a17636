#include "Services/Library/LibraryBrowser.h"

#include "GameFactory.h"
#include "Host/Settings.h"
#include "Services/Library/GameLibrary.h"
#include "support/TestHost.h"

#include <QDir>
#include <QRandomGenerator>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

const QStringList words{QStringLiteral("Fjord"), QStringLiteral("fjör"), QStringLiteral("Star"),
                        QStringLiteral("Quest"), QStringLiteral("of"),   QStringLiteral("III"),
                        QStringLiteral("Star"),  QStringLiteral("(CD)"), QStringLiteral("(1993)"),
                        QStringLiteral("a")};
const QStringList platforms{QStringLiteral("MS-DOS"), QStringLiteral("ScummVM"), QStringLiteral("Sega Genesis")};
const QStringList studios{
    QStringLiteral("Sierra On-Line"), QStringLiteral("ORIGIN Systems"), QStringLiteral("Nobody"), {}};
const QStringList genres{QStringLiteral("Action;Puzzle"), QStringLiteral("Role-Playing"), QStringLiteral("action"), {}};

template<typename List>
auto pick(QRandomGenerator &random, const List &list) {
    return list[random.bounded(int(list.size()))];
}

GameList randomGames(int count, quint32 seed) {
    QRandomGenerator random(seed);
    GameList games;
    for (int i = 0; i < count; ++i)
        games.append(makeGame(QString::number(i), pick(random, words) + u' ' + pick(random, words),
                              pick(random, platforms), [&](Game &game) {
                                  if (random.bounded(3) == 0)
                                      game.sortTitle = pick(random, words);
                                  game.developer = pick(random, studios);
                                  game.publisher = pick(random, studios);
                                  game.genre = pick(random, genres);
                                  if (random.bounded(4) != 0)
                                      game.releaseYear = 1978 + random.bounded(30);
                                  if (random.bounded(2) != 0)
                                      game.communityRating = random.bounded(50) / 10.0;
                                  game.isInstalled = random.bounded(2) != 0;
                              }));
    return games;
}

/// The plain meaning of a query, game by game.
GameList expected(const GameLibrary &library, const BrowseQuery &query) {
    GameList games = library.games();
    const auto drop = [&](const auto &test) { games.removeIf([&](const GamePtr &game) { return !test(*game); }); };
    const QByteArray text = query.search.toLower().toUtf8();
    if (!text.isEmpty())
        drop([&](const Game &g) {
            return g.searchTitle.contains(text) || g.searchSortTitle.contains(text) ||
                   g.searchDeveloper.contains(text) || g.searchPublisher.contains(text) ||
                   g.searchGenre.contains(text) || g.searchSeries.contains(text);
        });
    if (!query.genre.isEmpty())
        drop([&](const Game &g) { return g.genre.contains(query.genre); });
    if (!query.developer.isEmpty())
        drop([&](const Game &g) { return g.developer == query.developer; });
    if (query.year)
        drop([&](const Game &g) { return g.releaseYear == query.year; });
    if (query.installedOnly)
        drop([&](const Game &g) { return g.isInstalled; });
    if (query.favoritesOnly)
        drop([&](const Game &g) { return g.isFavorite; });
    if (!query.platform.isEmpty())
        drop([&](const Game &g) { return g.platform == query.platform; });
    const auto sort = [&](const auto &less) { std::stable_sort(games.begin(), games.end(), less); };
    switch (query.sortOrder) {
    case SortOrder::title:
        sort([](const GamePtr &a, const GamePtr &b) {
            return (a->searchSortTitle.isEmpty() ? a->searchTitle : a->searchSortTitle) <
                   (b->searchSortTitle.isEmpty() ? b->searchTitle : b->searchSortTitle);
        });
        break;
    case SortOrder::year:
        sort(
            [](const GamePtr &a, const GamePtr &b) { return a->releaseYear.value_or(0) < b->releaseYear.value_or(0); });
        break;
    case SortOrder::developer:
        sort([](const GamePtr &a, const GamePtr &b) { return a->developer < b->developer; });
        break;
    case SortOrder::rating:
        sort([](const GamePtr &a, const GamePtr &b) {
            return a->communityRating.value_or(0) > b->communityRating.value_or(0);
        });
        break;
    case SortOrder::recentlyPlayed:
        sort([](const GamePtr &a, const GamePtr &b) {
            return a->lastPlayed && (!b->lastPlayed || *a->lastPlayed > *b->lastPlayed);
        });
        break;
    case SortOrder::playCount:
        sort([](const GamePtr &a, const GamePtr &b) { return a->playCount > b->playCount; });
        break;
    }
    return games;
}

class LibraryBrowserTest : public testing::Test {
  protected:
    TestHost host;
    std::unique_ptr<GameLibrary> library;
    std::unique_ptr<LibraryBrowser> browser;

    /// Puts games into a library through its cache, the shortest honest road.
    void fill(const GameList &games, const QList<Playlist> &playlists = {}) {
        const QString folder = host.scratch();
        QDir(folder).mkpath(QStringLiteral("Data"));
        LibraryServices services;
        services.mt32Titles = [] { return QSet<QString>{QStringLiteral("star quest")}; };
        services.checkStatus = [](const GameList &list, const QString &) {
            QList<GameStatus> statuses;
            for (const GamePtr &game : list)
                statuses.append(GameStatus{game->id.toInt() % 2 == 0, false, false, {}});
            return statuses;
        };
        library = std::make_unique<GameLibrary>(host, services);
        CachedCollectionData data{games, {}, playlists, folder, LibraryCache::toCacheDate(host.clock.now())};
        for (const QString &name : platforms)
            data.platforms.append(Platform::named(name, QStringLiteral("Computer")));
        LibraryCache(host.host().paths).save(data);
        await(library->loadCollection(folder));
        await(library->checkInstalledStatusSilent(folder));
        browser = std::make_unique<LibraryBrowser>(*library);
    }
};

} // namespace

TEST_F(LibraryBrowserTest, NarrowsAndSortsAsThePlainDefinitionDoes) {
    fill(randomGames(400, 7));
    for (int i = 0; i < 40; ++i) {
        library->recordPlay(QString::number(i * 9), 0);
        host.clock.advance(std::chrono::seconds(i % 3));
        if (i % 4 == 0)
            library->toggleFavorite(QString::number(i * 9));
    }
    QRandomGenerator random(11);
    const QStringList searches{{},
                               QStringLiteral("fj"),
                               QStringLiteral("STAR"),
                               QStringLiteral("FJÖR"),
                               QStringLiteral("on-line"),
                               QStringLiteral("nothing has this")};
    for (int round = 0; round < 300; ++round) {
        BrowseQuery query;
        query.search = pick(random, searches);
        query.sortOrder = static_cast<SortOrder>(random.bounded(6));
        if (random.bounded(3) == 0)
            query.platform = pick(random, platforms);
        if (random.bounded(4) == 0)
            query.genre = QStringLiteral("Action");
        if (random.bounded(5) == 0)
            query.developer = studios[0];
        if (random.bounded(8) == 0)
            query.year = 1990;
        query.installedOnly = random.bounded(4) == 0;
        query.favoritesOnly = random.bounded(6) == 0;
        ASSERT_EQ(idsOf(browser->filteredGames(query)), idsOf(expected(*library, query))) << round;

        QMap<QString, QStringList> groups;
        for (const GamePtr &game : browser->filteredGames(query))
            groups[GameGroup::normalize(game->title)].append(game->id);
        QMap<QString, QStringList> found;
        QStringList titles;
        for (const GameGroup &group : browser->filteredGameGroups(query)) {
            titles.append(group.normalizedTitle);
            for (const GamePtr &game : group.variants)
                found[group.normalizedTitle].append(game->id);
        }
        for (QStringList &ids : groups)
            ids.sort();
        for (QStringList &ids : found)
            ids.sort();
        ASSERT_EQ(found, groups);
        ASSERT_TRUE(query.sortOrder != SortOrder::title || std::is_sorted(titles.cbegin(), titles.cend()));
    }
}

TEST_F(LibraryBrowserTest, CountsWhatEachCollectionHolds) {
    fill(randomGames(300, 3));
    for (int i = 0; i < 60; ++i)
        library->recordPlay(QString::number(i), 0);
    library->setRating(QStringLiteral("5"), 4);
    library->setRating(QStringLiteral("6"), 3);
    library->setRating(QStringLiteral("not here"), 5);
    library->setNotes(QStringLiteral("7"), QStringLiteral("note"));
    library->setProgress(QStringLiteral("8"), GameProgress::mastered);
    const LibraryBrowser::Counts counts = browser->counts();
    int rows = 0;
    for (const SmartCollectionSection &section : smartCollectionSections())
        for (const SmartCollection &collection : section.collections) {
            ++rows;
            EXPECT_EQ(counts.collections.value(collection.id, -1), browser->games(collection).size())
                << qPrintable(collection.id);
        }
    EXPECT_EQ(rows, 29);
    EXPECT_EQ(counts.collections[QStringLiteral("most-played")], 50);
    EXPECT_EQ(counts.collections[QStringLiteral("highly-rated")], 1);
    int all = 0;
    for (const QString &name : platforms)
        all += counts.platforms[name];
    EXPECT_EQ(all, 300);
}

TEST_F(LibraryBrowserTest, AnswersSmartCollectionsByTheirPlainDefinition) {
    fill(randomGames(300, 5));
    const auto idsWhere = [&](const auto &test) {
        QStringList ids;
        for (const GamePtr &game : library->games())
            if (test(*game))
                ids.append(game->id);
        return ids;
    };
    const auto ids = [&](const char *id) { return idsOf(browser->games(*smartCollection(QString::fromUtf8(id)))); };
    EXPECT_EQ(ids("origin-games"), idsWhere([](const Game &g) {
                  return g.searchDeveloper.contains("origin") || g.searchPublisher.contains("origin");
              }));
    EXPECT_EQ(ids("genre-action"), idsWhere([](const Game &g) { return g.genre.contains(QStringLiteral("Action")); }));
    EXPECT_EQ(ids("80s-classics"), idsWhere([](const Game &g) {
                  return g.releaseYear && *g.releaseYear >= 1980 && *g.releaseYear <= 1989;
              }));
    EXPECT_EQ(ids("scummvm-games"), idsWhere([](const Game &g) { return g.platform == QStringLiteral("ScummVM"); }));
    EXPECT_EQ(ids("mt32-games"),
              idsWhere([](const Game &g) { return g.title.toLower() == QStringLiteral("star quest"); }));
    EXPECT_FALSE(ids("mt32-games").isEmpty());

    library->recordPlay(QStringLiteral("9"), 0);
    host.clock.advance(std::chrono::hours(24 * 7));
    library->recordPlay(QStringLiteral("4"), 0);
    host.clock.advance(std::chrono::seconds(1));
    library->recordPlay(QStringLiteral("3"), 0);
    const SmartCollection recent{QStringLiteral("r"), {}, {}, {SmartCollection::Kind::recentlyPlayed, {}, 0}};
    EXPECT_EQ(idsOf(browser->games(recent)), (QStringList{QStringLiteral("3"), QStringLiteral("4")}));
    const SmartCollection random{QStringLiteral("x"), {}, {}, {SmartCollection::Kind::randomPicks, {}, 0}};
    EXPECT_EQ(browser->games(random).size(), 25);
}

TEST_F(LibraryBrowserTest, ShowsPlaylistsCollectionsAndTheRecentListAsTheyAre) {
    Playlist playlist;
    playlist.id = QStringLiteral("p");
    playlist.gameIds = QStringList{QStringLiteral("5"), QStringLiteral("2"), QStringLiteral("gone")};
    fill(randomGames(20, 1), {playlist});
    BrowseQuery query;
    query.playlistId = playlist.id;
    QStringList ids = idsOf(browser->filteredGames(query));
    ids.sort();
    EXPECT_EQ(ids, (QStringList{QStringLiteral("2"), QStringLiteral("5")}));

    library->recordPlay(QStringLiteral("2"), 0);
    library->recordPlay(QStringLiteral("7"), 0);
    query.recentlyPlayed = true;
    query.platform = QStringLiteral("No such platform");
    EXPECT_EQ(idsOf(browser->filteredGames(query)), (QStringList{QStringLiteral("7"), QStringLiteral("2")}));

    BrowseQuery smart;
    smart.smartCollectionId = QStringLiteral("most-played");
    smart.sortOrder = SortOrder::playCount;
    EXPECT_EQ(browser->filteredGames(smart).size(), 2);
}

TEST_F(LibraryBrowserTest, AChangeOfOneGameLeavesTheListsAsAFreshLookWouldMakeThem) {
    fill(randomGames(300, 11));
    QRandomGenerator random(12);
    const QStringList places{{},
                             {},
                             QStringLiteral("unplayed"),
                             QStringLiteral("highly-rated"),
                             QStringLiteral("installed"),
                             QStringLiteral("progress-beaten"),
                             QStringLiteral("80s-classics"),
                             QStringLiteral("has-notes")};
    int kept = 0;
    for (int i = 0; i < 600; ++i) {
        BrowseQuery query;
        query.sortOrder = static_cast<SortOrder>(random.bounded(6));
        query.smartCollectionId = pick(random, places);
        query.favoritesOnly = random.bounded(5) == 0;
        query.recentlyPlayed = random.bounded(8) == 0;
        browser->filteredGames(query);
        const QList<GameGroup> before = browser->filteredGameGroups(query);
        browser->counts();
        for (int change = 0; change < 3; ++change) {
            const QString id = QString::number(random.bounded(300));
            host.clock.advance(std::chrono::seconds(random.bounded(2)));
            switch (random.bounded(6)) {
            case 0:
                library->recordPlay(id, 5);
                break;
            case 1:
                library->setProgress(id, GameProgress(random.bounded(4)));
                break;
            case 2:
                library->setGameStatus(id, {random.bounded(2) != 0, false, false, {}});
                break;
            case 3:
                library->setRating(id, random.bounded(6));
                break;
            case 4:
                library->setNotes(id, random.bounded(2) != 0 ? QStringLiteral("a note") : QString());
                break;
            default:
                library->toggleFavorite(id);
            }
        }
        LibraryBrowser fresh(*library);
        ASSERT_EQ(browser->filteredGames(query), fresh.filteredGames(query)) << i;
        const QList<GameGroup> groups = browser->filteredGameGroups(query);
        const QList<GameGroup> wanted = fresh.filteredGameGroups(query);
        ASSERT_EQ(groups.size(), wanted.size()) << i;
        for (qsizetype row = 0; row < groups.size(); ++row) {
            ASSERT_EQ(groups[row].normalizedTitle, wanted[row].normalizedTitle) << i;
            ASSERT_EQ(groups[row].variants, wanted[row].variants) << i;
            ASSERT_EQ(groups[row].primaryVariant, wanted[row].primaryVariant) << i;
        }
        kept += groups.size() > 10 && before.size() == groups.size() &&
                std::count_if(before.begin(), before.end(), [&, row = qsizetype(0)](const GameGroup &group) mutable {
                    return group.variants.constData() != groups[row++].variants.constData();
                }) <= 3;
        ASSERT_EQ(browser->counts().favorites, fresh.counts().favorites) << i;
        ASSERT_EQ(browser->counts().collections, fresh.counts().collections) << i;
    }
    EXPECT_GT(kept, 150) << "a change that moves no game replaces its own group alone";
}

} // namespace ludarium::test

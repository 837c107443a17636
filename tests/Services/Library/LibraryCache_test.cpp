#include "Services/Library/LibraryCache.h"

#include "GameFactory.h"
#include "Host/HostPaths.h"
#include "Host/SafeFiles.h"
#include "Models/RecordEncoder.h"
#include "Services/Library/CachedCollectionReader.h"
#include "Services/Library/SaveQueue.h"
#include "Services/Library/SeenStatuses.h"
#include "support/TestHost.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>
#include <algorithm>
#include <gtest/gtest.h>

namespace ludarium::test {

using namespace Qt::StringLiterals;

namespace {

const QString collection = QStringLiteral("/games/eXo");
const QDateTime written(QDate(2026, 3, 1), QTime(12, 0));

CachedCollectionData sample(int games, int notesLength = 20) {
    CachedCollectionData data;
    for (int i = 0; i < games; ++i)
        data.games.append(makeGame(QString::number(i), QStringLiteral("Spiel „%1“ \"x\" },{ID").arg(i),
                                   QStringLiteral("MS-DOS"), [&](Game &game) {
                                       game.genre = QStringLiteral("Action");
                                       game.releaseYear = 1980 + i % 20;
                                       game.notes = QByteArray(notesLength, 'n') + "},{\"ID\":\"";
                                       game.developer = QString(); // absent
                                       game.publisher = QStringLiteral("");
                                       game.communityRating = 4;
                                   }));
    data.platforms = {Platform::named(QStringLiteral("MS-DOS"), QStringLiteral("Computer"))};
    Playlist playlist;
    playlist.id = QStringLiteral("p");
    playlist.name = QStringLiteral("List");
    playlist.sortOrder = 3;
    playlist.gameIds = QStringList{QStringLiteral("0"), QStringLiteral("1")};
    playlist.autoPopulate = true;
    playlist.filters = {{QString(), QStringLiteral("Title"), QStringLiteral("Contains")}};
    data.playlists = {playlist};
    data.collectionPath = collection;
    data.cacheDate = LibraryCache::toCacheDate(written);
    return data;
}

class LibraryCacheTest : public testing::Test {
  protected:
    TestHost host;
    LibraryCache cache{host.host().paths};

    void write(const QByteArray &bytes) {
        QDir().mkpath(QFileInfo(cache.cacheFile()).path());
        QFile file(cache.cacheFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray bytes() {
        QFile file(cache.cacheFile());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    QByteArray writtenForm(const GameList &games) {
        QByteArray out;
        for (const GamePtr &game : games)
            appendJson(out, *game);
        return out;
    }
};

} // namespace

// The second is read in pieces by several threads.
class LibraryCacheRoundTrip : public LibraryCacheTest, public testing::WithParamInterface<std::pair<int, int>> {};

TEST_P(LibraryCacheRoundTrip, GivesBackWhatTheWrittenFormHolds) {
    const CachedCollectionData data = sample(GetParam().first, GetParam().second);
    cache.save(data);
    const auto loaded = cache.load(collection, written);
    ASSERT_TRUE(loaded);
    ASSERT_EQ(loaded->games.size(), data.games.size());
    EXPECT_EQ(writtenForm(loaded->games), writtenForm(data.games));
    EXPECT_EQ(loaded->platforms, data.platforms);
    ASSERT_EQ(loaded->playlists.size(), 1);
    EXPECT_EQ(loaded->playlists[0].gameIds, data.playlists[0].gameIds);
    EXPECT_EQ(loaded->playlists[0].sortOrder, 3);
    EXPECT_TRUE(loaded->playlists[0].autoPopulate);
    EXPECT_EQ(loaded->playlists[0].filters, data.playlists[0].filters);
    EXPECT_TRUE(loaded->games[0]->developer.isNull());
    EXPECT_FALSE(loaded->games[0]->publisher.isNull());
    EXPECT_EQ(loaded->games[0]->searchGenre, "action");
    EXPECT_EQ(loaded->games[0]->genre.constData(), loaded->games[1]->genre.constData());
}

INSTANTIATE_TEST_SUITE_P(Sizes, LibraryCacheRoundTrip, testing::Values(std::pair{3, 20}, std::pair{6'000, 3'000}));

TEST_F(LibraryCacheTest, IsUsedFor29DaysAndForExactlyItsPath) {
    cache.save(sample(1));
    EXPECT_TRUE(cache.load(collection, written.addDays(29)));
    EXPECT_FALSE(cache.load(collection, written.addDays(30)));
    EXPECT_TRUE(cache.load(collection, written.addDays(30).addSecs(-1)));
    EXPECT_FALSE(cache.load(QStringLiteral("/games/eXo/"), written));
    EXPECT_TRUE(QFile::exists(cache.cacheFile()));
    cache.clear();
    EXPECT_FALSE(cache.load(collection, written));
}

TEST_F(LibraryCacheTest, IsNoCacheWhenTruncatedAnywhere) {
    cache.save(sample(4));
    const QByteArray whole = bytes();
    // In pieces as a large one is read, each of a game or two.
    const auto readInPieces = [&] {
        CachedCollectionReader reader(cache.cacheFile(), whole.size() / 6);
        reader.readAllButGames();
        return reader.readGames().size();
    };
    ASSERT_EQ(readInPieces(), 4);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        write(whole.first(length));
        ASSERT_FALSE(cache.load(collection, written)) << length;
        ASSERT_THROW(readInPieces(), CacheReadError) << length;
    }
}

TEST_F(LibraryCacheTest, IsNoCacheWhenAPieceOfALargeOneIsDamaged) {
    cache.save(sample(6'000, 3'000));
    QByteArray whole = bytes();
    whole[whole.size() / 2] = '\x01';
    write(whole);
    EXPECT_FALSE(cache.load(collection, written));
    write(whole.first(whole.size() - 1));
    EXPECT_FALSE(cache.load(collection, written));
}

struct DamagedCache {
    const char *name;
    QByteArray bytes;
};

class DamagedLibraryCache : public LibraryCacheTest, public testing::WithParamInterface<DamagedCache> {};

TEST_P(DamagedLibraryCache, CountsAsNoCacheAndStaysWhereItIs) {
    write(GetParam().bytes);
    EXPECT_FALSE(cache.load(collection, written)) << GetParam().name;
    EXPECT_EQ(bytes(), GetParam().bytes);
    EXPECT_TRUE(host.log().contains(QStringLiteral("   ❌ ")));
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, DamagedLibraryCache,
    testing::Values(
        DamagedCache{"no object", "[]"}, DamagedCache{"empty", ""},
        DamagedCache{"no games",
                     R"({"collectionPath":"/games/eXo","cacheDate":1,"platforms":[],"playlists":[],"games":[]})"},
        DamagedCache{
            "title is a number",
            R"({"collectionPath":"/games/eXo","cacheDate":794000000,"platforms":[],"playlists":[],"games":[{"ID":"a","Title":3}]})"},
        DamagedCache{
            "year is a text",
            R"({"collectionPath":"/games/eXo","cacheDate":794000000,"platforms":[],"playlists":[],"games":[{"ID":"a","releaseYear":"1990"}]})"},
        DamagedCache{
            "games is an object",
            R"({"collectionPath":"/games/eXo","cacheDate":794000000,"platforms":[],"playlists":[],"games":{}})"},
        DamagedCache{
            "date is a text",
            R"({"collectionPath":"/games/eXo","cacheDate":"now","platforms":[],"playlists":[],"games":[{"ID":"a"}]})"},
        DamagedCache{"a million brackets", QByteArray(1'000'000, '[')},
        DamagedCache{"a million keys deep", QByteArray("{\"games\":").repeated(1'000'000)}),
    [](const auto &info) {
        std::string name = info.param.name;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });

TEST_F(LibraryCacheTest, ReadsKeysInAnyOrder) {
    write(R"({"games":[{"Title":"T","ID":"a","unknown":[1,{"x":2}]}],"cacheDate":794000000,"playlists":[{"Name":"N"}],)"
          R"("platforms":[],"collectionPath":"/games/eXo"})");
    const auto loaded = cache.load(collection, written);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->games[0]->title, QStringLiteral("T"));
    EXPECT_EQ(loaded->playlists[0].name, QStringLiteral("N"));
    EXPECT_FALSE(loaded->playlists[0].id.isEmpty());
}

TEST_F(LibraryCacheTest, KeepsIdsAsAListOfTexts) {
    const CacheFiles files(host.host().paths);
    SeenStatuses seen;
    seen.installed = {u"a"_s, u"b\""_s};
    seen.compressed = {u"c"_s};
    seen.downloadable = {{u"d"_s, u"3 \"MB\""_s}};
    EXPECT_FALSE(SeenStatuses::load(files).found);
    EXPECT_EQ(host.log().count(u"no list of game ids"_s), 0) << "a missing file is no fault";
    QDir().mkpath(QFileInfo(files.cache()).path());
    seen.save(files);
    const SeenStatuses loaded = SeenStatuses::load(files);
    EXPECT_TRUE(loaded.found);
    EXPECT_EQ(loaded.installed, seen.installed);
    EXPECT_EQ(loaded.compressed, seen.compressed);
    EXPECT_EQ(loaded.downloadable, seen.downloadable);
    int faults = 0;
    for (const QByteArray &damaged :
         {QByteArray("[1]"), QByteArray("{}"), QByteArray("[\"a\""), QByteArray(), QByteArray(1'000'000, '[')}) {
        ASSERT_EQ(writeAtomically(files.compressedIds(), damaged), QString());
        EXPECT_FALSE(SeenStatuses::loadIds(files.compressedIds()));
        EXPECT_EQ(host.log().count(u"no list of game ids"_s), ++faults);
    }
}

TEST_F(LibraryCacheTest, LetsNoOlderStateLandAfterANewerOne) {
    CachedCollectionData newer = sample(2);
    newer.cacheDate += 10;
    cache.save(newer);
    cache.save(sample(1));
    EXPECT_EQ(cache.load(collection, written)->games.size(), 2);
    newer.cacheDate = LibraryCache::toCacheDate(QDateTime::currentDateTimeUtc().addYears(3)); // a clock that was wrong
    cache.save(newer);
    cache.save(sample(1));
    EXPECT_EQ(cache.load(collection, written)->games.size(), 1);

    const CacheFiles files(host.host().paths);
    SeenStatuses late{{u"late"_s}, {}, {}, 20};
    late.save(files);
    const SeenStatuses early{{u"early"_s}, {}, {}, 10};
    EXPECT_FALSE(early.saveUnlessOlder(files, 30));
    EXPECT_EQ(SeenStatuses::load(files).installed, late.installed);
    EXPECT_TRUE(early.saveUnlessOlder(files, 15)) << "what is not yet cannot have been seen";
}

TEST_F(LibraryCacheTest, KeepsEachCollectionUnderItsOwnNamesAndTheEightUsedLast) {
    const QString mine = u"/mine"_s;
    const auto cacheOf = [&](const QString &path, const QString &ofSettings) {
        return LibraryCache(CacheFiles(host.host().paths, path, ofSettings));
    };
    const auto use = [&](const QString &path, const QString &ofSettings, int games) {
        const LibraryCache its = cacheOf(path, ofSettings);
        its.settle(path);
        CachedCollectionData data = sample(games);
        data.collectionPath = path;
        its.save(data);
        SeenStatuses{{path}, {}, {}, 1}.save(its.files());
    };
    const auto games = [&](const QString &path, const QString &ofSettings) {
        const LibraryCache its = cacheOf(path, ofSettings);
        its.settle(path);
        const auto loaded = its.load(path, written);
        if (!loaded)
            return qsizetype(0);
        EXPECT_EQ(SeenStatuses::load(its.files()).installed, QSet<QString>{path});
        EXPECT_EQ(loaded->games[0]->communityRating, 4) << "the details are of the same collection";
        return loaded->games.size();
    };
    use(mine, mine, 1);
    for (int i = 2; i <= 10; ++i) {
        use(u"/other%1"_s.arg(i), mine, i);
        QThread::msleep(5); // what was used last is told by the times of files
        EXPECT_EQ(games(u"/other2"_s, mine), 2) << "used again and again";
        QThread::msleep(5);
    }
    EXPECT_EQ(games(mine, mine), 1);
    EXPECT_EQ(QFileInfo(cacheOf(mine, mine).cacheFile()).fileName(), u"com.ludarium.app.GameLibraryCache.json"_s);
    EXPECT_EQ(games(u"/other3"_s, mine), 0) << "used longest ago";
    for (int i = 4; i <= 10; ++i)
        EXPECT_EQ(games(u"/other%1"_s.arg(i), mine), i);
    EXPECT_EQ(QDir(QFileInfo(cache.cacheFile()).path()).entryList({u"*-*"_s}, QDir::Files).size(), 8 * 5);

    // The settings take another collection: it moves to the plain names, the other one away from them.
    EXPECT_EQ(games(u"/other7"_s, u"/other7"_s), 7);
    EXPECT_EQ(LibraryCache(host.host().paths).load(u"/other7"_s, written)->games.size(), 7);
    EXPECT_EQ(games(mine, u"/other7"_s), 1);
    EXPECT_EQ(games(mine, mine), 1);
    EXPECT_EQ(games(u"/other7"_s, mine), 7);
}

TEST_F(LibraryCacheTest, IsTheUsersAloneAndSweepsWhatAKilledSaveLeft) {
    const QString folder = QFileInfo(cache.cacheFile()).path();
    write("{}");
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther);
    QFile left(folder + u"/.ludarium-1x2y3z"_s);
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFileDevice::FileModificationTime);
    left.close();
    cache.settle(collection);
    EXPECT_FALSE(left.exists());
    cache.save(sample(1));
    SeenStatuses{{u"a"_s}, {}, {}, 1}.save(cache.files());
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_FALSE(QFileInfo(folder).permissions() & (others | QFile::ExeGroup | QFile::ExeOther));
    for (const QString &file : cache.files().all())
        EXPECT_FALSE(!QFile::exists(file) || (QFileInfo(file).permissions() & others)) << file.toStdString();
}

TEST(SaveQueue, SavesInTheOrderOfPostingAndTheLatestOfANameOnly) {
    for (int round = 0; round < 50; ++round) {
        std::vector<int> saved;
        {
            SaveQueue queue;
            QSemaphore gate;
            queue.post({}, [&] { gate.acquire(); });
            for (int i = 0; i < 40; ++i)
                queue.post(i % 2 != 0 ? u"cache"_s : QString(), [&saved, i] { saved.push_back(i); });
            gate.release();
        } // what was posted is saved when the queue is gone, too
        QThreadPool::globalInstance()->waitForDone();
        ASSERT_EQ(saved.size(), 21);
        EXPECT_TRUE(std::is_sorted(saved.begin(), saved.end()));
        EXPECT_EQ(saved.back(), 39);
    }
}

} // namespace ludarium::test

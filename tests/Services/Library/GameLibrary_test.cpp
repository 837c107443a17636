#include "Services/Library/GameLibrary.h"

#include "GameFactory.h"
#include "Host/Async.h"
#include "Host/Settings.h"
#include "support/AsNobody.h"
#include "support/TestHost.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSemaphore>
#include <QThreadPool>
#include <gtest/gtest.h>
#include <unistd.h>

namespace ludarium::test {

namespace {

QByteArray gameXml(const QString &id, const QString &title, const QString &platform) {
    return QStringLiteral("<Game><ID>%1</ID><Title>%2</Title><Platform>%3</Platform></Game>")
        .arg(id, title, platform)
        .toUtf8();
}

class GameLibraryTest : public testing::Test {
  protected:
    TestHost host;
    LibraryServices services;
    QStringList statuses;

    /// A collection of three DOS games, one of Windows 9x and a console game, with one dynamic playlist.
    QString makeCollection() {
        const QString folder = QStringLiteral("/collection");
        const auto put = [&](const QString &path, const QByteArray &inner) {
            host.put(folder + path, "<?xml version=\"1.0\"?><LaunchBox>" + inner + "</LaunchBox>");
        };
        put(QStringLiteral("/Data/Platforms/MS-DOS.xml"),
            gameXml(QStringLiteral("a"), QStringLiteral("Alpha"), QStringLiteral("MS-DOS")) +
                gameXml(QStringLiteral("b"), QStringLiteral("Beta"), QStringLiteral("MS-DOS")) +
                gameXml(QStringLiteral("w"), QStringLiteral("Late"), QStringLiteral("Windows 9.x")) +
                "<AdditionalApplication><Id>x</Id><GameID>b</GameID><Name>Manual</Name></AdditionalApplication>");
        put(QStringLiteral("/Data/Platforms/Sega Genesis.xml"),
            gameXml(QStringLiteral("s"), QStringLiteral("Sonar"), QStringLiteral("Sega Genesis")));
        put(QStringLiteral("/Data/Playlists/All.xml"),
            "<Playlist><PlaylistId>p</PlaylistId><Name>DOS</Name><AutoPopulate>true</AutoPopulate></Playlist>"
            "<PlaylistFilter><Value>MS-DOS</Value><FieldKey>Platform</FieldKey><ComparisonTypeKey>EqualTo"
            "</ComparisonTypeKey></PlaylistFilter>");
        services.checkStatus = [](const GameList &games, const QString &) {
            QList<GameStatus> result;
            for (const GamePtr &game : games)
                result.append(game->id == QLatin1StringView("a") || game->id == QLatin1StringView("s")
                                  ? GameStatus{true, false, false, {}}
                              : game->id == QLatin1StringView("b") ? GameStatus{false, true, false, {}}
                                                                   : GameStatus{});
            return result;
        };
        return host.root() + folder;
    }

    std::unique_ptr<GameLibrary> load(const QString &collection) {
        auto library = std::make_unique<GameLibrary>(host, services);
        statuses.clear();
        QObject::connect(library.get(), &GameLibrary::loadingChanged, library.get(), [this, raw = library.get()] {
            if (statuses.isEmpty() || statuses.last() != raw->loadingStatus())
                statuses.append(raw->loadingStatus());
        });
        await(library->loadCollection(collection));
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        return library;
    }
};

} // namespace

TEST_F(GameLibraryTest, AnnouncesEachStepOfAFullLoadInItsOrder) {
    const auto library = load(makeCollection());
    EXPECT_EQ(
        statuses.mid(0, 6),
        (QStringList{QStringLiteral("Checking collection..."), QStringLiteral("Checking download-on-demand support..."),
                     QStringLiteral("Checking for cached data..."),
                     QStringLiteral("No cache found. Loading from XML files (first time only)..."),
                     QStringLiteral("Loading platforms..."),
                     QStringLiteral("Parsing game metadata... This can take 2-5 minutes for large collections. "
                                    "Please be patient.")}));
    EXPECT_TRUE(statuses.contains(QStringLiteral("Parsing MS-DOS.xml... (1/2)")) ||
                statuses.contains(QStringLiteral("Parsing MS-DOS.xml... (2/2)")));
    const qsizetype processing = statuses.indexOf(QStringLiteral("Processing 3 games..."));
    ASSERT_GT(processing, 0);
    EXPECT_EQ(
        statuses.mid(processing),
        (QStringList{QStringLiteral("Processing 3 games..."), QStringLiteral("Loading emulator requirements..."),
                     QStringLiteral("Checking game folders..."),
                     QStringLiteral("Applying favorites and play history..."), QStringLiteral("Building indexes..."),
                     QStringLiteral("Loading playlists..."), QStringLiteral("Applying playlist filters..."),
                     QStringLiteral("Saving to cache... (Next launch will be instant!)"),
                     QStringLiteral("Complete! Loaded 3 games. Next launch will be much faster!")}));
    EXPECT_FALSE(library->isLoading());
    EXPECT_EQ(library->loadingProgress(), 1.0);
}

TEST_F(GameLibraryTest, FillsTheLibraryFromTheFilesAndThenFromTheCache) {
    const QString collection = makeCollection();
    for (const bool cached : {false, true}) {
        const auto library = load(collection);
        EXPECT_EQ(library->errorMessage(), QString());
        EXPECT_EQ(library->loadingStatus(),
                  cached ? QStringLiteral("Ready! Loaded 3 games from cache ⚡")
                         : QStringLiteral("Complete! Loaded 3 games. Next launch will be much faster!"));
        EXPECT_TRUE(library->game(QStringLiteral("a"))->isInstalled) << cached;
        EXPECT_TRUE(library->game(QStringLiteral("b"))->isCompressed);
        EXPECT_TRUE(library->game(QStringLiteral("s"))->isInstalled); // ROM platforms always count as installed
        EXPECT_EQ(library->game(QStringLiteral("w")), nullptr);
        EXPECT_EQ(library->game(QStringLiteral("b"))->additionalApplications.size(), 1) << cached;
        ASSERT_EQ(library->playlists().size(), 1);
        EXPECT_EQ(library->playlists()[0].gameIds.size(), 2);
        EXPECT_EQ(library->platforms().size(), 2);
    }
}

TEST_F(GameLibraryTest, BringsUserDataBackOnBothRoads) {
    const QString collection = makeCollection();
    {
        const auto library = load(collection);
        library->toggleFavorite(QStringLiteral("b"));
        library->recordPlay(QStringLiteral("a"), 0);
        library->addPlayTime(QStringLiteral("a"), 90);
        EXPECT_EQ(library->game(QStringLiteral("a"))->playTime, 90);
    }
    for (const bool clear : {false, true}) {
        if (clear)
            LibraryCache(host.host().paths).clear();
        const auto library = load(collection);
        EXPECT_TRUE(library->game(QStringLiteral("b"))->isFavorite) << clear;
        EXPECT_EQ(library->game(QStringLiteral("a"))->playCount, 1);
        EXPECT_EQ(library->game(QStringLiteral("a"))->playTime, 90);
        EXPECT_EQ(library->game(QStringLiteral("a"))->gameProgress, GameProgress::playing);
        EXPECT_EQ(idsOf(library->recentlyPlayed()), QStringList{QStringLiteral("a")});
    }
}

TEST_F(GameLibraryTest, KeepsWhatTheUserDidWithAGameThatHasNoIdTitleOrFolder) {
    const QString folder = host.root() + QStringLiteral("/bare");
    host.put(
        QStringLiteral("/bare/Data/Platforms/MS-DOS.xml"),
        "<LaunchBox><Game><Genre>Action</Genre></Game><Game><ApplicationPath>x</ApplicationPath></Game></LaunchBox>");
    services.checkGame = [](const GamePtr &, const QString &) { return GameStatus{true, false, false, {}}; };
    QString id;
    for (const bool again : {false, true}) {
        LibraryCache(host.host().paths).clear();
        const auto library = load(folder);
        ASSERT_EQ(library->games().size(), 2);
        if (!again) {
            id = library->games()[0]->id;
            library->toggleFavorite(id);
        }
        ASSERT_TRUE(library->game(id));
        EXPECT_TRUE(library->game(id)->isFavorite) << again;
        EXPECT_EQ(library->game(id)->title, QStringLiteral("Unknown"));
        await(library->updateGameStatus(id));
        EXPECT_FALSE(library->game(id)->isInstalled);
        EXPECT_TRUE(
            host.log().contains(QStringLiteral("⚠️ updateGameStatus: No config path for Unknown, skipping")));
    }
}

TEST_F(GameLibraryTest, ShowsWhatTheUserDidDuringALoad) {
    const QString collection = makeCollection();
    for (const bool cached : {false, true}) {
        GameLibrary library(host, services);
        const bool wasFavorite = library.userData().favoriteIds().contains(QStringLiteral("a"));
        const QString last = cached ? QStringLiteral("Refreshing favorites and play counts...")
                                    : QStringLiteral("Applying favorites and play history...");
        // Once the user's data is being brought into the new records.
        QObject::connect(&library, &GameLibrary::loadingChanged, &library, [&] {
            if (library.loadingStatus() == last)
                QMetaObject::invokeMethod(
                    &library, [&] { library.toggleFavorite(QStringLiteral("a")); }, Qt::QueuedConnection);
        });
        await(library.loadCollection(collection));
        QCoreApplication::processEvents(); // a busy machine ends the load first
        EXPECT_EQ(library.game(QStringLiteral("a"))->isFavorite, !wasFavorite) << cached;
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
    }
}

TEST_F(GameLibraryTest, ShowsTheGamesOfAnUnpluggedFolderFromTheCache) {
    const QString collection = makeCollection();
    load(collection);
    QDir(collection).removeRecursively();
    services.checkStatus = {};
    EXPECT_EQ(load(collection)->games().size(), 3);
}

TEST_F(GameLibraryTest, CorrectsTheCachedStatusInTheBackground) {
    const QString collection = makeCollection();
    load(collection);
    services.checkStatus = [](const GameList &games, const QString &) {
        return QList<GameStatus>(games.size(), GameStatus{false, false, true, QStringLiteral("3.1 MB")});
    };
    const auto library = load(collection);
    await(library->checkInstalledStatusSilent(collection));
    EXPECT_FALSE(library->game(QStringLiteral("a"))->isInstalled);
    EXPECT_EQ(library->game(QStringLiteral("b"))->downloadSize, QStringLiteral("3.1 MB"));
    int publications = 0;
    QObject::connect(library.get(), &GameLibrary::gamesChanged, library.get(), [&] { ++publications; });
    await(library->checkInstalledStatusSilent(collection));
    EXPECT_EQ(publications, 0);
    EXPECT_TRUE(host.log().contains(QStringLiteral("🔇 Silent check: no changes detected — UI unchanged")));
}

TEST_F(GameLibraryTest, TrustsThatEverythingIsInstalledWhenToldTo) {
    const QString collection = makeCollection();
    host.settings.setValue(Settings::skipInstallCheck, true);
    const auto library = load(collection);
    EXPECT_TRUE(library->game(QStringLiteral("b"))->isInstalled);
    EXPECT_TRUE(statuses.contains(QStringLiteral("Skipping file checks (fast mode)...")));
}

struct FolderCase {
    const char *name;
    QStringList folders;
    bool valid;
};

class CollectionFolder : public GameLibraryTest, public testing::WithParamInterface<FolderCase> {};

TEST_P(CollectionFolder, IsACollectionByItsFolders) {
    const QString folder = host.scratch() + QStringLiteral("/c");
    QDir().mkpath(folder);
    for (const QString &name : GetParam().folders)
        QDir(folder).mkpath(name);
    EXPECT_EQ(GameLibrary::validateCollectionStructure(folder), GetParam().valid);
    const auto library = load(folder);
    EXPECT_EQ(library->errorMessage(),
              GetParam().valid ? QString()
                               : QStringLiteral("Invalid collection. Expected folders: Data/, eXo/, Images/"));
    EXPECT_EQ(library->loadingStatus() == QStringLiteral("Validation failed"), !GetParam().valid);
    EXPECT_FALSE(library->isLoading());
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, CollectionFolder,
    testing::Values(FolderCase{"lite", {QStringLiteral("xml/all")}, true},
                    FolderCase{"platforms", {QStringLiteral("Data/Platforms")}, true},
                    FolderCase{"data_and_images", {QStringLiteral("Data"), QStringLiteral("Images")}, true},
                    FolderCase{"data_alone", {QStringLiteral("Data")}, false},
                    FolderCase{"exo_alone", {QStringLiteral("eXo")}, false}),
    [](const auto &info) { return std::string(info.param.name); });

TEST_F(GameLibraryTest, ShowsTheDefaultPlatformsOnlyWhileTheyHaveGames) {
    QDir(host.scratch()).mkpath(QStringLiteral("Data/Platforms"));
    const auto library = load(host.scratch());
    EXPECT_EQ(library->games().size(), 0);
    EXPECT_TRUE(library->platforms().isEmpty());
}

TEST_F(GameLibraryTest, RunsTheSetupThatTheUserWantsAndGoesOnWhenItFails) {
    const QString collection = makeCollection();
    load(collection);
    QStringList calls;
    services.setupStatus = [](const QString &) { return LibraryServices::Setup{true, {QStringLiteral("eXoDOS")}}; };
    services.promptSetup = [&](QString) -> QCoro::Task<bool> {
        calls.append(QStringLiteral("ask"));
        co_return true;
    };
    services.runSetup = [&](QString) -> QCoro::Task<> {
        calls.append(QStringLiteral("setup"));
        co_return;
    };
    services.promptRepair = [&](QString, QString name) -> QCoro::Task<bool> {
        calls.append(QStringLiteral("ask ") + name);
        co_return true;
    };
    services.repairMetadataExtraction = [&](QString, QString) -> QCoro::Task<> {
        calls.append(QStringLiteral("repair"));
        throw std::runtime_error("no archive");
        co_return;
    };
    const auto library = load(collection);
    EXPECT_EQ(calls, (QStringList{QStringLiteral("ask"), QStringLiteral("setup"), QStringLiteral("ask eXoDOS"),
                                  QStringLiteral("repair")}));
    EXPECT_TRUE(library->loadingStatus().startsWith(QStringLiteral("Complete!"))); // the cache was cleared
    EXPECT_TRUE(host.log().contains(QStringLiteral("Metadata repair failed for eXoDOS: no archive")));
    EXPECT_EQ(library->games().size(), 3);
}

TEST_F(GameLibraryTest, KeepsTheGamesOfEachCollectionUnderItsOwnPathWhenLoadsOverlap) {
    const QString slow = makeCollection();
    const QString quick = host.root() + QStringLiteral("/other");
    host.put(QStringLiteral("/other/Data/Platforms/MS-DOS.xml"),
             "<LaunchBox>" + gameXml(QStringLiteral("o"), QStringLiteral("Other"), QStringLiteral("MS-DOS")) +
                 "</LaunchBox>");
    QSemaphore gate;
    services.checkStatus = [&](const GameList &games, const QString &collection) {
        if (collection == slow)
            gate.tryAcquire(1, 10'000);
        return QList<GameStatus>(games.size(), GameStatus{true, false, false, {}});
    };
    GameLibrary library(host, services);
    spawn(library.loadCollection(slow), "loading");
    await(library.loadCollection(quick));
    gate.release();
    while (!library.loadingStatus().startsWith(QStringLiteral("Complete! Loaded 3")))
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QThreadPool::globalInstance()->waitForDone();
    const LibraryCache cache(host.host().paths);
    EXPECT_TRUE(cache.load(slow, host.clock.now()));
    EXPECT_TRUE(LibraryCache(cache.files().named(quick)).load(quick, host.clock.now()));
}

TEST_F(GameLibraryTest, TakesAPlatformOutOfTheCollectionAndKeepsItsFileAside) {
    const QString collection = makeCollection();
    EXPECT_THROW(await(GameLibrary(host, services).removePlatform(QStringLiteral("MS-DOS"))), std::runtime_error);
    const auto library = load(collection);
    for (const char *name : {"", "../Playlists/All", "a/b"})
        EXPECT_THROW(await(library->removePlatform(QString::fromUtf8(name))), std::runtime_error) << name;
    EXPECT_EQ(library->games().size(), 3);
    library->toggleFavorite(QStringLiteral("a"));
    await(library->removePlatform(QStringLiteral("MS-DOS")));
    EXPECT_EQ(idsOf(library->games()), QStringList{QStringLiteral("s")});
    EXPECT_EQ(library->game(QStringLiteral("a")), nullptr);
    EXPECT_EQ(library->platforms().size(), 1);
    const QDir folder(collection + QStringLiteral("/Data/Platforms"));
    EXPECT_FALSE(folder.exists(QStringLiteral("MS-DOS.xml")));
    EXPECT_EQ(folder.entryList({QStringLiteral("MS-DOS.xml.removed-*")}).size(), 1);
    const auto again = load(collection);
    EXPECT_TRUE(again->loadingStatus().startsWith(QStringLiteral("Complete! Loaded 1 games")));
    EXPECT_TRUE(again->userData().favoriteIds().contains(QStringLiteral("a")));
}

TEST_F(GameLibraryTest, AsksTheDiskForTheArchiveOfAnUninstalledGame) {
    const auto library = load(makeCollection());
    services.checkGame = [](const GamePtr &, const QString &) { return GameStatus{false, true, true, {}}; };
    const auto asking = load(host.root() + QStringLiteral("/collection"));
    for (const auto &[marked, archive] : {std::pair(library.get(), false), std::pair(asking.get(), true)}) {
        await(marked->markGameInstalled(QStringLiteral("b"), true));
        EXPECT_EQ(GameStatus::of(*marked->game(QStringLiteral("b"))), (GameStatus{true, false, false, {}}));
        await(marked->markGameInstalled(QStringLiteral("b"), false));
        EXPECT_EQ(GameStatus::of(*marked->game(QStringLiteral("b"))), (GameStatus{false, archive, false, {}}));
        await(marked->markGameInstalled(QStringLiteral("not here"), true));
    }
}

TEST_F(GameLibraryTest, ShowsNoStaleRecordInTheRecentList) {
    const auto library = load(makeCollection());
    library->recordPlay(QStringLiteral("a"), 0);
    bool consistent = true;
    QObject::connect(library.get(), &GameLibrary::gamesChanged, library.get(), [&] {
        for (const GamePtr &recent : library->recentlyPlayed())
            consistent = consistent && library->game(recent->id) == recent;
    });
    library->toggleFavorite(QStringLiteral("a"));
    EXPECT_TRUE(library->recentlyPlayed().value(0)->isFavorite);
    library->clearCollectionData();
    EXPECT_TRUE(library->recentlyPlayed().isEmpty());
    EXPECT_TRUE(consistent);
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_EQ(SeenStatuses::loadIds(CacheFiles(host.host().paths).installedIds()), QSet<QString>());
}

TEST_F(GameLibraryTest, ChangesOneGameWithoutTouchingTheOthers) {
    const auto library = load(makeCollection());
    const GamePtr other = library->game(QStringLiteral("b"));
    const GamePtr *list = library->games().constData();
    library->toggleFavorite(QStringLiteral("a"));
    library->setGameStatus(QStringLiteral("a"), {false, true, false, {}});
    EXPECT_TRUE(library->game(QStringLiteral("a"))->isFavorite);
    EXPECT_TRUE(library->game(QStringLiteral("a"))->isCompressed);
    EXPECT_EQ(library->game(QStringLiteral("b")), other);
    EXPECT_EQ(library->games().constData(), list); // no copy of the list was made
    library->toggleFavorite(QStringLiteral("not here"));
    EXPECT_TRUE(library->userData().favoriteIds().contains(QStringLiteral("not here")));
}

TEST_F(GameLibraryTest, MayBeDestroyedAtAnyStepOfALoad) {
    const QString collection = makeCollection();
    for (const bool cached : {false, true})
        for (int turns = 0; turns < 40; ++turns) {
            if (!cached)
                LibraryCache(host.host().paths).clear();
            auto library = std::make_unique<GameLibrary>(host, services);
            spawn(library->loadCollection(collection), "loading");
            for (int i = 0; i < turns && library->isLoading(); ++i)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
            library.reset();
            QThreadPool::globalInstance()->waitForDone();
            for (int i = 0; i < 5; ++i)
                QCoreApplication::processEvents();
        }
}

TEST_F(GameLibraryTest, AsksBeforeItUsesAReadOnlyCollection) {
    const QString collection = makeCollection();
    const AsNobody user(host.root());
    QFile::setPermissions(collection, QFile::ReadOwner | QFile::ExeOwner);
    host.dialogs.answers = QStringList{QStringLiteral("Cancel")};
    const auto library = load(collection);
    QFile::setPermissions(collection, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    ASSERT_EQ(host.dialogs.asked.size(), 1);
    EXPECT_EQ(host.dialogs.asked[0].title, QStringLiteral("Read-Only Collection"));
    EXPECT_TRUE(library->games().isEmpty());
    EXPECT_EQ(library->loadingStatus(), QString());
}

} // namespace ludarium::test

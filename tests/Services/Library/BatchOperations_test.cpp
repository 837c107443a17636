#include "Services/Library/BatchOperationsManager.h"

#include "GameFactory.h"
#include "Services/Library/BatchFiles.h"
#include "Services/Library/GameLibrary.h"
#include "support/Archives.h"
#include "support/TestHost.h"

#include <QCoro/QCoroFuture>
#include <QDir>
#include <QFile>
#include <QFuture>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPromise>
#include <QThreadPool>
#include <gtest/gtest.h>
#include <stdexcept>

namespace ludarium::test {

namespace {

using namespace Qt::StringLiterals;
using Type = BatchOperationType;
using Status = BatchOperationStatus;
using Outcome = BatchOperationsManager::Outcome;

/// A collection of four DOS games "g0" to "g3", of which none is installed, with their folders on the disk.
class BatchOperations : public testing::Test {
  protected:
    BatchOperations() : manager(host.host()) {
        QByteArray xml = "<LaunchBox>";
        for (int i = 0; i < 4; ++i) {
            const QByteArray n = QByteArray::number(i);
            xml += "<Game><ID>g" + n + "</ID><Title>Game " + n + "</Title><Platform>MS-DOS</Platform>" +
                   "<ConfigurationPath>eXo\\eXoDOS\\!dos\\Game" + n + "\\dosbox.conf</ConfigurationPath></Game>";
            host.put(u"/collection/eXo/eXoDOS/Game%1/GAME.EXE"_s.arg(i), "MZ");
            host.put(u"/collection/eXo/eXoDOS/Game %1.zip"_s.arg(i), gameArchive(u"Game%1"_s.arg(i)));
        }
        host.put(u"/collection/Data/Platforms/MS-DOS.xml"_s, xml + "</LaunchBox>");
        LibraryServices services;
        services.checkStatus = [](const GameList &games, const QString &) {
            return QList<GameStatus>(games.size(), GameStatus{});
        };
        // The archive stays behind an uninstalled game; the look itself has not noticed the missing folder yet.
        services.checkGame = [](const GamePtr &, const QString &) { return GameStatus{true, true, false, {}}; };
        library = std::make_unique<GameLibrary>(host, services);
        await(library->loadCollection(collection()));
        manager.setGameLibrary(library.get());
    }
    ~BatchOperations() override { QThreadPool::globalInstance()->waitForDone(); }

    QString collection() const { return host.root() + u"/collection"_s; }
    QString path(const QString &relative) const { return collection() + u'/' + relative; }
    void markInstalled(const QString &id) { library->setGameStatus(id, GameStatus{true, false, false, {}}); }
    Outcome run(Type type, const GamePtr &game) { return await(manager.executeOperation(type, game)); }
    GamePtr changed(const std::function<void(Game &)> &change) const {
        auto game = std::make_shared<Game>(*library->game(u"g0"_s));
        game->isInstalled = true;
        game->isFavorite = false;
        change(*game);
        return game;
    }
    QList<Status> statuses() const {
        QList<Status> list;
        for (const BatchOperationResult &result : manager.currentOperation()->results)
            list.append(result.status);
        return list;
    }

    TestHost host;
    std::unique_ptr<GameLibrary> library;
    BatchOperationsManager manager;
};

TEST_F(BatchOperations, GiveEachGameTheStatusAndTextOfTheirTable) {
    const auto nothing = [](Game &) {};
    const auto absent = [](Game &game) { game.isInstalled = false; };
    const auto favorite = [](Game &game) { game.isFavorite = true; };
    const auto at = [](const QString &platform, const QString &application, const QString &configuration) {
        return [=](Game &game) {
            game.platform = platform;
            game.applicationPath = application;
            game.configurationPath = configuration;
        };
    };
    const QString rom = host.put(u"/roms/sonar.md"_s, "rom");
    QDir().mkpath(path(u"eXo/eXoDOS/own/folder"_s));
    QDir().mkpath(path(u"eXo/outside"_s));
    const QString notFound = u"Game folder not found at "_s;
    enum class Given { everything, noLibrary, noCollection };
    GameLibrary unloaded(host);
    const struct {
        Type type;
        std::function<void(Game &)> change;
        Status status;
        QString message;
        Given given = Given::everything;
    } rows[] = {
        {Type::install, nothing, Status::skipped, u"Already installed"_s},
        {Type::install, absent, Status::failed, u"Game library not available"_s, Given::noLibrary},
        {Type::install, absent, Status::failed, u"Collection path not found"_s, Given::noCollection},
        {Type::install, absent, Status::failed, u"Installing games is not available"_s},
        {Type::uninstall, absent, Status::skipped, u"Not installed"_s},
        {Type::uninstall, nothing, Status::failed, u"Game library not available"_s, Given::noLibrary},
        {Type::uninstall, nothing, Status::failed, u"Collection path not found"_s, Given::noCollection},
        {Type::uninstall, at(u"MS-DOS"_s, {}, u"eXo\\eXoDOS\\!dos\\Gone\\dosbox.conf"_s), Status::failed,
         notFound + path(u"eXo/eXoDOS/Gone"_s)},
        {Type::uninstall, nothing, Status::completed, u"Uninstalled successfully"_s},
        {Type::addToFavorites, nothing, Status::failed, u"Game library not available"_s, Given::noLibrary},
        {Type::addToFavorites, favorite, Status::skipped, u"Already a favorite"_s},
        {Type::addToFavorites, nothing, Status::completed, u"Added to favorites"_s},
        {Type::removeFromFavorites, favorite, Status::failed, u"Game library not available"_s, Given::noLibrary},
        {Type::removeFromFavorites, nothing, Status::skipped, u"Not a favorite"_s},
        {Type::removeFromFavorites, favorite, Status::completed, u"Removed from favorites"_s},
        {Type::addToPlaylist, nothing, Status::skipped, u"No playlist selected"_s},
        {Type::addToPlaylist, nothing, Status::skipped, u"No playlist selected"_s, Given::noLibrary},
        {Type::exportMetadata, nothing, Status::completed, u"Exported to Game 0.json"_s},
        {Type::exportMetadata, nothing, Status::completed, u"Exported to Game 0.json"_s, Given::noLibrary},
        {Type::verifyFiles, absent, Status::skipped, u"Not installed"_s},
        {Type::verifyFiles, at(u"Sega Genesis"_s, rom, {}), Status::completed, u"ROM file verified"_s},
        {Type::verifyFiles, at(u"Sega Genesis"_s, u"roms/sonar.md"_s, {}), Status::failed, u"ROM file not found"_s},
        {Type::verifyFiles, at(u"Sega Genesis"_s, {}, {}), Status::failed, u"ROM file not found"_s},
        {Type::verifyFiles, at(u"MS-DOS"_s, {}, u"own/folder"_s), Status::completed, u"Game files verified"_s},
        {Type::verifyFiles, at(u"MS-DOS"_s, {}, u"../outside"_s), Status::completed, u"Verification skipped"_s},
        {Type::verifyFiles, at(u"MS-DOS"_s, {}, {}), Status::completed, u"Verification skipped"_s},
    };
    for (const auto &row : rows) {
        manager.setGameLibrary(row.given == Given::noLibrary      ? nullptr
                               : row.given == Given::noCollection ? &unloaded
                                                                  : library.get());
        EXPECT_EQ(run(row.type, changed(row.change)), (Outcome{row.status, row.message}))
            << batchOperationName(row.type).toStdString() << ": " << row.message.toStdString();
    }
    QFile exported(host.home() + u"/Documents/Ludarium/Exports/Game 0.json"_s);
    ASSERT_TRUE(exported.open(QIODevice::ReadOnly));
    const QByteArray text = exported.readAll();
    EXPECT_EQ(QJsonDocument::fromJson(text).object().value(u"Title"_s), u"Game 0"_s);
    EXPECT_TRUE(text.startsWith("{\n  \"ID\": \"g0\",\n  \"Title\"")) << text.toStdString();
}

TEST_F(BatchOperations, KeepTheLibraryInStepWithWhatTheyDo) {
    markInstalled(u"g0"_s);
    EXPECT_EQ(run(Type::uninstall, library->game(u"g0"_s)).status, Status::completed);
    EXPECT_FALSE(QFile::exists(path(u"eXo/eXoDOS/Game0"_s)));
    EXPECT_TRUE(QFile::exists(path(u"eXo/eXoDOS/Game1/GAME.EXE"_s)));
    EXPECT_EQ(GameStatus::of(*library->game(u"g0"_s)), (GameStatus{false, true, false, {}}));

    QString installedIn;
    const BatchOperationsManager::Installer install = [&](GamePtr game, QString where) -> QCoro::Task<> {
        if (game->id == u"g2"_s)
            throw std::runtime_error("the archive is broken");
        installedIn = where;
        co_return;
    };
    manager.setInstaller(install);
    EXPECT_EQ(run(Type::install, library->game(u"g0"_s)), (Outcome{Status::completed, u"Installed successfully"_s}));
    EXPECT_EQ(installedIn, collection());
    EXPECT_EQ(GameStatus::of(*library->game(u"g0"_s)), (GameStatus{true, false, false, {}}));
    EXPECT_EQ(run(Type::install, library->game(u"g2"_s)), (Outcome{Status::failed, u"the archive is broken"_s}));
    EXPECT_FALSE(library->game(u"g2"_s)->isInstalled);

    EXPECT_EQ(run(Type::addToFavorites, library->game(u"g1"_s)).status, Status::completed);
    EXPECT_TRUE(library->game(u"g1"_s)->isFavorite);
}

TEST_F(BatchOperations, UninstallRemovesNothingButTheGamesOwnFolder) {
    const QString elsewhere = host.put(u"/elsewhere/Game/keep.txt"_s, "mine");
    const QString year = host.put(u"/collection/eXo/eXoWin9x/1995/Late/keep.txt"_s, "theirs");
    const QString script = host.put(u"/collection/eXo/eXoDOS/!dos/Game1/dosbox.conf"_s, "conf");
    const QString rom = host.put(u"/collection/eXo/eXoDOS/Shared/keep.txt"_s, "theirs");
    QFile::link(host.root() + u"/elsewhere/Game"_s, path(u"eXo/eXoDOS/Linked"_s));
    QFile::link(host.root() + u"/elsewhere"_s, path(u"eXo/eXoDREAMM"_s));
    QFile::link(path(u"eXo/eXoDOS/Game1"_s), path(u"eXo/eXoDOS/Twin"_s));
    const struct {
        const char *what;
        QString platform;
        QString configuration;
        Status status;
    } rows[] = {
        {"no folder name", u"MS-DOS"_s, {}, Status::failed},
        {"the set's own folder", u"MS-DOS"_s, u"eXo\\eXoDOS\\!dos\\.\\x.conf"_s, Status::failed},
        {"a folder above", u"MS-DOS"_s, u"eXo\\eXoDOS\\!dos\\..\\x.conf"_s, Status::failed},
        {"a script folder", u"MS-DOS"_s, u"eXo\\eXoDOS\\!dos\\!dos\\x.conf"_s, Status::failed},
        {"the games of a year", u"Windows 9x"_s, u"eXo\\eXoWin9x\\!win9x\\1995\\Late\\x.conf"_s, Status::failed},
        {"a ROM next to a game of that name", u"Sega Genesis"_s, u"Games\\Shared\\sonar.zip"_s, Status::failed},
        {"a book next to a game of that name", u"MS-DOS Books"_s, u"Books\\Shared\\a.pdf"_s, Status::failed},
        {"a set that is a link to another place", u"DREAMM"_s, u"eXo\\eXoDREAMM\\!DREAMM\\Game\\x.bat"_s,
         Status::failed},
        {"a game that is a link out", u"MS-DOS"_s, u"eXo\\eXoDOS\\!dos\\Linked\\x.conf"_s, Status::failed},
        {"a game that is a link", u"MS-DOS"_s, u"eXo\\eXoDOS\\!dos\\Twin\\x.conf"_s, Status::completed},
    };
    for (const auto &row : rows) {
        const GamePtr game = changed([&](Game &changing) {
            changing.platform = row.platform;
            changing.configurationPath = row.configuration;
        });
        const auto onlyCopies = BatchOperationsManager::OnlyCopies::remove;
        EXPECT_EQ(await(manager.executeOperation(Type::uninstall, game, onlyCopies)).status, row.status) << row.what;
        for (const QString &kept : {elsewhere, year, script, rom, path(u"eXo/eXoDOS/Game1/GAME.EXE"_s)})
            EXPECT_TRUE(QFile::exists(kept)) << row.what << " took " << kept.toStdString();
    }
    EXPECT_TRUE(QFileInfo(path(u"eXo/eXoDOS/Linked"_s)).isSymLink());
    EXPECT_FALSE(QFileInfo(path(u"eXo/eXoDOS/Twin"_s)).isSymLink());
}

TEST_F(BatchOperations, UninstallKeepsTheOnlyCopyUnlessItIsToldNotTo) {
    for (const char *id : {"g0", "g1", "g2"})
        markInstalled(QString::fromUtf8(id));
    ASSERT_TRUE(QFile::remove(path(u"eXo/eXoDOS/Game 0.zip"_s)));
    host.put(u"/collection/eXo/eXoDOS/Game 1.zip"_s, {});
    await(manager.execute(Type::uninstall, {u"g0"_s, u"g1"_s, u"g2"_s}));
    EXPECT_EQ(statuses(), (QList<Status>{Status::skipped, Status::skipped, Status::completed}));
    const QList<BatchOperationResult> results = manager.currentOperation()->results;
    EXPECT_EQ(results[0].message, u"Kept, as it is the only copy: it has no archive"_s);
    EXPECT_EQ(results[1].message, u"Kept, as it is the only copy: its archive Game 1.zip is empty"_s);
    for (const char *folder : {"Game0", "Game1"})
        EXPECT_TRUE(QFile::exists(path(u"eXo/eXoDOS/%1/GAME.EXE"_s.arg(QString::fromUtf8(folder)))));
    EXPECT_TRUE(library->game(u"g0"_s)->isInstalled);

    // The leave holds for one run.
    await(manager.execute(Type::uninstall, {u"g0"_s}, BatchOperationsManager::OnlyCopies::remove));
    EXPECT_EQ(statuses(), QList<Status>{Status::completed});
    EXPECT_FALSE(QFile::exists(path(u"eXo/eXoDOS/Game0"_s)));
    await(manager.execute(Type::uninstall, {u"g1"_s}));
    EXPECT_EQ(statuses(), QList<Status>{Status::skipped});
}

TEST_F(BatchOperations, ExportUnderANameThatStaysInTheFolder) {
    const QString folder = host.home() + u"/Exports"_s;
    const struct {
        QString title;
        QString name; ///< null when only its length is known
    } rows[] = {
        {u"AC/DC Rock"_s, u"AC-DC Rock.json"_s},
        {u".."_s, u"...json"_s},
        {u"../../up"_s, u"..-..-up.json"_s},
        {u"back\\slash"_s, u"back-slash.json"_s},
        {u"a\nb\0c"_s, u"a b c.json"_s},
        {QString(), u".json"_s},
        {QString(300, u'x'), {}},
        {QString(299, u'x') + u'y', {}},
        {u"🎮"_s.repeated(100), {}},
    };
    QSet<QString> names;
    for (const auto &row : rows) {
        const QString name = BatchFiles::exportName(row.title);
        if (!row.name.isNull()) {
            EXPECT_EQ(name, row.name);
        }
        EXPECT_EQ(BatchFiles::exportGame(*changed([&](Game &game) { game.title = row.title; }), folder), QString());
        EXPECT_TRUE(QFile::exists(folder + u'/' + name)) << name.toStdString();
        EXPECT_TRUE(name.isValidUtf16());
        names.insert(name);
    }
    EXPECT_EQ(names.size(), qsizetype(std::size(rows)));
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden).size(), names.size());

    // A folder that cannot be made fails the game and not the run.
    host.put(host.home().mid(host.root().size()) + u"/Documents/Ludarium"_s, "a file");
    EXPECT_EQ(run(Type::exportMetadata, library->game(u"g0"_s)).status, Status::failed);
}

TEST_F(BatchOperations, RunOverTheSelectionUntilItIsClearedByTheUser) {
    markInstalled(u"g1"_s);
    markInstalled(u"g3"_s);
    manager.selectInstalled();
    EXPECT_EQ(manager.selectedGameIds(), (QSet<QString>{u"g1"_s, u"g3"_s}));
    manager.selectNotInstalled();
    EXPECT_EQ(manager.selectedGameIds(), (QSet<QString>{u"g0"_s, u"g2"_s}));
    manager.selectAll({library->game(u"g0"_s), library->game(u"g3"_s)});
    manager.toggleSelection(u"g2"_s);
    manager.toggleSelection(u"g3"_s);
    EXPECT_EQ(manager.selectedGameIds(), (QSet<QString>{u"g0"_s, u"g2"_s}));

    QList<double> progress;
    QObject::connect(&manager, &BatchOperationsManager::currentOperationChanged, &manager, [&] {
        if (progress.isEmpty() || progress.last() != manager.currentOperation()->progress)
            progress.append(manager.currentOperation()->progress);
    });
    const auto before = host.clock.elapsed;
    await(manager.execute(Type::addToFavorites));
    EXPECT_EQ(host.clock.elapsed - before, std::chrono::milliseconds(100)) << "one pause lies between two games";
    EXPECT_EQ(progress, (QList<double>{0, 0.5, 1}));
    EXPECT_EQ(manager.currentOperation()->gameIds, (QStringList{u"g0"_s, u"g2"_s}));
    EXPECT_EQ(manager.selectedGameIds(), (QSet<QString>{u"g0"_s, u"g2"_s}));

    // "g0" is skipped now, which counts as neither; an id that no game has is passed over.
    await(manager.execute(Type::addToFavorites, {u"g3"_s, u"nobody"_s, u"g0"_s, u"g3"_s}));
    const BatchOperation &operation = *manager.currentOperation();
    EXPECT_EQ(statuses(), (QList<Status>{Status::completed, Status::skipped}));
    EXPECT_EQ(operation.successCount(), 1);
    EXPECT_EQ(operation.failureCount(), 0);
    EXPECT_TRUE(operation.isComplete && operation.endTime.isValid() && !manager.isRunning());
    EXPECT_TRUE(host.log().contains(u"Batch operation completed: 1 success, 0 failed"_s));
}

TEST_F(BatchOperations, KeepTheLastTenRunsNewestFirst) {
    for (int i = 0; i < 11; ++i)
        await(manager.execute(i == 0 ? Type::verifyFiles : Type::addToPlaylist, {i == 10 ? u"g1"_s : u"g0"_s}));
    ASSERT_EQ(manager.operationHistory().size(), 10);
    EXPECT_EQ(manager.operationHistory().first().gameIds, QStringList{u"g1"_s});
    EXPECT_EQ(manager.operationHistory().last().type, Type::addToPlaylist);
    manager.selectAll({});
    await(manager.execute(Type::addToPlaylist));
    EXPECT_TRUE(manager.operationHistory().first().results.isEmpty());
    EXPECT_TRUE(manager.operationHistory().first().isComplete);
}

TEST_F(BatchOperations, LetTheGameUnderWayEndWhenTheyAreCancelled) {
    QPromise<void> gate;
    gate.start();
    QFuture<void> opened = gate.future();
    QStringList begun;
    const BatchOperationsManager::Installer install = [&](GamePtr game, QString) -> QCoro::Task<> {
        begun.append(game->id);
        if (begun.size() == 2)
            co_await opened;
    };
    manager.setInstaller(install);
    QCoro::Task<> run = manager.execute(Type::install, {u"g0"_s, u"g1"_s, u"g2"_s, u"g3"_s});
    while (begun.size() < 2)
        QCoreApplication::processEvents();
    EXPECT_TRUE(manager.isRunning());
    await(manager.execute(Type::addToFavorites, {u"g0"_s}));
    EXPECT_EQ(manager.currentOperation()->type, Type::install) << "a second run is refused";

    manager.cancelOperation();
    EXPECT_FALSE(manager.isRunning());
    EXPECT_TRUE(manager.currentOperation()->isComplete && manager.currentOperation()->endTime.isValid());
    EXPECT_EQ(statuses(), (QList<Status>{Status::completed, Status::inProgress, Status::pending, Status::pending}));

    // The next run waits for the game that is still being installed.
    QCoro::Task<> next = manager.execute(Type::addToFavorites, {u"g3"_s});
    EXPECT_EQ(manager.currentOperation()->type, Type::install);
    gate.finish();
    await(std::move(run));
    await(std::move(next));
    EXPECT_EQ(begun, (QStringList{u"g0"_s, u"g1"_s}));
    ASSERT_EQ(manager.operationHistory().size(), 2);
    QList<Status> cancelled;
    for (const BatchOperationResult &result : manager.operationHistory().last().results)
        cancelled.append(result.status);
    EXPECT_EQ(cancelled, (QList<Status>{Status::completed, Status::completed, Status::pending, Status::pending}));
    EXPECT_TRUE(library->game(u"g1"_s)->isInstalled);
    EXPECT_TRUE(library->game(u"g3"_s)->isFavorite);
}

} // namespace

TEST_F(BatchOperations, KeepTheStatusesOfAllTheirGamesInOneSave) {
    QThreadPool::globalInstance()->waitForDone();
    const QString file = CacheFiles(host.host().paths).installedIds();
    manager.setInstaller([](GamePtr, QString) -> QCoro::Task<> { co_return; });
    bool savedEarly = false;
    QObject::connect(&manager, &BatchOperationsManager::currentOperationChanged, &manager, [&] {
        QThreadPool::globalInstance()->waitForDone();
        if (!manager.currentOperation()->isComplete)
            savedEarly = savedEarly || SeenStatuses::loadIds(file) != QSet<QString>();
    });
    await(manager.execute(Type::install, {u"g0"_s, u"g1"_s, u"g2"_s}));
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_FALSE(savedEarly);
    EXPECT_EQ(SeenStatuses::loadIds(file), (QSet<QString>{u"g0"_s, u"g1"_s, u"g2"_s}));
}

} // namespace ludarium::test

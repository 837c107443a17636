#include "Services/Launch/GameLauncher.h"

#include "Host/Settings.h"
#include "Models/LaunchError.h"
#include "Services/Emulators/EmulatorManager.h"
#include "Services/Launch/LaunchClaim.h"
#include "support/TestHost.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

using namespace ludarium;
using namespace ludarium::test;
using namespace Qt::StringLiterals;
using testing::HasSubstr;

namespace {

Game doom() {
    Game game;
    game.id = u"doom-1"_s;
    game.title = u"Doom"_s;
    game.platform = u"MS-DOS"_s;
    game.configurationPath = u"eXo\\eXoDOS\\!dos\\doom\\doom.bat"_s;
    return game;
}

GamePtr shared(const Game &game) {
    return std::make_shared<const Game>(game);
}

/// A launcher over a fake collection that holds one installed DOS game, and a fake DOSBox that notes its start.
class Launching : public testing::Test {
  protected:
    Launching() : emulators(host), launcher(host, emulators), collection(host.scratch() + u"/collection"_s) {
        write(u"eXo/eXoDOS/!dos/doom/dosbox.conf"_s, "[autoexec]\n");
        write(u"eXo/eXoDOS/doom/dosbox.conf"_s, "[autoexec]\necho hello\n");
        write(u"eXo/eXoDOS/doom/DOOM.EXE"_s, "MZ");
        launcher.setCollectionURL(collection);
    }

    void write(const QString &path, const QByteArray &content = {}) {
        const QString file = collection + u'/' + path;
        ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
    }
    void putDOSBox() { dosbox = host.putProgram(u"/usr/bin/dosbox-staging"_s, "exit 0"); }
    void launch(const Game &game, LaunchMode mode = LaunchMode::play) { await(launcher.launch(shared(game), mode)); }
    std::string log() { return host.log().toStdString(); }
    std::string error() { return launcher.launchError().toStdString(); }

    TestHost host;
    EmulatorManager emulators;
    GameLauncher launcher;
    QString collection;
    QString dosbox;
};

/// Notes the calls of a runner.
struct Calls {
    QStringList calls;
    GameLauncher::Runner runner(const QString &name, std::optional<ProcessId> process = {}) {
        return [this, name, process](GamePtr game, LaunchMode mode, QString) -> QCoro::Task<std::optional<ProcessId>> {
            calls.append(u"%1 %2 %3"_s.arg(name, game->title, mode == LaunchMode::play ? u"play"_s : u"other"_s));
            co_return process;
        };
    }
};

constexpr LaunchRoute outsideRoutes[] = {
    LaunchRoute::document,  LaunchRoute::scummVM,   LaunchRoute::dreamm, LaunchRoute::windows3x,
    LaunchRoute::windows9x, LaunchRoute::appleIIGS, LaunchRoute::arcade, LaunchRoute::retroArch,
};

Game gameOf(LaunchRoute route) {
    Game game = doom();
    switch (route) {
    case LaunchRoute::document:
        game.platform = u"Magazines"_s;
        break;
    case LaunchRoute::scummVM:
        game.platform = u"ScummVM"_s;
        break;
    case LaunchRoute::dreamm:
        game.platform = u"DREAMM"_s;
        break;
    case LaunchRoute::windows3x:
        game.platform = u"Windows 3x"_s;
        break;
    case LaunchRoute::windows9x:
        game.platform = u"Windows 9x"_s;
        break;
    case LaunchRoute::appleIIGS:
        game.platform = u"Apple IIGS"_s;
        break;
    case LaunchRoute::arcade:
        game.platform = u"Arcade"_s;
        break;
    case LaunchRoute::retroArch:
        game.platform = u"Nintendo 64"_s;
        break;
    default:
        break;
    }
    return game;
}

} // namespace

TEST_F(Launching, ThrowsWithoutACollectionAndLeavesItsStateAlone) {
    launch(gameOf(LaunchRoute::scummVM));
    const QString before = launcher.launchError();
    ASSERT_FALSE(before.isEmpty());
    int changes = 0;
    QObject::connect(&launcher, &GameLauncher::launchStateChanged, &launcher, [&] { ++changes; });
    launcher.setCollectionURL({});
    try {
        launch(doom());
        ADD_FAILURE() << "did not throw";
    } catch (const LaunchError &thrown) {
        EXPECT_EQ(thrown.kind(), LaunchError::Case::noCollectionPath);
    }
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(launcher.launchError(), before);
    EXPECT_THAT(log(), HasSubstr("Launch failed: No collection path set"));
}

TEST_F(Launching, LogsALaunchFromStartToEndWithItsDuration) {
    Game game = gameOf(LaunchRoute::scummVM);
    game.isInstalled = true;
    launcher.setRunner(LaunchRoute::scummVM,
                       [this](GamePtr, LaunchMode, QString) -> QCoro::Task<std::optional<ProcessId>> {
                           host.clock.advance(std::chrono::milliseconds(1234));
                           co_return std::nullopt;
                       });
    GameVersionOption version;
    version.label = u"CD talkie"_s;
    await(launcher.launch(shared(game), LaunchMode::play, version));
    const QString lines = host.log();
    qsizetype at = 0;
    for (const QString &line :
         {u"=== LAUNCH START ==="_s, u"Game: Doom"_s, u"Platform: ScummVM"_s, u"Mode: play"_s, u"Installed: true"_s,
          u"Collection: "_s + collection, u"Version: CD talkie"_s, u"=== LAUNCH END (took 1.23s) ==="_s}) {
        at = lines.indexOf(line, at);
        ASSERT_GE(at, 0) << qPrintable(line);
    }
}

TEST_F(Launching, HoldsItsStateWhileALaunchRuns) {
    Calls calls;
    launcher.setRunner(LaunchRoute::scummVM,
                       [this](GamePtr, LaunchMode, QString) -> QCoro::Task<std::optional<ProcessId>> {
                           EXPECT_TRUE(launcher.isLaunching());
                           EXPECT_EQ(launcher.currentGame()->title, u"Doom"_s);
                           EXPECT_TRUE(launcher.launchError().isEmpty());
                           throw std::runtime_error("disc on fire");
                           co_return std::nullopt;
                       });
    for (int i = 0; i < 2; ++i) {
        launch(gameOf(LaunchRoute::scummVM));
        EXPECT_FALSE(launcher.isLaunching());
        EXPECT_FALSE(launcher.currentGame());
        EXPECT_EQ(error(), "disc on fire");
    }
    EXPECT_THAT(log(), HasSubstr("Launch failed: disc on fire"));
    EXPECT_THAT(log(), HasSubstr("❌ Launch failed: disc on fire"));
    launcher.setRunner(LaunchRoute::scummVM, calls.runner(u"fine"_s));
    launch(gameOf(LaunchRoute::scummVM));
    EXPECT_EQ(error(), "");
}

TEST_F(Launching, GivesEachRouteToItsRunner) {
    for (LaunchRoute route : outsideRoutes) {
        launch(gameOf(route));
        EXPECT_EQ(error(), "Failed to launch: " + launchRouteGames(route).toStdString() +
                               " cannot be started by this version yet");
        Calls calls;
        launcher.setRunner(route, calls.runner(launchRouteName(route)));
        launch(gameOf(route));
        EXPECT_EQ(error(), "");
        EXPECT_EQ(calls.calls, QStringList{launchRouteName(route) + u" Doom play"_s});
    }
    EXPECT_THAT(log(), HasSubstr("🎮 Detected ROM game: Doom (Nintendo 64)"));
    EXPECT_THAT(log(), HasSubstr("🎮 Detected ROM game: Doom (Arcade)"));
}

TEST_F(Launching, TellsTheSessionTrackerOnlyAfterAPlayThatWentWell) {
    QList<std::optional<ProcessId>> started;
    launcher.onStarted = [&](GamePtr, std::optional<ProcessId> process) { started.append(process); };
    Calls calls;
    const ProcessId process{77, 5};
    launch(gameOf(LaunchRoute::arcade));
    EXPECT_TRUE(started.isEmpty());
    launcher.setRunner(LaunchRoute::arcade, calls.runner(u"arcade"_s, process));
    launch(gameOf(LaunchRoute::arcade));
    EXPECT_EQ(started, QList<std::optional<ProcessId>>{process});
    EXPECT_EQ(launcher.lastProcess(), process);
    launcher.setRunner(LaunchRoute::scummVM, calls.runner(u"setup"_s, process));
    launcher.setFlow(LaunchMode::install, calls.runner(u"install"_s, process));
    launch(gameOf(LaunchRoute::scummVM), LaunchMode::setup);
    launch(doom(), LaunchMode::install);
    EXPECT_EQ(started.size(), 1);
    EXPECT_EQ(calls.calls.size(), 3);
}

TEST_F(Launching, StartsNoGameThatRunsOrIsBeingStarted) {
    Calls calls;
    launcher.setRunner(LaunchRoute::scummVM, calls.runner(u"scummvm"_s));
    bool runs = true;
    launcher.runningTest = [&](const QString &) { return runs; };
    for (const LaunchMode mode : {LaunchMode::play, LaunchMode::setup}) {
        launch(gameOf(LaunchRoute::scummVM), mode);
        EXPECT_EQ(error(), "Doom is running already.");
    }
    runs = false;
    {
        const LaunchClaim claim(host.host().paths.state(), gameOf(LaunchRoute::scummVM).id);
        launch(gameOf(LaunchRoute::scummVM));
        EXPECT_EQ(error(), "Doom is being started already.");
    }
    EXPECT_TRUE(calls.calls.isEmpty());
    launch(gameOf(LaunchRoute::scummVM));
    EXPECT_EQ(calls.calls.size(), 1);
}

TEST_F(Launching, SaysWhichModesItCannotDoYet) {
    launch(doom(), LaunchMode::setup);
    EXPECT_EQ(error(), "Failed to launch: DOS games cannot be set up by this version yet");
    launch(gameOf(LaunchRoute::windows9x), LaunchMode::setup);
    EXPECT_EQ(error(), "Failed to launch: Windows 9x games cannot be set up by this version yet");
    launch(doom(), LaunchMode::install);
    EXPECT_EQ(error(), "Failed to launch: Games cannot be installed by this version yet");
    launch(doom(), LaunchMode::download);
    EXPECT_EQ(error(), "Failed to launch: Games cannot be downloaded by this version yet");
    Game bare = doom();
    bare.configurationPath = QString();
    launch(bare, LaunchMode::setup);
    EXPECT_EQ(error(), "");
}

TEST_F(Launching, AsksForDOSBoxAndFailsWhenTheUserDeclines) {
    launch(doom());
    EXPECT_EQ(error(), "DOSBox not found. Please install DOSBox to run this game.");
    ASSERT_EQ(host.dialogs.asked.size(), 1);
    EXPECT_EQ(host.dialogs.asked.first().title, u"DOSBox Not Found"_s);
    EXPECT_THAT(log(), HasSubstr("⚠️ DOSBox not found - prompting user to install"));
}

TEST_F(Launching, GoesOnWhenDOSBoxWasInstalledFromTheQuestion) {
    emulators.installer = [this](EmulatorProgram) -> QCoro::Task<> {
        putDOSBox();
        co_return;
    };
    host.dialogs.answers = QStringList{u"Install Automatically"_s, u"OK"_s};
    launch(doom());
    EXPECT_EQ(error(), "");
    EXPECT_TRUE(launcher.lastProcess());
}

TEST_F(Launching, SaysWhatAGameLacks) {
    putDOSBox();
    Game game = doom();
    game.configurationPath = u"eXo\\eXoDOS\\!dos\\gone\\gone.bat"_s;
    launch(game);
    EXPECT_EQ(error(), "File not found: " + collection.toStdString() + "/eXo/eXoDOS/!dos/gone");

    write(u"eXo/eXoDOS/!dos/zipped/dosbox.conf"_s);
    game.configurationPath = u"eXo\\eXoDOS\\!dos\\zipped\\zipped.bat"_s;
    launch(game);
    EXPECT_EQ(error(), "File not found: Game is not installed. Please install it first.");
    EXPECT_THAT(log(), HasSubstr("⚠️ Game not installed - data folder not found: " + collection.toStdString() +
                                 "/eXo/eXoDOS/zipped"));
}

TEST_F(Launching, TreatsAnUnusableFolderNameAsNoLaunchPath) {
    putDOSBox();
    // Each of these leads to an existing folder.
    write(u"eXo/eXoDOS/!dos/x.bat"_s);
    ASSERT_TRUE(QDir().mkpath(host.scratch() + u"/outside/doom"_s));
    for (const QString &path :
         {QString(), u""_s, u"doom.bat"_s, u"eXo\\eXoDOS\\!dos"_s, u"eXo\\eXoDOS\\!dos\\..\\x.bat"_s,
          u"eXo\\eXoDOS\\!dos\\!dos\\x.bat"_s, u"..\\outside\\doom\\x.bat"_s, u"eXo/../../outside/doom/x.bat"_s}) {
        Game game = doom();
        game.configurationPath = path;
        launch(game);
        EXPECT_EQ(error(), "This game does not have a configured launch path.") << qPrintable(path);
    }
}

namespace {

struct TypeCase {
    std::optional<EmulatorType> record;
    std::optional<EmulatorType> collection;
    std::optional<EmulatorOverride> exception;
    QString expected; ///< "staging" (plain), "x" or "windows"
};

class EmulatorTypes : public Launching, public testing::WithParamInterface<TypeCase> {};

} // namespace

TEST_P(EmulatorTypes, AreTakenFromTheRecordTheCollectionAndTheExceptions) {
    const TypeCase &type = GetParam();
    putDOSBox();
    host.putProgram(u"/usr/bin/dosbox-x"_s, "exit 0");
    QString taken = u"staging"_s;
    DosRouteCollaborators others;
    others.requirement = [&](const QString &) -> std::optional<EmulatorRequirement> {
        return type.collection ? std::optional(EmulatorRequirement{*type.collection, u"b"_s, u"b/dosbox.exe"_s})
                               : std::nullopt;
    };
    others.exceptions = [&](const QString &) { return ExceptionFindings{type.exception ? 2 : 0, type.exception}; };
    others.launchWithDOSBoxX = [&](GamePtr, QString, EmulatorType) -> QCoro::Task<std::optional<ProcessId>> {
        taken = u"x"_s;
        co_return std::nullopt;
    };
    others.promptWineECENotAvailable = [&](GamePtr, bool) -> QCoro::Task<ECELaunchChoice> {
        taken = u"windows"_s;
        co_return ECELaunchChoice::cancelled;
    };
    launcher.setDosRouteCollaborators(others);
    Game game = doom();
    game.requiredEmulatorType = type.record;
    launch(game);
    EXPECT_EQ(error(), "");
    EXPECT_EQ(taken.toStdString(), type.expected.toStdString());
    EXPECT_EQ(launcher.lastProcess().has_value(), type.expected == u"staging"_s);
    if (type.exception) {
        EXPECT_THAT(log(), HasSubstr("📋 Found 2 exception(s) for Doom"));
    }
    if (type.exception == EmulatorOverride::scummvm) {
        EXPECT_THAT(log(), HasSubstr("📋 Exception recommends ScummVM - but game not marked as ScummVM in XML"));
    }
}

INSTANTIATE_TEST_SUITE_P(Sources, EmulatorTypes,
                         testing::Values(TypeCase{{}, {}, {}, u"staging"_s},
                                         TypeCase{EmulatorType::vanilla, {}, {}, u"staging"_s},
                                         TypeCase{EmulatorType::staging, EmulatorType::ece, {}, u"staging"_s},
                                         TypeCase{EmulatorType::dosboxX, {}, {}, u"x"_s},
                                         TypeCase{{}, EmulatorType::dosboxX, {}, u"x"_s},
                                         TypeCase{{}, EmulatorType::vanilla, {}, u"staging"_s},
                                         TypeCase{{}, EmulatorType::custom, {}, u"windows"_s},
                                         TypeCase{EmulatorType::ece, {}, {}, u"windows"_s},
                                         TypeCase{EmulatorType::ece, {}, EmulatorOverride::staging, u"staging"_s},
                                         TypeCase{{}, {}, EmulatorOverride::dosboxX, u"x"_s},
                                         TypeCase{{}, {}, EmulatorOverride::ece, u"windows"_s},
                                         TypeCase{{}, {}, EmulatorOverride::scummvm, u"staging"_s},
                                         TypeCase{EmulatorType::dosboxX, {}, EmulatorOverride::scummvm, u"x"_s}));

TEST_F(Launching, AsksForDOSBoxXOnlyWhenAGameNeedsIt) {
    Game game = doom();
    game.requiredEmulatorType = EmulatorType::dosboxX;
    launch(game);
    EXPECT_EQ(error(), "DOSBox-X not found. Please install DOSBox-X to run this game.");
    EXPECT_EQ(host.dialogs.asked.first().title, u"DOSBox-X Not Found"_s);
    host.putProgram(u"/usr/bin/dosbox-x"_s, "exit 0");
    launch(game);
    EXPECT_EQ(error(), "Failed to launch: Games that need DOSBox-X cannot be started by this version yet");
    EXPECT_EQ(host.dialogs.asked.size(), 1);
}

TEST_F(Launching, OffersAWindowsBuildOnlyWhenWineAndTheBuildAreThere) {
    putDOSBox();
    int plays = 0;
    launcher.onStarted = [&](GamePtr, std::optional<ProcessId>) { ++plays; };
    Game game = doom();
    game.requiredEmulatorType = EmulatorType::ece;
    launch(game);
    EXPECT_EQ(error(), "");
    EXPECT_THAT(log(), HasSubstr("🎮 Using DOSBox Staging for ECE game"));
    EXPECT_TRUE(launcher.lastProcess());

    QStringList asked;
    ECELaunchChoice answer = ECELaunchChoice::wineECE;
    QString build = u"ECE4481/dosbox.exe"_s;
    DosRouteCollaborators others;
    others.requirement = [&](const QString &) { return EmulatorRequirement{EmulatorType::ece, u"ECE4481"_s, build}; };
    others.promptECELaunchChoice = [&](GamePtr, EmulatorType) -> QCoro::Task<ECELaunchChoice> {
        asked.append(u"choice"_s);
        co_return answer;
    };
    others.promptWineECENotAvailable = [&](GamePtr, bool hasWine) -> QCoro::Task<ECELaunchChoice> {
        asked.append(hasWine ? u"no build"_s : u"no wine"_s);
        co_return ECELaunchChoice::cancelled;
    };
    launcher.setDosRouteCollaborators(others);
    launch(game);
    host.putProgram(u"/usr/bin/wine"_s, "exit 0");
    launch(game);
    // A build outside its folder is none.
    write(u"eXo/dosbox.exe"_s);
    write(u"eXo/emulators/dosbox/readme.txt"_s);
    build = u"../../dosbox.exe"_s;
    launch(game);
    EXPECT_EQ(error(), "");
    EXPECT_FALSE(launcher.lastProcess());
    EXPECT_EQ(plays, 1) << "a cancelled launch is no play";
    build = u"ECE4481/dosbox.exe"_s;
    write(u"eXo/emulators/dosbox/ECE4481/dosbox.exe"_s);
    launch(game);
    EXPECT_EQ(error(), "Failed to launch: Games cannot be started with Wine by this version yet");
    others.launchWithWine = [&](GamePtr, QString, EmulatorType type) -> QCoro::Task<std::optional<ProcessId>> {
        asked.append(type == EmulatorType::ece ? u"wine ece"_s : u"wine other"_s);
        co_return std::nullopt;
    };
    launcher.setDosRouteCollaborators(others);
    launch(game);
    EXPECT_EQ(error(), "");
    answer = ECELaunchChoice::staging;
    launch(game);
    EXPECT_TRUE(launcher.lastProcess());
    EXPECT_EQ(asked, QStringList({u"no wine"_s, u"no build"_s, u"no build"_s, u"choice"_s, u"choice"_s, u"wine ece"_s,
                                  u"choice"_s}));
}

TEST_F(Launching, ChecksMT32ForTheGamesThatHaveItBeforeLookingForTheirFolder) {
    putDOSBox();
    QStringList checked;
    DosRouteCollaborators others;
    others.checkMT32Support = [&](GamePtr game) -> QCoro::Task<> {
        checked.append(game->title);
        co_return;
    };
    launcher.setDosRouteCollaborators(others);
    launch(doom());
    Game monkey = doom();
    monkey.title = u"Monkey"_s;
    monkey.configurationPath = u"eXo\\eXoDOS\\!dos\\Monkey1\\m.bat"_s;
    launch(monkey);
    monkey.configurationPath = u"eXo\\eXoDOS\\!dos\\monkey1\\m.bat"_s;
    launch(monkey);
    EXPECT_EQ(checked, QStringList{u"Monkey"_s});
}

TEST_F(Launching, PlaysSoundtracksThroughATemporaryApplication) {
    QList<AdditionalApplication> played;
    MediaCollaborators media;
    media.playSoundtrack = [&](GamePtr, AdditionalApplication application) -> QCoro::Task<> {
        played.append(application);
        co_return;
    };
    Game game = doom();
    game.title = u"Doom Soundtrack"_s;
    game.configurationPath.clear();
    launch(game);
    EXPECT_EQ(error(), "Failed to launch: Soundtracks cannot be played by this version yet");
    EXPECT_THAT(log(), HasSubstr("(title keywords)"));
    launcher.setMediaCollaborators(media);
    game.applicationPath = u"eXo\\Foobar2000\\a.bat"_s;
    launch(game);
    launch(game);
    EXPECT_EQ(error(), "");
    EXPECT_THAT(log(), HasSubstr("(foobar2000)"));
    ASSERT_EQ(played.size(), 2);
    EXPECT_EQ(played.first().name, u"Soundtrack"_s);
    EXPECT_NE(played.first().id, played.last().id);
}

TEST_F(Launching, OpensAVideosScriptOrElseItsFolder) {
    QStringList opened;
    MediaCollaborators media;
    media.executeBashScript = [&](QString script) -> QCoro::Task<> {
        opened.append(script);
        co_return;
    };
    media.playVideoContentDirectly = [&](QString folder, QStringList contents) -> QCoro::Task<> {
        opened.append(folder + u" "_s + contents.join(u','));
        co_return;
    };
    Game game = doom();
    game.title = u"Making Video"_s;
    game.configurationPath.clear();
    launch(game);
    EXPECT_EQ(error(), "File not found: Cannot access video folder: " + collection.toStdString() + "/eXo/Videos");
    write(u"eXo/Videos/Making Video/a.mp4"_s);
    launch(game);
    EXPECT_EQ(error(), "Failed to launch: Videos cannot be played by this version yet");
    launcher.setMediaCollaborators(media);
    launch(game);
    write(u"eXo/Videos/Making Video/play.command"_s);
    launch(game);
    const QString folder = collection + u"/eXo/Videos/Making Video"_s;
    EXPECT_EQ(opened, QStringList({folder + u" a.mp4"_s, folder + u"/play.command"_s}));
}

TEST_F(Launching, RemembersWhetherTheCollectionIsLiteUntilItIsSetAgain) {
    int asked = 0;
    launcher.liteCollectionTest = [&](const QString &) { return ++asked == 1; };
    EXPECT_TRUE(launcher.isLiteCollection());
    EXPECT_TRUE(launcher.isLiteCollection());
    EXPECT_EQ(asked, 1);
    launcher.setCollectionURL(collection);
    EXPECT_FALSE(launcher.isLiteCollection());
    EXPECT_EQ(asked, 2);
    launcher.setCollectionURL({});
    EXPECT_FALSE(launcher.isLiteCollection());
    EXPECT_EQ(asked, 2);
}

TEST_F(Launching, PreparesACollectionWhenItIsSetAndSurvivesAFailure) {
    QStringList prepared;
    launcher.collectionPreparation = [&](QString folder) -> QCoro::Task<> {
        prepared.append(folder);
        throw std::runtime_error("no room");
        co_return;
    };
    launcher.setCollectionURL(collection);
    launcher.setCollectionURL({});
    EXPECT_EQ(prepared, QStringList{collection});
    EXPECT_THAT(log(), HasSubstr("no room"));
}

TEST_F(Launching, ShowsTheScriptFolder) {
    launcher.openGameFolder(doom());
    EXPECT_EQ(host.workspace.actions, QStringList{u"reveal "_s + collection + u"/eXo/eXoDOS/!dos/doom"_s});
    const auto kindOf = [&](const QString &path) -> std::optional<LaunchError::Case> {
        Game game = doom();
        game.configurationPath = path;
        try {
            launcher.openGameFolder(game);
        } catch (const LaunchError &error) {
            return error.kind();
        }
        return std::nullopt;
    };
    EXPECT_EQ(kindOf({}), LaunchError::Case::noApplicationPath);
    EXPECT_EQ(kindOf(u"../x/y.bat"_s), LaunchError::Case::noApplicationPath);
    EXPECT_EQ(kindOf(u"eXo\\eXoDOS\\!dos\\gone\\x.bat"_s), LaunchError::Case::fileNotFound);
    host.workspace.answer = false;
    EXPECT_EQ(kindOf(doom().configurationPath), LaunchError::Case::launchFailed);
    launcher.setCollectionURL({});
    EXPECT_EQ(kindOf(doom().configurationPath), LaunchError::Case::noCollectionPath);
}

TEST_F(Launching, KnowsWhichGamesHaveASetup) {
    EXPECT_FALSE(launcher.hasSetupScript(doom()));
    for (const QString &name : {u"install.command"_s, u"install.bsh"_s}) {
        write(u"eXo/eXoDOS/!dos/doom/"_s + name);
        EXPECT_TRUE(launcher.hasSetupScript(doom()));
        ASSERT_TRUE(QFile::remove(collection + u"/eXo/eXoDOS/!dos/doom/"_s + name));
    }
    for (LaunchRoute route : {LaunchRoute::scummVM, LaunchRoute::dreamm, LaunchRoute::windows3x, LaunchRoute::windows9x,
                              LaunchRoute::appleIIGS}) {
        Game game = gameOf(route);
        EXPECT_TRUE(launcher.hasSetupScript(game));
        game.configurationPath = QString();
        EXPECT_FALSE(launcher.hasSetupScript(game));
    }
    launcher.setCollectionURL({});
    EXPECT_FALSE(launcher.hasSetupScript(gameOf(LaunchRoute::scummVM)));
}

TEST_F(Launching, PlansADosGameWithItsReasonsAndAsksNothing) {
    EXPECT_THROW(await(launcher.plan(shared(doom()))), LaunchError);
    putDOSBox();
    EXPECT_THROW(await(launcher.plan(shared(gameOf(LaunchRoute::arcade)))), LaunchError);
    Game game = doom();
    game.requiredEmulatorType = EmulatorType::ece;
    const LaunchPlan plan = await(launcher.plan(shared(game)));
    EXPECT_EQ(plan.route, u"dos"_s);
    ASSERT_GE(plan.decisions.size(), 4);
    EXPECT_EQ(plan.decisions.at(0).choice, u"dos"_s);
    EXPECT_EQ(plan.decisions.at(1).choice, u"ece"_s);
    EXPECT_EQ(plan.decisions.at(1).reason, u"required by the game's record"_s);
    EXPECT_EQ(plan.decisions.at(2).choice, u"staging"_s);
    EXPECT_EQ(plan.decisions.at(3).choice, dosbox);
    EXPECT_TRUE(host.dialogs.asked.isEmpty());
    EXPECT_FALSE(launcher.lastProcess());
}

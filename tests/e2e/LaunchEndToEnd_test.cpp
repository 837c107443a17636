#include "Services/Launch/GameLauncher.h"

#include "Host/Settings.h"
#include "Services/Dos/DosCollection.h"
#include "Services/Emulators/EmulatorManager.h"
#include "support/TestHost.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QThread>
#include <csignal>
#include <gmock/gmock.h>

// A game of a small collection on its way from the launcher to the machine's own DOSBox. The game is a program of a
// few bytes that leaves a file behind.
namespace ludarium::test {
namespace {

using namespace Qt::StringLiterals;

// Writes "RAN" to C:\RAN.TXT.
constexpr char ranProgram[] = "\xb4\x3c"     // mov ah,3ch        create the file
                              "\x31\xc9"     // xor cx,cx
                              "\xba\x19\x01" // mov dx,name
                              "\xcd\x21"     // int 21h
                              "\x93"         // xchg ax,bx
                              "\xb4\x40"     // mov ah,40h        write
                              "\xb9\x03\x00" // mov cx,3
                              "\xba\x24\x01" // mov dx,text
                              "\xcd\x21"     // int 21h
                              "\xb8\x00\x4c" // mov ax,4c00h      end
                              "\xcd\x21"     // int 21h
                              "C:\\RAN.TXT\0"
                              "RAN";

class LaunchEndToEnd : public testing::Test {
  protected:
    void SetUp() override {
        const QString dosbox = u"/usr/bin/dosbox"_s;
        if (!QFile::exists(dosbox))
            GTEST_SKIP() << "needs DOSBox at " << qPrintable(dosbox);
        host.settings.setValue(Settings::dosboxPath, dosbox);
        launcher.setCollectionURL(collection.root());
        collection.put(u"game.com"_s, QByteArray(ranProgram, sizeof ranProgram - 1));
        collection.put(collection.script() + u"/game.bat"_s);
    }

    static GamePtr game() {
        auto game = std::make_shared<Game>();
        game->id = u"game"_s;
        game->title = u"A Game"_s;
        game->platform = u"MS-DOS"_s;
        game->configurationPath = u"eXo\\eXoDOS\\!dos\\GAME\\game.bat"_s;
        return game;
    }

    void play(GamePtr played = game()) {
        await(launcher.launch(std::move(played)));
        const std::optional<ProcessId> process = launcher.lastProcess();
        if (!process)
            return;
        QElapsedTimer timer;
        timer.start();
        while (host.host().processes.isRunning(*process) && timer.elapsed() < 40'000)
            QThread::msleep(10);
        if (host.host().processes.isRunning(*process)) {
            ::kill(pid_t(process->pid), SIGKILL);
            ADD_FAILURE() << "DOSBox did not end";
        }
    }

    /// What the game left, wherever its drive C: was in the collection; empty when it did not run.
    QByteArray traces() const {
        QDirIterator files(collection.root(), {u"RAN.TXT"_s}, QDir::Files, QDirIterator::Subdirectories);
        return files.hasNext() ? DosCollection::read(files.next()) : QByteArray();
    }

    TestHost host;
    EmulatorManager emulators{host};
    GameLauncher launcher{host, emulators};
    DosCollection collection;
};

} // namespace

TEST_F(LaunchEndToEnd, RunsAGameAndHandsItsProcessToTheTracker) {
    collection.put(u"dosbox.conf"_s, "[autoexec]\nmount c .\nc:\nexit\n");
    QList<std::optional<ProcessId>> started;
    launcher.onStarted = [&](GamePtr, std::optional<ProcessId> process) { started.append(process); };
    play();
    EXPECT_EQ(launcher.launchError(), QString());
    EXPECT_EQ(traces(), "RAN");
    ASSERT_TRUE(launcher.lastProcess());
    EXPECT_EQ(started, QList{launcher.lastProcess()});
    EXPECT_THAT(host.log().toStdString(), testing::HasSubstr("=== LAUNCH END (took "));
}

TEST_F(LaunchEndToEnd, RunsAGameThatComesWithoutAConfiguration) {
    play();
    EXPECT_EQ(launcher.launchError(), QString());
    EXPECT_EQ(traces(), "RAN");
}

TEST_F(LaunchEndToEnd, RunsAGameWhoseConfigurationIsAmongTheScripts) {
    collection.put(collection.script() + u"/dosbox.conf"_s,
                   "[autoexec]\ncd ..\nmount c .\\eXoDOS\\GAME\nc:\ngame.com\nexit\n");
    play();
    EXPECT_EQ(launcher.launchError(), QString());
    EXPECT_EQ(traces(), "RAN");
}

TEST_F(LaunchEndToEnd, RunsAGameWhoseRecordSpellsItsFoldersOtherwise) {
    collection.put(collection.script() + u"/dosbox.conf"_s,
                   "[autoexec]\ncd ..\nmount c .\\eXoDOS\\game\nc:\ngame.com\nexit\n");
    Game other = *game();
    other.title = u"Video Poker with Soundtrack"_s;
    other.configurationPath = u"exo\\EXODOS\\!DOS\\game\\game.bat"_s;
    play(std::make_shared<const Game>(other));
    EXPECT_EQ(launcher.launchError(), QString());
    EXPECT_EQ(traces(), "RAN");
}

TEST_F(LaunchEndToEnd, PlansWithoutStartingAnything) {
    collection.put(u"dosbox.conf"_s, "[autoexec]\nmount c .\nc:\ngame.com\nexit\n");
    const LaunchPlan plan = await(launcher.plan(game()));
    EXPECT_EQ(plan.route, u"dos"_s);
    EXPECT_EQ(plan.program, u"/usr/bin/dosbox"_s);
    EXPECT_EQ(plan.decisions.first().subject, u"route"_s);
    ASSERT_FALSE(plan.files.isEmpty());
    for (const GeneratedFile &file : plan.files)
        EXPECT_FALSE(QFile::exists(file.path)) << qPrintable(file.path);
    EXPECT_EQ(traces(), QByteArray());
}

TEST_F(LaunchEndToEnd, SaysWhatIsMissingAndStartsNothing) {
    ASSERT_TRUE(QDir(collection.game()).removeRecursively());
    play();
    EXPECT_EQ(launcher.launchError(), u"File not found: Game is not installed. Please install it first."_s);
    const QTemporaryDir elsewhere;
    collection.put(elsewhere.path() + u"/game.com"_s);
    ASSERT_TRUE(QFile::link(elsewhere.path(), collection.game()));
    play();
    EXPECT_EQ(launcher.launchError(), u"File not found: Game is not installed. Please install it first."_s)
        << "a link out of the collection is no game's folder";
    ASSERT_TRUE(QDir(collection.script()).removeRecursively());
    play();
    EXPECT_EQ(launcher.launchError(), u"File not found: "_s + collection.script());
    host.settings.remove(Settings::dosboxPath);
    play();
    EXPECT_EQ(launcher.launchError(), u"DOSBox not found. Please install DOSBox to run this game."_s);
    EXPECT_FALSE(launcher.lastProcess());
}

} // namespace ludarium::test

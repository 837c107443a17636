#include "Services/Launch/GameLauncher.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/PlaySessionTracker.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"

#include <QSignalSpy>
#include <csignal>
#include <gtest/gtest.h>

// A game that runs: how the window shows it, what it refuses and how it ends it. The processes are real.

namespace ludarium::test {

namespace {

using namespace Qt::StringLiterals;

class RunningGame : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(fixture.load());
        game = fixture.state.gameLibrary().games().first();
        fixture.desktop.browse()->selectTitle(game->title);
    }
    void TearDown() override {
        for (const ProcessId &process : started)
            fixture.host.processes.askToEnd(process);
    }
    ProcessId start(const QString &script) {
        ProcessSpec spec;
        spec.program = u"/bin/sh"_s;
        spec.arguments = QStringList{u"-c"_s, script};
        started.append(await(fixture.host.processes.startEmulator(spec)));
        return started.last();
    }
    bool isRunning(const ProcessId &process) { return fixture.host.processes.isRunning(process); }
    QString shown(GameListModel::Role role) {
        GameListModel &games = *fixture.desktop.browse()->games();
        return games.data(games.index(fixture.desktop.browse()->currentRow()), role).toString();
    }

    DesktopFixture fixture{true}; // who watches a process waits between two looks
    GamePtr game;
    QList<ProcessId> started;
};

TEST_F(RunningGame, IsShownEverywhereUntilItEnds) {
    QSignalSpy rows(fixture.desktop.browse()->games(), &QAbstractItemModel::dataChanged);
    fixture.state.sessionTracker().startSession(game, start(u"exec sleep 60"_s));
    ASSERT_TRUE(waitUntil([&] { return fixture.desktop.running()->isSelectedRunning(); }));
    EXPECT_GE(rows.count(), 1) << "the cover on screen is not told";
    EXPECT_TRUE(shown(GameListModel::badgesRole).startsWith(u"play:Playing"_s));
    EXPECT_EQ(shown(GameListModel::statusRole), u"Playing"_s);
    EXPECT_TRUE(shown(GameListModel::spokenRole).endsWith(u"Playing"_s));
    EXPECT_TRUE(fixture.desktop.running()->text().contains(game->title));
    EXPECT_FALSE(fixture.desktop.running()->elapsed().isEmpty());
    EXPECT_EQ(fixture.desktop.detail()->actions()->primary(), u"running"_s);
    EXPECT_TRUE(fixture.desktop.browse()->offer(fixture.desktop.browse()->currentRow()).isEmpty());

    fixture.host.processes.askToEnd(started.first());
    ASSERT_TRUE(waitUntil([&] { return fixture.desktop.running()->text().isEmpty(); }));
    EXPECT_NE(shown(GameListModel::statusRole), u"Playing"_s);
    EXPECT_NE(fixture.desktop.detail()->actions()->primary(), u"running"_s);
}

TEST_F(RunningGame, IsStartedAgainByNoRoadAndEachSaysSo) {
    fixture.state.sessionTracker().startSession(game, start(u"exec sleep 60"_s));
    LaunchStatus &launch = *fixture.desktop.launch();
    QSignalSpy launches(&fixture.state.gameLauncher(), &GameLauncher::launchStateChanged);
    QSignalSpy told(&fixture.desktop, &Desktop::warned);
    const struct {
        const char *name;
        void (LaunchStatus::*road)();
    } roads[] = {{"return", &LaunchStatus::playSelected}, {"double click", &LaunchStatus::checkVersionsAndLaunch},
                 {"button", &LaunchStatus::act},          {"versions", &LaunchStatus::chooseVersion},
                 {"setup", &LaunchStatus::setUpSelected}, {"install", &LaunchStatus::installSelected}};
    for (const auto &[name, road] : roads) {
        told.clear();
        (launch.*road)();
        EXPECT_EQ(told.count(), 1) << name << " says nothing";
        EXPECT_TRUE(told.value(0).value(0).toString().contains(u"running already"_s)) << name;
    }
    EXPECT_EQ(launches.count(), 0);
    EXPECT_FALSE(launch.isLaunching());
}

TEST_F(RunningGame, IsStoppedAfterAQuestionAndAlone) {
    const ProcessId other = start(u"exec sleep 60"_s);
    const ProcessId played = start(u"exec sleep 60"_s);
    fixture.state.sessionTracker().startSession(game, played);
    RunningStatus &running = *fixture.desktop.running();
    ASSERT_TRUE(waitUntil([&] { return running.isSelectedRunning(); }));

    running.stopSelected();
    ASSERT_TRUE(fixture.dialogs.isActive());
    EXPECT_EQ(fixture.dialogs.buttons().value(fixture.dialogs.preferred()), u"Cancel"_s);
    EXPECT_EQ(fixture.dialogs.buttons().value(fixture.dialogs.destructive()), u"Stop"_s);
    fixture.dialogs.answer(fixture.dialogs.preferred());
    EXPECT_TRUE(isRunning(played));
    running.stopSelected();
    fixture.dialogs.answer(0);
    EXPECT_TRUE(waitUntil([&] { return !isRunning(played); }));
    EXPECT_TRUE(isRunning(other)) << "another program of the same name was ended too";
    EXPECT_TRUE(waitUntil([&] { return !running.isSelectedRunning(); }));
}

TEST_F(RunningGame, ThatDoesNotEndIsLeftToTheUserAndNeverKilled) {
    const ProcessId played = start(u"trap '' TERM; while :; do sleep 0.1; done"_s);
    fixture.state.sessionTracker().startSession(game, played);
    ASSERT_TRUE(waitUntil([&] { return fixture.desktop.running()->isSelectedRunning(); }));
    waitUntil([] { return false; }, 300); // the shell has set its trap
    QSignalSpy told(&fixture.desktop, &Desktop::warned);
    fixture.desktop.running()->stopSelected();
    fixture.dialogs.answer(0);
    ASSERT_TRUE(waitUntil([&] { return told.count() == 1; }));
    EXPECT_TRUE(told.first().value(0).toString().contains(u"does not end"_s));
    EXPECT_TRUE(isRunning(played));
    ::kill(pid_t(played.pid), SIGKILL);
}

} // namespace

} // namespace ludarium::test

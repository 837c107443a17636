#include "Services/Library/PlaySessionTracker.h"

#include "GameFactory.h"
#include "Host/ProcessTable.h"
#include "Host/SafeFiles.h"
#include "support/Mount.h"
#include "support/TestHost.h"

#include <QCoreApplication>
#include <QCoro/QCoroTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace ludarium::test {

namespace {

struct ListingCase {
    const char *name;
    const char *listing;
    qint64 pid; ///< 0: none
};

/// Lets the event loop run until something holds, for a while.
template<typename Test>
bool eventually(const Test &test) {
    QElapsedTimer timer;
    timer.start();
    while (!test() && timer.elapsed() < 10'000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return test();
}

/// A clock that is moved by hand and whose sleeps are short but real, so that a watch over a process ends with it.
class WatchClock : public ManualClock {
  public:
    QCoro::Task<> sleep(std::chrono::milliseconds) override { co_await QCoro::sleepFor(std::chrono::milliseconds(10)); }
};

class PlaySessionTrackerTest : public testing::Test {
  protected:
    TestHost host;
    WatchClock clock;
    Host machine{host.host().paths,        host.host().settings, host.host().processes, host.host().http,
                 host.host().workspace,    host.host().dialogs,  host.host().terminal,  clock,
                 host.host().notifications};
    QList<std::pair<QString, double>> ended;
    QString refusal;
    GamePtr game = makeGame(QStringLiteral("g"), QStringLiteral("Fjord Raiders"));

    std::unique_ptr<PlaySessionTracker> makeTracker() {
        auto tracker = std::make_unique<PlaySessionTracker>(machine);
        tracker->onSessionEnded = [this](const QString &id, double seconds) {
            ended.append({id, seconds});
            return refusal;
        };
        return tracker;
    }
    ProcessId start(const QByteArray &seconds) {
        ProcessSpec spec;
        spec.program = QStringLiteral("/bin/sleep");
        spec.arguments = QStringList{QString::fromLatin1(seconds)};
        return await(host.host().processes.startEmulator(spec));
    }
    QString journalFile() { return host.host().paths.state() + QStringLiteral("/session.json"); }
    SessionJournal journal() { return SessionJournal(journalFile()); }
    QList<SessionJournal> journals() { return SessionJournal::inFolder(host.host().paths.state()); }
    static void end(const ProcessId &process) { ::kill(static_cast<pid_t>(process.pid), SIGKILL); }
    GamePtr find(const QString &id) { return id == game->id ? game : GamePtr(); }
};

} // namespace

class EmulatorListing : public testing::TestWithParam<ListingCase> {};

TEST_P(EmulatorListing, GivesTheFirstKnownEmulator) {
    const auto pid = PlaySessionTracker::emulatorInListing(GetParam().listing);
    EXPECT_EQ(pid.value_or(0), GetParam().pid);
}

INSTANTIATE_TEST_SUITE_P(Listings, EmulatorListing,
                         testing::Values(ListingCase{"header_only", "  PID COMMAND\n", 0}, ListingCase{"empty", "", 0},
                                         ListingCase{"first_wins",
                                                     "PID COMM\n 12 bash\n 13 /usr/bin/DOSBox\n 14 mame\n", 13},
                                         ListingCase{"part_of_a_name", "9 /opt/x/retroarch-qt --menu\n", 9},
                                         ListingCase{"folder_does_not_count", "9 /opt/dosbox/helper\n", 0},
                                         ListingCase{"no_number", "x dosbox\n-- dosbox\n99999999999 dosbox\n", 0}),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(PlaySessionTrackerTest, ClosesTheSessionOfAnEmulatorThatEndsAtOnce) {
    const ProcessId process = start("0");
    await(host.host().processes.waitForEmulator(process));
    const auto tracker = makeTracker();
    tracker->startSession(game, process);
    EXPECT_TRUE(eventually([&] { return !tracker->isTracking(); }));
    ASSERT_EQ(ended.size(), 1);
    EXPECT_EQ(ended[0].first, QStringLiteral("g"));
    EXPECT_TRUE(journals().isEmpty());
}

TEST_F(PlaySessionTrackerTest, MeasuresByTheMonotonicClockUntilTheNextGameStarts) {
    const auto tracker = makeTracker();
    const ProcessId process = start("60");
    tracker->startSession(game, process);
    EXPECT_EQ(journals().size(), 1);
    const double before = std::chrono::duration<double>(clock.elapsed).count();
    clock.current = clock.current.addDays(-3); // somebody set the clock
    clock.advance(std::chrono::seconds(59));
    tracker->startSession(makeGame(QStringLiteral("h"), QStringLiteral("Other")), std::nullopt);
    const double after = std::chrono::duration<double>(clock.elapsed).count();
    ASSERT_EQ(ended.size(), 1);
    EXPECT_NEAR(ended[0].second, after - before, 0.001);
    EXPECT_EQ(tracker->currentGame()->id, QStringLiteral("h"));
    tracker->endSession();
    EXPECT_EQ(ended.size(), 2);
    // The time of the first is told, and yet it runs: no other program may start it again, and none counts it twice.
    EXPECT_TRUE(makeTracker()->isRunningNow(game->id));
    tracker->suspend();
    end(process);
    await(host.host().processes.waitForEmulator(process));
    makeTracker()->recover([&](const QString &id) { return find(id); });
    EXPECT_EQ(ended.size(), 2);
    EXPECT_TRUE(journals().isEmpty());
}

TEST_F(PlaySessionTrackerTest, JournalsAnOpenSessionEveryHalfMinute) {
    const auto tracker = makeTracker();
    SessionJournal::Entry entry{game->id, game->title, clock.now(), 0, std::nullopt, {}};
    journal().write(entry);
    // A process that never ends as far as this test goes: our own.
    const ProcessId self = start("60");
    entry.process = self;
    journal().write(entry);
    tracker->recover([&](const QString &id) { return find(id); });
    ASSERT_TRUE(tracker->isTracking());
    clock.advance(std::chrono::seconds(31));
    EXPECT_TRUE(eventually([&] { return journal().read()->seconds >= 30; }));
    ::kill(static_cast<pid_t>(self.pid), SIGTERM);
    EXPECT_TRUE(eventually([&] { return !tracker->isTracking(); }));
    ASSERT_EQ(ended.size(), 1);
    EXPECT_GE(ended[0].second, 31);
}

TEST_F(PlaySessionTrackerTest, ReportsWhatAnEarlierRunLeftOpen) {
    journal().write({game->id, game->title, clock.now(), 754.5, ProcessId{999'999'999, 1}, {}});
    const auto tracker = makeTracker();
    tracker->recover([&](const QString &id) { return find(id); });
    EXPECT_FALSE(tracker->isTracking());
    EXPECT_EQ(ended, (QList<std::pair<QString, double>>{{QStringLiteral("g"), 754.5}}));
    EXPECT_FALSE(journal().read());
    tracker->recover([&](const QString &id) { return find(id); });
    EXPECT_EQ(ended.size(), 1);
}

TEST_F(PlaySessionTrackerTest, LeavesASessionAloneThatAnotherProgramMeasures) {
    const ProcessId other = start("60");
    const SessionJournal::Entry entry{game->id, game->title, clock.now(), 12, ProcessId{999'999'999, 1}, other};
    journal().write(entry);
    const auto tracker = makeTracker();
    tracker->recover([&](const QString &id) { return find(id); });
    EXPECT_TRUE(ended.isEmpty());
    EXPECT_TRUE(journal().read());

    // Neither does a session of our own put an end to it, and both are found when the programs have gone.
    tracker->startSession(makeGame(QStringLiteral("h"), QStringLiteral("Other")), start("60"));
    EXPECT_EQ(journal().read()->gameId, QStringLiteral("g"));
    const QList<SessionJournal> journals = SessionJournal::inFolder(host.host().paths.state());
    ASSERT_EQ(journals.size(), 2);
    for (const SessionJournal &left : journals) {
        SessionJournal::Entry orphan = *left.read();
        ::kill(static_cast<pid_t>(orphan.process->pid), SIGTERM);
        orphan.owner = orphan.process.emplace(ProcessId{999'999'999, 1});
        orphan.seconds = 5;
        left.write(orphan);
    }
    makeTracker()->recover([&](const QString &id) { return find(id); });
    EXPECT_EQ(ended, (QList<std::pair<QString, double>>{{QStringLiteral("h"), 5}, {QStringLiteral("g"), 5}}));
    ::kill(static_cast<pid_t>(other.pid), SIGTERM);
}

TEST_F(PlaySessionTrackerTest, KnowsAGameThatAnotherProgramStartedUntilItEnds) {
    const auto tracker = makeTracker();
    int told = 0;
    QObject::connect(tracker.get(), &PlaySessionTracker::runningChanged, tracker.get(), [&] { ++told; });
    EXPECT_FALSE(tracker->isRunning(game->id));
    const ProcessId process = start("60");
    journal().write({game->id, game->title, clock.now(), 0, process, {}});
    EXPECT_TRUE(tracker->isRunningNow(game->id));
    EXPECT_TRUE(eventually([&] { return told == 1; }));
    EXPECT_TRUE(tracker->isRunning(game->id));
    EXPECT_LT(tracker->runningSeconds(game->id), 60);
    ::kill(static_cast<pid_t>(process.pid), SIGKILL);
    EXPECT_TRUE(eventually([&] { return told == 2; }));
    EXPECT_FALSE(tracker->isRunning(game->id));
}

TEST_F(PlaySessionTrackerTest, LeavesARunningGameOfAnotherCollectionToThatOne) {
    const ProcessId process = start("60");
    journal().write({QStringLiteral("elsewhere"), QStringLiteral("Elsewhere"), clock.now(), 12, process, {}});
    const auto tracker = makeTracker();
    tracker->recover([&](const QString &id) { return find(id); });
    EXPECT_TRUE(ended.isEmpty() && !tracker->isTracking());
    ::kill(static_cast<pid_t>(process.pid), SIGTERM);
    await(host.host().processes.waitForEmulator(process));
    tracker->recover([&](const QString &id) { return find(id); });
    EXPECT_EQ(ended, (QList<std::pair<QString, double>>{{QStringLiteral("elsewhere"), 12}}));
}

TEST_F(PlaySessionTrackerTest, HandsARunningGameOverToTheNextStart) {
    const ProcessId process = start("60");
    auto tracker = makeTracker();
    QStringList kept;
    tracker->startKeeper = [&](const QString &file) { kept.append(file); };
    tracker->startSession(game, process);
    clock.advance(std::chrono::seconds(40));
    tracker->suspend();
    tracker.reset();
    EXPECT_TRUE(ended.isEmpty());
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(SessionJournal(kept[0]).read()->seconds, 40);
    clock.current = clock.current.addYears(1);
    const auto command = makeTracker();
    command->setTakingOver(false);
    command->recover([&](const QString &id) { return find(id); });
    EXPECT_FALSE(command->isTracking()) << "a command leaves a game that runs alone";
    const auto next = makeTracker();
    next->recover([&](const QString &id) { return find(id); });
    EXPECT_TRUE(next->isTracking());
    end(process);
    EXPECT_TRUE(eventually([&] { return !next->isTracking(); }));
    ASSERT_EQ(ended.size(), 1);
    EXPECT_NEAR(ended[0].second, 40, 5) << "whatever the clock on the wall says";
}

TEST_F(PlaySessionTrackerTest, MeasuresAcrossProgramsByTheMachinesClock) {
    const qint64 old = processStartTime(1).value();
    const double age = secondsSinceProcessStart(old);
    ASSERT_GT(age, 100);
    SessionJournal::Entry entry{game->id, game->title, clock.now().addYears(-1), 7, ProcessId{1, old}, {}};
    EXPECT_NEAR(entry.secondsUntilNow(), age, 2) << "of an older version, by the process's own start";
    entry.startedSinceBoot = SessionJournal::secondsSinceBoot() - 50;
    EXPECT_NEAR(entry.secondsUntilNow(), 50, 2);
    entry.startedSinceBoot = -1e9;
    EXPECT_NEAR(entry.secondsUntilNow(), age, 2) << "no longer than its process";
    entry.startedSinceBoot = 1e18;
    EXPECT_EQ(entry.secondsUntilNow(), 7) << "and no shorter than what was measured";
}

TEST_F(PlaySessionTrackerTest, GoesOnWithEveryGameThatRuns) {
    const GamePtr other = makeGame(QStringLiteral("h"), QStringLiteral("Other"));
    const QList<ProcessId> processes{start("60"), start("60")};
    journal().write({game->id, game->title, clock.now(), 1, processes[0], {}});
    SessionJournal(host.host().paths.state() + QStringLiteral("/session-2.json"))
        .write({other->id, other->title, clock.now(), 2, processes[1], {}});
    const auto tracker = makeTracker();
    tracker->recover([&](const QString &id) { return id == other->id ? other : find(id); });
    EXPECT_TRUE(ended.isEmpty());
    EXPECT_TRUE(tracker->isRunning(game->id) && tracker->isRunning(other->id));
    for (const ProcessId &process : processes)
        end(process);
    EXPECT_TRUE(eventually([&] { return ended.size() == 2; }));
    EXPECT_TRUE(journals().isEmpty());
}

TEST_F(PlaySessionTrackerTest, KeepsTheJournalOfATimeThatCouldNotBeStored) {
    const ProcessId process = start("0");
    await(host.host().processes.waitForEmulator(process));
    {
        const auto tracker = makeTracker();
        refusal = QStringLiteral("No space left on device");
        tracker->startSession(game, std::nullopt);
        clock.advance(std::chrono::seconds(90));
        EXPECT_EQ(tracker->endSession(), refusal);
        tracker->suspend();
    }
    makeTracker()->recover([&](const QString &id) { return find(id); });
    ASSERT_EQ(journals().size(), 1) << "still refused";
    refusal.clear();
    ended.clear();
    makeTracker()->recover([&](const QString &id) { return find(id); });
    EXPECT_EQ(ended, (QList<std::pair<QString, double>>{{game->id, 90}}));
    EXPECT_TRUE(journals().isEmpty());
}

TEST_F(PlaySessionTrackerTest, KnowsTheGameThatRunsThoughNoJournalCanBeWritten) {
    QDir(host.host().paths.state()).removeRecursively();
    host.put(host.host().paths.state(), "a file where the folder should be");
    const auto tracker = makeTracker();
    const ProcessId process = start("60");
    tracker->startSession(game, process);
    ASSERT_TRUE(journals().isEmpty());
    EXPECT_TRUE(tracker->isRunningNow(game->id));
    EXPECT_EQ(tracker->runningGames(), QStringList{game->id});
    EXPECT_EQ(tracker->runningProcess(game->id), process);
    end(process);
    await(host.host().processes.waitForEmulator(process));
    EXPECT_TRUE(tracker->runningGames().isEmpty());
}

TEST_F(PlaySessionTrackerTest, IsHeldUpByNothingThatOnlyLooksLikeAJournal) {
    const QString folder = host.host().paths.state();
    QDir().mkpath(folder + QStringLiteral("/session-folder.json"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(journalFile()).constData(), 0600), 0);
    QFile::link(journalFile(), folder + QStringLiteral("/session-link.json"));
    const auto tracker = makeTracker();
    tracker->recover([&](const QString &id) { return find(id); });
    EXPECT_FALSE(tracker->isRunningNow(game->id));
    tracker->startSession(game, start("60"));
    EXPECT_TRUE(tracker->isRunningNow(game->id));
    const QStringList files = QDir(folder).entryList({QStringLiteral("session-*-1.json")}, QDir::Files);
    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(QFile::permissions(folder + u'/' + files[0]) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
}

TEST_F(PlaySessionTrackerTest, JournalsOnADiskThatIsFull) {
    const QString folder = host.scratch() + QStringLiteral("/small");
    const Mount disk = Mount::memory(folder, QStringLiteral("64k"));
    if (!disk.ok())
        GTEST_SKIP() << disk.reason().toStdString();
    const SessionJournal small(folder + QStringLiteral("/session.json"));
    SessionJournal::Entry entry{game->id, game->title, clock.now(), 1, std::nullopt, {}};
    ASSERT_TRUE(small.write(entry));
    QFile filler(folder + QStringLiteral("/filler"));
    ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(1024, 'x')) > 0) {
    }
    entry.seconds = 123.5;
    EXPECT_TRUE(small.write(entry));
    EXPECT_EQ(small.read()->seconds, 123.5);
}

TEST_F(PlaySessionTrackerTest, SetsAJournalAsideThatItCannotRead) {
    for (const QByteArray &bytes :
         {QByteArray("{"), QByteArray("{\"gameId\":\"g\",\"seconds\":-4}"), QByteArray("\0\0", 2)}) {
        QDir().mkpath(host.host().paths.state());
        ASSERT_EQ(writeAtomically(journalFile(), bytes), QString());
        const auto tracker = makeTracker();
        tracker->recover([&](const QString &id) { return find(id); });
        EXPECT_FALSE(QFile::exists(journalFile()));
    }
    EXPECT_TRUE(ended.isEmpty());
    EXPECT_FALSE(QDir(host.host().paths.state()).entryList({QStringLiteral("session.json.corrupt-*")}).isEmpty());
}

TEST_F(PlaySessionTrackerTest, CutsTheMinutesThatItReports) {
    const auto tracker = makeTracker();
    QList<int> minutes;
    tracker->reportSession = [&](GamePtr, int reported, QDateTime) { minutes.append(reported); };
    for (const int seconds : {59, 60, 150}) {
        tracker->startSession(game, std::nullopt);
        clock.advance(std::chrono::seconds(seconds));
        tracker->endSession();
    }
    EXPECT_EQ(minutes, (QList<int>{0, 1, 2}));
}

} // namespace ludarium::test

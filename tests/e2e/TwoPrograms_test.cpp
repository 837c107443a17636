// Several programs on one home, as a person has them: commands of scripts at once, some killed, and the window open
// beside them. What ended with status 0 is kept, nothing else is touched, and the window hears of it.

#include "Host/HostPaths.h"
#include "Host/Settings.h"
#include "Host/SqliteSettingsStore.h"
#include "Services/Library/UserData.h"
#include "e2e/CliRun.h"
#include "e2e/WindowRun.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>
#include <csignal>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace ludarium::test {

namespace {

using namespace Qt::StringLiterals;

constexpr int games = 60;
constexpr int usualRounds = 5;
/// LUDARIUM_ROUNDS makes it longer.
int rounds() {
    bool given = false;
    const int number = qEnvironmentVariableIntValue("LUDARIUM_ROUNDS", &given);
    return given ? number : usualRounds;
}

QString gameId(int number) {
    return u"game-%1"_s.arg(number);
}

/// A collection of many games, one of which a real dosbox plays to its end.
void fill(const TinyCollection &collection) {
    QByteArray xml = "<LaunchBox>\n"
                     "<Game><ID>writer-id</ID><Title>Writer</Title><Platform>MS-DOS</Platform>"
                     "<ApplicationPath>eXo\\eXoDOS\\!dos\\writer\\Writer.bat</ApplicationPath>"
                     "<ConfigurationPath>eXo\\eXoDOS\\!dos\\writer\\dosbox.conf</ConfigurationPath></Game>\n"
                     "<Game><ID>endless-id</ID><Title>Endless</Title><Platform>MS-DOS</Platform>"
                     "<ApplicationPath>eXo\\eXoDOS\\!dos\\endless\\Endless.bat</ApplicationPath>"
                     "<ConfigurationPath>eXo\\eXoDOS\\!dos\\endless\\dosbox.conf</ConfigurationPath></Game>\n";
    for (int i = 0; i < games; ++i)
        xml += "<Game><ID>" + gameId(i).toUtf8() + "</ID><Title>" + gameId(i).toUtf8() +
               "</Title><Platform>MS-DOS</Platform></Game>\n";
    collection.put(u"Data/Platforms/MS-DOS.xml"_s, xml + "</LaunchBox>\n");
}

/// One command and what it makes of the user's data.
struct Action {
    QStringList arguments;
    std::function<void(UserData::Values &)> apply;
    std::unique_ptr<QProcess> process;
    int killAfter = -1; ///< milliseconds
};

template<typename Map, typename Value>
void put(Map &map, const QString &id, const Value &value, bool present) {
    if (present)
        map.insert(id, value);
    else
        map.remove(id);
}

/// Commands of one round touch different games, so that their order says nothing about the outcome.
Action makeAction(std::mt19937 &random, int slot, int round) {
    const QString id = gameId(slot * 5 + int(random() % 5));
    const int number = int(random() % 5);
    Action action;
    switch (random() % 6) {
    case 0:
        action.arguments = QStringList{u"favorite"_s, id};
        action.apply = [id](UserData::Values &values) { values.favorites.insert(id); };
        break;
    case 1:
        action.arguments = QStringList{u"favorite"_s, id, u"--off"_s};
        action.apply = [id](UserData::Values &values) { values.favorites.remove(id); };
        break;
    case 2:
        action.arguments = QStringList{u"rate"_s, id, QString::number(number)};
        action.apply = [=](UserData::Values &values) { put(values.ratings, id, qint64(number), number > 0); };
        break;
    case 3: {
        const QString note = u"Round %1 of %2"_s.arg(round).arg(id);
        action.arguments = QStringList{u"note"_s, id, note};
        action.apply = [=](UserData::Values &values) { values.notes.insert(id, note); };
        break;
    }
    case 4: {
        const QStringList words{u"notPlayed"_s, u"playing"_s, u"beaten"_s, u"completed"_s, u"mastered"_s};
        action.arguments = QStringList{u"progress"_s, id, words[number]};
        action.apply = [=](UserData::Values &values) { put(values.progress, id, qint64(number), number > 0); };
        break;
    }
    default: {
        QStringList ids;
        for (int i = 0; i < 5; ++i)
            ids.append(gameId(slot * 5 + i));
        action.arguments = QStringList{u"batch"_s, u"add-to-favorites"_s} + ids;
        action.apply = [ids](UserData::Values &values) { values.favorites.unite({ids.cbegin(), ids.cend()}); };
    }
    }
    return action;
}

UserData::Values stored(const QString &home) {
    SqliteSettingsStore settings(HostPaths::native(home).settingsFolder());
    EXPECT_EQ(settings.problem(), QString());
    return UserData(settings).values();
}

std::string difference(const UserData::Values &is, const UserData::Values &wanted) {
    return is.favorites != wanted.favorites ? "favourites"
           : is.notes != wanted.notes       ? "notes"
           : is.ratings != wanted.ratings   ? "ratings"
           : is.progress != wanted.progress ? "progress"
                                            : "";
}

/// The counts that the window told last, in the words of its log.
QString countsOf(const UserData::Values &values) {
    return u"%1 favorites, %2 games played, %3 notes, %4 ratings, %5 with progress"_s.arg(values.favorites.size())
        .arg(values.playCounts.size())
        .arg(values.notes.size())
        .arg(values.ratings.size())
        .arg(values.progress.size());
}

QString lastTold(const QString &log) {
    const QString begin = u"Ludarium took over what another program changed: "_s;
    const qsizetype at = log.lastIndexOf(begin);
    return at < 0 ? QString() : log.sliced(at).section(u'\n', 0, 0).sliced(begin.size());
}

class TwoPrograms : public testing::Test {
  protected:
    WindowRun window;
    CliRun cli;
    TinyCollection collection;

    void SetUp() override {
        fill(collection);
        SqliteSettingsStore settings(HostPaths::native(window.home()).settingsFolder());
        settings.setValue(Settings::skipInstallCheck, true);
        settings.setValue(Settings::hasCompletedFirstRun, true);
    }
    QStringList arguments(const QStringList &rest) const {
        return QStringList{u"--home"_s, window.home(), u"--collection"_s, collection.path()} + rest;
    }
    CliResult run(const QStringList &rest) const { return cli.runProgram(CliRun::program(), arguments(rest)); }
};

} // namespace

TEST_F(TwoPrograms, KeepEveryAcknowledgedChange) {
    if (!WindowRun::isBuilt())
        GTEST_SKIP() << "the desktop program is not built";
    ASSERT_EQ(run({u"load"_s}).status, 0);
    window.start({collection.path()});
    ASSERT_TRUE(eventually([&] { return window.log().contains(u"LOADING COLLECTION: "_s); }));
    QThread::sleep(2); // until it is drawn
    std::mt19937 random(20'261'123);
    UserData::Values expected;
    int acknowledged = 0;
    int killed = 0;
    qint64 slowest = 0;
    for (int round = 0; round < rounds() && !HasFailure(); ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        std::vector<Action> actions;
        const int count = 2 + int(random() % 11);
        for (int slot = 0; slot < count; ++slot) {
            actions.push_back(makeAction(random, slot, round));
            Action &action = actions.back();
            if (round % 2 == 1 && random() % 2 == 0)
                action.killAfter = int(random() % 1500);
            action.process = std::make_unique<QProcess>();
            action.process->setProcessEnvironment(cli.environment);
            action.process->start(CliRun::program(), arguments(action.arguments));
        }
        QElapsedTimer timer;
        timer.start();
        for (bool any = true; any;) {
            any = false;
            for (Action &action : actions) {
                if (action.process->state() == QProcess::NotRunning)
                    continue;
                any = true;
                if (action.killAfter >= 0 && timer.elapsed() > action.killAfter)
                    action.process->kill();
                action.process->waitForFinished(5);
            }
            ASSERT_LT(timer.elapsed(), 120'000);
        }
        const UserData::Values is = stored(window.home());
        for (Action &action : actions) {
            const bool ended = action.process->exitStatus() == QProcess::NormalExit;
            EXPECT_TRUE(ended || action.killAfter >= 0) << qPrintable(action.arguments.join(u' '));
            if (ended) {
                EXPECT_EQ(action.process->exitCode(), 0) << action.process->readAllStandardError().toStdString();
                action.apply(expected);
                ++acknowledged;
                continue;
            }
            // A killed command was made as a whole or not at all.
            ++killed;
            UserData::Values made = expected;
            action.apply(made);
            const auto isMade = [&] {
                UserData::Values both = is;
                action.apply(both);
                return difference(both, is).empty();
            };
            if (isMade())
                expected = made;
        }
        EXPECT_EQ(difference(is, expected), "");
        timer.restart();
        EXPECT_TRUE(eventually(
            [&] {
                const QString told = lastTold(window.log());
                return told.isEmpty() ? countsOf(is) == countsOf({}) : told == countsOf(is);
            },
            10'000)) // a second, where the machine has nothing else to do
            << lastTold(window.log()).toStdString() << " is not " << countsOf(is).toStdString();
        slowest = std::max(slowest, timer.elapsed());
    }
    EXPECT_TRUE(window.isRunning());
    EXPECT_GT(acknowledged, rounds());
    RecordProperty("acknowledged", acknowledged);
    RecordProperty("killed", killed);
    std::printf("%d acknowledged, %d killed, the window told within %lld ms\n", acknowledged, killed, slowest);
}

TEST_F(TwoPrograms, KeepThePlayTimeOfAGameThatOutlivesItsCommand) {
    if (!hasDosbox() || !WindowRun::isBuilt())
        GTEST_SKIP() << "needs dosbox and the desktop program";
    const auto playTime = [&] { return stored(window.home()).playTimes.value(u"endless-id"_s); };
    const auto endGame = [](qint64 pid) { ::kill(static_cast<pid_t>(pid), SIGKILL); };
    const auto start = [&] {
        const CliResult started = run({u"--json"_s, u"play"_s, u"endless-id"_s});
        EXPECT_EQ(started.status, 0) << started.errors.toStdString();
        return started.status == 0 ? json(started).value(u"pid"_s).toInteger() : qint64(0);
    };
    qint64 game = start();
    ASSERT_GT(game, 0);
    // Nobody starts it once more.
    const CliResult again = run({u"play"_s, u"endless-id"_s});
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(again.errors, QByteArray("ludarium-cli: Endless is running already.\n"));
    QThread::sleep(2);
    EXPECT_EQ(playTime(), 0);
    endGame(game);
    EXPECT_TRUE(eventually([&] { return playTime() >= 2; })) << playTime();
    const double first = playTime();

    // The window takes over what the keeper of a second run measured, and the time is counted once.
    game = start();
    ASSERT_GT(game, 0);
    window.start({collection.path()});
    EXPECT_TRUE(eventually([&] { return window.log().contains(u"Going on with the session for Endless"_s); }));
    QThread::sleep(1);
    endGame(game);
    EXPECT_TRUE(eventually([&] { return playTime() > first; }));
    QThread::msleep(1500);
    EXPECT_LT(playTime(), first + 60);
    EXPECT_EQ(window.log().count(u"Session ended for Endless"_s), 1);
    // And where the window goes first, a keeper stays.
    game = start();
    ASSERT_GT(game, 0);
    const double second = playTime();
    EXPECT_TRUE(window.end());
    QThread::sleep(1);
    endGame(game);
    EXPECT_TRUE(eventually([&] { return playTime() > second; }));
}

} // namespace ludarium::test

#include "Host/LocalProcessRunner.h"

#include "Host/ProcessTable.h"
#include "support/TestHost.h"

#include <QCoro/QCoroFuture>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace ludarium {
namespace {

using test::await;
using test::TestHost;
using testing::ElementsAre;

class Processes : public testing::Test {
  protected:
    ProcessSpec script(const QByteArray &text) {
        return {m_host.putProgram(QStringLiteral("/opt/tool"), text), {}, m_host.scratch(), {}, {}};
    }
    /// Turns the event loop until `condition` holds.
    template<typename Condition>
    static bool eventually(Condition condition) {
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < 10'000 && !condition();)
            await(turn());
        return condition();
    }
    QByteArray read(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    TestHost m_host;
    ProcessRunner &m_processes = m_host.host().processes;

  private:
    static QCoro::Task<> turn() {
        SystemClock clock;
        co_await clock.sleep(std::chrono::milliseconds(5));
    }
};

TEST_F(Processes, AToolGetsItsArgumentsInputFolderAndEnvironmentAsTheyAre) {
    ProcessSpec spec = script("printf '[%s]' \"$@\"; pwd -P; echo \"$MARK\"; cat; exit 7");
    spec.arguments = {QStringLiteral("a b"), QStringLiteral("$(touch X)"), QString(), QStringLiteral("\"'`*")};
    spec.environment = m_host.host().paths.childEnvironment();
    spec.environment->insert(QStringLiteral("MARK"), QStringLiteral("set"));
    spec.standardInput = "from the input";

    const ProcessResult result = await(m_processes.run(spec));

    EXPECT_EQ(result.exitCode, 7);
    EXPECT_FALSE(result.succeeded());
    EXPECT_EQ(result.standardOutput.toStdString(),
              "[a b][$(touch X)][][\"'`*]" + m_host.scratch().toStdString() + "\nset\nfrom the input");
    EXPECT_EQ(QDir(m_host.scratch()).entryList(QDir::Files).size(), 0);
}

TEST_F(Processes, AToolWithoutInputReadsTheEndOfItsInputAndTheHostsPath) {
    const ProcessResult result = await(m_processes.run(script("cat; echo \"$PATH\"")));
    EXPECT_TRUE(result.succeeded());
    EXPECT_EQ(QString::fromUtf8(result.standardOutput).trimmed(),
              m_host.host().paths.childEnvironment().value(QStringLiteral("PATH")));
}

TEST_F(Processes, BothStreamsAreDrainedHoweverMuchComes) {
    // Far more than a pipe holds, on both streams in turn: one left unread would block the tool.
    const ProcessResult result = await(m_processes.run(script(
        "i=0; while [ $i -lt 40 ]; do head -c 100000 /dev/zero; head -c 100000 /dev/zero >&2; i=$((i+1)); done")));
    EXPECT_TRUE(result.succeeded());
    EXPECT_EQ(result.standardOutput.size(), 4'000'000);
    EXPECT_EQ(result.standardError.size(), 4'000'000);
}

TEST_F(Processes, OutputBeyondTheLimitIsDroppedAndTheToolStillEnds) {
    const ProcessResult result = await(m_processes.run(script("head -c 70000000 /dev/zero; echo done >&2")));
    EXPECT_EQ(result.standardOutput.size(), LocalProcessRunner::keptOutput);
    EXPECT_EQ(result.standardError, "done\n");
}

TEST_F(Processes, LinesArriveWhileTheToolRunsWhateverTheirEnd) {
    QList<QByteArray> lines;
    const QString release = m_host.scratch() + QStringLiteral("/go");
    // The tool ends only after its first line was seen here.
    const ProcessResult result = await(m_processes.run(
        script("printf 'one\\n'; while [ ! -e go ]; do sleep 0.01; done; printf 'two\\r\\n10%%\\r20%%\\r\\n\\nrest'"),
        {}, [&](const QByteArray &line) {
            lines << line;
            m_host.put(release);
        }));
    EXPECT_TRUE(result.succeeded());
    EXPECT_THAT(lines, ElementsAre("one", "two", "10%", "20%", "", "rest"));
}

TEST_F(Processes, WhatTheLineSinkThrowsEndsTheToolAndReachesTheCaller) {
    QElapsedTimer timer;
    timer.start();
    EXPECT_THROW(await(m_processes.run(script("echo x; exec sleep 60"), {},
                                       [](const QByteArray &) { throw std::runtime_error("no more"); })),
                 std::runtime_error);
    EXPECT_LT(timer.elapsed(), 4'000);
}

TEST_F(Processes, AnOrdinaryCancelTerminatesTheToolAndWhatItStarted) {
    std::stop_source stop;
    QElapsedTimer timer;
    timer.start();
    const ProcessResult result =
        await(m_processes.run(script("sleep 60 & echo $! > child; echo ready; wait"), stop.get_token(),
                              // From another thread, as a button's handler on the pool would.
                              [&](const QByteArray &) { std::thread([&] { stop.request_stop(); }).join(); }));
    EXPECT_TRUE(result.cancelled);
    EXPECT_FALSE(result.succeeded());
    EXPECT_LT(timer.elapsed(), 4'000);
    const qint64 child = read(m_host.scratch() + QStringLiteral("/child")).trimmed().toLongLong();
    ASSERT_GT(child, 0);
    EXPECT_TRUE(eventually([&] { return !processStartTime(child); }));
}

TEST_F(Processes, AToolThatIgnoresTermIsKilledAfterFiveSeconds) {
    std::stop_source stop;
    QElapsedTimer timer;
    timer.start();
    const ProcessResult result =
        await(m_processes.run(script("trap '' TERM; echo ready; while :; do sleep 0.1; done"), stop.get_token(),
                              [&](const QByteArray &) { stop.request_stop(); }));
    EXPECT_TRUE(result.cancelled);
    EXPECT_TRUE(result.crashed);
    EXPECT_GE(timer.elapsed(), 4'900);
    EXPECT_LT(timer.elapsed(), 9'000);
}

TEST_F(Processes, AToolCancelledBeforehandIsNotStarted) {
    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(await(m_processes.run(script("touch started"), stop.get_token())).cancelled);
    EXPECT_FALSE(QFile::exists(m_host.scratch() + QStringLiteral("/started")));
}

TEST_F(Processes, WhatCannotBeStartedIsNamedWithTheSystemsReason) {
    const QString plain = m_host.put(QStringLiteral("/opt/plain"), "#!/bin/sh\n");
    const QString working = m_host.putProgram(QStringLiteral("/opt/working"), "exit 0");
    const QString orphan = m_host.put(QStringLiteral("/opt/orphan"), "#!/no/such/interpreter\n", true);
    const QString gone = m_host.scratch() + QStringLiteral("/gone");
    const struct {
        const char *what;
        ProcessSpec spec;
        QString reason;
    } cases[] = {
        {"missing",
         {m_host.scratch() + QStringLiteral("/no"), {}, {}, {}, {}},
         m_host.scratch() + QStringLiteral("/no: No such file or directory")},
        {"not executable", {plain, {}, {}, {}, {}}, plain + QStringLiteral(": Permission denied")},
        {"a folder", {m_host.scratch(), {}, {}, {}, {}}, m_host.scratch() + QStringLiteral(": Permission denied")},
        {"interpreter missing", {orphan, {}, {}, {}, {}}, orphan + QStringLiteral(": No such file or directory")},
        {"working folder missing", {working, {}, gone, {}, {}}, gone + QStringLiteral(": No such file or directory")},
    };
    for (const auto &[what, spec, reason] : cases) {
        for (const bool asEmulator : {false, true}) {
            try {
                if (asEmulator)
                    await(m_processes.startEmulator(spec));
                else
                    await(m_processes.run(spec));
                ADD_FAILURE() << what << " started";
            } catch (const ProcessError &error) {
                EXPECT_EQ(error.what(), reason.toStdString()) << what << (asEmulator ? ", emulator" : ", tool");
            }
        }
    }
}

TEST_F(Processes, AnEmulatorHasItsOwnSessionAndSilentStreams) {
    const ProcessId id =
        await(m_processes.startEmulator(script("ps -o sid= -p $$ > sid; all=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 "
                                               "/proc/$$/fd/2); echo \"$all\" > streams; exit 3")));
    EXPECT_EQ(await(m_processes.waitForEmulator(id)), 3);
    EXPECT_EQ(read(m_host.scratch() + QStringLiteral("/sid")).trimmed().toLongLong(), id.pid);
    EXPECT_EQ(read(m_host.scratch() + QStringLiteral("/streams")).toStdString(), "/dev/null\n/dev/null\n/dev/null\n");
}

TEST_F(Processes, AnEmulatorIsKnownByPidAndStartTimeUntilItEnds) {
    const ProcessId id =
        await(m_processes.startEmulator(script("while [ ! -e go ]; do sleep 0.01; done; kill -SEGV $$")));
    EXPECT_GT(id.startTime, 0);
    EXPECT_TRUE(m_processes.isRunning(id));
    EXPECT_FALSE(m_processes.isRunning({id.pid, id.startTime + 1})) << "a later process with the same pid";
    EXPECT_EQ(await(m_processes.waitForEmulator({id.pid, id.startTime + 1})), std::nullopt);

    m_host.put(m_host.scratch() + QStringLiteral("/go"));
    EXPECT_EQ(await(m_processes.waitForEmulator(id)), std::nullopt) << "it crashed";
    EXPECT_FALSE(m_processes.isRunning(id));
    EXPECT_EQ(::kill(static_cast<pid_t>(id.pid), 0), -1) << "it was not reaped";
    EXPECT_EQ(await(m_processes.waitForEmulator(id)), std::nullopt) << "asked again after its end";
}

TEST_F(Processes, AnEmulatorOutlivesTheRunnerThatStartedIt) {
    const ProcessSpec spec = script("while [ ! -e go ]; do sleep 0.01; done; echo alive > alive");
    ProcessId id;
    {
        LocalProcessRunner runner(m_host.host().paths);
        id = await(runner.startEmulator(spec));
    }
    EXPECT_TRUE(m_processes.isRunning(id));
    m_host.put(m_host.scratch() + QStringLiteral("/go"));
    EXPECT_TRUE(eventually([&] { return read(m_host.scratch() + QStringLiteral("/alive")) == "alive\n"; }));
    EXPECT_TRUE(eventually([&] { return !m_processes.isRunning(id); }));
}

TEST(ProcessTable, AProcessWhoseNameHoldsBlanksAndParenthesesIsStillRead) {
    TestHost host;
    const QString program = host.scratch() + QStringLiteral("/a) R 1 (b");
    ASSERT_TRUE(QFile::copy(QFile::exists(QStringLiteral("/bin/sleep")) ? QStringLiteral("/bin/sleep")
                                                                        : QStringLiteral("/usr/bin/sleep"),
                            program));
    QProcess process;
    process.start(program, {QStringLiteral("30")});
    ASSERT_TRUE(process.waitForStarted());
    const auto mine = processStartTime(::getpid());
    const auto its = processStartTime(process.processId());
    ASSERT_TRUE(mine && its);
    EXPECT_GE(*its, *mine);
    EXPECT_LT(*its - *mine, 100 * 3600) << "ticks since this test began";
    process.kill();
    process.waitForFinished();
}

} // namespace
} // namespace ludarium

#pragma once

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <stdexcept>
#include <stop_token>

namespace ludarium {

/// What to run. The program is a path and the arguments an array: nothing passes through a shell.
struct ProcessSpec {
    QString program;
    QStringList arguments;
    QString workingDirectory;
    std::optional<QProcessEnvironment> environment; ///< the host's child environment when absent
    QByteArray standardInput;
};

/// How a tool ended. `exitCode` is meaningless when `crashed`.
struct ProcessResult {
    int exitCode = -1;
    bool crashed = false;
    bool cancelled = false;
    QByteArray standardOutput;
    QByteArray standardError;
    bool succeeded() const { return !crashed && !cancelled && exitCode == 0; }
};

/// A process told apart from a later one with the same pid by its start time (clock ticks since boot on Linux).
struct ProcessId {
    qint64 pid = 0;
    qint64 startTime = 0;
    bool operator==(const ProcessId &) const = default;
};

/// The program could not be started; `what()` names it and tells the operating system's reason, in UTF-8.
class ProcessError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Child processes. Tools are run to their end with their output drained; emulators are started and left alone: they
/// outlive this program, and only the user ends them.
class ProcessRunner {
  public:
    virtual ~ProcessRunner() = default;

    /// Called with each line of output as it comes (without the line end), for progress.
    using LineSink = std::function<void(const QByteArray &line)>;

    /// Runs a tool to its end. Cancelling sends TERM and, 5 seconds later, KILL. Output beyond 64 MiB a stream is
    /// drained and dropped. Throws ProcessError when the program cannot be started.
    virtual QCoro::Task<ProcessResult> run(ProcessSpec spec, std::stop_token stop = {}, LineSink onLine = {}) = 0;

    /// Starts an emulator in a session of its own, its streams on /dev/null. Returns when it runs; throws
    /// ProcessError when it cannot be started.
    virtual QCoro::Task<ProcessId> startEmulator(ProcessSpec spec) = 0;

    /// The exit code once a process of `startEmulator` has ended (it may have ended already); none when it crashed
    /// or was not started here.
    virtual QCoro::Task<std::optional<int>> waitForEmulator(ProcessId id) = 0;

    /// True while a process with this pid and start time exists.
    virtual bool isRunning(ProcessId id) const = 0;

    /// Sends TERM to this very process, whoever started it, and nothing more; false when it does not exist or may not
    /// be told.
    virtual bool askToEnd(ProcessId id) const = 0;
};

} // namespace ludarium

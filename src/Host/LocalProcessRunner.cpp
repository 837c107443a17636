#include "Host/LocalProcessRunner.h"

#include "Host/ProcessTable.h"
#include "Host/ToolProcess.h"

#include <QCoro/QCoroFuture>
#include <QPointer>
#include <QProcess>
#include <QPromise>
#include <csignal>
#include <unistd.h>

namespace ludarium {

namespace {

void sendStreamsNowhere(QProcess &process) {
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
}

} // namespace

/// One emulator: while it runs, its QProcess; afterwards, how it ended.
struct LocalProcessRunner::Emulator {
    ProcessId id;
    std::unique_ptr<QProcess> process;
    QPromise<void> started;
    QPromise<std::optional<int>> ended;
    QString failure;
};

LocalProcessRunner::LocalProcessRunner(const HostPaths &paths, QObject *parent) : QObject(parent), m_paths(paths) {}

LocalProcessRunner::~LocalProcessRunner() {
    // The destructor of QProcess would kill the emulator: it is never run. The list keeps them reachable.
    static auto *const leftRunning = new QList<std::shared_ptr<Emulator>>;
    for (const auto &emulator : std::as_const(m_emulators)) {
        if (!emulator->process)
            continue;
        emulator->process->disconnect();
        leftRunning->append(emulator);
    }
}

QCoro::Task<ProcessResult> LocalProcessRunner::run(ProcessSpec spec, std::stop_token stop, LineSink onLine) {
    if (stop.stop_requested())
        co_return ProcessResult{
            .exitCode = -1, .crashed = false, .cancelled = true, .standardOutput = {}, .standardError = {}};
    ToolProcess tool(spec, m_paths.childEnvironment(), std::move(onLine));
    QFuture<void> ended = tool.start();
    // The request to stop may come from any thread.
    const std::stop_callback cancelling(stop, [tool = QPointer<ToolProcess>(&tool)] {
        QMetaObject::invokeMethod(
            tool.data(), [tool] { tool->cancel(); }, Qt::QueuedConnection);
    });
    co_await ended;
    co_return tool.takeResult();
}

QCoro::Task<ProcessId> LocalProcessRunner::startEmulator(ProcessSpec spec) {
    auto emulator = std::make_shared<Emulator>();
    emulator->process = std::make_unique<QProcess>();
    QProcess &process = *emulator->process;
    process.setProgram(spec.program);
    process.setArguments(spec.arguments);
    process.setWorkingDirectory(spec.workingDirectory);
    process.setProcessEnvironment(spec.environment.value_or(m_paths.childEnvironment()));
    sendStreamsNowhere(process);
    // A session of its own: neither a closed terminal nor Ctrl+C in it reaches the game.
    process.setChildProcessModifier([] { ::setsid(); });

    emulator->started.start();
    emulator->ended.start();
    connect(&process, &QProcess::started, this, [this, emulator] {
        const qint64 pid = emulator->process->processId();
        emulator->id = {pid, processStartTime(pid).value_or(0)};
        m_emulators.insert(pid, emulator);
        emulator->started.finish();
    });
    connect(&process, &QProcess::errorOccurred, this, [emulator](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return; // a crash also ends in finished()
        emulator->failure = startFailure(*emulator->process);
        emulator->started.finish();
    });
    connect(&process, &QProcess::finished, this, [emulator](int exitCode, QProcess::ExitStatus status) {
        emulator->ended.addResult(status == QProcess::NormalExit ? std::optional<int>(exitCode) : std::nullopt);
        emulator->ended.finish();
        // Not deleted inside its own signal.
        emulator->process.release()->deleteLater();
    });

    QFuture<void> started = emulator->started.future();
    process.start();
    co_await started;
    if (!emulator->failure.isNull()) {
        emulator->process.release()->deleteLater();
        throw ProcessError(emulator->failure.toStdString());
    }
    co_return emulator->id;
}

QCoro::Task<std::optional<int>> LocalProcessRunner::waitForEmulator(ProcessId id) {
    const std::shared_ptr<Emulator> emulator = m_emulators.value(id.pid);
    if (!emulator || emulator->id != id)
        co_return std::nullopt;
    QFuture<std::optional<int>> ended = emulator->ended.future();
    co_await ended;
    co_return ended.result();
}

bool LocalProcessRunner::isRunning(ProcessId id) const {
    return processStartTime(id.pid) == id.startTime;
}

bool LocalProcessRunner::askToEnd(ProcessId id) const {
    return isRunning(id) && ::kill(pid_t(id.pid), SIGTERM) == 0;
}

void LocalProcessRunner::startDetached(const ProcessSpec &spec) {
    QProcess process;
    process.setProgram(spec.program);
    process.setArguments(spec.arguments);
    process.setWorkingDirectory(spec.workingDirectory);
    if (spec.environment)
        process.setProcessEnvironment(*spec.environment);
    sendStreamsNowhere(process);
    if (!process.startDetached())
        throw ProcessError(startFailure(process).toStdString());
}

} // namespace ludarium

#include "Host/ToolProcess.h"

#include "Host/LocalProcessRunner.h"

#include <csignal>
#include <unistd.h>
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace ludarium {

namespace {

constexpr std::chrono::seconds killDelay{5};
constexpr qsizetype longestLine = 1 << 20;

} // namespace

QString startFailure(const QProcess &process) {
    const QString text = process.errorString();
    if (text.startsWith(QLatin1StringView("chdir: ")))
        return process.workingDirectory() + QStringLiteral(": ") + text.mid(7);
    const qsizetype colon = text.indexOf(QLatin1StringView(": "));
    return process.program() + QStringLiteral(": ") +
           (text.startsWith(QLatin1StringView("exec")) && colon > 0 ? text.mid(colon + 2) : text);
}

ToolProcess::ToolProcess(const ProcessSpec &spec, const QProcessEnvironment &environment,
                         ProcessRunner::LineSink onLine)
    : m_input(spec.standardInput), m_onLine(std::move(onLine)) {
    m_process.setProgram(spec.program);
    m_process.setArguments(spec.arguments);
    m_process.setWorkingDirectory(spec.workingDirectory);
    m_process.setProcessEnvironment(spec.environment.value_or(environment));
    // A tool that asks a question reads its end of file instead of waiting for an answer.
    if (m_input.isEmpty())
        m_process.setStandardInputFile(QProcess::nullDevice());
    // A group of its own, so that cancelling a script also reaches what it has started.
    m_process.setChildProcessModifier([] {
        ::setpgid(0, 0);
#ifdef Q_OS_LINUX
        // A tool must not go on writing when this program was killed: the next start cleans up behind it.
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
    });
    m_killTimer.setSingleShot(true);
    m_killTimer.setTimerType(Qt::PreciseTimer);
    m_killTimer.setInterval(killDelay);
    connect(&m_killTimer, &QTimer::timeout, this, [this] { signalGroup(SIGKILL); });
    connect(&m_process, &QProcess::readyReadStandardOutput, this,
            [this] { take(m_output, m_process.readAllStandardOutput()); });
    connect(&m_process, &QProcess::readyReadStandardError, this,
            [this] { take(m_error, m_process.readAllStandardError()); });
    connect(&m_process, &QProcess::finished, this, [this] {
        take(m_output, m_process.readAllStandardOutput());
        take(m_error, m_process.readAllStandardError());
        for (Stream *stream : {&m_output, &m_error})
            if (!stream->line.isEmpty())
                deliver(std::exchange(stream->line, {}));
        finish();
    });
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return; // a crash also ends in finished()
        m_startFailure = startFailure(m_process);
        finish();
    });
}

QFuture<void> ToolProcess::start() {
    m_promise.start();
    QFuture<void> future = m_promise.future();
    m_process.start();
    if (!m_input.isEmpty() && m_process.state() != QProcess::NotRunning) {
        m_process.write(m_input);
        m_process.closeWriteChannel();
    }
    return future;
}

void ToolProcess::take(Stream &stream, const QByteArray &bytes) {
    stream.kept += bytes.first(std::min(bytes.size(), LocalProcessRunner::keptOutput - stream.kept.size()));
    if (!m_onLine)
        return;
    for (const char byte : bytes) {
        // Progress is often written with a carriage return alone; one before a line feed belongs to it.
        const bool secondHalf = byte == '\n' && stream.afterReturn;
        stream.afterReturn = byte == '\r';
        if (secondHalf)
            continue;
        if (byte != '\n' && byte != '\r')
            stream.line += byte;
        if (byte == '\n' || byte == '\r' || stream.line.size() >= longestLine)
            deliver(std::exchange(stream.line, {}));
    }
}

void ToolProcess::deliver(const QByteArray &line) {
    if (!m_onLine || m_sinkFailure)
        return;
    try {
        m_onLine(line);
    } catch (...) {
        m_sinkFailure = std::current_exception(); // must not pass through the event loop
        cancel();
    }
}

void ToolProcess::cancel() {
    if (m_finished || m_process.state() == QProcess::NotRunning)
        return;
    m_cancelled = true;
    signalGroup(SIGTERM);
    if (!m_killTimer.isActive())
        m_killTimer.start();
}

void ToolProcess::signalGroup(int number) {
    // While QProcess says that it runs, the child is not reaped and its number not given to another process. Right
    // after the start the group may not be there yet.
    const auto pid = static_cast<pid_t>(m_process.processId());
    if (pid > 0 && m_process.state() != QProcess::NotRunning && ::kill(-pid, number) != 0)
        ::kill(pid, number);
}

void ToolProcess::finish() {
    if (std::exchange(m_finished, true))
        return;
    m_killTimer.stop();
    m_promise.finish();
}

ProcessResult ToolProcess::takeResult() {
    if (!m_startFailure.isNull())
        throw ProcessError(m_startFailure.toStdString());
    if (m_sinkFailure)
        std::rethrow_exception(m_sinkFailure);
    ProcessResult result;
    result.crashed = m_process.exitStatus() == QProcess::CrashExit;
    result.exitCode = m_process.exitCode();
    result.cancelled = m_cancelled;
    result.standardOutput = std::move(m_output.kept);
    result.standardError = std::move(m_error.kept);
    return result;
}

} // namespace ludarium

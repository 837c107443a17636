#include "Services/Emulators/ToolVersion.h"

#include "Host/AppLogger.h"
#include "Host/Host.h"
#include "Host/ProcessRunner.h"

#include <QRegularExpression>
#include <QTimer>
#include <chrono>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::seconds patience{5};

/// Empty for a program that would open its window. ScummVM writes a configuration file when it finds none, so it gets
/// one that keeps nothing.
QStringList versionArguments(EmulatorProgram program) {
    switch (program) {
    case EmulatorProgram::dosbox:
    case EmulatorProgram::dosboxX:
    case EmulatorProgram::wine:
    case EmulatorProgram::retroArch:
        return {u"--version"_s};
    case EmulatorProgram::scummvm:
        return {u"--config=/dev/null"_s, u"--version"_s};
    case EmulatorProgram::mame:
        return {u"-version"_s};
    default:
        return {};
    }
}

QString firstMatch(const QString &pattern, const QString &text) {
    const QRegularExpressionMatch match = QRegularExpression(pattern).match(text);
    return match.hasMatch() ? match.captured(1) : QString();
}

} // namespace

QCoro::Task<QString> toolOutput(Host &host, QString program, QStringList arguments) {
    std::stop_source stop;
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &limit, [&stop] { stop.request_stop(); });
    limit.start(patience);
    ProcessSpec spec;
    spec.program = program;
    spec.arguments = arguments;
    spec.environment = host.paths.childEnvironment();
    const std::stop_token token = stop.get_token();
    try {
        const ProcessResult result = co_await host.processes.run(spec, token);
        co_return QString::fromUtf8(result.standardOutput + '\n' + result.standardError);
    } catch (const ProcessError &error) {
        Log::warning(u"⚠️ %1 does not tell its version: %2"_s.arg(program, QString::fromUtf8(error.what())));
    }
    co_return QString();
}

QCoro::Task<QString> emulatorVersion(Host &host, EmulatorProgram program, QString path) {
    const QStringList arguments = versionArguments(program);
    if (arguments.isEmpty())
        co_return QString();
    const QString text = co_await toolOutput(host, path, arguments);
    co_return versionIn(text);
}

QString versionIn(const QString &text) {
    return firstMatch(u"(?:^|[^\\w.])[vV]?(\\d+(?:\\.\\d+)+(?:-\\d+)?)"_s, text);
}

QString bashVersionIn(const QString &text) {
    return firstMatch(u"version (\\d+\\.\\d+)"_s, text);
}

} // namespace ludarium

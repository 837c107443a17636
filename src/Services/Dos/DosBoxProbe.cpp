#include "Services/Dos/DosBoxProbe.h"

#include "Host/AppLogger.h"
#include "Host/Host.h"
#include "Host/ProcessRunner.h"

#include <QTimer>

namespace ludarium {

QCoro::Task<DosBoxFlavour> probeDosBox(Host &host, QString program) {
    QByteArray output;
    try {
        // A build that does not know the question might start instead of answering.
        std::stop_source stop;
        QTimer limit;
        limit.setSingleShot(true);
        QObject::connect(&limit, &QTimer::timeout, &limit, [&stop] { stop.request_stop(); });
        limit.start(std::chrono::seconds(5));
        ProcessSpec spec;
        spec.program = program;
        spec.arguments.append(QStringLiteral("--version"));
        spec.environment = host.paths.childEnvironment();
        const std::stop_token token = stop.get_token();
        const ProcessResult result = co_await host.processes.run(spec, token);
        output = result.standardOutput + '\n' + result.standardError;
    } catch (const ProcessError &error) {
        // Starting it will fail with the same reason, and that is the one that the user sees.
        Log::warning(
            QStringLiteral("⚠️ %1 does not tell its version: %2").arg(program, QString::fromUtf8(error.what())));
    }
    co_return parseDosBoxVersion(output, program);
}

} // namespace ludarium

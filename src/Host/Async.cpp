#include "Host/Async.h"

#include "Host/AppLogger.h"

namespace ludarium {

namespace {

QCoro::Task<> logFailure(QCoro::Task<> task, const char *what) {
    try {
        co_await std::move(task);
    } catch (...) {
        Log::error(QStringLiteral("❌ %1: %2").arg(QString::fromUtf8(what), currentExceptionText()));
    }
}

} // namespace

void spawn(QCoro::Task<> task, const char *what) {
    // The frame keeps itself alive until it has run to its end; the handle is not needed for that.
    const QCoro::Task<> watched = logFailure(std::move(task), what);
}

QString currentExceptionText() {
    const std::exception_ptr current = std::current_exception();
    if (!current)
        return QStringLiteral("no error");
    try {
        std::rethrow_exception(current);
    } catch (const std::exception &error) {
        return QString::fromUtf8(error.what());
    } catch (...) {
        return QStringLiteral("unknown error");
    }
}

} // namespace ludarium

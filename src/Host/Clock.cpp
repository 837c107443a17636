#include "Host/Clock.h"

#include <QCoro/QCoroTimer>

namespace ludarium {

QDateTime SystemClock::now() const {
    return QDateTime::currentDateTime();
}

std::chrono::nanoseconds SystemClock::monotonic() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

QCoro::Task<> SystemClock::sleep(std::chrono::milliseconds duration) {
    co_await QCoro::sleepFor(duration);
}

} // namespace ludarium

#pragma once

#include <QCoro/QCoroTask>
#include <QDateTime>
#include <chrono>

namespace ludarium {

/// Time as services see it. Tests replace it by a clock that moves when told.
class Clock {
  public:
    virtual ~Clock() = default;

    /// Wall-clock time in the local zone. For dates that are stored or shown, never for durations.
    virtual QDateTime now() const = 0;

    /// Time since an arbitrary start; never goes back, also when the wall clock is set.
    virtual std::chrono::nanoseconds monotonic() const = 0;

    /// Resumes on the calling thread's event loop after `duration`.
    virtual QCoro::Task<> sleep(std::chrono::milliseconds duration) = 0;
};

/// The machine's own clock.
class SystemClock : public Clock {
  public:
    QDateTime now() const override;
    std::chrono::nanoseconds monotonic() const override;
    QCoro::Task<> sleep(std::chrono::milliseconds duration) override;
};

} // namespace ludarium

#pragma once

#include <QtGlobal>
#include <optional>

namespace ludarium {

/// Start time of a process that exists and has not ended: clock ticks since boot on Linux, microseconds since 1970 on
/// macOS. None for a pid without a process and for one that has ended but is not reaped.
std::optional<qint64> processStartTime(qint64 pid);

/// Seconds since such a start time, told by a clock that nobody sets and that goes on while the machine sleeps.
double secondsSinceProcessStart(qint64 startTime);

} // namespace ludarium

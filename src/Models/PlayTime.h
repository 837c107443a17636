#pragma once

#include <QString>

namespace ludarium {

/// How long something was played, as people read it everywhere: "{m}m" below an hour, else "{h}h {m}m", in whole
/// minutes that have passed.
QString formatPlayTime(double seconds);
/// One session to the second, for the log: "{s}s", "{m}m {s}s" or "{h}h {m}m {s}s".
QString formatSessionDuration(double seconds);

} // namespace ludarium

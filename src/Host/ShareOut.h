#pragma once

#include <cstddef>
#include <functional>

namespace ludarium {

/// Runs `work` for every number below `count`, on this thread and on whatever threads of the pool are free at once, and
/// returns when all is done. It never waits for a thread to become free, so work that runs on the pool itself may use
/// it: QtConcurrent's blocking calls hang there as soon as every thread of the pool is in one. `work` must not throw.
void shareOut(size_t count, const std::function<void(size_t)> &work);

} // namespace ludarium

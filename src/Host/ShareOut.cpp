#include "Host/ShareOut.h"

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>
#include <algorithm>
#include <atomic>

namespace ludarium {

void shareOut(size_t count, const std::function<void(size_t)> &work) {
    std::atomic<size_t> next{0};
    const auto takePart = [&] {
        for (size_t i = next++; i < count; i = next++)
            work(i);
    };
    QSemaphore ended;
    int helpers = 0;
    QThreadPool *const pool = QThreadPool::globalInstance();
    const int wanted = std::min<int>(QThread::idealThreadCount() - 1, static_cast<int>(count) - 1);
    while (helpers < wanted && pool->tryStart([&] {
        takePart();
        ended.release();
    }))
        ++helpers;
    takePart();
    ended.acquire(helpers);
}

} // namespace ludarium

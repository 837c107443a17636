#include "Host/ShareOut.h"

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>
#include <atomic>
#include <gtest/gtest.h>
#include <vector>

namespace ludarium::test {

TEST(ShareOut, RunsEveryPartOnce) {
    for (const size_t count : {0, 1, 2, 1000}) {
        std::vector<std::atomic<int>> runs(count);
        shareOut(count, [&](size_t i) { ++runs[i]; });
        for (const std::atomic<int> &n : runs)
            EXPECT_EQ(n, 1);
    }
}

TEST(ShareOut, EndsAlsoWhenEveryThreadOfThePoolIsInIt) {
    QThreadPool *const pool = QThreadPool::globalInstance();
    const int threads = pool->maxThreadCount();
    QSemaphore entered;
    QSemaphore ended;
    std::atomic<int> parts{0};
    for (int i = 0; i < threads; ++i)
        pool->start([&] {
            entered.release();
            // All of the pool's threads are taken before any of them shares out.
            while (entered.available() < threads)
                QThread::yieldCurrentThread();
            shareOut(100, [&](size_t) { ++parts; });
            ended.release();
        });
    EXPECT_TRUE(ended.tryAcquire(threads, 20'000));
    EXPECT_EQ(parts, 100 * threads);
}

} // namespace ludarium::test

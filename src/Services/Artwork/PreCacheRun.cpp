#include "Services/Artwork/PreCacheRun.h"

#include "Services/Artwork/ThumbnailDiskCache.h"

#include <QSemaphore>
#include <QThreadPool>

namespace ludarium {

void PreCacheRun::processGameForCache(const Game &game, const std::stop_token &stop) {
    const std::optional<FoundImage> image = m_finder.bestListedImageURL(game, m_collectionPath, m_dirCache);
    QString failure;
    const bool made =
        image && !m_cache.contains(image->url) && m_cache.saveToDiskCacheFromSource(image->url, stop, &failure);
    ++(made ? m_cached : m_skipped);
    if (failure.isEmpty())
        return;
    ++m_failed;
    const QMutexLocker locker(&m_failureMutex);
    m_failure = failure;
}

PreCacheCount PreCacheRun::run(QThreadPool &pool, int mostAtOnce, const std::stop_token &stop,
                               const std::function<void()> &begun, const std::function<void()> &advanced) {
    m_cache.settle();
    m_dirCache = m_finder.preScanImageDirectories(m_games, m_collectionPath, stop);
    const auto takePart = [&] {
        if (begun)
            begun();
        for (qsizetype i = m_next++; i < m_games.size() && !stop.stop_requested(); i = m_next++) {
            processGameForCache(*m_games[i], stop);
            if (advanced)
                advanced();
        }
    };
    QSemaphore ended;
    int helpers = 0;
    while (helpers + 1 < mostAtOnce && pool.tryStart([&] {
        takePart();
        ended.release();
    }))
        ++helpers;
    takePart();
    ended.acquire(helpers);
    PreCacheCount result = count();
    result.stopped = stop.stop_requested();
    return result;
}

PreCacheCount PreCacheRun::count() const {
    const QMutexLocker locker(&m_failureMutex);
    return {m_cached, m_skipped, int(m_games.size()), false, m_failed, m_failure};
}

} // namespace ludarium

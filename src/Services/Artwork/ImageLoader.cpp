#include "Services/Artwork/ImageLoader.h"

#include "Host/AppLogger.h"
#include "Host/Host.h"
#include "Host/Imaging/ImageCodec.h"
#include "Host/NotificationCenter.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Host/ThreadPriority.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QPointer>
#include <QScopeGuard>
#include <algorithm>

namespace ludarium {

namespace {

constexpr int mostPreCachedAtOnce = 8;
constexpr int mostPreCachedInBackground = 4;
constexpr double slowDiskHit = 0.01; ///< seconds
constexpr qsizetype mostUnreadableLogged = 100;

QString thumbnailKey(const QString &url, QSize size) {
    return QStringLiteral("%1_%2x%3").arg(url).arg(size.width()).arg(size.height());
}

double secondsOf(const QElapsedTimer &timer) {
    return double(timer.nsecsElapsed()) / 1e9;
}

/// Absence counts as off here; the default of the key is what the settings window offers.
bool isOn(const SettingsStore &settings) {
    return settings.storedValue(Settings::enableThumbnailDiskCache).value_or(false);
}

} // namespace

ImageLoader::ImageLoader(Host &host, QObject *parent)
    : QObject(parent), m_host(host), m_diskCacheOn(isOn(host.settings)),
      m_diskCache(host.paths.caches() + QStringLiteral("/thumbnails")) {
    connect(&host.settings, &SettingsStore::changed, this, [this] { m_diskCacheOn = isOn(m_host.settings); });
    const int cores = std::max(1, QThread::idealThreadCount());
    m_pool.setMaxThreadCount(std::clamp(cores, 2, 4));
    // Twice the cores, so that some wait for the disk while others decode.
    m_preCachePool.setMaxThreadCount(std::clamp(2 * cores, 2, mostPreCachedAtOnce));
    m_backgroundPool.setMaxThreadCount(std::min(2 * cores, mostPreCachedInBackground));
}

ImageLoader::~ImageLoader() {
    m_stop.request_stop();
    m_preCacheStop.request_stop();
    m_backgroundStop.request_stop();
    for (QThreadPool *pool : {&m_pool, &m_preCachePool, &m_backgroundPool})
        pool->waitForDone();
}

QCoro::Task<Bitmap> ImageLoader::loadImage(QString url) {
    auto work = [this, url] { return loadImageNow(url); };
    return runOnPool(m_pool, work);
}

QCoro::Task<Bitmap> ImageLoader::thumbnail(QString url, QSize size, std::stop_token stop) {
    auto work = [this, url, size, stop] { return thumbnailNow(url, size, stop); };
    return runOnPool(m_pool, work);
}

Bitmap ImageLoader::decode(const QString &url, int longestSide, const std::stop_token &stop) {
    {
        const QMutexLocker lock(&m_loadingLock);
        if (m_broken.contains(url))
            return {};
    }
    QString reason;
    bool retry = false;
    try {
        return decodeImageFile(url, longestSide, stop);
    } catch (const ImageError &error) {
        reason = QString::fromUtf8(error.what());
        retry = error.kind() == ImageError::Case::unreadable;
    } catch (const std::bad_alloc &) {
        reason = QStringLiteral("not enough memory");
        retry = true;
    }
    const QMutexLocker lock(&m_loadingLock);
    QSet<QString> &known = retry ? m_unreadable : m_broken;
    // A volume that went away takes thousands of pictures with it.
    if (!known.contains(url) && (!retry || known.size() < mostUnreadableLogged)) {
        known.insert(url);
        Log::warning(QStringLiteral("Picture cannot be shown: %1: %2").arg(url, reason));
    }
    return {};
}

template<typename Load>
Bitmap ImageLoader::loadOnce(ImageMemoryCache &cache, const QString &key, const std::stop_token &stop,
                             const Load &load) {
    if (Bitmap kept = cache.object(key); !kept.isNull())
        return kept;
    int generation = 0;
    {
        const QMutexLocker lock(&m_loadingLock);
        for (;;) {
            if (Bitmap kept = cache.object(key); !kept.isNull())
                return kept;
            if (stop.stop_requested() || m_stop.stop_requested())
                return {};
            if (!m_loadingTasks.contains(key))
                break;
            m_loadingEnded.wait(&m_loadingLock);
        }
        m_loadingTasks.insert(key);
        generation = m_generation;
    }
    const auto finish = qScopeGuard([&] {
        const QMutexLocker lock(&m_loadingLock);
        m_loadingTasks.remove(key);
        m_loadingEnded.wakeAll();
    });
    Bitmap image = load();
    {
        const QMutexLocker lock(&m_loadingLock);
        if (generation == m_generation)
            cache.insert(key, image);
    }
    return image;
}

Bitmap ImageLoader::loadImageNow(const QString &url, const std::stop_token &stop) {
    return loadOnce(m_imageCache, url, stop, [&] { return decode(url, 0, stop); });
}

Bitmap ImageLoader::thumbnailNow(const QString &url, QSize size, const std::stop_token &stop) {
    const int longestSide = 2 * std::max(size.width(), size.height());
    return loadOnce(m_thumbnailCache, thumbnailKey(url, size), stop,
                    [&] { return decodeThumbnail(url, longestSide, stop); });
}

Bitmap ImageLoader::decodeThumbnail(const QString &url, int longestSide, const std::stop_token &stop) {
    const bool diskCache = m_diskCacheOn;
    if (diskCache) {
        QElapsedTimer timer;
        timer.start();
        if (Bitmap copy = m_diskCache.loadFromDiskCache(url, longestSide, stop); !copy.isNull()) {
            if (const double seconds = secondsOf(timer); seconds > slowDiskHit)
                Log::debug(QStringLiteral("Disk cache hit: %1ms for %2")
                               .arg(seconds * 1000, 0, 'f', 1)
                               .arg(QFileInfo(url).fileName()));
            return copy;
        }
    }
    QElapsedTimer timer;
    timer.start();
    Bitmap image = decode(url, longestSide, stop);
    if (image.isNull())
        return {};
    recordLoadTime(secondsOf(timer));
    if (diskCache)
        m_backgroundPool.start([this, url, stop = m_stop.get_token()] {
            lowerThreadPriority();
            if (!stop.stop_requested())
                m_diskCache.saveToDiskCacheFromSource(url, stop);
        });
    return image;
}

void ImageLoader::recordLoadTime(double seconds) {
    if (m_loadTimes.record(seconds, m_diskCacheOn))
        QMetaObject::invokeMethod(
            this, [this] { m_host.notifications.post(Notifications::slowLoadDetected); }, Qt::QueuedConnection);
}

void ImageLoader::showPreCache(bool running, double progress, const QString &status) {
    if (running == m_isPreCaching && progress == m_preCacheProgress && status == m_preCacheStatus)
        return;
    m_isPreCaching = running;
    m_preCacheProgress = progress;
    m_preCacheStatus = status;
    Q_EMIT preCacheChanged();
}

void ImageLoader::followPreCache(const std::shared_ptr<PreCacheRun> &run) {
    // Thousands of games end within a second when their copies are there: one event for as many as have ended.
    if (m_preCacheNews.exchange(true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this, run] {
            m_preCacheNews = false;
            if (m_preCacheTask != run)
                return;
            const PreCacheCount count = run->count();
            const int done = count.cached + count.skipped;
            showPreCache(true, count.total > 0 ? double(done) / count.total : 1,
                         done == 0 ? QStringLiteral("Caching thumbnails...")
                                   : QStringLiteral("Caching thumbnails... %1 cached, %2 skipped")
                                         .arg(count.cached)
                                         .arg(count.skipped));
        },
        Qt::QueuedConnection);
}

QCoro::Task<PreCacheCount> ImageLoader::preCacheAllThumbnails(GameList games, QString collectionPath) {
    cancelPreCache();
    m_preCacheStop = std::stop_source();
    const std::stop_token stop = m_preCacheStop.get_token();
    const auto run = std::make_shared<PreCacheRun>(*this, m_diskCache, games, collectionPath);
    m_preCacheTask = run;
    showPreCache(true, 0, QStringLiteral("Scanning image directories..."));
    const QPointer<ImageLoader> self(this);
    auto work = [this, run, stop] {
        const auto follow = [&] { followPreCache(run); };
        return run->run(m_preCachePool, m_preCachePool.maxThreadCount(), stop, follow, follow);
    };
    const PreCacheCount count = co_await runOnPool(m_preCachePool, work);
    if (!self || m_preCacheTask != run)
        co_return count;
    m_preCacheTask.reset();
    showPreCache(false, 1, QStringLiteral("Done! %1 thumbnails cached.").arg(count.cached));
    Log::info(QStringLiteral("Pre-cache complete: %1 cached, %2 skipped out of %3 games")
                  .arg(count.cached)
                  .arg(count.skipped)
                  .arg(count.total));
    co_return count;
}

QCoro::Task<> ImageLoader::backgroundPreCacheThumbnails(GameList games, QString collectionPath) {
    m_backgroundStop.request_stop();
    if (!m_diskCacheOn)
        co_return;
    m_backgroundStop = std::stop_source();
    const std::stop_token stop = m_backgroundStop.get_token();
    const auto run = std::make_shared<PreCacheRun>(*this, m_diskCache, games, collectionPath);
    QElapsedTimer timer;
    timer.start();
    auto work = [this, run, stop] {
        return run->run(m_backgroundPool, mostPreCachedInBackground, stop, lowerThreadPriority);
    };
    const PreCacheCount count = co_await runOnPool(m_backgroundPool, work);
    if (!count.stopped)
        Log::info(QStringLiteral("Background pre-cache complete: %1 cached, %2 skipped in %3s")
                      .arg(count.cached)
                      .arg(count.skipped)
                      .arg(secondsOf(timer), 0, 'f', 1));
}

void ImageLoader::cancelPreCache() {
    m_preCacheStop.request_stop();
    m_preCacheTask.reset();
    showPreCache(false, m_preCacheProgress, QString());
}

void ImageLoader::clearCache() {
    m_backgroundStop.request_stop(); // it works with listings that are out of date
    clearFound();
    {
        const QMutexLocker lock(&m_loadingLock);
        ++m_generation;
        m_broken.clear();
        m_unreadable.clear();
        m_imageCache.clear();
        m_thumbnailCache.clear();
    }
    Q_EMIT cleared();
}

void ImageLoader::clearGameCache(const Game &game, const QString &collectionPath) {
    const QStringList urls = clearFound(game, collectionPath);
    {
        const QMutexLocker lock(&m_loadingLock);
        ++m_generation;
        for (const QString &url : urls) {
            m_broken.remove(url);
            m_unreadable.remove(url);
            m_imageCache.remove(url);
            m_thumbnailCache.removePrefix(url + QLatin1Char('_'));
        }
    }
    Log::info(QStringLiteral("🔄 Cleared image cache for game: %1 (%2 images)").arg(game.title).arg(urls.size()));
    Q_EMIT cleared();
}

} // namespace ludarium

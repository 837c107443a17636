#pragma once

#include "Host/Async.h"
#include "Services/Artwork/ArtworkFinder.h"
#include "Services/Artwork/ImageMemoryCache.h"
#include "Services/Artwork/LoadTimes.h"
#include "Services/Artwork/PreCacheRun.h"
#include "Services/Artwork/ThumbnailDiskCache.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QSize>
#include <QThreadPool>
#include <QWaitCondition>
#include <atomic>
#include <stop_token>

namespace ludarium {

struct Host;

/// The pictures of games, found and decoded fast enough for a grid of thousands on a slow disk: folders are listed
/// once, decoded pictures and thumbnails are kept in memory, and, when the user turned it on, small copies on the
/// local disk. Measures how long thumbnails take and tells (as a notification) when those copies would help.
///
/// Lives on the main thread; what it inherits, and the functions ending in "Now", read files and are for any other.
class ImageLoader : public QObject, public ArtworkFinder {
    Q_OBJECT
  public:
    static constexpr qsizetype imageCountLimit = 100;
    static constexpr qint64 imageCostLimit = 52'428'800;
    static constexpr qsizetype thumbnailCountLimit = 5'000;
    static constexpr qint64 thumbnailCostLimit = 209'715'200;

    explicit ImageLoader(Host &host, QObject *parent = nullptr);
    /// Stops what is under way and waits for it.
    ~ImageLoader() override;

    /// The whole picture; null when it cannot be read. The log tells why, once a picture.
    QCoro::Task<Bitmap> loadImage(QString url);
    /// The picture with a longer side of at most twice that of `size`, which is in points; null when it cannot be read
    /// or `stop` was requested.
    QCoro::Task<Bitmap> thumbnail(QString url, QSize size, std::stop_token stop = {});
    Bitmap loadImageNow(const QString &url, const std::stop_token &stop = {});
    Bitmap thumbnailNow(const QString &url, QSize size, const std::stop_token &stop = {});
    /// Runs a look-up, or anything else that reads files, on this object's threads. `work` is moved from.
    template<typename Work>
    auto run(Work &work) {
        return runOnPool(m_pool, work);
    }

    /// Copies the picture of every game to the local disk, showing how far it is. One at a time: a run that is under
    /// way is cancelled.
    QCoro::Task<PreCacheCount> preCacheAllThumbnails(GameList games, QString collectionPath);
    /// The same quietly, at the lowest priority; does nothing unless the disk cache is on.
    QCoro::Task<> backgroundPreCacheThumbnails(GameList games, QString collectionPath);
    void cancelPreCache();
    bool isPreCaching() const { return m_isPreCaching; }
    double preCacheProgress() const { return m_preCacheProgress; } ///< 0 to 1
    QString preCacheStatus() const { return m_preCacheStatus; }

    /// Forgets everything in memory.
    void clearCache();
    /// Forgets one game, whose pictures have changed.
    void clearGameCache(const Game &game, const QString &collectionPath);

    const ThumbnailDiskCache &diskCache() const { return m_diskCache; }
    bool isDiskCacheOn() const { return m_diskCacheOn; }
    const ImageMemoryCache &imageCache() const { return m_imageCache; }
    const ImageMemoryCache &thumbnailCache() const { return m_thumbnailCache; }

  Q_SIGNALS:
    void preCacheChanged();
    /// What was shown may be out of date.
    void cleared();

  private:
    Bitmap decode(const QString &url, int longestSide, const std::stop_token &stop);
    Bitmap decodeThumbnail(const QString &url, int longestSide, const std::stop_token &stop);
    template<typename Load>
    Bitmap loadOnce(ImageMemoryCache &cache, const QString &key, const std::stop_token &stop, const Load &load);
    void recordLoadTime(double seconds);
    void showPreCache(bool running, double progress, const QString &status);
    void followPreCache(const std::shared_ptr<PreCacheRun> &run);

    Host &m_host;
    std::atomic<bool> m_diskCacheOn = false; ///< the setting, which only the main thread may read
    ThumbnailDiskCache m_diskCache;
    ImageMemoryCache m_imageCache{imageCountLimit, imageCostLimit};
    ImageMemoryCache m_thumbnailCache{thumbnailCountLimit, thumbnailCostLimit};
    LoadTimes m_loadTimes;

    QMutex m_loadingLock; ///< guards what follows
    QWaitCondition m_loadingEnded;
    QSet<QString> m_loadingTasks; ///< keys of what is being decoded, so that nothing is decoded twice at once
    QSet<QString> m_broken;       ///< pictures that will not decode, logged and not tried again
    QSet<QString> m_unreadable;   ///< pictures that could not be read, logged but tried again
    int m_generation = 0;         ///< of the memory caches: what was decoded before a clearing is not kept

    bool m_isPreCaching = false;
    double m_preCacheProgress = 0;
    QString m_preCacheStatus;
    std::shared_ptr<PreCacheRun> m_preCacheTask;
    std::stop_source m_preCacheStop;
    std::stop_source m_backgroundStop;
    std::stop_source m_stop; ///< of everything, at the end
    std::atomic<bool> m_preCacheNews = false;

    // Last: their jobs use what stands above.
    QThreadPool m_pool; ///< look-ups and decoding
    QThreadPool m_preCachePool;
    QThreadPool m_backgroundPool; ///< its threads yield to others
};

} // namespace ludarium

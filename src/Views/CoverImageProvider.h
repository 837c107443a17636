#pragma once

#include <QCache>
#include <QImage>
#include <QMutex>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>
#include <atomic>
#include <memory>

namespace ludarium {

class CoverStore;

/// Serves `image://cover/…`: found, decoded at the wanted size and given round corners on a pool of its own. The
/// newest request is served first, and one whose cell left the screen is dropped. A game without a picture gets one
/// transparent pixel, which the cover component takes as "keep the placeholder".
class CoverImageProvider : public QQuickAsyncImageProvider {
  public:
    explicit CoverImageProvider(std::shared_ptr<CoverStore> store);
    ~CoverImageProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

    /// Requests that are not yet answered.
    int pending() const { return m_pending; }

    /// Decodes a picture to fit `box` with round corners of `radius` pixels; null when it cannot be read.
    static QImage decode(const QString &path, QSize box, double radius);

  private:
    class Response;
    class Job;
    QImage produce(const QString &id, QSize box);

    std::shared_ptr<CoverStore> m_store;
    QMutex m_cacheMutex;
    QCache<QString, QImage> m_cache;
    std::atomic<int> m_pending = 0;
    std::atomic<int> m_sequence = 0;
    QThreadPool m_pool; // last: its jobs use what stands above
};

} // namespace ludarium

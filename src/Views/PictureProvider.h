#pragma once

#include "Host/Imaging/Bitmap.h"

#include <QImage>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>
#include <atomic>
#include <stop_token>

namespace ludarium {

/// Serves pictures to QML that are made on a pool of its own. The newest request is served first, and one whose item
/// left the screen is given up. Where there is no picture it answers with one transparent pixel, which components take
/// as "keep the placeholder": an error would be printed each time.
class PictureProvider : public QQuickAsyncImageProvider {
  public:
    ~PictureProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

    /// Requests that are not yet answered.
    int pending() const { return m_pending; }

    /// The pixels as they are, without a copy.
    static QImage imageOf(const Bitmap &bitmap);

  protected:
    PictureProvider();
    /// Called on the pool; null for no picture. `size` may be empty.
    virtual QImage produce(const QString &id, QSize size, const std::stop_token &stop) = 0;
    /// Ends all requests. To be called in the destructor of what implements `produce`.
    void finish();

  private:
    class Response;
    class Job;

    std::stop_source m_stop;
    std::atomic<int> m_pending = 0;
    std::atomic<int> m_sequence = 0;
    QThreadPool m_pool; // last: its jobs use what stands above
};

} // namespace ludarium

#pragma once

#include "Host/Imaging/Bitmap.h"

#include <QImage>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>
#include <atomic>
#include <memory>
#include <stop_token>

namespace ludarium {

/// Serves pictures to QML that are made on a pool of its own. The newest request is served first, and one whose item
/// left the screen is given up. Where there is no picture it answers with one transparent pixel, which components take
/// as "keep the placeholder": an error would be printed each time.
class PictureProvider : public QQuickAsyncImageProvider {
  public:
    ~PictureProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

    /// The requests of one provider. The engine keeps a provider for as long as one of its answers is on the way, which
    /// may be longer than itself; so whoever owns what pictures are made from ends the requests before it goes.
    class Requests {
      public:
        Requests();
        /// Answers all that wait with no picture, also those that still come, and waits for what is being made.
        void finish();
        /// How many are not yet answered.
        int pending() const { return m_pending; }

      private:
        friend class PictureProvider;
        std::stop_source m_stop;
        std::atomic<int> m_pending = 0;
        QThreadPool m_pool;
    };
    const std::shared_ptr<Requests> &requests() const { return m_requests; }

    /// The pixels as they are, without a copy.
    static QImage imageOf(const Bitmap &bitmap);

  protected:
    PictureProvider() = default;
    /// Called on the pool; null for no picture. `size` may be empty.
    virtual QImage produce(const QString &id, QSize size, const std::stop_token &stop) = 0;
    /// To be called in the destructor of what implements `produce`.
    void finish() { m_requests->finish(); }

  private:
    class Response;
    class Job;

    const std::shared_ptr<Requests> m_requests = std::make_shared<Requests>();
    std::atomic<int> m_sequence = 0;
};

} // namespace ludarium

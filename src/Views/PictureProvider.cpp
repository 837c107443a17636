#include "Views/PictureProvider.h"

#include "Host/ThreadPriority.h"

#include <QRunnable>
#include <QThread>
#include <utility>

namespace ludarium {

namespace {

QImage noPicture() {
    QImage pixel(1, 1, QImage::Format_ARGB32_Premultiplied);
    pixel.fill(Qt::transparent);
    return pixel;
}

} // namespace

/// Shared between the engine, which may cancel, and the job, which answers. The engine deletes it after `finished`.
class PictureProvider::Response : public QQuickImageResponse {
  public:
    QQuickTextureFactory *textureFactory() const override {
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }
    void cancel() override { m_stop.request_stop(); }
    std::stop_token stop() const { return m_stop.get_token(); }
    void answer(QImage image) {
        m_image = image.isNull() ? noPicture() : std::move(image);
        Q_EMIT finished();
    }

  private:
    QImage m_image;
    std::stop_source m_stop;
};

class PictureProvider::Job : public QRunnable {
  public:
    Job(PictureProvider &provider, Response &response, QString id, QSize size)
        : m_provider(provider), m_response(response), m_id(std::move(id)), m_size(size) {}
    void run() override {
        // Drawing the window comes before decoding.
        static thread_local bool yielding = false;
        if (!std::exchange(yielding, true))
            lowerThreadPriority();
        const std::stop_token stop = m_response.stop();
        QImage image;
        if (!stop.stop_requested() && !m_provider.m_requests->m_stop.stop_requested())
            image = m_provider.produce(m_id, m_size, stop);
        --m_provider.m_requests->m_pending;
        m_response.answer(std::move(image));
    }

  private:
    PictureProvider &m_provider;
    Response &m_response;
    QString m_id;
    QSize m_size;
};

PictureProvider::Requests::Requests() {
    m_pool.setMaxThreadCount(qBound(2, QThread::idealThreadCount(), 4));
}

void PictureProvider::Requests::finish() {
    m_stop.request_stop();
    // The engine may let go of a provider when its last answer comes, which is on a thread of this pool: that one would
    // wait for itself, and there is nothing left to wait for.
    if (!m_pool.contains(QThread::currentThread()))
        m_pool.waitForDone();
}

PictureProvider::~PictureProvider() {
    finish();
}

QQuickImageResponse *PictureProvider::requestImageResponse(const QString &id, const QSize &requestedSize) {
    auto *response = new Response;
    ++m_requests->m_pending;
    m_requests->m_pool.start(new Job(*this, *response, id, requestedSize), ++m_sequence);
    return response;
}

QImage PictureProvider::imageOf(const Bitmap &bitmap) {
    if (bitmap.isNull())
        return {};
    const auto release = [](void *pixels) { delete static_cast<QByteArray *>(pixels); };
    auto *pixels = new QByteArray(bitmap.pixels);
    return QImage(reinterpret_cast<const uchar *>(pixels->constData()), bitmap.width, bitmap.height,
                  qsizetype(bitmap.width) * 4,
                  bitmap.opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied, release, pixels);
}

} // namespace ludarium

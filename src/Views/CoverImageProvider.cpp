#include "Views/CoverImageProvider.h"

#include "Views/CoverFinder.h"
#include "Views/CoverStore.h"

#include <QImageReader>
#include <QPainter>
#include <QRunnable>

namespace ludarium {

namespace {

/// Bytes of decoded covers that are kept.
constexpr int cacheBytes = 209'715'200;
/// Corner radius as a share of the requested width: 8 of a cell 170 wide.
constexpr double cornerShare = 0.047;
constexpr QSize defaultBox(320, 426);

QImage noPicture() {
    QImage pixel(1, 1, QImage::Format_ARGB32_Premultiplied);
    pixel.fill(Qt::transparent);
    return pixel;
}

} // namespace

/// Shared between the engine, which may cancel, and the job, which answers. The engine deletes it after `finished`.
class CoverImageProvider::Response : public QQuickImageResponse {
  public:
    QQuickTextureFactory *textureFactory() const override {
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }
    void cancel() override { m_cancelled = true; }
    bool isCancelled() const { return m_cancelled; }
    void answer(QImage image) {
        m_image = std::move(image);
        Q_EMIT finished();
    }

  private:
    QImage m_image;
    std::atomic<bool> m_cancelled = false;
};

class CoverImageProvider::Job : public QRunnable {
  public:
    Job(CoverImageProvider &provider, Response &response, QString id, QSize box)
        : m_provider(provider), m_response(response), m_id(std::move(id)), m_box(box) {}
    void run() override {
        QImage image = m_response.isCancelled() ? noPicture() : m_provider.produce(m_id, m_box);
        --m_provider.m_pending;
        m_response.answer(std::move(image));
    }

  private:
    CoverImageProvider &m_provider;
    Response &m_response;
    QString m_id;
    QSize m_box;
};

CoverImageProvider::CoverImageProvider(std::shared_ptr<CoverStore> store)
    : m_store(std::move(store)), m_cache(cacheBytes) {
    m_pool.setMaxThreadCount(qBound(2, QThread::idealThreadCount(), 4));
}

CoverImageProvider::~CoverImageProvider() {
    m_pool.waitForDone();
}

QQuickImageResponse *CoverImageProvider::requestImageResponse(const QString &id, const QSize &requestedSize) {
    auto *response = new Response;
    ++m_pending;
    m_pool.start(new Job(*this, *response, id, requestedSize.isEmpty() ? defaultBox : requestedSize), ++m_sequence);
    return response;
}

QImage CoverImageProvider::produce(const QString &id, QSize box) {
    const std::optional<CoverStore::Source> source = m_store->source(id);
    if (!source)
        return noPicture();
    const QString key = QStringLiteral("%1_%2x%3").arg(id).arg(box.width()).arg(box.height());
    {
        const QMutexLocker lock(&m_cacheMutex);
        if (const QImage *cached = m_cache.object(key))
            return *cached;
    }
    const QString path = source->finder->find(*source->game);
    QImage image = path.isEmpty() ? QImage() : decode(path, box, box.width() * cornerShare);
    if (image.isNull())
        image = noPicture();
    const QMutexLocker lock(&m_cacheMutex);
    m_cache.insert(key, new QImage(image), image.width() * image.height() * 4);
    return image;
}

QImage CoverImageProvider::decode(const QString &path, QSize box, double radius) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    if (const QSize size = reader.size(); size.isValid())
        reader.setScaledSize(size.scaled(turned ? box.transposed() : box, Qt::KeepAspectRatio).expandedTo({1, 1}));
    QImage picture = reader.read();
    if (picture.isNull())
        return {};
    const QSize fitted = picture.size().scaled(box, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (picture.size() != fitted)
        picture = picture.scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);

    QImage rounded(fitted, QImage::Format_ARGB32_Premultiplied);
    rounded.fill(Qt::transparent);
    QPainter painter(&rounded);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(picture));
    painter.drawRoundedRect(rounded.rect(), radius, radius);
    return rounded;
}

} // namespace ludarium

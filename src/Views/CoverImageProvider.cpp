#include "Views/CoverImageProvider.h"

#include "Services/Artwork/ImageLoader.h"
#include "Views/CoverStore.h"

#include <QPainter>

namespace ludarium {

namespace {

/// Corner radius as a share of the requested width: 8 of a cell 170 wide.
constexpr double cornerShare = 0.047;
constexpr QSize defaultBox(320, 426);

} // namespace

CoverImageProvider::CoverImageProvider(ImageLoader &images, std::shared_ptr<CoverStore> store, Place place)
    : m_images(images), m_store(std::move(store)), m_place(place) {}

CoverImageProvider::~CoverImageProvider() {
    finish();
}

QImage CoverImageProvider::produce(const QString &id, QSize size, const std::stop_token &stop) {
    const std::optional<CoverStore::Source> source = m_store->source(id);
    if (!source)
        return {};
    const std::optional<FoundImage> found = m_place == Place::coverflow
                                                ? m_images.coverflowImageURL(*source->game, source->collection)
                                                : m_images.bestAvailableImageURL(*source->game, source->collection);
    if (!found || stop.stop_requested())
        return {};
    const QSize box = size.isEmpty() ? defaultBox : size;
    // QML asks in pixels of the screen, of which a point has up to two; the thumbnail has two for each point.
    const QSize points((box.width() + 1) / 2, (box.height() + 1) / 2);
    return framed(imageOf(m_images.thumbnailNow(found->url, points, stop)), box, cornerRadius(box.width()));
}

double CoverImageProvider::cornerRadius(int width) {
    return width * cornerShare;
}

QImage CoverImageProvider::framed(QImage picture, QSize box, double radius) {
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

#include "Views/GalleryImageProvider.h"

#include "Services/Artwork/ImageLoader.h"

namespace ludarium {

GalleryImageProvider::~GalleryImageProvider() {
    finish();
}

QString GalleryImageProvider::url(const QString &path) {
    return QStringLiteral("image://gallery/") + QString::fromLatin1(path.toUtf8().toHex());
}

QImage GalleryImageProvider::produce(const QString &id, QSize size, const std::stop_token &stop) {
    const QString path = QString::fromUtf8(QByteArray::fromHex(id.toLatin1()));
    if (size.width() <= 0 && size.height() <= 0)
        return imageOf(m_images.loadImageNow(path, stop));
    const QSize points((std::max(size.width(), 0) + 1) / 2, (std::max(size.height(), 0) + 1) / 2);
    const QImage picture = imageOf(m_images.thumbnailNow(path, points, stop));
    return size.isEmpty() || picture.isNull() ? picture
                                              : picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace ludarium

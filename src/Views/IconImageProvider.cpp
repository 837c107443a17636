#include "Views/IconImageProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace ludarium {

QImage IconImageProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize) {
    const QSize wanted = requestedSize.isEmpty() ? QSize(24, 24) : requestedSize;
    if (size)
        *size = wanted;
    return drawn(id.section(u'/', 0, 0), QColor(u'#' + id.section(u'/', 1)), wanted);
}

QImage IconImageProvider::drawn(const QString &name, const QColor &color, QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QFile file(QStringLiteral(":/qml/Ludarium/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("No icon is called \"%s\"", qUtf8Printable(name));
        return image;
    }
    QByteArray drawing = file.readAll();
    drawing.replace("currentColor", color.name().toLatin1());
    QSvgRenderer renderer(drawing);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

} // namespace ludarium

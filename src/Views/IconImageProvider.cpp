#include "Views/IconImageProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace ludarium {

QImage IconImageProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize) {
    const QSize wanted = requestedSize.isEmpty() ? QSize(24, 24) : requestedSize;
    QImage image(wanted, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    if (size)
        *size = wanted;
    const qsizetype slash = id.indexOf(QLatin1Char('/'));
    QFile file(QStringLiteral(":/qml/Ludarium/icons/%1.svg").arg(id.left(slash)));
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("No icon is called \"%s\"", qUtf8Printable(id.left(slash)));
        return image;
    }
    QByteArray drawing = file.readAll();
    drawing.replace("currentColor", "#" + id.mid(slash + 1).toUtf8());
    QSvgRenderer renderer(drawing);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

} // namespace ludarium

#include "Views/PlaceholderImageProvider.h"

#include "Views/CoverImageProvider.h"

#include <QPainter>
#include <QPainterPath>

namespace ludarium {

namespace {

constexpr double spineShare = 0.055;
constexpr QSize defaultSize(168, 224);

QColor white(double opacity) {
    return QColor::fromRgbF(1, 1, 1, float(opacity));
}

} // namespace

/// Dark enough for white letters everywhere, whatever the hue.
QImage PlaceholderImageProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize) {
    const QSize wanted = requestedSize.isEmpty() ? defaultSize : requestedSize;
    if (size)
        *size = wanted;
    const float hue = float(((id.toInt() % tints) + tints) % tints) / tints;
    const QRectF box(0, 0, wanted.width(), wanted.height());
    const double radius = CoverImageProvider::cornerRadius(wanted.width());

    QImage image(wanted, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QLinearGradient ground(box.topLeft(), box.bottomLeft());
    ground.setColorAt(0, QColor::fromHslF(hue, 0.32F, 0.31F));
    ground.setColorAt(0.55, QColor::fromHslF(hue, 0.34F, 0.23F));
    ground.setColorAt(1, QColor::fromHslF(hue, 0.38F, 0.15F));
    painter.setBrush(ground);
    painter.drawRoundedRect(box, radius, radius);

    QPainterPath outline;
    outline.addRoundedRect(box, radius, radius);
    painter.setClipPath(outline);
    QRadialGradient light(box.width() * 0.8, box.height() * 0.06, box.width() * 0.9);
    light.setColorAt(0, white(0.09));
    light.setColorAt(1, white(0));
    painter.fillRect(box, light);
    const double spine = std::round(box.width() * spineShare);
    const double line = std::max(1.0, std::round(box.width() / 170));
    painter.fillRect(QRectF(0, 0, spine, box.height()), QColor::fromRgbF(0, 0, 0, 0.16F));
    painter.fillRect(QRectF(spine, 0, line, box.height()), white(0.1));
    painter.setClipping(false);

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(white(0.08), line));
    const double half = line / 2;
    painter.drawRoundedRect(box.adjusted(half, half, -half, -half), radius - half, radius - half);
    return image;
}

} // namespace ludarium

#include "Views/BadgeImageProvider.h"

#include "Views/IconImageProvider.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <cmath>

namespace ludarium {

namespace {

struct Badge {
    QString icon;
    QString text;
    double width;
};

} // namespace

QImage BadgeImageProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize) {
    const QStringList parts = id.split(u'/');
    const int height = std::max(requestedSize.height(), 8);
    const int iconSize = int(std::lround(height * 0.62));
    const double gap = height * 0.18;
    QFont font = QGuiApplication::font();
    font.setPixelSize(int(std::lround(height * 0.52)));
    font.setWeight(QFont::DemiBold);

    QList<Badge> badges;
    double width = -gap;
    for (const QString &mark : parts.value(3).split(u'+')) {
        const QString text = mark.section(u':', 1);
        const double content = iconSize + gap + QFontMetricsF(font).horizontalAdvance(text);
        badges.append({mark.section(u':', 0, 0), text, text.isEmpty() ? height : content + 4 * gap});
        width += badges.constLast().width + gap;
    }

    QImage image(int(std::ceil(width)), height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    if (size)
        *size = image.size();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    double x = 0;
    for (const Badge &badge : badges) {
        const bool good = badge.icon == QLatin1String("check") || badge.icon == QLatin1String("play");
        const QColor ink(u'#' + parts.value(good ? 2 : 1));
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(u'#' + parts.value(0)));
        painter.drawRoundedRect(QRectF(x, 0, badge.width, height), height / 2.0, height / 2.0);
        const double left = badge.text.isEmpty() ? (badge.width - iconSize) / 2 : 2 * gap;
        painter.drawImage(QPointF(x + left, (height - iconSize) / 2.0),
                          IconImageProvider::drawn(badge.icon, ink, {iconSize, iconSize}));
        painter.setPen(ink);
        painter.drawText(QRectF(x + left + iconSize + gap, 0, badge.width, height), Qt::AlignLeft | Qt::AlignVCenter,
                         badge.text);
        x += badge.width + gap;
    }
    return image;
}

} // namespace ludarium

#include "maker/Artwork.h"

#include "maker/Dice.h"
#include "maker/Lettering.h"
#include "maker/Scene.h"

#include <QBuffer>
#include <QPainter>
#include <QPainterPath>
#include <stdexcept>

namespace ludarium::demo {

namespace {

constexpr QRgb clear = 0x00000000;

QImage canvas(int width, int height, QColor color = QColor::fromRgba(clear)) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

QString platformStrip(const DemoGame &game) {
    if (game.platform == QStringLiteral("Nintendo Game Boy"))
        return QStringLiteral("POCKET CARTRIDGE");
    if (game.isCartridge())
        return QStringLiteral("HOME CARTRIDGE");
    if (game.isScummVM())
        return QStringLiteral("POINT & CLICK");
    return game.disc.isEmpty() ? QStringLiteral("PC  5\u00bc\u2033 DISK") : QStringLiteral("PC  CD-ROM");
}

// How a box is framed depends on the game.
enum class Frame { None, Border, Banner, SideStrip };

Frame frameOf(const DemoGame &game) {
    Dice dice(game.developer + game.platform + game.title);
    return static_cast<Frame>(dice.below(4));
}

void paintMaker(QPainter &painter, const QRectF &area, const DemoGame &game, const SceneInk &ink) {
    painter.setPen(ink.light);
    painter.setFont(plainFont(area.height() * 0.42, true));
    painter.drawText(area.adjusted(16, 0, -16, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     (game.publisher.isEmpty() ? game.developer : game.publisher).toUpper());
    painter.setFont(plainFont(area.height() * 0.34, false));
    painter.drawText(area.adjusted(16, 0, -16, 0), Qt::AlignRight | Qt::AlignVCenter, platformStrip(game));
}

} // namespace

QImage boxFront(const DemoGame &game) {
    const int height = game.isCartridge() ? 450 : 600;
    QImage image = canvas(450, height, Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF all(0, 0, 450, height);
    const SceneInk ink = sceneInk(game.scene);
    const Frame frame = frameOf(game);
    paintScene(painter, all, game.scene, game.title + game.platform);

    const double side = frame == Frame::SideStrip ? 40 : 0;
    const QRectF titleArea(24 + side, 22, 402 - side, height * 0.29);
    QLinearGradient shade(0, 0, 0, height * 0.45);
    QColor dark = ink.dark;
    dark.setAlpha(225);
    shade.setColorAt(0, dark);
    dark.setAlpha(0);
    shade.setColorAt(1, dark);
    painter.fillRect(all, shade);
    if (frame == Frame::Banner) {
        QColor banner = ink.dark;
        banner.setAlpha(170);
        painter.fillRect(QRectF(0, titleArea.top() - 6, 450, titleArea.height() + 12), banner);
        painter.fillRect(QRectF(0, titleArea.top() - 9, 450, 3), ink.accent);
        painter.fillRect(QRectF(0, titleArea.bottom() + 6, 450, 3), ink.accent);
    }
    if (frame == Frame::SideStrip) {
        painter.fillRect(QRectF(0, 0, 40, height), ink.accent);
        painter.save();
        painter.translate(20, height * 0.5);
        painter.rotate(-90);
        painter.setPen(ink.dark);
        painter.setFont(plainFont(15, true));
        painter.drawText(QRectF(-260, -20, 520, 40), Qt::AlignCenter,
                         (game.series.isEmpty() ? game.genre.section(u';', 0, 0) : game.series).toUpper());
        painter.restore();
    }
    paintTitle(painter, titleArea, game.title, game.developer + game.series, ink);

    QRectF strip(0, height - 38, 450, 38);
    painter.fillRect(strip, ink.dark);
    painter.fillRect(QRectF(0, strip.top() - 2, 450, 2), ink.accent);
    paintMaker(painter, strip, game, ink);
    if (frame == Frame::Border) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(ink.light, 3));
        painter.drawRect(QRectF(9, 9, 432, height - 57));
    }
    if (game.stars >= 4.4) { // the sticker of a magazine
        painter.translate(392, height - 92);
        painter.rotate(-12);
        QPolygonF star;
        for (int i = 0; i < 32; ++i) {
            QTransform turn;
            turn.rotate(i * 360.0 / 32);
            star.append(turn.map(QPointF(0, i % 2 ? -40 : -46)));
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(214, 48, 48));
        painter.drawPolygon(star);
        painter.setPen(Qt::white);
        painter.setFont(plainFont(24, true));
        painter.drawText(QRectF(-40, -26, 80, 30), Qt::AlignCenter, QStringLiteral("%1%").arg(qRound(game.stars * 20)));
        painter.setFont(plainFont(9, true));
        painter.drawText(QRectF(-40, 2, 80, 14), Qt::AlignCenter, QStringLiteral("DISK & DRAGON"));
    }
    return image;
}

QImage boxBack(const DemoGame &game, const QImage &shot) {
    QImage image = canvas(450, 600, sceneInk(game.scene).dark);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const SceneInk ink = sceneInk(game.scene);
    painter.setOpacity(0.30);
    paintScene(painter, QRectF(0, 0, 450, 600), game.scene, game.title + game.platform);
    painter.setOpacity(1);
    paintTitle(painter, QRectF(40, 20, 370, 80), game.title, game.developer + game.series, ink);
    const QRectF picture(85, 118, 280, 175);
    painter.fillRect(picture.adjusted(-4, -4, 4, 4), ink.light);
    painter.drawImage(picture, shot);
    painter.setPen(ink.light);
    painter.setFont(plainFont(15, false));
    painter.drawText(QRectF(40, 312, 370, 220), Qt::AlignLeft | Qt::TextWordWrap,
                     game.notes.section(QStringLiteral("\n\n"), 0, 0));
    painter.fillRect(QRectF(320, 540, 96, 44), Qt::white);
    Dice dice(game.title);
    for (double x = 326; x < 410; x += dice.between(2.5, 6))
        painter.fillRect(QRectF(x, 545, dice.between(1, 3), 28), Qt::black);
    painter.setFont(plainFont(12, false));
    painter.drawText(QRectF(40, 556, 270, 30), Qt::AlignLeft,
                     QStringLiteral("\u00a9 %1 %2").arg(game.year()).arg(game.developer));
    return image;
}

QImage boxStanding(const QImage &front, const DemoGame &game) {
    // The front leans away to the right, the spine to the left.
    QImage image = canvas(480, 600);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const double width = front.width();
    const double height = front.height();
    const QPolygonF flat({{0, 0}, {width, 0}, {width, height}, {0, height}});
    QTransform turn;
    QTransform::quadToQuad(flat, QPolygonF({{78, 18}, {448, 46}, {448, 560}, {78, 588}}), turn);
    painter.setTransform(turn);
    painter.drawImage(0, 0, front);
    QLinearGradient sheen(0, 0, width, height);
    sheen.setColorAt(0, QColor(255, 255, 255, 70));
    sheen.setColorAt(0.35, QColor(255, 255, 255, 0));
    sheen.setColorAt(1, QColor(0, 0, 0, 70));
    painter.fillRect(QRectF(0, 0, width, height), sheen);
    painter.resetTransform();
    const SceneInk ink = sceneInk(game.scene);
    QLinearGradient spine(30, 0, 78, 0);
    spine.setColorAt(0, ink.dark.darker(160));
    spine.setColorAt(1, ink.dark.lighter(140));
    painter.setPen(Qt::NoPen);
    painter.setBrush(spine);
    painter.drawPolygon(QPolygonF({{30, 40}, {78, 18}, {78, 588}, {30, 566}}));
    painter.translate(54, 303);
    painter.rotate(-90);
    painter.setPen(ink.light);
    painter.setFont(plainFont(20, true));
    painter.drawText(QRectF(-250, -16, 500, 32), Qt::AlignCenter,
                     painter.fontMetrics().elidedText(game.title, Qt::ElideRight, 490));
    return image;
}

QImage clearLogo(const DemoGame &game) {
    QImage image = canvas(420, 150);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintTitle(painter, QRectF(10, 8, 400, 134), game.title, game.developer + game.series, sceneInk(game.scene));
    return image;
}

QImage fanart(const DemoGame &game) {
    QImage image = canvas(1280, 720, Qt::black);
    QPainter painter(&image);
    paintScene(painter, QRectF(0, 0, 1280, 720), game.scene, game.title + game.platform);
    return image;
}

QImage cartridge(const DemoGame &game) {
    const bool pocket = game.platform == QStringLiteral("Nintendo Game Boy");
    QImage image = canvas(360, 400);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(70, 70, 76), 3));
    QLinearGradient shell(0, 0, 360, 400);
    shell.setColorAt(0, pocket ? QColor(196, 196, 200) : QColor(120, 120, 126));
    shell.setColorAt(1, pocket ? QColor(140, 140, 148) : QColor(74, 74, 80));
    painter.setBrush(shell);
    painter.drawRoundedRect(QRectF(12, 12, 336, 376), 20, 20);
    for (int i = 0; i < 6; ++i)
        painter.drawLine(QPointF(40 + i * 8, 24), QPointF(40 + i * 8, 58));
    const QRectF label(52, 84, 256, 250);
    painter.save();
    QPainterPath shape;
    shape.addRoundedRect(label, 12, 12);
    painter.setClipPath(shape);
    paintScene(painter, label, game.scene, game.title + game.platform);
    const SceneInk ink = sceneInk(game.scene);
    QColor dark = ink.dark;
    dark.setAlpha(150);
    painter.fillRect(QRectF(label.left(), label.top(), label.width(), 84), dark);
    paintTitle(painter, label.adjusted(12, 10, -12, -176), game.title, game.developer + game.series, ink);
    painter.restore();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(80, 80, 88));
    painter.drawPolygon(QPolygonF({{160, 352}, {200, 352}, {180, 372}}));
    return image;
}

QImage compactDisc(const DemoGame &game) {
    QImage image = canvas(400, 400);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath ring;
    ring.setFillRule(Qt::OddEvenFill);
    ring.addEllipse(QPointF(200, 200), 194, 194);
    ring.addEllipse(QPointF(200, 200), 26, 26);
    painter.setClipPath(ring);
    paintScene(painter, QRectF(0, 0, 400, 400), game.scene, game.title + game.platform);
    QConicalGradient sheen(200, 200, 30);
    for (int i = 0; i <= 12; ++i)
        sheen.setColorAt(i / 12.0, QColor::fromHsv((i * 60) % 360, 90, 255, i % 2 ? 70 : 10));
    painter.fillRect(image.rect(), sheen);
    paintTitle(painter, QRectF(70, 44, 260, 90), game.title, game.developer + game.series, sceneInk(game.scene));
    painter.setBrush(QColor(255, 255, 255, 120));
    painter.setPen(QPen(QColor(40, 40, 50), 2));
    painter.drawEllipse(QPointF(200, 200), 52, 52);
    return image;
}

QByteArray jpeg(const QImage &image, int quality) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!image.convertToFormat(QImage::Format_RGB32).save(&buffer, "JPG", quality))
        throw std::runtime_error("Qt has no JPEG writer here");
    return bytes;
}

QByteArray png(const QImage &image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!image.save(&buffer, "PNG", 0))
        throw std::runtime_error("Qt has no PNG writer here");
    return bytes;
}

} // namespace ludarium::demo

#include "maker/Scenes.h"

#include <cmath>
#include <tuple>

namespace ludarium::demo::scenes {

namespace {

void paintRocket(Brush &brush, double x, double y, double size, double angle) {
    QPainter &painter = brush.painter;
    painter.save();
    painter.translate(brush.at(x, y));
    painter.rotate(angle);
    const double unit = brush.length(size);
    painter.scale(unit, unit);
    QLinearGradient flame(0, 0.5, 0, 1.5);
    flame.setColorAt(0, rgb(0xfff3b0));
    flame.setColorAt(0.4, rgb(0xff9a3c));
    flame.setColorAt(1, QColor(255, 60, 30, 0));
    painter.setBrush(flame);
    painter.drawPolygon(QPolygonF({{-0.22, 0.45}, {0.22, 0.45}, {0.0, 1.6}}));
    painter.setBrush(rgb(0xd64545));
    painter.drawPolygon(QPolygonF({{-0.22, 0.1}, {-0.62, 0.62}, {-0.2, 0.5}}));
    painter.drawPolygon(QPolygonF({{0.22, 0.1}, {0.62, 0.62}, {0.2, 0.5}}));
    QPainterPath hull;
    hull.moveTo(0, -1);
    hull.cubicTo(0.42, -0.6, 0.36, 0.2, 0.22, 0.5);
    hull.lineTo(-0.22, 0.5);
    hull.cubicTo(-0.36, 0.2, -0.42, -0.6, 0, -1);
    QLinearGradient metal(-0.35, 0, 0.35, 0);
    metal.setColorAt(0, rgb(0xf4f7ff));
    metal.setColorAt(0.5, rgb(0xa9b8d8));
    metal.setColorAt(1, rgb(0x4c5a80));
    painter.setBrush(metal);
    painter.drawPath(hull);
    painter.setBrush(rgb(0x2f3b66));
    painter.drawEllipse(QPointF(0, -0.35), 0.17, 0.17);
    painter.setBrush(rgb(0x8fe3ff));
    painter.drawEllipse(QPointF(0, -0.35), 0.12, 0.12);
    painter.restore();
}

} // namespace

void space(Brush &brush) {
    const bool violet = brush.dice.below(2) == 0;
    brush.sky(violet ? QList<QColor>{rgb(0x0b0720), rgb(0x2a1050), rgb(0x6a1f7a)}
                     : QList<QColor>{rgb(0x02101a), rgb(0x063a44), rgb(0x0f7a63)});
    for (int i = 0; i < 4; ++i)
        brush.glow(brush.dice.between(0.1, 0.9), brush.dice.between(0.1, 0.8), 0.16,
                   violet ? rgb(0xff5fb0) : rgb(0x40ffd0), 3.2);
    brush.stars(220);
    brush.ball(brush.dice.between(0.68, 0.9), 0.86, 0.42, violet ? rgb(0x8a4bd0) : rgb(0x2b8f8a));
    brush.ball(0.16, brush.dice.between(0.34, 0.44), 0.09, rgb(0xe8a860));
    // A comet and the rocks that fly with it.
    brush.polygon({{0.95, 0.30}, {0.50, 0.46}, {0.505, 0.475}}, QColor(255, 240, 200, 110));
    brush.glow(0.50, 0.468, 0.03, rgb(0xfff0c8));
    for (int i = 0; i < 9; ++i)
        brush.ball(brush.dice.between(0.05, 0.95), brush.dice.between(0.3, 0.95), brush.dice.between(0.012, 0.045),
                   rgb(0x9a7b66));
    paintRocket(brush, 0.40, 0.66, 0.17, -24);
}

void clouds(Brush &brush) {
    brush.sky({rgb(0x0a1228), rgb(0x1e3460), rgb(0x4a6a96), rgb(0xb8b0b8)});
    brush.stars(140, 0.5);
    brush.glow(0.24, 0.34, 0.10, rgb(0xfff6e0), 3.6);
    brush.disc(0.24, 0.34, 0.09, rgb(0xfffbe8));
    for (int i = 0; i < 12; ++i) {
        const double y = 0.45 + i * 0.05;
        brush.cloud(brush.dice.between(0, 1), y, brush.dice.between(0.3, 0.6),
                    QColor::fromHsv(222, 70 + i * 6, 190 - i * 11, 235));
    }
    // A biplane, dark against the clouds.
    const QColor shape = rgb(0x0c101c);
    brush.polygon({{0.30, 0.62}, {0.44, 0.585}, {0.80, 0.60}, {0.90, 0.555}, {0.885, 0.625}, {0.46, 0.655}}, shape);
    brush.polygon({{0.40, 0.54}, {0.66, 0.52}, {0.67, 0.533}, {0.41, 0.556}}, shape);
    brush.polygon({{0.38, 0.66}, {0.68, 0.645}, {0.69, 0.66}, {0.39, 0.678}}, shape);
    brush.line(0.45, 0.55, 0.44, 0.66, 0.006, shape);
    brush.line(0.60, 0.535, 0.61, 0.65, 0.006, shape);
    brush.line(0.298, 0.55, 0.302, 0.69, 0.008, rgb(0x5a6a8a));
    brush.polygon({{0.66, 0.58}, {1.02, 0.36}, {1.02, 0.56}}, QColor(255, 240, 190, 30));
}

void plasma(Brush &brush) {
    // A few hundred cells, blurred into each other by the scaling of the image.
    QImage cells(60, 80, QImage::Format_RGB32);
    const double phase = brush.dice.between(0, 6);
    for (int y = 0; y < cells.height(); ++y) {
        for (int x = 0; x < cells.width(); ++x) {
            const double value = std::sin(x * 0.13 + phase) + std::sin(y * 0.10 - phase) + std::sin((x + y) * 0.07) +
                                 std::sin(std::hypot(x - 34, y - 44) * 0.16);
            cells.setPixelColor(
                x, y,
                QColor::fromHsv(static_cast<int>(290 + value * 46) % 360, 210, static_cast<int>(170 + value * 20)));
        }
    }
    brush.painter.setRenderHint(QPainter::SmoothPixmapTransform);
    brush.painter.drawImage(QRectF(brush.at(0, 0), brush.at(1, 1)), cells);
    brush.glow(0.5, 0.6, 0.16, rgb(0xfff6c0), 2.6);
    // The tin lantern.
    brush.polygon({{0.38, 0.50}, {0.62, 0.50}, {0.58, 0.42}, {0.42, 0.42}}, rgb(0x22242e));
    brush.polygon({{0.40, 0.50}, {0.60, 0.50}, {0.60, 0.74}, {0.40, 0.74}}, QColor(255, 240, 170, 190));
    for (const double x : {0.40, 0.5, 0.60})
        brush.line(x, 0.50, x, 0.74, 0.010, rgb(0x22242e));
    brush.polygon({{0.37, 0.74}, {0.63, 0.74}, {0.63, 0.78}, {0.37, 0.78}}, rgb(0x22242e));
    brush.glow(0.5, 0.63, 0.05, rgb(0xffffff), 3);
}

void storm(Brush &brush) {
    brush.sky({rgb(0x10081e), rgb(0x34204e), rgb(0x6a3a5a), rgb(0xc8604a)});
    for (int i = 0; i < 8; ++i)
        brush.cloud(brush.dice.between(0, 1), brush.dice.between(0.2, 0.45), brush.dice.between(0.3, 0.5),
                    QColor::fromHsv(270, 80, 50 + brush.dice.below(50), 230));
    double x = 0.30;
    double y = 0.20;
    for (int i = 0; i < 7; ++i) {
        const double nextX = x + brush.dice.between(-0.05, 0.07);
        brush.line(x, y, nextX, y + 0.07, 0.012, rgb(0xfff6c0));
        x = nextX;
        y += 0.07;
    }
    brush.glow(0.32, 0.45, 0.16, rgb(0xfff0c0), 2.6);
    double roof = -0.02;
    while (roof < 1) {
        const double width = brush.dice.between(0.10, 0.18);
        brush.building(roof, 1.0, width, brush.dice.between(0.16, 0.30), rgb(0x1a1226), rgb(0xffc24a));
        roof += width;
    }
    // The hero: cape, mask, folded arms.
    brush.polygon({{0.60, 0.52}, {0.44, 0.92}, {0.62, 0.86}, {0.84, 0.94}, {0.72, 0.52}}, rgb(0xc22c3a));
    brush.polygon({{0.58, 0.53},
                   {0.74, 0.53},
                   {0.70, 0.74},
                   {0.72, 0.92},
                   {0.66, 0.92},
                   {0.65, 0.78},
                   {0.63, 0.92},
                   {0.57, 0.92},
                   {0.61, 0.74}},
                  rgb(0x2c5aa8));
    brush.ball(0.66, 0.46, 0.06, rgb(0xe0a878));
    brush.polygon({{0.605, 0.47},
                   {0.612, 0.41},
                   {0.66, 0.385},
                   {0.708, 0.41},
                   {0.715, 0.47},
                   {0.68, 0.48},
                   {0.66, 0.465},
                   {0.64, 0.48}},
                  rgb(0xf2d23c));
    brush.disc(0.64, 0.45, 0.010, rgb(0xffffff));
    brush.disc(0.68, 0.45, 0.010, rgb(0xffffff));
    brush.line(0.58, 0.60, 0.74, 0.63, 0.035, rgb(0x3a6ac0));
    brush.line(0.74, 0.60, 0.58, 0.64, 0.035, rgb(0x3a6ac0));
}

void city(Brush &brush) {
    brush.sky({rgb(0x0a1030), rgb(0x243a78), rgb(0x8a5a9a), rgb(0xf0a07a)});
    brush.stars(90, 0.4);
    brush.glow(0.25, 0.30, 0.08, rgb(0xfff0d0));
    brush.disc(0.25, 0.30, 0.07, rgb(0xfff6e0));
    for (int layer = 0; layer < 3; ++layer) {
        const QColor wall = QColor::fromHsv(235, 110 + layer * 30, 120 - layer * 38);
        double x = -0.03;
        while (x < 1) {
            const double width = brush.dice.between(0.07, 0.14);
            brush.building(x, 1.0, width, brush.dice.between(0.22, 0.5 - layer * 0.06) - layer * 0.06, wall,
                           layer == 2 ? rgb(0xffd060) : rgb(0xf6b26a));
            x += width + brush.dice.between(-0.01, 0.02);
        }
    }
    // A street lamp in front, and somebody under it with a hat.
    brush.line(0.78, 1.0, 0.78, 0.62, 0.010, rgb(0x0a0a14));
    brush.line(0.78, 0.62, 0.72, 0.62, 0.010, rgb(0x0a0a14));
    brush.glow(0.72, 0.645, 0.05, rgb(0xffe9a0), 4);
    brush.polygon({{0.60, 1.0}, {0.625, 0.84}, {0.675, 0.84}, {0.70, 1.0}}, rgb(0x080810));
    brush.disc(0.65, 0.815, 0.03, rgb(0x080810));
    brush.polygon({{0.605, 0.805}, {0.695, 0.805}, {0.67, 0.795}, {0.665, 0.765}, {0.635, 0.765}, {0.63, 0.795}},
                  rgb(0x080810));
}

void grid(Brush &brush) {
    brush.sky({rgb(0x10062a), rgb(0x3a0a5a), rgb(0xff5a8a)});
    brush.disc(0.5, 0.56, 0.2, rgb(0xffc24a));
    brush.polygon({{0, 0.62}, {1, 0.62}, {1, 1}, {0, 1}}, rgb(0x12062c));
    for (int i = -10; i <= 20; ++i)
        brush.line(0.5 + (i - 5) * 0.03, 0.62, 0.5 + (i - 5) * 0.3, 1, 0.003, rgb(0xff5ad0));
    for (int i = 0; i < 9; ++i)
        brush.line(0, 0.62 + 0.0047 * i * i, 1, 0.62 + 0.0047 * i * i, 0.003, rgb(0xff5ad0));
}

} // namespace ludarium::demo::scenes

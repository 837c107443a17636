#include "maker/Scene.h"

#include "maker/Brush.h"

#include <QHash>
#include <cmath>
#include <functional>
#include <numbers>

namespace ludarium::demo {

namespace {

constexpr double pi = std::numbers::pi;

QColor rgb(quint32 value) {
    return QColor::fromRgb(value);
}

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

void castle(Brush &brush) {
    brush.sky({rgb(0x141036), rgb(0x3c1e5e), rgb(0xa8425a), rgb(0xf29b54)});
    brush.stars(120, 0.5);
    brush.glow(0.66, 0.42, 0.15, rgb(0xffb070), 3.4);
    brush.ball(0.66, 0.42, 0.15, rgb(0xe08a4c));
    brush.ridge(0.66, 0.07, rgb(0x4a2a5e), rgb(0x2c1a44));
    const QColor stone = rgb(0x2c2148);
    const QColor window = rgb(0xffd27a);
    brush.ridge(0.78, 0.04, rgb(0x241a3e), rgb(0x120c24), 3);
    for (const auto &[x, width, height, pointed] :
         {std::tuple{0.26, 0.08, 0.30, true}, std::tuple{0.36, 0.10, 0.42, false}, std::tuple{0.475, 0.06, 0.54, true},
          std::tuple{0.55, 0.11, 0.34, false}, std::tuple{0.68, 0.07, 0.26, true}})
        brush.tower(x, 0.84, width, height, stone, window, pointed);
    brush.polygon({{0.24, 0.86}, {0.24, 0.70}, {0.77, 0.70}, {0.77, 0.86}}, stone.darker(115));
    brush.polygon({{0.46, 0.86}, {0.46, 0.77}, {0.50, 0.74}, {0.54, 0.77}, {0.54, 0.86}}, window);
    brush.ridge(0.87, 0.03, rgb(0x140e26), rgb(0x07040f), 4);
    for (int i = 0; i < 14; ++i)
        brush.pine(brush.dice.between(0, 1), 1.0, brush.dice.between(0.08, 0.16), rgb(0x0c0818));
}

void lighthouse(Brush &brush) {
    brush.sky({rgb(0x07142b), rgb(0x14375a), rgb(0x2f6f86), rgb(0xd9a066)});
    brush.stars(140, 0.55);
    for (int i = 0; i < 4; ++i)
        brush.cloud(brush.dice.between(0.05, 0.95), brush.dice.between(0.46, 0.66), brush.dice.between(0.2, 0.4),
                    QColor(20, 44, 70, 190));
    brush.water(0.72, rgb(0x1d5468), rgb(0x04121f), rgb(0xf4d9a0));
    QLinearGradient beam(brush.at(0.62, 0.34), brush.at(0, 0.2));
    beam.setColorAt(0, QColor(255, 244, 190, 220));
    beam.setColorAt(1, QColor(255, 244, 190, 0));
    brush.polygon({{0.62, 0.335}, {-0.05, 0.08}, {-0.05, 0.34}}, QBrush(beam));
    brush.polygon({{0.38, 0.80}, {0.47, 0.70}, {0.58, 0.665}, {0.74, 0.675}, {0.9, 0.76}, {1, 0.86}, {1, 1}, {0.3, 1}},
                  rgb(0x1a1c26));
    QLinearGradient wall(brush.at(0.56, 0), brush.at(0.69, 0));
    wall.setColorAt(0, rgb(0xfff7e6));
    wall.setColorAt(1, rgb(0x7d6f70));
    brush.polygon({{0.565, 0.70}, {0.59, 0.37}, {0.66, 0.37}, {0.685, 0.70}}, QBrush(wall));
    for (const double band : {0.43, 0.53, 0.63})
        brush.polygon({{0.589 - (band - 0.37) * 0.076, band},
                       {0.661 + (band - 0.37) * 0.076, band},
                       {0.664 + (band - 0.37) * 0.076, band + 0.05},
                       {0.586 - (band - 0.37) * 0.076, band + 0.05}},
                      rgb(0xc23b3b));
    brush.polygon({{0.575, 0.37}, {0.675, 0.37}, {0.675, 0.355}, {0.575, 0.355}}, rgb(0x22222e));
    brush.polygon({{0.60, 0.355}, {0.65, 0.355}, {0.65, 0.31}, {0.60, 0.31}}, rgb(0xfff2a8));
    brush.polygon({{0.59, 0.31}, {0.66, 0.31}, {0.625, 0.265}}, rgb(0x22222e));
    brush.glow(0.625, 0.335, 0.06, rgb(0xfff0b0), 4);
    for (int i = 0; i < 7; ++i) { // gulls
        const double x = brush.dice.between(0.1, 0.9);
        const double y = brush.dice.between(0.3, 0.6);
        brush.line(x, y, x + 0.018, y - 0.010, 0.004, Qt::white);
        brush.line(x + 0.018, y - 0.010, x + 0.036, y, 0.004, Qt::white);
    }
}

void swamp(Brush &brush) {
    brush.sky({rgb(0x06231f), rgb(0x0d4a3a), rgb(0x4d8a4a), rgb(0xd7c46a)});
    brush.glow(0.7, 0.5, 0.10, rgb(0xffe9a0), 4);
    brush.ridge(0.58, 0.04, rgb(0x2f6a48), rgb(0x1d4a36));
    for (int i = 0; i < 16; ++i)
        brush.pine(brush.dice.between(0, 1), 0.64, brush.dice.between(0.08, 0.22), rgb(0x14382c));
    brush.water(0.64, rgb(0x2d6a50), rgb(0x04160f), rgb(0xd6e68a));
    // The serpent: overlapping balls along a curve, the head last.
    for (int i = 0; i <= 60; ++i) {
        const double t = i / 60.0;
        const double x = 0.92 - 0.72 * t;
        const double y = 0.80 - 0.12 * t + 0.085 * std::sin(t * 3.2 * pi);
        brush.ball(x, y, 0.028 + 0.024 * t, QColor::fromHsv(110 - static_cast<int>(24 * t), 190, 150 + i));
    }
    brush.ball(0.19, 0.665, 0.075, rgb(0x7ed04a));
    for (const double eye : {0.165, 0.215}) {
        brush.disc(eye, 0.652, 0.018, rgb(0xfff6c0));
        brush.disc(eye - 0.004, 0.654, 0.008, rgb(0x102010));
    }
    for (int i = 0; i < 26; ++i) {
        const double x = brush.dice.between(0, 1);
        brush.line(x, 1.02, x + brush.dice.between(-0.03, 0.03), brush.dice.between(0.78, 0.92), 0.006, rgb(0x0a2a1c));
    }
    for (int i = 0; i < 16; ++i)
        brush.glow(brush.dice.between(0.03, 0.97), brush.dice.between(0.3, 0.9), 0.012, rgb(0xfff27a), 3.5);
}

void dusk(Brush &brush) {
    brush.sky({rgb(0x1c1650), rgb(0x6a2a78), rgb(0xd8567a), rgb(0xffb060), rgb(0xffe0a0)});
    brush.glow(0.5, 0.64, 0.14, rgb(0xfff0b0), 4);
    brush.disc(0.5, 0.64, 0.12, rgb(0xfff2c4));
    brush.ridge(0.68, 0.05, rgb(0x6a3a6e), rgb(0x44285a));
    brush.ridge(0.76, 0.03, rgb(0x2f6a4a), rgb(0x143024), 4);
    for (int i = 0; i < 5; ++i) {
        const double x = 0.08 + 0.21 * i;
        const double foot = 0.84 + brush.dice.between(0, 0.08);
        brush.leafTree(x, foot, 0.30, rgb(0x4a2c20), rgb(0x2f8a3c));
        for (int fruit = 0; fruit < 9; ++fruit)
            brush.ball(x + brush.dice.between(-0.08, 0.08), foot - brush.dice.between(0.13, 0.28), 0.014,
                       QColor::fromHsv(brush.dice.below(60), 220, 240));
    }
    brush.ridge(0.93, 0.015, rgb(0x143a22), rgb(0x08180e), 3);
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

void sea(Brush &brush) {
    brush.sky({rgb(0x2a6fa8), rgb(0x7ec2d8), rgb(0xf6e3b0)});
    for (int i = 0; i < 6; ++i)
        brush.cloud(brush.dice.between(0, 1), brush.dice.between(0.22, 0.5), brush.dice.between(0.14, 0.32),
                    QColor(255, 255, 255, 210));
    brush.water(0.58, rgb(0x2f9aa8), rgb(0x062a4a), rgb(0xe8fbff));
    // A ship of paper.
    brush.polygon({{0.28, 0.66}, {0.74, 0.66}, {0.64, 0.78}, {0.38, 0.78}}, rgb(0xfdf6e3));
    brush.polygon({{0.51, 0.66}, {0.74, 0.66}, {0.64, 0.78}, {0.51, 0.78}}, rgb(0xd8cbb0));
    brush.polygon({{0.505, 0.30}, {0.505, 0.645}, {0.33, 0.645}}, rgb(0xffffff));
    brush.polygon({{0.515, 0.36}, {0.515, 0.645}, {0.68, 0.645}}, rgb(0xe3d6bb));
    brush.polygon({{0.505, 0.30}, {0.505, 0.25}, {0.58, 0.275}}, rgb(0xd23c3c));
    for (int wave = 0; wave < 4; ++wave) {
        QPolygonF shape;
        const double y = 0.77 + wave * 0.065;
        for (int i = 0; i <= 60; ++i)
            shape.append(brush.at(i / 60.0, y + 0.014 * std::sin(i / 60.0 * 14 + wave * 1.7)));
        shape.append(brush.at(1, 1));
        shape.append(brush.at(0, 1));
        brush.painter.setBrush(QColor::fromHsv(195 + wave * 6, 190, 150 - wave * 28));
        brush.painter.drawPolygon(shape);
    }
}

void winter(Brush &brush) {
    brush.sky({rgb(0x0c1e44), rgb(0x2f5a8a), rgb(0x9ac4d8), rgb(0xfde8d8)});
    brush.stars(80, 0.35);
    brush.glow(0.72, 0.28, 0.07, rgb(0xffffff));
    brush.disc(0.72, 0.28, 0.06, rgb(0xfdfbf0));
    brush.ridge(0.56, 0.10, rgb(0xdbe8f4), rgb(0x7fa2c4), 6);
    brush.ridge(0.70, 0.03, rgb(0xf4f9ff), rgb(0xa8c4de), 3);
    for (int i = 0; i < 18; ++i)
        brush.pine(brush.dice.between(0, 1), brush.dice.between(0.72, 0.86), brush.dice.between(0.10, 0.24),
                   QColor::fromHsv(170, 120, 60 + brush.dice.below(40)));
    brush.ridge(0.86, 0.02, rgb(0xffffff), rgb(0xc4d8ec), 3);
    // A hut with a lit window.
    brush.polygon({{0.18, 0.90}, {0.18, 0.79}, {0.36, 0.79}, {0.36, 0.90}}, rgb(0x5a3424));
    brush.polygon({{0.15, 0.80}, {0.27, 0.70}, {0.39, 0.80}}, rgb(0xf8fcff));
    brush.polygon({{0.24, 0.86}, {0.24, 0.82}, {0.30, 0.82}, {0.30, 0.86}}, rgb(0xffd66a));
    brush.glow(0.27, 0.84, 0.03, rgb(0xffd66a));
    for (int i = 0; i < 130; ++i)
        brush.disc(brush.dice.between(0, 1), brush.dice.between(0, 1), brush.dice.between(0.002, 0.007),
                   QColor(255, 255, 255, 200));
}

void gear(Brush &brush, double x, double y, double radius, int teeth, const QColor &color, double turn) {
    QPolygonF shape;
    const QPointF center = brush.at(x, y);
    for (int i = 0; i < teeth * 4; ++i) {
        const double angle = turn + i * 2 * pi / (teeth * 4);
        const double reach = brush.length(radius) * (i % 4 < 2 ? 1.0 : 0.86);
        shape.append(center + QPointF(std::cos(angle), std::sin(angle)) * reach);
    }
    QRadialGradient metal(center, brush.length(radius) * 1.2,
                          center - QPointF(brush.length(radius), brush.length(radius)) * 0.4);
    metal.setColorAt(0, color.lighter(150));
    metal.setColorAt(1, color.darker(170));
    brush.painter.setBrush(metal);
    brush.painter.drawPolygon(shape);
    brush.disc(x, y, radius * 0.62, color.darker(210));
    for (int i = 0; i < 5; ++i) {
        const double angle = turn + i * 2 * pi / 5;
        brush.painter.setPen(QPen(color, brush.length(radius) * 0.13));
        brush.painter.drawLine(center, center + QPointF(std::cos(angle), std::sin(angle)) * brush.length(radius) * 0.7);
        brush.painter.setPen(Qt::NoPen);
    }
    brush.ball(x, y, radius * 0.2, color);
}

void clock(Brush &brush) {
    brush.sky({rgb(0x241408), rgb(0x5a3618), rgb(0xa06a2c)});
    for (int i = 0; i < 11; ++i)
        gear(brush, brush.dice.between(0, 1), brush.dice.between(0.05, 1), brush.dice.between(0.08, 0.2),
             10 + brush.dice.below(8), QColor::fromHsv(28 + brush.dice.below(16), 160, 120 + brush.dice.below(60)),
             brush.dice.between(0, 2));
    brush.glow(0.5, 0.58, 0.3, rgb(0xffe0a0), 1.6);
    brush.ball(0.5, 0.58, 0.34, rgb(0x9a6a2a));
    brush.disc(0.5, 0.58, 0.29, rgb(0xfdf3d8));
    const QPointF center = brush.at(0.5, 0.58);
    for (int hour = 0; hour < 12; ++hour) {
        const double angle = hour * pi / 6;
        const QPointF way(std::cos(angle), std::sin(angle));
        brush.painter.setPen(QPen(rgb(0x2a1a10), brush.length(hour % 3 ? 0.008 : 0.018), Qt::SolidLine, Qt::RoundCap));
        brush.painter.drawLine(center + way * brush.length(0.235), center + way * brush.length(0.27));
    }
    for (const auto &[angle, reach, width] :
         {std::tuple{-pi / 2, 0.21, 0.014}, std::tuple{-pi / 2 - 0.16, 0.14, 0.022}}) {
        brush.painter.setPen(QPen(rgb(0x1a1010), brush.length(width), Qt::SolidLine, Qt::RoundCap));
        brush.painter.drawLine(center, center + QPointF(std::cos(angle), std::sin(angle)) * brush.length(reach));
    }
    brush.painter.setPen(Qt::NoPen);
    brush.ball(0.5, 0.58, 0.026, rgb(0xc23b3b));
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

void desert(Brush &brush) {
    brush.sky({rgb(0x2a6a9a), rgb(0xf4c27a), rgb(0xf27a4a)});
    brush.glow(0.30, 0.42, 0.10, rgb(0xfff0c0), 3);
    brush.disc(0.30, 0.42, 0.09, rgb(0xfff6d8));
    for (const auto &[x, width, top] :
         {std::tuple{0.05, 0.22, 0.44}, std::tuple{0.58, 0.16, 0.38}, std::tuple{0.78, 0.26, 0.48}}) {
        QLinearGradient rock(brush.at(0, top), brush.at(0, 0.64));
        rock.setColorAt(0, rgb(0xd2643c));
        rock.setColorAt(1, rgb(0x8a3a34));
        brush.polygon({{x - 0.03, 0.65},
                       {x, top + 0.05},
                       {x + 0.02, top},
                       {x + width - 0.02, top},
                       {x + width, top + 0.06},
                       {x + width + 0.04, 0.65}},
                      QBrush(rock));
        for (int i = 1; i < 4; ++i)
            brush.line(x, top + 0.05 * i, x + width, top + 0.05 * i, 0.004, QColor(90, 30, 30, 110));
    }
    brush.ridge(0.63, 0.012, rgb(0xe8a05a), rgb(0xa85a34));
    brush.polygon({{0.485, 0.63}, {0.515, 0.63}, {0.95, 1}, {0.05, 1}}, rgb(0x4a4048));
    for (int i = 0; i < 6; ++i) {
        const double near = 0.64 + 0.36 * (i * i) / 36.0;
        const double half = 0.002 + 0.012 * (near - 0.63) / 0.37;
        brush.polygon({{0.5 - half, near},
                       {0.5 + half, near},
                       {0.5 + half * 1.4, near + 0.03 + 0.01 * i},
                       {0.5 - half * 1.4, near + 0.03 + 0.01 * i}},
                      rgb(0xf6e6a0));
    }
    // The car, from behind, in its own dust.
    for (int i = 0; i < 12; ++i)
        brush.glow(0.62 + brush.dice.between(-0.14, 0.14), 0.86 + brush.dice.between(-0.02, 0.05), 0.04, rgb(0xe8c090),
                   2.4);
    brush.polygon({{0.53, 0.85}, {0.55, 0.79}, {0.58, 0.745}, {0.68, 0.745}, {0.71, 0.79}, {0.73, 0.85}},
                  rgb(0xd02c3a));
    brush.polygon({{0.57, 0.79}, {0.59, 0.758}, {0.67, 0.758}, {0.69, 0.79}}, rgb(0x22303e));
    brush.polygon({{0.54, 0.85}, {0.58, 0.85}, {0.58, 0.885}, {0.54, 0.885}}, rgb(0x141418));
    brush.polygon({{0.68, 0.85}, {0.72, 0.85}, {0.72, 0.885}, {0.68, 0.885}}, rgb(0x141418));
    brush.disc(0.555, 0.825, 0.014, rgb(0xffe08a));
    brush.disc(0.705, 0.825, 0.014, rgb(0xffe08a));
}

void garden(Brush &brush) {
    brush.sky({rgb(0x5ab4e0), rgb(0xbfe8e8), rgb(0xf8f4c8)});
    brush.cloud(0.25, 0.36, 0.3, QColor(255, 255, 255, 220));
    brush.cloud(0.78, 0.44, 0.24, QColor(255, 255, 255, 220));
    brush.ridge(0.58, 0.03, rgb(0x8cc45a), rgb(0x3c7a34), 3);
    for (int i = 0; i < 11; ++i) {
        const double x = brush.dice.between(0.03, 0.97);
        const double y = brush.dice.between(0.44, 0.80);
        const double size = 0.045 + 0.05 * (y - 0.4);
        brush.line(x, 1.0, x, y, 0.010, rgb(0x2c6a2a));
        brush.polygon({{x, y + 0.14}, {x + 0.07, y + 0.09}, {x + 0.02, y + 0.17}}, rgb(0x3c8a34));
        const QColor petal = QColor::fromHsv(brush.dice.below(60) + (brush.dice.below(2) ? 300 : 0), 170, 245);
        for (int leaf = 0; leaf < 8; ++leaf) {
            const double angle = leaf * pi / 4;
            const QPointF center = brush.at(x, y) + QPointF(std::cos(angle), std::sin(angle)) * brush.length(size);
            brush.painter.setBrush(petal.lighter(92 + leaf * 3));
            brush.painter.drawEllipse(center, brush.length(size * 0.62), brush.length(size * 0.62));
        }
        brush.ball(x, y, size * 0.62, rgb(0xf6c23c));
    }
    // Geese of brass cross the lawn.
    for (int i = 0; i < 4; ++i) {
        const double x = 0.16 + 0.2 * i;
        const double y = 0.90 + 0.01 * (i % 2);
        brush.ball(x, y, 0.06, rgb(0xc89a4a));
        brush.line(x + 0.035, y - 0.02, x + 0.06, y - 0.10, 0.022, rgb(0xc89a4a));
        brush.ball(x + 0.062, y - 0.11, 0.024, rgb(0xd8aa5a));
        brush.polygon({{x + 0.078, y - 0.115}, {x + 0.11, y - 0.105}, {x + 0.078, y - 0.098}}, rgb(0xe0702c));
    }
}

void cave(Brush &brush) {
    brush.sky({rgb(0x140c18), rgb(0x2c1c38), rgb(0x4a2c3c)});
    brush.glow(0.46, 0.62, 0.22, rgb(0xffb45a), 2.6);
    for (int i = 0; i < 14; ++i) {
        const double x = brush.dice.between(0, 1);
        const double drop = brush.dice.between(0.08, 0.32);
        brush.polygon({{x - 0.05, 0}, {x + 0.05, 0}, {x, drop}}, QColor::fromHsv(280, 90, 34 + brush.dice.below(34)));
    }
    brush.ridge(0.78, 0.05, rgb(0x3c2838), rgb(0x120a14));
    for (int i = 0; i < 16; ++i) {
        const double x = brush.dice.between(0, 1);
        const double foot = brush.dice.between(0.80, 0.98);
        const double high = brush.dice.between(0.05, 0.15);
        const QColor color = QColor::fromHsv(170 + brush.dice.below(130), 150, 230);
        brush.polygon({{x - 0.02, foot}, {x - 0.012, foot - high * 0.8}, {x, foot - high}, {x, foot}},
                      color.lighter(130));
        brush.polygon({{x, foot}, {x, foot - high}, {x + 0.014, foot - high * 0.7}, {x + 0.022, foot}},
                      color.darker(140));
    }
    // The badger with its lamp.
    brush.ball(0.46, 0.78, 0.13, rgb(0x50505c));
    brush.ball(0.46, 0.62, 0.09, rgb(0xf2f0ea));
    brush.polygon({{0.41, 0.55}, {0.435, 0.535}, {0.45, 0.66}, {0.43, 0.67}}, rgb(0x1c1c22));
    brush.polygon({{0.51, 0.55}, {0.485, 0.535}, {0.47, 0.66}, {0.49, 0.67}}, rgb(0x1c1c22));
    brush.disc(0.46, 0.675, 0.018, rgb(0x1c1c22));
    brush.disc(0.432, 0.605, 0.010, rgb(0xffffff));
    brush.disc(0.488, 0.605, 0.010, rgb(0xffffff));
    brush.glow(0.60, 0.72, 0.04, rgb(0xffe08a), 4);
    brush.disc(0.60, 0.72, 0.022, rgb(0xfff4c8));
}

void forest(Brush &brush) {
    brush.sky({rgb(0x0d2a24), rgb(0x1f5a3e), rgb(0x8ab45a), rgb(0xe8e0a0)});
    brush.glow(0.56, 0.46, 0.2, rgb(0xfff2b8), 2.6);
    for (int layer = 0; layer < 3; ++layer) {
        for (int i = 0; i < 9; ++i) {
            const double x = brush.dice.between(-0.02, 1.02);
            const double width = 0.016 + 0.016 * layer + brush.dice.between(0, 0.012);
            brush.polygon({{x - width, 1}, {x - width * 0.6, 0}, {x + width * 0.6, 0}, {x + width * 1.2, 1}},
                          QColor::fromHsv(140 - layer * 10, 120, 76 - layer * 24));
        }
        brush.ridge(0.74 + layer * 0.09, 0.03, QColor::fromHsv(110, 150, 96 - layer * 26),
                    QColor::fromHsv(130, 160, 50 - layer * 14), 5);
    }
    for (int i = 0; i < 4; ++i) {
        const double x = brush.dice.between(0.2, 0.8);
        brush.polygon({{x, 0}, {x + 0.06, 0}, {x - 0.10, 0.85}, {x - 0.24, 0.85}}, QColor(255, 250, 200, 26));
    }
    // A moth with wide wings over a lamp.
    for (const double side : {-1.0, 1.0}) {
        brush.polygon({{0.5, 0.56}, {0.5 + side * 0.30, 0.42}, {0.5 + side * 0.33, 0.56}, {0.5 + side * 0.18, 0.64}},
                      rgb(0xf0d8a0));
        brush.polygon({{0.5, 0.58}, {0.5 + side * 0.18, 0.64}, {0.5 + side * 0.20, 0.74}, {0.5 + side * 0.07, 0.70}},
                      rgb(0xd8a86a));
        brush.disc(0.5 + side * 0.20, 0.535, 0.034, rgb(0x5a3a6a));
        brush.disc(0.5 + side * 0.20, 0.535, 0.018, rgb(0xf6f0c0));
        brush.line(0.5, 0.53, 0.5 + side * 0.06, 0.45, 0.005, rgb(0x3a2a20));
    }
    brush.polygon({{0.485, 0.53}, {0.515, 0.53}, {0.512, 0.70}, {0.5, 0.73}, {0.488, 0.70}}, rgb(0x5a4030));
}

void mountains(Brush &brush) {
    brush.sky({rgb(0x2f4a7a), rgb(0xc48a9a), rgb(0xfbd8a0)});
    brush.glow(0.7, 0.46, 0.09, rgb(0xfff6d0), 4);
    brush.disc(0.7, 0.46, 0.07, rgb(0xfffbe8));
    for (int layer = 0; layer < 5; ++layer)
        brush.ridge(0.52 + layer * 0.09, 0.10 - layer * 0.016,
                    QColor::fromHsv(230 - layer * 22, 90 + layer * 14, 170 - layer * 26),
                    QColor::fromHsv(222 - layer * 22, 110 + layer * 14, 130 - layer * 22), 6);
    // A sheet of map in the foreground, with a road that goes on into the land.
    brush.polygon({{0.10, 0.86}, {0.52, 0.80}, {0.90, 0.88}, {0.84, 1.02}, {0.06, 1.02}}, rgb(0xf2e2bc));
    for (int i = 0; i < 6; ++i)
        brush.line(0.16 + i * 0.11, 0.90 + 0.012 * (i % 2), 0.22 + i * 0.11, 0.905 - 0.012 * (i % 2), 0.007,
                   rgb(0xb04030));
    brush.line(0.80, 0.92, 0.84, 0.95, 0.010, rgb(0xb04030));
    brush.line(0.84, 0.92, 0.80, 0.95, 0.010, rgb(0xb04030));
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

void grid(Brush &brush) {
    brush.sky({rgb(0x10062a), rgb(0x3a0a5a), rgb(0xff5a8a)});
    brush.disc(0.5, 0.56, 0.2, rgb(0xffc24a));
    brush.polygon({{0, 0.62}, {1, 0.62}, {1, 1}, {0, 1}}, rgb(0x12062c));
    for (int i = -10; i <= 20; ++i)
        brush.line(0.5 + (i - 5) * 0.03, 0.62, 0.5 + (i - 5) * 0.3, 1, 0.003, rgb(0xff5ad0));
    for (int i = 0; i < 9; ++i)
        brush.line(0, 0.62 + 0.0047 * i * i, 1, 0.62 + 0.0047 * i * i, 0.003, rgb(0xff5ad0));
}

const QHash<QString, std::function<void(Brush &)>> &scenes() {
    static const QHash<QString, std::function<void(Brush &)>> table{{QStringLiteral("space"), space},
                                                                    {QStringLiteral("castle"), castle},
                                                                    {QStringLiteral("lighthouse"), lighthouse},
                                                                    {QStringLiteral("swamp"), swamp},
                                                                    {QStringLiteral("dusk"), dusk},
                                                                    {QStringLiteral("city"), city},
                                                                    {QStringLiteral("sea"), sea},
                                                                    {QStringLiteral("winter"), winter},
                                                                    {QStringLiteral("clock"), clock},
                                                                    {QStringLiteral("clouds"), clouds},
                                                                    {QStringLiteral("desert"), desert},
                                                                    {QStringLiteral("garden"), garden},
                                                                    {QStringLiteral("cave"), cave},
                                                                    {QStringLiteral("forest"), forest},
                                                                    {QStringLiteral("mountains"), mountains},
                                                                    {QStringLiteral("plasma"), plasma},
                                                                    {QStringLiteral("storm"), storm},
                                                                    {QStringLiteral("grid"), grid}};
    return table;
}

} // namespace

void paintScene(QPainter &painter, const QRectF &area, const QString &scene, const QString &seed) {
    painter.save();
    painter.setClipRect(area);
    Brush brush(painter, area, seed);
    scenes().value(scene, grid)(brush);
    brush.vignette(0.45);
    painter.restore();
}

SceneInk sceneInk(const QString &scene) {
    static const QHash<QString, SceneInk> table{
        {QStringLiteral("space"), {rgb(0xfff4d0), rgb(0x1a0838), rgb(0xffb24a)}},
        {QStringLiteral("castle"), {rgb(0xffe9b0), rgb(0x24103a), rgb(0xf2784a)}},
        {QStringLiteral("lighthouse"), {rgb(0xffffff), rgb(0x0a1e34), rgb(0xf2c25a)}},
        {QStringLiteral("swamp"), {rgb(0xf4ffc0), rgb(0x05241a), rgb(0x8ee04a)}},
        {QStringLiteral("dusk"), {rgb(0xfff2c8), rgb(0x3a1450), rgb(0xff8a4a)}},
        {QStringLiteral("city"), {rgb(0xfff0c8), rgb(0x0c1030), rgb(0xf6b24a)}},
        {QStringLiteral("sea"), {rgb(0xffffff), rgb(0x0a3a5e), rgb(0xe8503c)}},
        {QStringLiteral("winter"), {rgb(0xffffff), rgb(0x12305e), rgb(0x6ac8f2)}},
        {QStringLiteral("clock"), {rgb(0xfff0c8), rgb(0x2a1406), rgb(0xe8a03c)}},
        {QStringLiteral("clouds"), {rgb(0xf4f6ff), rgb(0x0a1228), rgb(0xd0a85a)}},
        {QStringLiteral("desert"), {rgb(0xfff4c8), rgb(0x5a1c1c), rgb(0xffd23c)}},
        {QStringLiteral("garden"), {rgb(0xffffff), rgb(0x1c4a24), rgb(0xf2609a)}},
        {QStringLiteral("cave"), {rgb(0xffe8b0), rgb(0x180c1c), rgb(0x6ae0d0)}},
        {QStringLiteral("forest"), {rgb(0xfff8d0), rgb(0x0c2a1c), rgb(0xd8b84a)}},
        {QStringLiteral("mountains"), {rgb(0xfff6e0), rgb(0x2a2448), rgb(0xc8503c)}},
        {QStringLiteral("storm"), {rgb(0xfff6a0), rgb(0x1c0a2c), rgb(0xe03c4a)}}};
    return table.value(scene, SceneInk{rgb(0xffffff), rgb(0x180830), rgb(0x5ae0ff)});
}

} // namespace ludarium::demo

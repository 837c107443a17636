#include "maker/Scenes.h"

#include <cmath>
#include <tuple>

namespace ludarium::demo::scenes {

namespace {

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

} // namespace

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

void hedge(Brush &brush) {
    brush.sky({rgb(0x6a2c4a), rgb(0xd8785a), rgb(0xfbd890)});
    brush.glow(0.5, 0.52, 0.16, rgb(0xfff2c0), 3.4);
    brush.disc(0.5, 0.52, 0.15, rgb(0xfff4d0));
    brush.tower(0.08, 0.74, 0.08, 0.22, rgb(0x5a3050), rgb(0xffd27a), true);
    brush.tower(0.15, 0.74, 0.10, 0.15, rgb(0x5a3050), rgb(0xffd27a), false);
    brush.ridge(0.70, 0.03, rgb(0x7a4a5a), rgb(0x3a2438));
    // The Baron: a bush with a cape, a monocle and a moustache.
    brush.polygon({{0.36, 0.62}, {0.66, 0.60}, {0.86, 0.96}, {0.60, 0.90}, {0.30, 0.98}}, rgb(0xa8203a));
    for (int i = 0; i < 60; ++i) {
        const double angle = brush.dice.between(0, 2 * pi);
        const double reach = std::sqrt(brush.dice.between(0, 1));
        brush.disc(0.5 + 0.17 * reach * std::cos(angle), 0.68 + 0.17 * reach * std::sin(angle), 0.05,
                   QColor::fromHsv(110 + brush.dice.below(24), 170, 90 + brush.dice.below(70)));
    }
    for (int i = 0; i < 12; ++i) {
        const double angle = i * pi / 6;
        const QPointF tip(0.5 + 0.29 * std::cos(angle), 0.68 + 0.25 * std::sin(angle));
        brush.polygon({{0.5 + 0.2 * std::cos(angle - 0.09), 0.68 + 0.18 * std::sin(angle - 0.09)},
                       tip,
                       {0.5 + 0.2 * std::cos(angle + 0.09), 0.68 + 0.18 * std::sin(angle + 0.09)}},
                      rgb(0x4a6a2a));
    }
    for (const double eye : {0.44, 0.56}) {
        brush.disc(eye, 0.64, 0.036, rgb(0xfffbe8));
        brush.disc(eye + 0.008, 0.645, 0.017, rgb(0x1c1410));
    }
    brush.line(0.40, 0.585, 0.47, 0.605, 0.014, rgb(0x203a14));
    brush.line(0.60, 0.585, 0.53, 0.605, 0.014, rgb(0x203a14));
    brush.painter.setBrush(Qt::NoBrush);
    brush.painter.setPen(QPen(rgb(0xf2c84a), brush.length(0.010)));
    brush.painter.drawEllipse(brush.at(0.56, 0.64), brush.length(0.048), brush.length(0.048));
    brush.painter.setPen(Qt::NoPen);
    brush.polygon({{0.5, 0.715}, {0.42, 0.755}, {0.36, 0.735}, {0.43, 0.73}}, rgb(0x3a2416));
    brush.polygon({{0.5, 0.715}, {0.58, 0.755}, {0.64, 0.735}, {0.57, 0.73}}, rgb(0x3a2416));
    brush.polygon({{0.42, 0.50}, {0.44, 0.44}, {0.47, 0.475}, {0.5, 0.43}, {0.53, 0.475}, {0.56, 0.44}, {0.58, 0.50}},
                  rgb(0xf2c84a));
    brush.ridge(0.93, 0.02, rgb(0x2c4a24), rgb(0x0e1c0c), 4);
}

} // namespace ludarium::demo::scenes

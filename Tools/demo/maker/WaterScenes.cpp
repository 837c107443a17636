#include "maker/Scenes.h"

#include <cmath>
#include <tuple>

namespace ludarium::demo::scenes {

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

void reef(Brush &brush) {
    brush.sky({rgb(0x8ae0e8), rgb(0x2a8ab0), rgb(0x0c3a6a), rgb(0x051a38)});
    for (int i = 0; i < 5; ++i) {
        const double x = brush.dice.between(0.1, 0.9);
        brush.polygon({{x, 0}, {x + 0.08, 0}, {x - 0.06, 0.9}, {x - 0.26, 0.9}}, QColor(220, 255, 255, 24));
    }
    // A drowned town on the ground.
    brush.ridge(0.80, 0.02, rgb(0x1c4a5e), rgb(0x081c2c), 3);
    for (int i = 0; i < 6; ++i)
        brush.tower(0.04 + 0.16 * i, 0.86, 0.07, brush.dice.between(0.10, 0.28), rgb(0x164a66), rgb(0xf6e28a),
                    i % 2 == 0);
    brush.ridge(0.88, 0.03, rgb(0x0f3448), rgb(0x04121e), 4);
    for (int i = 0; i < 12; ++i) {
        const double x = brush.dice.between(0, 1);
        const QColor coral = QColor::fromHsv((330 + brush.dice.below(70)) % 360, 170, 220);
        for (int arm = -2; arm <= 2; ++arm)
            brush.line(x, 1.0, x + arm * 0.018, brush.dice.between(0.86, 0.93), 0.012, coral);
    }
    for (int i = 0; i < 11; ++i) {
        const double x = brush.dice.between(0.06, 0.94);
        const double y = brush.dice.between(0.40, 0.78);
        const QColor scale = QColor::fromHsv(brush.dice.below(60), 200, 250);
        brush.polygon({{x - 0.035, y}, {x - 0.065, y - 0.02}, {x - 0.065, y + 0.02}}, scale.darker(120));
        brush.polygon({{x - 0.04, y}, {x, y - 0.022}, {x + 0.035, y}, {x, y + 0.022}}, scale);
        brush.disc(x + 0.016, y - 0.005, 0.005, rgb(0x101018));
    }
    // The diver: helmet, suit, a rope to the light above.
    brush.line(0.46, 0, 0.48, 0.46, 0.007, rgb(0xe8d8a8));
    brush.polygon({{0.42, 0.60}, {0.54, 0.60}, {0.57, 0.76}, {0.51, 0.88}, {0.48, 0.78}, {0.45, 0.88}, {0.39, 0.76}},
                  rgb(0xb06a34));
    brush.ball(0.48, 0.54, 0.10, rgb(0xd8a24a));
    brush.disc(0.48, 0.545, 0.058, rgb(0x0c2a3c));
    brush.glow(0.47, 0.53, 0.02, rgb(0xc8fbff), 2);
    for (int i = 0; i < 26; ++i)
        brush.disc(0.52 + brush.dice.between(0, 0.08), brush.dice.between(0.05, 0.48), brush.dice.between(0.004, 0.014),
                   QColor(230, 255, 255, 110));
}

} // namespace ludarium::demo::scenes

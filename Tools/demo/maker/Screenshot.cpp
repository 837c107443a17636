#include "maker/Artwork.h"
#include "maker/Dice.h"
#include "maker/Lettering.h"
#include "maker/PixelFont.h"
#include "maker/Scene.h"

#include <QPainter>

namespace ludarium::demo {

namespace {

struct Machine {
    QSize size;
    QList<QRgb> palette; ///< empty: the colours are taken from the picture
    int colors;
};

Machine machineOf(const DemoGame &game) {
    if (game.platform == QStringLiteral("Nintendo Game Boy"))
        return {{160, 144}, {0xff0f380f, 0xff306230, 0xff8bac0f, 0xffc4cf6a}, 4};
    if (game.isCartridge())
        return {{256, 240},
                {0xff080818, 0xff1c2c6c, 0xff2c5cc4, 0xff64b0fc, 0xffbce0fc, 0xff0c4c24, 0xff1c8c3c,
                 0xff84d048, 0xff4c2410, 0xff9c4c1c, 0xfff09448, 0xfffcd8a0, 0xff741440, 0xffc43c6c,
                 0xfffc94b4, 0xff585868, 0xffa4a4b4, 0xfffcfcfc, 0xff3c1868, 0xff7c3cc4},
                20};
    return {{320, 200}, {}, 32};
}

// The colours that stand for the picture best: cells of a coarse colour cube, the fullest first, kept apart.
QList<QRgb> chosenPalette(const QImage &image, int colors) {
    struct Cell {
        int count = 0;
        int red = 0, green = 0, blue = 0;
    };
    QList<Cell> cells(16 * 16 * 16);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            Cell &cell = cells[(qRed(pixel) >> 4) << 8 | (qGreen(pixel) >> 4) << 4 | qBlue(pixel) >> 4];
            ++cell.count;
            cell.red += qRed(pixel);
            cell.green += qGreen(pixel);
            cell.blue += qBlue(pixel);
        }
    }
    QList<QRgb> palette{0xff000000, 0xffffffff};
    for (int distance = 60; palette.size() < colors && distance > 8; distance -= 13) {
        for (;;) {
            Cell *best = nullptr;
            for (Cell &cell : cells) {
                if (cell.count == 0 || (best && cell.count <= best->count))
                    continue;
                const int red = cell.red / cell.count;
                const int green = cell.green / cell.count;
                const int blue = cell.blue / cell.count;
                const bool apart = std::none_of(palette.begin(), palette.end(), [&](QRgb known) {
                    return qAbs(qRed(known) - red) + qAbs(qGreen(known) - green) + qAbs(qBlue(known) - blue) < distance;
                });
                if (apart)
                    best = &cell;
            }
            if (!best || palette.size() >= colors)
                break;
            palette.append(qRgb(best->red / best->count, best->green / best->count, best->blue / best->count));
            best->count = 0;
        }
    }
    return palette;
}

int nearest(const QList<QRgb> &palette, int red, int green, int blue) {
    int best = 0;
    int least = 1 << 30;
    for (int i = 0; i < palette.size(); ++i) {
        const int dr = qRed(palette[i]) - red;
        const int dg = qGreen(palette[i]) - green;
        const int db = qBlue(palette[i]) - blue;
        const int distance = 3 * dr * dr + 5 * dg * dg + 2 * db * db;
        if (distance < least) {
            least = distance;
            best = i;
        }
    }
    return best;
}

// Ordered dithering by a 4 by 4 Bayer matrix, the look of the time.
QImage dithered(const QImage &image, const Machine &machine) {
    static constexpr int bayer[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    const QList<QRgb> palette = machine.palette.isEmpty() ? chosenPalette(image, machine.colors) : machine.palette;
    const int spread = machine.colors <= 4 ? 84 : machine.colors <= 20 ? 44 : 26;
    QImage result(image.size(), QImage::Format_Indexed8);
    result.setColorTable(palette);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const int shift = (bayer[y % 4][x % 4] * 2 - 15) * spread / 30;
            result.setPixel(
                x, y,
                static_cast<uint>(nearest(palette, qRed(pixel) + shift, qGreen(pixel) + shift, qBlue(pixel) + shift)));
        }
    }
    return result;
}

void bar(QPainter &painter, const QRect &area, const QColor &dark, const QColor &light) {
    painter.fillRect(area, dark);
    painter.fillRect(area.left(), area.top(), area.width(), 1, light);
}

// What stands over the picture depends on the kind of game: verbs, a party, a score.
void paintInterface(QPainter &painter, const DemoGame &game, const QSize &size, Dice &dice) {
    const int width = size.width();
    const int height = size.height();
    const SceneInk ink = sceneInk(game.scene);
    if (game.genre.startsWith(QStringLiteral("Adventure"))) {
        bar(painter, QRect(0, height - 56, width, 56), ink.dark, ink.accent);
        const QStringList verbs{QStringLiteral("GIVE"), QStringLiteral("OPEN"),    QStringLiteral("PONDER"),
                                QStringLiteral("TAKE"), QStringLiteral("LOOK AT"), QStringLiteral("WIND UP"),
                                QStringLiteral("USE"),  QStringLiteral("TALK TO"), QStringLiteral("SIGH")};
        for (int i = 0; i < verbs.size(); ++i)
            drawPixelText(painter, 8 + (i % 3) * 62, height - 40 + (i / 3) * 13, verbs[i],
                          i == 4 ? ink.light : ink.accent);
        drawPixelText(painter, 8, height - 53, QStringLiteral("LOOK AT THE HORIZON"), ink.light);
        for (int i = 0; i < 6; ++i) {
            const QRect slot(200 + (i % 3) * 38, height - 50 + (i / 3) * 25, 34, 22);
            painter.fillRect(slot, ink.dark.lighter(170));
            painter.fillRect(slot.adjusted(9, 5, -9, -4), QColor::fromHsv(dice.below(360), 150, 220));
        }
    } else if (game.genre.startsWith(QStringLiteral("Role")) || game.genre.startsWith(QStringLiteral("Strategy")) ||
               game.genre.startsWith(QStringLiteral("Simulation"))) {
        const int side = width / 4;
        painter.fillRect(QRect(width - side, 0, side, height), ink.dark);
        painter.fillRect(QRect(width - side, 0, 1, height), ink.accent);
        for (int i = 0; i < 4; ++i) {
            const int y = 6 + i * (height - 30) / 4;
            painter.fillRect(QRect(width - side + 5, y, 18, 18), QColor::fromHsv(dice.below(360), 120, 190));
            painter.fillRect(QRect(width - side + 5, y + 21, side - 10, 3), QColor(90, 20, 20));
            painter.fillRect(QRect(width - side + 5, y + 21, (side - 10) * (30 + dice.below(70)) / 100, 3),
                             QColor(80, 220, 90));
            drawPixelText(painter, width - side + 27, y + 5, QString::number(10 + dice.below(89)), ink.light);
        }
        bar(painter, QRect(0, height - 22, width, 22), ink.dark, ink.accent);
        drawPixelText(painter, 6, height - 15,
                      QStringLiteral("DAY %1  GOLD %2").arg(3 + dice.below(40)).arg(100 + dice.below(900)), ink.light);
    } else {
        bar(painter, QRect(0, 0, width, 12), ink.dark, ink.dark);
        drawPixelText(painter, 4, 3, QStringLiteral("%1").arg(dice.below(99999), 6, 10, QLatin1Char('0')), ink.light);
        const QString stage = QStringLiteral("STAGE %1").arg(1 + dice.below(8));
        drawPixelText(painter, width - 6 * static_cast<int>(stage.size()) - 4, 3, stage, ink.light);
        for (int i = 0; i < 3; ++i)
            painter.fillRect(QRect(width / 2 - 14 + i * 10, 3, 6, 6), QColor(226, 60, 70));
        // Platforms and coins.
        for (int i = 0; i < 4; ++i) {
            const int x = 8 * dice.below(width / 8 - 6);
            const int y = height / 2 + 8 * dice.below(height / 18);
            for (int tile = 0; tile < 5; ++tile) {
                painter.fillRect(QRect(x + tile * 8, y, 7, 7), ink.accent.darker(140));
                painter.fillRect(QRect(x + tile * 8, y, 7, 2), ink.accent.lighter(130));
                painter.fillRect(QRect(x + tile * 8 + 2, y - 9, 4, 6), ink.light);
            }
        }
    }
}

} // namespace

QImage screenshot(const DemoGame &game, int number) {
    const Machine machine = machineOf(game);
    QImage image(machine.size, QImage::Format_RGB32);
    QPainter painter(&image);
    Dice dice(game.title + game.platform + QString::number(number));
    const SceneInk ink = sceneInk(game.scene);
    if (number == 0) {
        // The title screen.
        paintScene(painter, image.rect(), game.scene, game.title + game.platform);
        paintTitle(painter,
                   QRectF(machine.size.width() * 0.07, 8, machine.size.width() * 0.86, machine.size.height() * 0.44),
                   game.title, game.developer + game.series, ink);
        const QString start = game.isCartridge() ? QStringLiteral("PRESS START") : QStringLiteral("PRESS ANY KEY");
        const QString maker = QStringLiteral("%1 %2").arg(game.year()).arg(game.developer).toUpper();
        for (const auto &[text, y] :
             {std::pair{start, machine.size.height() * 0.74}, std::pair{maker, machine.size.height() - 12.0}})
            drawPixelText(painter, (machine.size.width() - 6 * static_cast<int>(text.size())) / 2, static_cast<int>(y),
                          text, ink.light);
    } else {
        // Another part of the land: the same scene with other dice, seen from nearer.
        paintScene(painter,
                   QRectF(-machine.size.width() * 0.12, -machine.size.height() * 0.22, machine.size.width() * 1.3,
                          machine.size.height() * 1.25),
                   game.scene, game.title + QString::number(number));
        paintInterface(painter, game, machine.size, dice);
    }
    painter.end();
    return dithered(image, machine).scaled(machine.size * 2, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

} // namespace ludarium::demo

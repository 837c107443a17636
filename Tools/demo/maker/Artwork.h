#pragma once

#include "maker/DemoGame.h"

#include <QByteArray>
#include <QImage>

namespace ludarium::demo {

/// Loads the typefaces of the titles from a folder of fonts; without them the machine's own serve.
void loadTypefaces(const QString &folder);

QImage boxFront(const DemoGame &game);                          ///< 450 by 600, 450 by 450 for cartridges
QImage boxBack(const DemoGame &game, const QImage &screenshot); ///< 450 by 600
QImage boxStanding(const QImage &front, const DemoGame &game);  ///< transparent around it
QImage clearLogo(const DemoGame &game);                         ///< transparent around it
QImage fanart(const DemoGame &game);                            ///< 1280 by 720
QImage cartridge(const DemoGame &game);                         ///< transparent around it
QImage compactDisc(const DemoGame &game);                       ///< transparent around it
/// A picture of a game's screen with the colours and the size of its machine, doubled.
QImage screenshot(const DemoGame &game, int number);

QByteArray jpeg(const QImage &image, int quality);
QByteArray png(const QImage &image);

} // namespace ludarium::demo

#pragma once

#include "support/FigureTable.h"

namespace ludarium {

class GameLibrary;
class LibraryBrowser;

// What a loaded library costs in use. Best of many rounds, processor time of this process; what waits for the disk is
// a median of the time that passes.

QList<Figure> searchFigures(GameLibrary &library, LibraryBrowser &browser);
/// The look at the disk for every game; the library's collection has games of DOS only on the disk.
QList<Figure> statusFigures(GameLibrary &library);
QList<Figure> countFigures(GameLibrary &library, LibraryBrowser &browser);
QList<Figure> favouriteFigures(GameLibrary &library, const QString &folder);
/// The lists of the main view and the counts of the sidebar after one game has changed.
QList<Figure> browsedChangeFigures(GameLibrary &library, LibraryBrowser &browser);
/// 10,000 titles against an index of 15,000 archives; does not depend on the library.
QList<Figure> downloadIndexFigures();

} // namespace ludarium

#pragma once

#include "Models/Game.h"

#include <QString>

namespace ludarium {

/// The archive that a game is installed from.
namespace GameArchive {

/// Whether a game can come back from an archive once its folder is gone.
struct Proof {
    QString archive; ///< from which it can; empty when it cannot
    QString problem; ///< why not; empty when it can
};

/// Looks for an archive outside `folder` that lists cleanly and holds files of a folder of that name, wherever the
/// collection keeps archives of such games. Archives that have only been downloaded count, placeholders do not. The
/// names that the game's title has among the archives come first, then those that come near it, which may be those of
/// other games: what an archive holds decides. Blocks, for the thread pool.
Proof proofOfCopy(const Game &game, const QString &folder, const QString &collection);

} // namespace GameArchive

} // namespace ludarium

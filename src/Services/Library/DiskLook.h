#pragma once

#include "Services/Library/LibraryServices.h"

namespace ludarium {

/// One look at the disk for all games of a list.
struct DiskLook {
    /// In the order of the games. A game whose folder cannot be looked at stays as it was last seen.
    QList<GameStatus> statuses;
    /// Names a folder that could not be looked at though games were seen in it; empty when there is none.
    QString unavailable;
    /// The collection itself could not be looked at: `statuses` is empty.
    bool isAway = false;

    /// Blocking, for the thread pool. `known` is what was last seen of a game.
    static DiskLook take(const LibraryServices &services, const GameList &games, const QString &collection,
                         const std::function<GameStatus(const Game &)> &known);
};

} // namespace ludarium

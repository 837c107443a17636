#pragma once

#include "Models/AdditionalApplication.h"
#include "Models/Game.h"

#include <QString>

namespace ludarium {

/// How an additional application of a game is started, as far as its record and the disk tell.
struct AdditionalApp {
    enum class Action {
        soundtrack, ///< by the player of soundtracks
        script,     ///< `path`, in a terminal
        document,   ///< `path`, with the desktop's program for it
    };
    Action action = Action::document;
    QString path;

    /// Looks at the disk. `system` is what texts call this machine's. Throws LaunchError when there is nothing to
    /// start.
    static AdditionalApp find(const AdditionalApplication &app, const Game &game, const QString &collection,
                              const QString &system);
    /// The action that the record alone lets expect. Looks at no disk.
    static Action likelyAction(const AdditionalApplication &app);
};

} // namespace ludarium

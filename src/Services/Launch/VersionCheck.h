#pragma once

#include "Models/Game.h"
#include "Models/GameVersionOption.h"

#include <QCoro/QCoroTask>
#include <functional>
#include <optional>

namespace ludarium {

/// What stands between the Play button and the launch: does the game come in several versions, and which is meant?
class VersionCheck {
  public:
    /// Absent functions find nothing. The detectors look at the disk and are called on the thread pool.
    struct Collaborators {
        /// The current record of a game; null when it is gone.
        std::function<GamePtr(const QString &gameId)> currentGame;
        std::function<std::optional<GameVersionMenu>(const QString &gameTitle, const QString &gameDataFolder)>
            detectVersions;
        std::function<std::optional<GameVersionMenu>(const QString &gameDataFolder)> detectVersionsFromFolders;
    };

    struct Result {
        enum class Action {
            nothing, ///< the game is gone
            launch,  ///< with `version`, when there is one
            ask,     ///< show `menu`; its choice launches
        };
        Action action = Action::nothing;
        GamePtr game;
        std::optional<GameVersionOption> version;
        std::optional<GameVersionMenu> menu;
    };

    explicit VersionCheck(Collaborators collaborators);

    QCoro::Task<Result> checkVersionsAndLaunch(QString gameId, QString collection) const;

  private:
    Collaborators m_collaborators;
};

} // namespace ludarium

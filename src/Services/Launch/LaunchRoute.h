#pragma once

#include "Models/Game.h"

#include <QString>
#include <optional>
#include <utility>

namespace ludarium {

/// The runner that a game goes to.
enum class LaunchRoute {
    document,
    scummVM,
    dreamm,
    windows3x,
    windows9x,
    appleIIGS,
    arcade,
    retroArch,
    soundtrack,
    video,
    dos,
};

/// The route of a game and why, by the first test that holds.
std::pair<LaunchRoute, QString> launchRoute(const Game &game);

/// The route of a game's setup, which asks the platform alone; `dos` for everything without a runner of its own.
LaunchRoute setupRoute(const Game &game);

/// Stable name for logs and plans: "document", "scummvm", …
QString launchRouteName(LaunchRoute route);
/// What the route's games are called in a sentence: "ScummVM games", "Documents", …
QString launchRouteGames(LaunchRoute route);

} // namespace ludarium

#pragma once

#include "Models/Game.h"

#include <QString>

namespace ludarium {

class CommandContext;
class GameLibrary;

/// The games that a text names: the one with that id; else those whose title it is, ignoring case; else those whose
/// title contains it; else those whose id begins so.
GameList gamesNamed(const GameList &games, const QString &idOrTitle);

/// The one game that a text names. When there are several they are listed on standard error; then, and when there is
/// none, throws CliError.
GamePtr chooseGame(CommandContext &context, const GameLibrary &library, const QString &idOrTitle);

/// "installed", "compressed", "downloadable" or "missing".
QString gameStateText(const Game &game);

} // namespace ludarium

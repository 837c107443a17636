#pragma once

#include "Models/Game.h"

#include <QString>

namespace ludarium {

class CommandContext;
class GameLibrary;

/// The games that a text names: the one with that id; else those whose title it is, ignoring case; else those whose
/// title contains it.
GameList gamesNamed(const GameList &games, const QString &idOrTitle);

/// The one game that a text names. When there are several they are listed on standard error; then, and when there is
/// none, throws CliError.
GamePtr chooseGame(CommandContext &context, const GameLibrary &library, const QString &idOrTitle);

/// Which games to list.
struct GameFilter {
    QString search;   ///< in title, sort title, developer, publisher, genre and series, ignoring case; empty: all
    QString platform; ///< the exact name, else the name ignoring case; null: all
};

/// In order of their sort titles; games with the same keep their order. Throws CliError when the filter names a
/// platform that no game has.
GameList selectGames(const GameList &games, const GameFilter &filter);

/// "installed", "compressed", "downloadable" or "missing".
QString gameStateText(const Game &game);

} // namespace ludarium

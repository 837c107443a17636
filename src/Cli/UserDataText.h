#pragma once

#include "Cli/JsonText.h"

namespace ludarium {

class CommandContext;
class GameLibrary;
struct Game;

/// The words for how far the user has come, in the order of GameProgress: "notPlayed", "playing", …
const QStringList &progressWords();

/// Throws CliError with the reason why a change was refused; an empty one is none.
void requireStored(const QString &refusal);

/// Prints what the user has given a game as one document; with text output the line alone.
void printUserData(CommandContext &context, const GameLibrary &library, const Game &game, const QString &line);

} // namespace ludarium

#pragma once

#include "Models/Game.h"

#include <QVariantList>

namespace ludarium {

class GameExceptionsManager;

// What the detail pane says of a game, in the user's locale: lists of maps for its repeaters.

/// Platform, year and developer, as far as they are known: `kind`, which is that of a filter, and `text`.
QVariantList chipsOf(const Game &game);
/// What is known beside that: `name`, `value` and the `kind` of the filter that the value stands for, or empty.
QVariantList factsOf(const Game &game);
/// What is known to be special about a title: `severity`, `notes` and `emulator`, which may be empty.
QVariantList issuesOf(const GameExceptionsManager &exceptions, const QString &title);

} // namespace ludarium

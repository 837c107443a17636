#pragma once

#include "Cli/JsonText.h"
#include "Cli/Table.h"

namespace ludarium {

class GameLibrary;

/// What a load brought and how long it took: counts, and whether the games came from the cache.
FieldList loadFields(const GameLibrary &library, qint64 milliseconds);
void addLoadMembers(Json &document, const GameLibrary &library, qint64 milliseconds);

} // namespace ludarium

#pragma once

#include "Services/Library/GameGroup.h"

namespace ludarium {

// What the list says of games, in the user's locale. A value that is not known, and a count of none, is an empty text.

/// Each platform of a group once, in their order.
QString platformsText(const GameGroup &group);
QString ratingText(const Game &game);
QString playCountText(int count);
QString dateText(const std::optional<QDateTime> &date);
/// Hours and minutes.
QString playTimeText(double seconds);
/// What can be done with the best of these games: "Installed" before "Compressed" before "Downloadable".
QString statusText(const GameList &games);

} // namespace ludarium

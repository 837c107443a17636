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
/// What can be done with the best of these games: "Installed" before "Compressed" before "Downloadable"; "Playing"
/// while one of them runs.
QString statusText(const GameList &games, bool running);
/// What stands on the cover of these games, as `BadgeImageProvider` reads it: what can be done with the best of them,
/// and how many they are.
QString coverBadges(const GameList &games, bool running);
/// All that a cell of these games shows in one sentence: its title, platform, variants, favourite and status.
QString spokenText(const QString &title, const QString &platform, const GameList &games, bool running);

} // namespace ludarium

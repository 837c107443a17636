#pragma once

#include <QString>
#include <optional>

namespace ludarium {

/// How far the user has come; stored by its number.
enum class GameProgress { notPlayed = 0, playing = 1, beaten = 2, completed = 3, mastered = 4 };

/// "Not Played", "Playing", "Beaten", "Completed", "Mastered".
QString gameProgressText(GameProgress progress);
/// No value for a number outside 0 to 4.
std::optional<GameProgress> gameProgressFromNumber(qint64 number);

} // namespace ludarium

#pragma once

#include <QString>

namespace ludarium {

/// The kinds of collection games that lie in folders of their own. Whatever is none of the others counts as DOS.
enum class GameFamily { dos, scummVM, windows3x, windows9x, dreamm, interactiveFiction, demoScene, appleIIGS };
inline constexpr int gameFamilyCount = 8;

GameFamily gameFamily(const QString &platform);
/// The folder of a family's games and archives, relative to the collection root. Windows 9x has a folder a year below.
QLatin1StringView gameFamilyFolder(GameFamily family);

} // namespace ludarium

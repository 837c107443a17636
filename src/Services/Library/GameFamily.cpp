#include "Services/Library/GameFamily.h"

namespace ludarium {

using namespace Qt::StringLiterals;

GameFamily gameFamily(const QString &platform) {
    using enum GameFamily;
    if (platform == "ScummVM"_L1 || platform == "ScummVM SVN"_L1)
        return scummVM;
    if (platform == "Windows 3x"_L1 || platform == "Windows 3.x"_L1)
        return windows3x;
    if (platform == "Windows 9x"_L1 || platform == "Windows 9.x"_L1)
        return windows9x;
    if (platform.contains("dreamm"_L1, Qt::CaseInsensitive))
        return GameFamily::dreamm;
    if (platform == "Interactive Fiction"_L1)
        return interactiveFiction;
    if (platform == "DemoScene"_L1 || platform == "Demo Scene"_L1)
        return demoScene;
    if (platform == "Apple IIGS"_L1)
        return appleIIGS;
    return dos;
}

QLatin1StringView gameFamilyFolder(GameFamily family) {
    static constexpr QLatin1StringView folders[gameFamilyCount]{
        "eXo/eXoDOS"_L1,    "eXo/eXoScummVM"_L1, "eXo/eXoWin3x"_L1,   "eXo/eXoWin9x"_L1,
        "eXo/eXoDREAMM"_L1, "eXo/eXoIF"_L1,      "eXo/eXoDemoScn"_L1, "eXo/eXoAppleIIGS"_L1};
    return folders[static_cast<int>(family)];
}

} // namespace ludarium

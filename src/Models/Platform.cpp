#include "Models/Platform.h"

#include <QSet>
#include <QStringList>

namespace ludarium {

bool Platform::isArcade() const {
    return name == QLatin1String("MAME") || name.contains(QLatin1String("arcade"), Qt::CaseInsensitive);
}

bool Platform::isROMPlatform() const {
    return isRetroArchPlatformName(name);
}

Platform Platform::named(const QString &name, const QString &category) {
    Platform platform;
    platform.name = name;
    platform.category = category;
    return platform;
}

const QList<Platform> &Platform::defaultPlatforms() {
    static const QList<Platform> platforms{
        named(QStringLiteral("MS-DOS"), QStringLiteral("Computer")),
        named(QStringLiteral("Windows"), QStringLiteral("Computer")),
        named(QStringLiteral("Windows 3x"), QStringLiteral("Computer")),
        named(QStringLiteral("Windows 9x"), QStringLiteral("Computer")),
        named(QStringLiteral("DREAMM"), QStringLiteral("Engine")),
        named(QStringLiteral("DemoScene"), QStringLiteral("Demo")),
        named(QStringLiteral("Interactive Fiction"), QStringLiteral("Computer")),
        named(QStringLiteral("ScummVM"), QStringLiteral("Engine")),
    };
    return platforms;
}

const QStringList &Platform::retroArchPlatformNames() {
    static const QStringList names = QStringLiteral("Nintendo Entertainment System\n"
                                                    "Nintendo Famicom\n"
                                                    "Nintendo 64\n"
                                                    "Super Nintendo Entertainment System\n"
                                                    "Nintendo Game Boy\n"
                                                    "Nintendo Game Boy Advance\n"
                                                    "Nintendo Game Boy Color\n"
                                                    "Nintendo DS\n"
                                                    "Nintendo 3DS\n"
                                                    "Nintendo GameCube\n"
                                                    "Nintendo Wii\n"
                                                    "Nintendo Wii U\n"
                                                    "Nintendo Switch\n"
                                                    "Nintendo Virtual Boy\n"
                                                    "Sega Genesis\n"
                                                    "Sega Mega Drive\n"
                                                    "Sega Master System\n"
                                                    "Sega Game Gear\n"
                                                    "Sega Saturn\n"
                                                    "Sega Dreamcast\n"
                                                    "Sega CD\n"
                                                    "Sega 32X\n"
                                                    "Sega SG-1000\n"
                                                    "Sony PlayStation\n"
                                                    "Sony Playstation\n"
                                                    "Sony PlayStation 2\n"
                                                    "Sony Playstation 2\n"
                                                    "Sony PlayStation 3\n"
                                                    "Sony Playstation 3\n"
                                                    "Sony PlayStation Portable\n"
                                                    "Sony PSP\n"
                                                    "Sony PlayStation Vita\n"
                                                    "NEC TurboGrafx-16\n"
                                                    "NEC PC Engine\n"
                                                    "NEC TurboGrafx-CD\n"
                                                    "NEC PC Engine CD\n"
                                                    "NEC SuperGrafx\n"
                                                    "NEC PC-FX\n"
                                                    "SNK Neo Geo AES\n"
                                                    "SNK Neo Geo MVS\n"
                                                    "Neo Geo\n"
                                                    "SNK Neo Geo CD\n"
                                                    "SNK Neo Geo Pocket\n"
                                                    "SNK Neo Geo Pocket Color\n"
                                                    "Commodore Amiga\n"
                                                    "Commodore 64\n"
                                                    "Commodore VIC-20\n"
                                                    "Commodore Plus-4\n"
                                                    "Atari 2600\n"
                                                    "Atari 5200\n"
                                                    "Atari 7800\n"
                                                    "Atari Lynx\n"
                                                    "Atari Jaguar\n"
                                                    "Atari ST\n"
                                                    "Sinclair ZX Spectrum\n"
                                                    "ZX Spectrum\n"
                                                    "3DO Interactive Multiplayer\n"
                                                    "3DO\n"
                                                    "Intellivision\n"
                                                    "ColecoVision\n"
                                                    "MSX\n"
                                                    "MSX2\n"
                                                    "Magnavox Odyssey 2\n"
                                                    "Philips CD-i\n"
                                                    "Vectrex\n"
                                                    "WonderSwan\n"
                                                    "WonderSwan Color\n"
                                                    "Bandai WonderSwan\n"
                                                    "Bandai WonderSwan Color\n"
                                                    "Arcade\n"
                                                    "MAME")
                                         .split(QLatin1Char('\n'));
    return names;
}

bool Platform::isRetroArchPlatformName(const QString &name) {
    static const QSet<QString> names(retroArchPlatformNames().cbegin(), retroArchPlatformNames().cend());
    return names.contains(name);
}

} // namespace ludarium

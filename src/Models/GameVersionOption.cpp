#include "Models/GameVersionOption.h"

namespace ludarium {

QString versionTypeText(VersionType type) {
    switch (type) {
    case VersionType::floppy:
        return QStringLiteral("Floppy");
    case VersionType::cd:
        return QStringLiteral("CD");
    case VersionType::ega:
        return QStringLiteral("EGA");
    case VersionType::vga:
        return QStringLiteral("VGA");
    case VersionType::cga:
        return QStringLiteral("CGA");
    case VersionType::hercules:
        return QStringLiteral("Hercules");
    case VersionType::talkie:
        return QStringLiteral("Talkie");
    case VersionType::other:
        return QStringLiteral("Other");
    }
    Q_UNREACHABLE();
}

QString audioTypeText(AudioType type) {
    switch (type) {
    case AudioType::tandy:
        return QStringLiteral("Tandy");
    case AudioType::gameBlaster:
        return QStringLiteral("Game Blaster");
    case AudioType::adlib:
        return QStringLiteral("AdLib");
    case AudioType::mt32:
        return QStringLiteral("MT-32");
    case AudioType::soundBlaster:
        return QStringLiteral("Sound Blaster");
    case AudioType::gus:
        return QStringLiteral("Gravis");
    case AudioType::soundCanvas:
        return QStringLiteral("Sound Canvas");
    case AudioType::cdAudio:
        return QStringLiteral("CD Audio");
    case AudioType::flac:
        return QStringLiteral("FLAC");
    case AudioType::pcSpeaker:
        return QStringLiteral("PC Speaker");
    case AudioType::none:
        return QStringLiteral("None");
    }
    Q_UNREACHABLE();
}

} // namespace ludarium

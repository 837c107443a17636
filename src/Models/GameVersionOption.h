#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <optional>

namespace ludarium {

/// Kind of a game's version. `other` stands for any kind without a name.
enum class VersionType { floppy, cd, ega, vga, cga, hercules, talkie, other };
/// Sound hardware that a version is set up for.
enum class AudioType {
    tandy,
    gameBlaster,
    adlib,
    mt32,
    soundBlaster,
    gus,
    soundCanvas,
    cdAudio,
    flac,
    pcSpeaker,
    none
};

QString versionTypeText(VersionType type); ///< "Floppy", "CD", …
QString audioTypeText(AudioType type);     ///< "Tandy", "Game Blaster", …

/// One way to play a game: what it is called and how DOSBox is set up for it.
struct GameVersionOption {
    QUuid id = QUuid::createUuid();
    QString label;
    VersionType versionType = VersionType::other;
    std::optional<AudioType> audioType;
    QMap<QString, QString> configChanges;     ///< DOSBox keys without section, to values
    QString workingDirectory;                 ///< folder inside the game's data folder; null when absent
    QString executable;                       ///< program to run; null when absent
    std::optional<QStringList> setupCommands; ///< DOS commands
    /// False puts C: at the folder above the game's, true at the game's folder itself.
    bool mountAtGameLevel = false;
    /// Where the version is known from, in words; empty when nobody said.
    QString origin = {};
    bool isOnlyOne = false; ///< the game comes in no other version, so nobody had to choose
};

/// The versions that a game offers, in menu order.
struct GameVersionMenu {
    QUuid id = QUuid::createUuid();
    QString gameTitle;
    QList<GameVersionOption> options;
    bool hasMultipleVersions = false;
    bool hasAudioOptions = false;
};

} // namespace ludarium

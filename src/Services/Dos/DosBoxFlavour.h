#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

namespace ludarium {

/// The families of DOSBox builds, which take different arguments.
enum class DosBoxFamily { vanilla, svn, staging, x, unknown };

/// A DOSBox build as it describes itself.
struct DosBoxFlavour {
    DosBoxFamily family = DosBoxFamily::unknown;
    QString version; ///< "0.74-3", "2024.03.01", …; empty when it tells none
    QString text() const;
    bool operator==(const DosBoxFlavour &) const = default;
};

/// Reads what a build prints for "--version"; `program` helps when it prints nothing.
DosBoxFlavour parseDosBoxVersion(const QByteArray &output, const QString &program);

/// What a build can be told on the command line.
struct DosBoxCapabilities {
    bool setArguments;  ///< "-set" changes a setting
    bool overridesFile; ///< "-set" may be ignored, so that changed settings need a configuration file of their own
    bool folderPrompt;  ///< asks for a folder when it has no terminal, unless told not to
    int longestMount;   ///< bytes of a path that it can mount; 0 for no limit that would matter
    bool oneFloppyImage = false; ///< refuses to mount several images of floppies or hard disks on one drive
};
DosBoxCapabilities capabilitiesOf(DosBoxFamily family);

/// Everything that goes on DOSBox's command line.
struct DosBoxCommandLine {
    QString overlay; ///< null for none
    QString launchConfig;
    QMap<QString, QString> overrides; ///< settings by key without section
    QString overridesFile;            ///< where the settings stand for builds without "-set"
    QString workingDirectory;
};
/// Throws LaunchError when an override cannot be given safely.
QStringList dosBoxArguments(const DosBoxCommandLine &line, DosBoxFamily family);
/// Text of the overrides' file, null when the build needs none.
QByteArray overridesConfig(const DosBoxCommandLine &line, DosBoxFamily family);

} // namespace ludarium

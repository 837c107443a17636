#pragma once

#include "Services/Dos/DosBoxFlavour.h"
#include "Services/Dos/DosLauncher.h"
#include "Services/Dos/DosSettings.h"
#include "Services/Dos/FolderPreparation.h"
#include "Services/Dos/FolderView.h"

#include <optional>

namespace ludarium {

/// Everything that decides a launch besides the folders: gathered on the main thread, then used on the pool.
struct DosPlanInput {
    DosLaunchRequest request;
    DosSettings settings;
    QString dosbox; ///< path of the program
    DosBoxFlavour flavour;
    QMap<QString, QString> exceptionOverrides;
    QMap<QString, QString> exceptionOrigins; ///< key to the exception that sets it
    std::optional<CommunityFix> fix;
};

/// The configuration that a launch is based on, chosen before anything of the game's folder is changed.
struct DosConfigurationChoice {
    enum class Kind { gameFolder, scriptFolder, versionFolder, minimal };
    Kind kind = Kind::gameFolder;
    QString gameDataFolder;       ///< the game's folder, or the version's when no script folder takes part
    QString confPath;             ///< what DOSBox would be given; not there yet when it is generated
    QByteArray generated;         ///< text of an adapted configuration; null for the others
    QString originalScriptConfig; ///< null when the script folder has no part
    QList<LaunchDecision> decisions;
};

/// A launch worked out in full.
struct DosPlan {
    LaunchPlan plan;
    std::optional<LaunchFeedback> feedback; ///< of a program that was found by looking
};

/// A new name for a configuration that is adapted for one launch.
QString newAdaptedPath(const DosSettings &settings);
/// Throws std::system_error when it cannot be read.
QByteArray readConfiguration(FolderView &view, const QString &path);

/// Reads folders and files only. All three throw LaunchError or, for a file that cannot be read, std::system_error.
DosConfigurationChoice chooseDosConfiguration(const DosPlanInput &input, FolderView &view);
/// The view shows the folder as it is after the preparation when this returns.
FolderPreparation planDosPreparation(const DosPlanInput &input, const DosConfigurationChoice &choice, FolderView &view);
/// The told way comes first. When it is proved to lead to a program that is not there, the ways that remain are tried:
/// the program from where it lies, the configuration as it stands, and what looking at the folder finds.
DosPlan planDosLaunch(const DosPlanInput &input, const DosConfigurationChoice &choice, FolderView &view);

} // namespace ludarium

#pragma once

#include "Models/GameVersionOption.h"
#include "Models/LaunchPlan.h"
#include "Services/Dos/FolderView.h"

#include <QByteArray>

namespace ludarium {

/// What the launch configuration of one game is made from.
struct IndependentLaunchInput {
    QByteArray baseConfig;  ///< text of the game's own configuration
    QString gameDataFolder; ///< {collection}/eXo/eXoDOS/{name}, or a version's folder in it
    QString collection;
    GameVersionOption version; ///< steers the result by folder, executable, setup commands and mount level
    QString discSwapKeys;      ///< as the user is told to press them
    /// Whether the usual way was found to lead to no program: the program is then started from where it lies, and what
    /// this DOSBox cannot do is left out.
    bool isMended = false;
    bool oneFloppyImage = false; ///< the DOSBox mounts no more
};

/// A launch configuration's text, and what it rests on.
struct IndependentLaunch {
    QByteArray text;
    QStringList mountedPaths; ///< folder and disc images
    QList<LaunchDecision> decisions;
};

/// The game's configuration with its autoexec section replaced by one that mounts the drives and starts the version's
/// program, so that DOSBox runs the game without any script of the collection. Throws LaunchError when a text cannot
/// stand in a configuration.
IndependentLaunch createIndependentLaunchConfig(const IndependentLaunchInput &input, FolderView &view);

} // namespace ludarium

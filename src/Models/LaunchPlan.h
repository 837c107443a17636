#pragma once

#include "Models/EmulatorType.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace ludarium {

/// What the launcher is asked to do with a game.
enum class LaunchMode { play, setup, install, download };

/// A file that a launch writes before it starts the program.
struct GeneratedFile {
    QString path;
    QByteArray content;
    bool executable = false;
};

/// One step of the way to a launch and what it rests on, for the log and for `play --dry-run`.
struct LaunchDecision {
    QString subject; ///< "route", "emulator", "configuration", "version", "executable", …
    QString choice;
    QString reason;
};

/// Everything that a launch of a child process would do. Making a plan writes nothing.
struct LaunchPlan {
    QString route;
    QString emulator; ///< name for users
    QString flavour;  ///< build and version of the emulator, as probed
    QString program;
    QStringList arguments;
    QString workingDirectory;
    QList<GeneratedFile> files;
    /// What is done to files of the game's folder before the start, in words.
    QStringList preparations;
    QList<LaunchDecision> decisions;
};

} // namespace ludarium

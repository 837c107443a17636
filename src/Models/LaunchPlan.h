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

/// Whether the program that a launch comes to is there, as far as the host can see into the guest.
struct LaunchProof {
    enum class Verdict { unknown, found, missing };
    Verdict verdict = Verdict::unknown;
    QString program; ///< as the guest calls it; empty when the launch names none
    QString detail;  ///< the file on the host, or why it is missing or not known
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
    LaunchProof proof;
};

} // namespace ludarium

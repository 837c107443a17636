#pragma once

#include "Host/ProcessRunner.h"
#include "Models/AdditionalApplication.h"
#include "Models/EmulatorRequirement.h"
#include "Models/Game.h"

#include <QCoro/QCoroTask>
#include <QStringList>
#include <functional>
#include <optional>

namespace ludarium {

/// What the user wants to do with a game that asks for a Windows build of DOSBox.
enum class ECELaunchChoice { wineECE, staging, cancelled };

/// What the known exceptions say about the emulator of a game.
struct ExceptionFindings {
    qsizetype count = 0; ///< exceptions that fit the title
    std::optional<EmulatorOverride> emulatorOverride;
    QString emulatorOrigin = {}; ///< id of the exception that names it
};

/// What the choice of a DOSBox build needs of other rooms. Absent functions stand for "nothing known"; without a
/// question games for Windows builds go to DOSBox Staging, and without a launcher the launch says that it cannot.
struct DosRouteCollaborators {
    std::function<std::optional<EmulatorRequirement>(const QString &title)> requirement;
    std::function<ExceptionFindings(const QString &title)> exceptions;
    /// Asked before a start of a game whose music has a Roland MT-32 version.
    std::function<QCoro::Task<>(GamePtr)> checkMT32Support;
    /// Asked when Wine and the game's Windows build are there.
    std::function<QCoro::Task<ECELaunchChoice>(GamePtr, EmulatorType)> promptECELaunchChoice;
    /// Asked when either is missing.
    std::function<QCoro::Task<ECELaunchChoice>(GamePtr, bool hasWine)> promptWineECENotAvailable;
    using Starter = std::function<QCoro::Task<std::optional<ProcessId>>(GamePtr, QString collection, EmulatorType)>;
    Starter launchWithDOSBoxX;
    Starter launchWithWine;
};

/// What opens soundtracks and videos.
struct MediaCollaborators {
    std::function<QCoro::Task<>(GamePtr, AdditionalApplication)> playSoundtrack;
    std::function<QCoro::Task<>(QString script)> executeBashScript;
    std::function<QCoro::Task<>(QString folder, QStringList contents)> playVideoContentDirectly;
};

} // namespace ludarium

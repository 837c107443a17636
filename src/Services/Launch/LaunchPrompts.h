#pragma once

#include "Models/Game.h"
#include "Services/Launch/LaunchCollaborators.h"

#include <QCoro/QCoroTask>

namespace ludarium {

struct Host;
class EmulatorManager;

/// The buttons that send a game for a Windows build to DOSBox Staging.
inline constexpr QStringView eceChoiceStagingButton = u"DOSBox Staging (Recommended)";
inline constexpr QStringView eceMissingStagingButton = u"Try DOSBox Staging";

/// The questions that come before a DOS game starts. `host` and `emulators` outlive them.
namespace LaunchPrompts {

/// Which DOSBox a game for a Windows build goes to, when Wine and that build are there.
QCoro::Task<ECELaunchChoice> promptECELaunchChoice(const Host *host, GamePtr game, EmulatorType emulatorType);
/// The same when Wine or the build is missing.
QCoro::Task<ECELaunchChoice> promptWineECENotAvailable(const Host *host, GamePtr game, bool hasWine);

/// Says once for each game with MT-32 music what the machine lacks to play it, unless the user wants to hear no more
/// of it.
QCoro::Task<> checkMT32Support(const Host *host, const EmulatorManager *emulators, GamePtr game);

} // namespace LaunchPrompts

} // namespace ludarium

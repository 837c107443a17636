#pragma once

#include "Services/Emulators/EmulatorManager.h"

#include <QString>
#include <QStringList>

namespace ludarium {

class HostPaths;

/// How further programs come on to this machine.
struct PackageManager {
    enum class Kind { none, homebrew, apt, dnf, pacman, zypper };
    Kind kind = Kind::none;
    QString name; ///< "Homebrew", "APT", …; "Homebrew" or "Package manager" when there is none
    QString path; ///< of its program; empty when there is none
};

/// Homebrew on macOS, the distribution's own on Linux. For the thread pool.
PackageManager findPackageManager(const HostPaths &paths);

/// The command line, for a person to type, that installs packages; empty without a package manager.
QString installCommand(PackageManager::Kind kind, const QStringList &packages);

/// The command line, for a person to type, that installs an emulator: Homebrew's on macOS, Flatpak's on Linux, where
/// each distribution packages other ones. Empty when neither has it.
QString emulatorInstallCommand(EmulatorProgram program, HostLayout layout);

} // namespace ludarium

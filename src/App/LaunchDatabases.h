#pragma once

#include "Services/Launch/LaunchCollaborators.h"
#include "Services/Launch/VersionCheck.h"

#include <memory>

namespace ludarium {

struct DosCollaborators;
struct Host;
struct LibraryServices;
class DOSBoxRequirementsManager;
class EmulatorManager;
class GameExceptionsManager;
class GameLibrary;
class GameVersionDetector;

/// What is known of games from databases, and how those who ask for it are connected. Each function holds what it
/// uses: some run on the thread pool, perhaps longer than the program's objects live.
struct LaunchDatabases {
    explicit LaunchDatabases(const Host &host);

    std::shared_ptr<DOSBoxRequirementsManager> requirements;
    std::shared_ptr<const GameExceptionsManager> exceptions;
    std::shared_ptr<const GameVersionDetector> versions;

    /// Adds what the library asks for.
    void addTo(LibraryServices &services) const;
    DosCollaborators dosCollaborators() const;
    /// `host` and `emulators` outlive the result.
    DosRouteCollaborators dosRouteCollaborators(const Host &host, const EmulatorManager &emulators) const;
    /// `library` outlives the result.
    VersionCheck::Collaborators versionCheckCollaborators(const GameLibrary &library) const;
};

} // namespace ludarium

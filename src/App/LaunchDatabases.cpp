#include "App/LaunchDatabases.h"

#include "Host/Host.h"
#include "Services/Dos/DOSBoxRequirementsManager.h"
#include "Services/Dos/DosLauncher.h"
#include "Services/Dos/GameExceptionsManager.h"
#include "Services/Dos/GameVersionDetector.h"
#include "Services/Dos/VersionDatabaseResource.h"
#include "Services/Launch/LaunchPrompts.h"
#include "Services/Library/GameLibrary.h"

namespace ludarium {

LaunchDatabases::LaunchDatabases(const Host &host)
    : requirements(std::make_shared<DOSBoxRequirementsManager>()),
      exceptions(std::make_shared<const GameExceptionsManager>(host)),
      versions(std::make_shared<const GameVersionDetector>(GameVersionDetector::Sources{
          embeddedVersionDatabase(), host.paths.settingsFolder() + u'/' + GameVersionDetector::usersFileName.toString(),
          normalizeForMT32})) {}

void LaunchDatabases::addTo(LibraryServices &services) const {
    services.loadRequirements = [known = requirements](const QString &collection) { known->loadDatabase(collection); };
    services.requirement = [known = requirements](const QString &title) {
        const std::optional<EmulatorRequirement> found = known->getRequirement(title);
        return found ? std::optional(LibraryServices::Requirement{found->emulatorType, found->version}) : std::nullopt;
    };
    services.mt32Titles = [known = versions] { return known->mt32NormalizedTitles(); };
}

DosCollaborators LaunchDatabases::dosCollaborators() const {
    DosCollaborators result;
    result.configOverrides = [known = exceptions](const QString &title) { return known->getConfigOverrides(title); };
    result.configOverrideOrigins = [known = exceptions](const QString &title) {
        return known->configOverrideOrigins(title);
    };
    return result;
}

DosRouteCollaborators LaunchDatabases::dosRouteCollaborators(const Host &host, const EmulatorManager &emulators) const {
    DosRouteCollaborators result;
    result.requirement = [known = requirements](const QString &title) { return known->getRequirement(title); };
    result.exceptions = [known = exceptions](const QString &title) {
        ExceptionFindings findings;
        for (const GameException &exception : known->getExceptions(title)) {
            ++findings.count;
            if (exception.emulator && !findings.emulatorOverride) {
                findings.emulatorOverride = exception.emulator;
                findings.emulatorOrigin = exception.id;
            }
        }
        return findings;
    };
    result.checkMT32Support = [&host, &emulators](GamePtr game) {
        return LaunchPrompts::checkMT32Support(&host, &emulators, std::move(game));
    };
    result.promptECELaunchChoice = [&host](GamePtr game, EmulatorType type) {
        return LaunchPrompts::promptECELaunchChoice(&host, std::move(game), type);
    };
    result.promptWineECENotAvailable = [&host](GamePtr game, bool hasWine) {
        return LaunchPrompts::promptWineECENotAvailable(&host, std::move(game), hasWine);
    };
    return result;
}

VersionCheck::Collaborators LaunchDatabases::versionCheckCollaborators(const GameLibrary &library) const {
    VersionCheck::Collaborators result;
    result.currentGame = [&library](const QString &id) { return library.game(id); };
    result.detectVersions = [known = versions](const QString &title, const QString &folder) {
        return known->detectVersions(title, folder);
    };
    result.detectVersionsFromFolders = [known = versions](const QString &folder) {
        return known->detectVersionsFromFolders(folder);
    };
    return result;
}

} // namespace ludarium

#include "Services/Launch/DosRoute.h"

#include "Host/AppLogger.h"
#include "Host/Host.h"
#include "Host/SafeFiles.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Models/LaunchCancelled.h"
#include "Models/LaunchError.h"
#include "Services/Emulators/EmulatorManager.h"
#include "Services/Launch/GameFolders.h"

#include <QFileInfo>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

DosCollaborators withFindDOSBox(DosCollaborators collaborators, EmulatorManager &emulators) {
    if (!collaborators.findDOSBox)
        collaborators.findDOSBox = [&emulators] { return emulators.findDOSBox(); };
    return collaborators;
}

QString requirementReason(const EmulatorRequirement &requirement) {
    const QString build = u"the collection names the build \"%1\""_s.arg(requirement.version);
    return requirement.line == 0 ? build
                                 : build + u" (eXo/util/dosbox.txt, line %1, \"%2\")"_s.arg(
                                               QString::number(requirement.line), requirement.listedTitle);
}

[[noreturn]] void fail(LaunchError::Case kind, const QString &detail = {}) {
    throw LaunchError(kind, detail);
}

} // namespace

const QStringList &DosRoute::mt32SupportedGames() {
    static const QStringList names{u"ckrynn"_s,  u"dkkrynn"_s,  u"eob1"_s,     u"eob2"_s,     u"eob3"_s,
                                   u"gatesf"_s,  u"pooldark"_s, u"poolrad"_s,  u"secsilbl"_s, u"TreasSav"_s,
                                   u"ultima5"_s, u"unlimadv"_s, u"indyfate"_s, u"Indy4"_s,    u"indylast"_s,
                                   u"Monkey1"_s, u"Monkey2"_s,  u"loom"_s,     u"maniac"_s,   u"zak"_s};
    return names;
}

DosRoute::DosRoute(Host &host, EmulatorManager &emulators, DosCollaborators dosCollaborators)
    : m_host(host), m_emulators(emulators), m_findDOSBox(withFindDOSBox(dosCollaborators, emulators).findDOSBox),
      m_launcher(host, withFindDOSBox(dosCollaborators, emulators)) {}

std::optional<EmulatorRequirement> DosRoute::requirement(const Game &game) const {
    return collaborators.requirement ? collaborators.requirement(game.title) : std::nullopt;
}

DosRoute::Choice DosRoute::chooseEmulator(const Game &game) const {
    Choice choice{EmulatorType::vanilla, u"the collection names no build"_s};
    const std::optional<EmulatorRequirement> found = requirement(game);
    if (game.requiredEmulatorType && (!found || found->emulatorType != *game.requiredEmulatorType))
        choice = {*game.requiredEmulatorType, u"required by the game's record"_s};
    else if (found)
        choice = {found->emulatorType, requirementReason(*found)};

    const ExceptionFindings findings =
        collaborators.exceptions ? collaborators.exceptions(game.title) : ExceptionFindings{};
    if (findings.count > 0)
        Log::info(u"📋 Found %1 exception(s) for %2"_s.arg(findings.count).arg(game.title));
    const QString byException = findings.emulatorOrigin.isEmpty()
                                    ? u"a known exception asks for it"_s
                                    : u"the exception \"%1\" asks for it"_s.arg(findings.emulatorOrigin);
    if (findings.emulatorOverride)
        switch (*findings.emulatorOverride) {
        case EmulatorOverride::staging:
            return {EmulatorType::staging, byException};
        case EmulatorOverride::dosboxX:
            return {EmulatorType::dosboxX, byException};
        case EmulatorOverride::ece:
            return {EmulatorType::ece, byException};
        case EmulatorOverride::scummvm:
            Log::info(u"📋 Exception recommends ScummVM - but game not marked as ScummVM in XML"_s);
            choice.reason += u"; the exception \"%1\" recommends ScummVM, which only its own games use"_s.arg(
                findings.emulatorOrigin);
            break;
        }
    return choice;
}

QCoro::Task<std::optional<ProcessId>> DosRoute::launch(GamePtr game, QString collection,
                                                       std::optional<GameVersionOption> version) {
    const Choice choice = chooseEmulator(*game);
    switch (choice.type) {
    case EmulatorType::dosboxX:
        co_return co_await launchWithDOSBoxX(game, collection);
    case EmulatorType::ece:
    case EmulatorType::custom:
        co_return co_await launchWithWindowsBuild(game, collection, choice.type, version);
    case EmulatorType::staging:
    case EmulatorType::vanilla:
        break;
    }
    co_return co_await launchWithStaging(game, collection, version);
}

QCoro::Task<std::optional<ProcessId>> DosRoute::launchWithDOSBoxX(GamePtr game, QString collection) {
    if (!m_emulators.findDOSBoxX()) {
        Log::warning(u"⚠️ DOSBox-X not found - prompting user to install"_s);
        const bool isInstalled = co_await m_emulators.promptInstallDOSBoxX();
        if (!isInstalled)
            fail(LaunchError::Case::emulatorNotFound, u"DOSBox-X"_s);
    }
    const DosRouteCollaborators::Starter start = collaborators.launchWithDOSBoxX;
    if (!start)
        fail(LaunchError::Case::launchFailed, u"Games that need DOSBox-X cannot be started by this version yet"_s);
    co_return co_await start(game, collection, EmulatorType::dosboxX);
}

bool DosRoute::hasWindowsBuild(const Game &game, const QString &collection) const {
    const std::optional<EmulatorRequirement> found = requirement(game);
    if (!found || found->wineExecutablePath.isEmpty())
        return false;
    const std::optional<QString> path = pathInside(collection + u"/eXo/emulators/dosbox"_s, found->wineExecutablePath);
    return path && QFileInfo(*path).isFile();
}

QCoro::Task<std::optional<ProcessId>> DosRoute::launchWithWindowsBuild(GamePtr game, QString collection,
                                                                       EmulatorType type,
                                                                       std::optional<GameVersionOption> version) {
    const DosRouteCollaborators others = collaborators; // a coroutine's function outlives its replacement
    const bool hasWine = m_emulators.findWine().has_value();
    ECELaunchChoice choice = ECELaunchChoice::staging;
    if (hasWine && hasWindowsBuild(*game, collection)) {
        if (others.promptECELaunchChoice)
            choice = co_await others.promptECELaunchChoice(game, type);
    } else if (others.promptWineECENotAvailable) {
        choice = co_await others.promptWineECENotAvailable(game, hasWine);
    }
    switch (choice) {
    case ECELaunchChoice::cancelled:
        throw LaunchCancelled();
    case ECELaunchChoice::wineECE:
        if (!others.launchWithWine)
            fail(LaunchError::Case::launchFailed, u"Games cannot be started with Wine by this version yet"_s);
        co_return co_await others.launchWithWine(game, collection, type);
    case ECELaunchChoice::staging:
        break;
    }
    Log::info(u"🎮 Using DOSBox Staging for ECE game"_s);
    co_return co_await launchWithStaging(game, collection, version);
}

QCoro::Task<std::optional<ProcessId>> DosRoute::launchWithStaging(GamePtr game, QString collection,
                                                                  std::optional<GameVersionOption> version) {
    if (!m_findDOSBox()) {
        Log::warning(u"⚠️ DOSBox not found - prompting user to install"_s);
        const bool isInstalled = co_await m_emulators.promptInstallDOSBox();
        if (!isInstalled)
            fail(LaunchError::Case::emulatorNotFound, u"DOSBox"_s);
    }
    const auto checkMT32Support = collaborators.checkMT32Support;
    if (checkMT32Support && mt32SupportedGames().contains(GameFolders::extractGameFolderName(game->configurationPath)))
        co_await checkMT32Support(game);
    const DosLaunchRequest launchRequest = request(game, collection, version);
    const DosLauncher::Started started = co_await m_launcher.launch(launchRequest);
    co_return started.process;
}

DosLaunchRequest DosRoute::request(GamePtr game, const QString &collection, std::optional<GameVersionOption> version) {
    // A launch may carry out a version's deletions in the game's folder, so the name must be fit for that too: an
    // empty one would mean the folder of all games, and "!" marks the scripts of all games.
    const QString name = GameFolders::extractGameFolderName(game->configurationPath);
    const QString scriptFolder = GameFolders::scriptFolder(game->configurationPath, collection);
    if (!isDeletableName(name) || scriptFolder.isEmpty())
        fail(LaunchError::Case::noApplicationPath);
    if (!QFileInfo(scriptFolder).isDir())
        fail(LaunchError::Case::fileNotFound, scriptFolder);
    const QString dataFolder = GameFolders::asOnDisk(collection + u"/eXo/eXoDOS/"_s + name, collection);
    const bool isOutside = GameFolders::leadsOutOfCollection(dataFolder, collection);
    if (!QFileInfo(dataFolder).isDir() || isOutside) {
        Log::warning((isOutside
                          ? u"⚠️ Game not installed - its folder is a link that leads out of the collection: %1"_s
                          : u"⚠️ Game not installed - data folder not found: %1"_s)
                         .arg(dataFolder));
        fail(LaunchError::Case::fileNotFound, u"Game is not installed. Please install it first."_s);
    }
    return {std::move(game), dataFolder, scriptFolder, collection, std::move(version)};
}

QCoro::Task<LaunchPlan> DosRoute::plan(GamePtr game, QString collection, std::optional<GameVersionOption> version) {
    QList<LaunchDecision> decisions;
    const Choice choice = chooseEmulator(*game);
    decisions.append({u"emulator type"_s, emulatorTypeText(choice.type), choice.reason});
    if (choice.type == EmulatorType::dosboxX)
        fail(LaunchError::Case::launchFailed, u"A start with DOSBox-X cannot be planned by this version yet"_s);
    if (choice.type == EmulatorType::ece || choice.type == EmulatorType::custom)
        decisions.append({u"emulator build"_s, emulatorTypeText(EmulatorType::staging),
                          u"a Windows build is used only when the user chooses it at the launch"_s});
    const std::optional<QString> dosbox = m_findDOSBox();
    if (!dosbox)
        fail(LaunchError::Case::emulatorNotFound, u"DOSBox"_s);
    const bool isUsersChoice = *dosbox == m_host.settings.value(Settings::dosboxPath);
    decisions.append(
        {u"DOSBox"_s, *dosbox,
         isUsersChoice ? u"the path in the user's settings"_s : u"looked for among the programs of this machine"_s});

    const DosLaunchRequest launchRequest = request(game, collection, version);
    LaunchPlan plan = co_await m_launcher.plan(launchRequest);
    plan.decisions = decisions + plan.decisions;
    co_return plan;
}

} // namespace ludarium

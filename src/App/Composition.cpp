#include "App/Composition.h"

#include "App/AppState.h"
#include "App/LaunchDatabases.h"
#include "Host/AppLogger.h"
#include "Host/Clock.h"
#include "Host/CurlHttpClient.h"
#include "Host/LocalProcessRunner.h"
#include "Host/NotificationCenter.h"
#include "Host/PlainWorkspace.h"
#include "Host/SqliteSettingsStore.h"
#include "Host/SystemTerminal.h"
#include "Services/Collections/AriaIndexManager.h"
#include "Services/Collections/ExoPackSetupManager.h"
#include "Services/Emulators/EmulatorManager.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Library/InstallationStatus.h"
#include "Services/Library/LibraryServices.h"
#include "Services/Library/PlaySessionTracker.h"

#include <QCoreApplication>

namespace ludarium {

namespace {

/// What the library asks of other rooms. The functions run on the thread pool, perhaps longer than the program's
/// objects live, so each holds what it uses.
LibraryServices libraryServices(std::shared_ptr<ExoPackSetupManager> setup,
                                std::shared_ptr<AriaIndexManager> downloads) {
    LibraryServices services;
    services.setupStatus = [setup](const QString &collection) {
        const SetupStatus status = setup->getSetupStatus(collection);
        LibraryServices::Setup result{status.needsSetup(), {}};
        for (const CollectionSetupStatus &set : status.collections)
            if (set.metadataExtractionIncomplete)
                result.incomplete.append(ExoCollection::of(set.collectionType).displayName);
        return result;
    };
    services.loadDownloadIndex = [downloads](const QString &collection) { downloads->loadIndex(collection); };
    const auto status = std::make_shared<InstallationStatus>(downloads);
    services.checkStatus = [status](const GameList &games, const QString &collection) {
        return status->check(games, collection);
    };
    services.checkGame = [status](const GamePtr &game, const QString &collection) {
        return status->checkGame(game, collection);
    };
    return services;
}

/// The command line's program is the keeper, beside which the desktop program lies.
void startKeeper(const QString &journal, const QString &home) {
    ProcessSpec spec;
    spec.program = QCoreApplication::applicationDirPath() + QStringLiteral("/ludarium-cli");
    spec.arguments = QStringList{QStringLiteral("--keep-session"), journal, home};
    spec.workingDirectory = QStringLiteral("/");
    try {
        LocalProcessRunner::startDetached(spec);
    } catch (const ProcessError &error) {
        Log::warning(
            QStringLiteral("⚠️ The play time is stored at the next start, as no keeper could be started: %1")
                .arg(QString::fromUtf8(error.what())));
    }
}

} // namespace

struct Composition::Private {
    HostPaths paths;
    std::unique_ptr<AppLogger> logger;
    SystemClock clock;
    LocalProcessRunner processes;
    CurlHttpClient http;
    std::unique_ptr<SqliteSettingsStore> settings;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<Dialogs> dialogs;
    SystemTerminal terminal;
    NotificationCenter notifications;
    std::unique_ptr<Host> host;
    std::unique_ptr<EmulatorManager> emulators;
    std::shared_ptr<ExoPackSetupManager> setup;
    std::shared_ptr<AriaIndexManager> downloads;
    std::unique_ptr<AppState> appState;

    explicit Private(HostPaths machine) : paths(std::move(machine)), processes(paths), terminal(paths) {}
};

Composition::Composition(Options options) : d(std::make_unique<Private>(HostPaths::native(options.home))) {
    d->logger = std::make_unique<AppLogger>(d->paths.logs());
    d->logger->setMirrorToStandardError(options.mirrorLog);
    AppLogger::setShared(d->logger.get());
    d->settings = std::make_unique<SqliteSettingsStore>(d->paths.settingsFolder());
    d->workspace = options.workspace ? std::move(options.workspace) : std::make_unique<PlainWorkspace>(d->paths);
    d->dialogs = options.dialogs ? std::move(options.dialogs) : std::make_unique<SilentDialogs>();
    d->host.reset(new Host{d->paths, *d->settings, d->processes, d->http, *d->workspace, *d->dialogs, d->terminal,
                           d->clock, d->notifications});
    d->emulators = std::make_unique<EmulatorManager>(*d->host);
    d->setup = std::make_shared<ExoPackSetupManager>();
    d->downloads = std::make_shared<AriaIndexManager>();
    const LaunchDatabases databases(*d->host);
    LibraryServices services = libraryServices(d->setup, d->downloads);
    databases.addTo(services);
    d->appState = std::make_unique<AppState>(*d->host, *d->emulators, databases, std::move(services));
    d->appState->sessionTracker().startKeeper = [home = options.home](const QString &journal) {
        startKeeper(journal, home);
    };
    d->appState->gameLauncher().liteCollectionTest = [setup = d->setup](const QString &collection) {
        return setup->isLiteCollection(collection);
    };
}

Composition::~Composition() {
    AppLogger::setShared(nullptr);
}

Host &Composition::host() {
    return *d->host;
}
AppLogger &Composition::logger() {
    return *d->logger;
}
EmulatorManager &Composition::emulators() {
    return *d->emulators;
}
QString Composition::settingsNotice() const {
    return d->settings->notice();
}
QString Composition::settingsRepair() const {
    return d->settings->repairNotice();
}
void Composition::onSettingsRepaired(QObject *context, const std::function<void()> &function) {
    QObject::connect(d->settings.get(), &SqliteSettingsStore::repaired, context, function);
}
QString Composition::settingsReadProblem() const {
    return d->settings->readProblem();
}
AppState &Composition::appState() {
    return *d->appState;
}

} // namespace ludarium

#include "App/Composition.h"

#include "App/AppState.h"
#include "Host/AppLogger.h"
#include "Host/Clock.h"
#include "Host/CurlHttpClient.h"
#include "Host/LocalProcessRunner.h"
#include "Host/NotificationCenter.h"
#include "Host/PlainWorkspace.h"
#include "Host/SqliteSettingsStore.h"
#include "Host/SystemTerminal.h"
#include "Services/Emulators/EmulatorManager.h"

namespace ludarium {

struct Composition::Private {
    HostPaths paths;
    std::unique_ptr<AppLogger> logger;
    SystemClock clock;
    LocalProcessRunner processes;
    CurlHttpClient http;
    std::unique_ptr<SettingsStore> settings;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<Dialogs> dialogs;
    SystemTerminal terminal;
    NotificationCenter notifications;
    std::unique_ptr<Host> host;
    std::unique_ptr<EmulatorManager> emulators;
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
    d->appState = std::make_unique<AppState>(*d->host, *d->emulators);
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
AppState &Composition::appState() {
    return *d->appState;
}

} // namespace ludarium

#include "Services/Launch/GameLauncher.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/SafeFiles.h"
#include "Host/Workspace.h"
#include "Models/LaunchCancelled.h"
#include "Models/LaunchError.h"
#include "Services/Launch/AdditionalApp.h"
#include "Services/Launch/DosRoute.h"
#include "Services/Launch/GameFolders.h"
#include "Services/Launch/LaunchClaim.h"
#include "Services/Launch/VideoFolder.h"
#include "Services/Runners/CollectionDocument.h"

#include <QFileInfo>
#include <QMap>
#include <QPointer>
#include <QUuid>
#include <chrono>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

QString modeName(LaunchMode mode) {
    switch (mode) {
    case LaunchMode::play:
        return u"play"_s;
    case LaunchMode::setup:
        return u"setup"_s;
    case LaunchMode::install:
        return u"install"_s;
    case LaunchMode::download:
        return u"download"_s;
    }
    Q_UNREACHABLE();
}

/// "… cannot be {done} by this version yet".
QString missingText(const QString &things, const QString &done) {
    return u"%1 cannot be %2 by this version yet"_s.arg(things, done);
}

[[noreturn]] void failAsMissing(const QString &things, const QString &done) {
    throw LaunchError(LaunchError::Case::launchFailed, missingText(things, done));
}

void logVersion(const GameVersionOption &version) {
    Log::info(u"   Version: %1"_s.arg(version.label));
    Log::info(u"   Type: %1"_s.arg(versionTypeText(version.versionType)));
    Log::info(u"   Audio: %1"_s.arg(version.audioType ? audioTypeText(*version.audioType) : u"none"_s));
    Log::info(
        u"   Working directory: %1"_s.arg(version.workingDirectory.isEmpty() ? u"none"_s : version.workingDirectory));
    QStringList changes;
    for (auto it = version.configChanges.cbegin(); it != version.configChanges.cend(); ++it)
        changes.append(it.key() + u'=' + it.value());
    Log::info(u"   Config changes: %1"_s.arg(changes.isEmpty() ? u"none"_s : changes.join(u", "_s)));
}

} // namespace

struct GameLauncher::Private {
    Host &host;
    // Shared, so that a running launch keeps it when the launcher goes.
    std::shared_ptr<DosRoute> dosRoute;
    QString collection;
    std::optional<bool> isLiteCollection;
    QMap<LaunchRoute, Runner> runners;
    QMap<LaunchMode, Runner> flows;
    MediaCollaborators media;
};

GameLauncher::GameLauncher(Host &host, EmulatorManager &emulators, DosCollaborators dosCollaborators, QObject *parent)
    : QObject(parent),
      d(new Private{
          host, std::make_shared<DosRoute>(host, emulators, std::move(dosCollaborators)), {}, {}, {}, {}, {}}) {
    d->runners.insert(LaunchRoute::soundtrack,
                      [this](GamePtr game, LaunchMode, QString) { return launchSoundtrack(game); });
    d->runners.insert(LaunchRoute::video,
                      [this](GamePtr game, LaunchMode, QString collection) { return launchVideo(game, collection); });
}

GameLauncher::~GameLauncher() = default;

void GameLauncher::setCollectionURL(const QString &collection) {
    d->collection = collection;
    d->isLiteCollection.reset();
    if (!collection.isEmpty() && collectionPreparation)
        spawn(collectionPreparation(collection), "preparing the collection for launches");
}

QString GameLauncher::collectionURL() const {
    return d->collection;
}

bool GameLauncher::isLiteCollection() {
    if (d->collection.isEmpty() || !liteCollectionTest)
        return false;
    if (!d->isLiteCollection)
        d->isLiteCollection = liteCollectionTest(d->collection);
    return *d->isLiteCollection;
}

void GameLauncher::setRunner(LaunchRoute route, Runner runner) {
    Q_ASSERT(route != LaunchRoute::dos);
    d->runners.insert(route, std::move(runner));
}

void GameLauncher::setFlow(LaunchMode mode, Runner flow) {
    Q_ASSERT(mode != LaunchMode::play);
    d->flows.insert(mode, std::move(flow));
}

void GameLauncher::setDosRouteCollaborators(DosRouteCollaborators collaborators) {
    d->dosRoute->collaborators = std::move(collaborators);
}

void GameLauncher::setMediaCollaborators(MediaCollaborators collaborators) {
    d->media = std::move(collaborators);
}

void GameLauncher::setSetupStatus(const QString &status) {
    m_setupStatus = status;
    Q_EMIT launchStateChanged();
}

void GameLauncher::refuse(const QString &reason) {
    Log::warning(u"Launch refused: %1"_s.arg(reason));
    m_launchError = reason;
    Q_EMIT launchStateChanged();
}

QCoro::Task<> GameLauncher::launch(GamePtr game, LaunchMode mode, std::optional<GameVersionOption> version) {
    const QString collection = d->collection;
    if (collection.isEmpty()) {
        Log::error(u"Launch failed: No collection path set"_s);
        throw LaunchError(LaunchError::Case::noCollectionPath);
    }
    const LaunchClaim claim(d->host.paths.state(), game->id);
    if (!claim.isHeld() || (runningTest && runningTest(game->id))) {
        if (mode == LaunchMode::play)
            m_lastProcess.reset();
        const QString text = claim.isHeld() ? u"%1 is running already."_s : u"%1 is being started already."_s;
        refuse(text.arg(singleLine(game->title)));
        co_return;
    }
    Log::info(u"=== LAUNCH START ==="_s);
    Log::info(u"Game: %1"_s.arg(game->title));
    Log::info(u"Platform: %1"_s.arg(game->platform));
    Log::info(u"Mode: %1"_s.arg(modeName(mode)));
    Log::info(u"Installed: %1"_s.arg(game->isInstalled ? u"true"_s : u"false"_s));
    Log::info(u"Collection: %1"_s.arg(collection));
    if (version)
        Log::info(u"Version: %1"_s.arg(version->label));

    const QPointer<GameLauncher> self(this);
    const Clock &clock = d->host.clock;
    const auto start = clock.monotonic();
    m_isLaunching = true;
    m_currentGame = game;
    m_launchError.clear();
    if (mode == LaunchMode::play)
        m_lastProcess.reset();
    Q_EMIT launchStateChanged();

    std::optional<QString> failure;
    try {
        const Started process = co_await runFlow(game, mode, version, collection);
        if (mode == LaunchMode::play && self) {
            m_lastProcess = process;
            if (onStarted)
                onStarted(game, process);
        }
    } catch (const LaunchCancelled &) {
        Log::info(u"🎮 The launch was cancelled"_s);
    } catch (const LaunchError &error) {
        failure = error.text();
    } catch (...) {
        failure = currentExceptionText();
    }
    if (failure) {
        Log::error(u"Launch failed: %1"_s.arg(*failure));
        Log::error(u"❌ Launch failed: %1"_s.arg(*failure));
    }
    if (!self)
        co_return;
    const double seconds = std::chrono::duration<double>(clock.monotonic() - start).count();
    Log::info(u"=== LAUNCH END (took %1s) ==="_s.arg(seconds, 0, 'f', 2));
    m_launchError = failure.value_or(QString());
    m_isLaunching = false;
    m_currentGame.reset();
    Q_EMIT launchStateChanged();
}

QCoro::Task<GameLauncher::Started> GameLauncher::runFlow(GamePtr game, LaunchMode mode,
                                                         std::optional<GameVersionOption> version, QString collection) {
    if (mode == LaunchMode::play)
        co_return co_await launchGame(game, version, collection);
    if (mode == LaunchMode::setup)
        co_return co_await launchSetup(game, collection);
    const Runner flow = d->flows.value(mode);
    if (!flow)
        failAsMissing(u"Games"_s, mode == LaunchMode::install ? u"installed"_s : u"downloaded"_s);
    co_return co_await flow(game, mode, collection);
}

QCoro::Task<GameLauncher::Started> GameLauncher::launchGame(GamePtr game, std::optional<GameVersionOption> version,
                                                            QString collection) {
    if (version)
        logVersion(*version);
    const auto [where, reason] = launchRoute(*game);
    Log::debug(u"Route: %1 (%2)"_s.arg(launchRouteName(where), reason));
    if (where == LaunchRoute::arcade || where == LaunchRoute::retroArch)
        Log::info(u"🎮 Detected ROM game: %1 (%2)"_s.arg(game->title, game->platform));
    if (where == LaunchRoute::dos) {
        const std::shared_ptr<DosRoute> dosRoute = d->dosRoute;
        co_return co_await dosRoute->launch(game, collection, version);
    }
    const Runner runner = d->runners.value(where);
    if (!runner)
        failAsMissing(launchRouteGames(where), u"started"_s);
    co_return co_await runner(game, LaunchMode::play, collection);
}

QCoro::Task<GameLauncher::Started> GameLauncher::launchSetup(GamePtr game, QString collection) {
    const LaunchRoute where = setupRoute(*game);
    const bool isDos = where == LaunchRoute::dos;
    if (isDos && game->configurationPath.isEmpty())
        co_return std::nullopt;
    const Runner flow = isDos ? d->flows.value(LaunchMode::setup) : d->runners.value(where);
    if (!flow)
        failAsMissing(launchRouteGames(where), u"set up"_s);
    co_return co_await flow(game, LaunchMode::setup, collection);
}

QCoro::Task<GameLauncher::Started> GameLauncher::launchSoundtrack(GamePtr game) {
    const bool byPath = game->applicationPath.toLower().contains(u"foobar2000"_s);
    Log::info(u"🎵 Detected soundtrack: %1 (%2)"_s.arg(game->title, byPath ? u"foobar2000"_s : u"title keywords"_s));
    const auto play = d->media.playSoundtrack;
    if (!play)
        failAsMissing(launchRouteGames(LaunchRoute::soundtrack), u"played"_s);
    AdditionalApplication application;
    application.id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    application.gameId = game->id;
    application.name = u"Soundtrack"_s;
    application.applicationPath = game->applicationPath;
    co_await play(game, application);
    co_return std::nullopt;
}

QCoro::Task<GameLauncher::Started> GameLauncher::launchVideo(GamePtr game, QString collection) {
    const MediaCollaborators media = d->media;
    // Named, as g++ 12 destroys the captures of a lambda made inside a co_await expression twice.
    const auto search = [game, collection] { return VideoFolder::find(*game, collection); };
    const VideoFolder folder = co_await runOnPool(search);
    Log::info(u"🎬 Video folder: %1"_s.arg(folder.path));
    const QString script = folder.script();
    if (!script.isEmpty() && media.executeBashScript)
        co_await media.executeBashScript(script);
    else if (script.isEmpty() && media.playVideoContentDirectly)
        co_await media.playVideoContentDirectly(folder.path, folder.contents);
    else
        failAsMissing(launchRouteGames(LaunchRoute::video), u"played"_s);
    co_return std::nullopt;
}

QCoro::Task<> GameLauncher::launchAdditionalApp(AdditionalApplication app, GamePtr game) {
    const MediaCollaborators media = d->media;
    const QString collection = d->collection;
    Host *host = &d->host;
    const auto search = [app, game, collection, system = host->paths.systemName()] {
        return AdditionalApp::find(app, *game, collection, system);
    };
    const AdditionalApp found = co_await runOnPool(search);
    switch (found.action) {
    case AdditionalApp::Action::soundtrack:
        if (!media.playSoundtrack)
            failAsMissing(launchRouteGames(LaunchRoute::soundtrack), u"played"_s);
        co_await media.playSoundtrack(game, app);
        break;
    case AdditionalApp::Action::script:
        Log::info(u"🎬 Launching script: %1"_s.arg(found.path));
        if (!media.executeBashScript)
            failAsMissing(u"Scripts"_s, u"started"_s);
        co_await media.executeBashScript(found.path);
        break;
    case AdditionalApp::Action::document:
        if (const QString reason = co_await CollectionDocument::open(host, found.path, collection); !reason.isEmpty())
            throw LaunchError(LaunchError::Case::launchFailed, u"%1 was not opened: %2"_s.arg(found.path, reason));
        break;
    }
}

QString GameLauncher::whyNotLaunched(const AdditionalApplication &app) const {
    const AdditionalApp::Action action = AdditionalApp::likelyAction(app);
    if (action == AdditionalApp::Action::soundtrack && !d->media.playSoundtrack)
        return missingText(launchRouteGames(LaunchRoute::soundtrack), u"played"_s);
    if (action == AdditionalApp::Action::script && !d->media.executeBashScript)
        return missingText(u"Scripts"_s, u"started"_s);
    return {};
}

QString GameLauncher::whyNotLaunched(const Game &game, LaunchMode mode) const {
    switch (mode) {
    case LaunchMode::play: {
        const LaunchRoute where = launchRoute(game).first;
        if (where == LaunchRoute::soundtrack && !d->media.playSoundtrack)
            return missingText(launchRouteGames(where), u"played"_s);
        return where == LaunchRoute::dos || d->runners.value(where)
                   ? QString()
                   : missingText(launchRouteGames(where), u"started"_s);
    }
    case LaunchMode::setup: {
        const LaunchRoute where = setupRoute(game);
        if (where == LaunchRoute::dos && game.configurationPath.isEmpty())
            return u"This game has no setup"_s;
        return (where == LaunchRoute::dos ? d->flows.value(mode) : d->runners.value(where))
                   ? QString()
                   : missingText(launchRouteGames(where), u"set up"_s);
    }
    case LaunchMode::install:
    case LaunchMode::download:
        return d->flows.value(mode)
                   ? QString()
                   : missingText(u"Games"_s, mode == LaunchMode::install ? u"installed"_s : u"downloaded"_s);
    }
    Q_UNREACHABLE();
}

QCoro::Task<LaunchPlan> GameLauncher::plan(GamePtr game, std::optional<GameVersionOption> version) {
    const QString collection = d->collection;
    if (collection.isEmpty())
        throw LaunchError(LaunchError::Case::noCollectionPath);
    const auto [where, reason] = launchRoute(*game);
    if (where != LaunchRoute::dos)
        throw LaunchError(LaunchError::Case::launchFailed,
                          u"Only a DOS game's start can be planned; this goes another way (%1: %2)"_s.arg(
                              launchRouteName(where), reason));
    const LaunchDecision decision{u"route"_s, launchRouteName(where), reason};
    const std::shared_ptr<DosRoute> dosRoute = d->dosRoute;
    LaunchPlan plan = co_await dosRoute->plan(game, collection, version);
    plan.route = launchRouteName(LaunchRoute::dos);
    plan.decisions.prepend(decision);
    co_return plan;
}

std::pair<LaunchRoute, QString> GameLauncher::route(const Game &game) {
    return launchRoute(game);
}

QString GameLauncher::getGameFolderURL(const QString &path, const QString &collection) {
    return GameFolders::scriptFolder(path, collection);
}

QString GameLauncher::getGameDataFolderURL(const Game &game, const QString &collection) {
    return GameFolders::dataFolder(game, collection);
}

QString GameLauncher::extractGameFolderName(const QString &path) {
    return GameFolders::extractGameFolderName(path);
}

void GameLauncher::openGameFolder(const Game &game) {
    if (d->collection.isEmpty())
        throw LaunchError(LaunchError::Case::noCollectionPath);
    const QString folder =
        game.configurationPath.isEmpty() ? QString() : GameFolders::scriptFolder(game.configurationPath, d->collection);
    if (folder.isEmpty())
        throw LaunchError(LaunchError::Case::noApplicationPath);
    if (!QFileInfo::exists(folder))
        throw LaunchError(LaunchError::Case::fileNotFound, folder);
    if (!d->host.workspace.reveal(folder))
        throw LaunchError(LaunchError::Case::launchFailed, u"No file manager could show %1"_s.arg(folder));
}

bool GameLauncher::hasSetupScript(const Game &game) const {
    if (d->collection.isEmpty() || game.configurationPath.isEmpty())
        return false;
    if (setupRoute(game) != LaunchRoute::dos)
        return true;
    const QString folder = GameFolders::scriptFolder(game.configurationPath, d->collection);
    return !folder.isEmpty() &&
           (QFileInfo::exists(folder + u"/install.command"_s) || QFileInfo::exists(folder + u"/install.bsh"_s));
}

} // namespace ludarium

#include "Views/LaunchStatus.h"

#include "App/AppState.h"
#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Launch/VersionCheck.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/PlaySessionTracker.h"
#include "Views/GameActions.h"

#include <QPointer>

namespace ludarium {

namespace {

QString failedText(LaunchMode mode) {
    switch (mode) {
    case LaunchMode::play:
        return QStringLiteral("\"%1\" could not be started");
    case LaunchMode::setup:
        return QStringLiteral("\"%1\" could not be set up");
    case LaunchMode::install:
        return QStringLiteral("\"%1\" could not be installed");
    case LaunchMode::download:
        return QStringLiteral("\"%1\" could not be downloaded");
    }
    Q_UNREACHABLE();
}

} // namespace

LaunchStatus::LaunchStatus(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    connect(&state.gameLauncher(), &GameLauncher::launchStateChanged, this, &LaunchStatus::changed);
    connect(&state, &AppState::selectionChanged, this, &LaunchStatus::changed);
    connect(&state, &AppState::collectionPathChanged, &m_versions, &VersionPicker::cancel);
}

bool LaunchStatus::isLaunching() const {
    return m_checking || m_state.gameLauncher().isLaunching();
}

QString LaunchStatus::step() const {
    return m_state.gameLauncher().setupStatus();
}

QString LaunchStatus::error() const {
    return m_gameId == m_state.selectedGameId() ? m_error : QString();
}

void LaunchStatus::startSelected(LaunchMode mode) {
    if (!m_state.selectedGameId().isEmpty() && !isLaunching())
        spawn(start(m_state.selectedGameId(), mode), "starting a game");
}

void LaunchStatus::playSelected() {
    startSelected(LaunchMode::play);
}

void LaunchStatus::act() {
    const GamePtr game = m_state.gameLibrary().game(m_state.selectedGameId());
    const QString wanted = game ? GameActions::primaryOf(m_state, *game) : QString();
    if (wanted == u"install")
        installSelected();
    else if (wanted == u"download")
        downloadSelected();
    else
        checkVersionsAndLaunch();
}

void LaunchStatus::setUpSelected() {
    startSelected(LaunchMode::setup);
}

void LaunchStatus::installSelected() {
    startSelected(LaunchMode::install);
}

void LaunchStatus::downloadSelected() {
    startSelected(LaunchMode::download);
}

void LaunchStatus::checkVersionsAndLaunch() {
    if (!m_state.selectedGameId().isEmpty() && !isLaunching())
        spawn(pickVersion(m_state.selectedGameId(), true), "looking for the versions of a game");
}

void LaunchStatus::chooseVersion() {
    if (!m_state.selectedGameId().isEmpty() && !isLaunching())
        spawn(pickVersion(m_state.selectedGameId(), false), "looking for the versions of a game");
}

/// Two emulators on one folder of a game spoil each other's saves.
bool LaunchStatus::refuseRunning(const QString &gameId) {
    if (!m_state.sessionTracker().isRunningNow(gameId))
        return false;
    const GamePtr game = m_state.gameLibrary().game(gameId);
    const QString text = tr("\"%1\" is running already").arg(game ? game->title : QString());
    Log::info(text);
    Q_EMIT refused(text);
    return true;
}

QCoro::Task<> LaunchStatus::pickVersion(QString gameId, bool mayLaunchAtOnce) {
    if (refuseRunning(gameId))
        co_return;
    const QPointer<LaunchStatus> self(this);
    m_checking = true;
    Q_EMIT changed();
    VersionCheck::Result found;
    QString failure;
    try {
        found = co_await m_state.versionCheck().checkVersionsAndLaunch(gameId, m_state.collectionPath());
    } catch (...) {
        failure = currentExceptionText();
    }
    if (!self)
        co_return;
    m_checking = false;
    Q_EMIT changed();
    if (!failure.isEmpty()) {
        const QString title = QStringLiteral("The versions of the game could not be looked up");
        co_await tell(title, failure);
    } else if (found.action == VersionCheck::Result::Action::ask) {
        m_versions.show(*found.menu, [this, gameId](const GameVersionOption &option) {
            spawn(start(gameId, LaunchMode::play, option), "starting a version of a game");
        });
    } else if (found.action == VersionCheck::Result::Action::launch && mayLaunchAtOnce) {
        co_await start(gameId, LaunchMode::play, found.version);
    } else if (found.game) {
        const QString title = QStringLiteral("There is nothing to choose");
        const QString text = QStringLiteral("Only one version of \"%1\" is known.").arg(found.game->title);
        co_await tell(title, text);
    }
}

QCoro::Task<> LaunchStatus::start(QString gameId, LaunchMode mode, std::optional<GameVersionOption> version) {
    const GamePtr game = m_state.gameLibrary().game(gameId);
    if (!game || refuseRunning(gameId))
        co_return;
    const QPointer<LaunchStatus> self(this);
    m_gameId = gameId;
    m_error.clear();
    Q_EMIT changed();
    QString error;
    try {
        co_await m_state.gameLauncher().launch(game, mode, version);
        if (!self)
            co_return;
        error = m_state.gameLauncher().launchError();
    } catch (...) {
        error = currentExceptionText();
        if (!self)
            co_return;
    }
    m_error = error;
    Q_EMIT changed();
    if (error.isEmpty())
        co_return;
    const QString title = failedText(mode).arg(game->title);
    co_await tell(title, error);
}

void LaunchStatus::openSelectedFolder() {
    const GamePtr game = m_state.gameLibrary().game(m_state.selectedGameId());
    if (!game)
        return;
    try {
        m_state.gameLauncher().openGameFolder(*game);
    } catch (...) {
        spawn(tell(QStringLiteral("The game's folder could not be opened"), currentExceptionText()),
              "telling why a folder did not open");
    }
}

QCoro::Task<> LaunchStatus::tell(QString title, QString text) {
    Alert alert;
    alert.title = title;
    alert.text = text;
    alert.buttons.append(QStringLiteral("OK"));
    alert.style = Alert::Style::Warning;
    co_await m_state.host().dialogs.ask(alert);
}

} // namespace ludarium

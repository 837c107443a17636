#include "Views/LaunchStatus.h"

#include "App/AppState.h"
#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Library/GameLibrary.h"

#include <QPointer>

namespace ludarium {

LaunchStatus::LaunchStatus(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    connect(&state.gameLauncher(), &GameLauncher::launchStateChanged, this, &LaunchStatus::changed);
    connect(&state, &AppState::selectionChanged, this, &LaunchStatus::changed);
}

bool LaunchStatus::isLaunching() const {
    return m_state.gameLauncher().isLaunching();
}

QString LaunchStatus::step() const {
    return m_state.gameLauncher().setupStatus();
}

QString LaunchStatus::error() const {
    return m_gameId == m_state.selectedGameId() ? m_error : QString();
}

void LaunchStatus::playSelected() {
    if (!m_state.selectedGameId().isEmpty() && !isLaunching())
        spawn(start(m_state.selectedGameId(), LaunchMode::play), "starting a game");
}

void LaunchStatus::setUpSelected() {
    if (!m_state.selectedGameId().isEmpty() && !isLaunching())
        spawn(start(m_state.selectedGameId(), LaunchMode::setup), "setting a game up");
}

QCoro::Task<> LaunchStatus::start(QString gameId, LaunchMode mode) {
    const GamePtr game = m_state.gameLibrary().game(gameId);
    if (!game)
        co_return;
    const QPointer<LaunchStatus> self(this);
    m_gameId = gameId;
    m_error.clear();
    Q_EMIT changed();
    QString error;
    try {
        co_await m_state.gameLauncher().launch(game, mode);
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
    const QString failed = mode == LaunchMode::play ? QStringLiteral("\"%1\" could not be started")
                                                    : QStringLiteral("\"%1\" could not be set up");
    const QString title = failed.arg(game->title);
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

#include "Views/RunningStatus.h"

#include "App/AppState.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Models/PlayTime.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/PlaySessionTracker.h"

#include <QPointer>
#include <chrono>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// What a game may take to close its files before anybody is told that it has not ended.
constexpr std::chrono::seconds patience{5};

} // namespace

RunningStatus::RunningStatus(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    m_second.setInterval(1000);
    connect(&m_second, &QTimer::timeout, this, &RunningStatus::changed);
    connect(&state.sessionTracker(), &PlaySessionTracker::runningChanged, this, &RunningStatus::follow);
    connect(&state, &AppState::selectionChanged, this, &RunningStatus::changed);
    follow();
}

void RunningStatus::follow() {
    const QStringList running = m_state.sessionTracker().runningGames();
    if (!running.contains(m_stopping))
        m_stopping.clear();
    if (running.isEmpty())
        m_second.stop();
    else
        m_second.start();
    Q_EMIT changed();
}

QString RunningStatus::titleOf(const QString &gameId) const {
    const GamePtr game = m_state.gameLibrary().game(gameId);
    return game ? game->title : QString();
}

QString RunningStatus::text() const {
    const QStringList running = m_state.sessionTracker().runningGames();
    if (running.isEmpty())
        return {};
    const QString title = titleOf(running.constFirst());
    if (running.size() > 1)
        return tr("%L1 games are running").arg(running.size());
    const QString time = formatSessionDuration(m_state.sessionTracker().runningSeconds(running.constFirst()));
    return title.isEmpty() ? tr("A game of another collection is running") : tr("Playing %1 · %2").arg(title, time);
}

bool RunningStatus::isSelectedRunning() const {
    return m_state.sessionTracker().isRunning(m_state.selectedGameId());
}

QString RunningStatus::elapsed() const {
    return isSelectedRunning()
               ? formatSessionDuration(m_state.sessionTracker().runningSeconds(m_state.selectedGameId()))
               : QString();
}

bool RunningStatus::isStopping() const {
    return !m_stopping.isEmpty() && m_stopping == m_state.selectedGameId();
}

void RunningStatus::stopSelected() {
    if (isSelectedRunning())
        spawn(stop(m_state.selectedGameId()), "ending a game");
}

QCoro::Task<> RunningStatus::stop(QString gameId) {
    const QPointer<RunningStatus> self(this);
    const QString title = titleOf(gameId);
    Alert alert;
    alert.title = tr("Stop \"%1\"?").arg(title);
    alert.text = tr("The game ends at once. What you have not saved in it is lost.");
    alert.buttons = QStringList{tr("Stop"), tr("Cancel")};
    alert.destructive = 0;
    alert.style = Alert::Style::Warning;
    const int answer = co_await m_state.host().dialogs.ask(alert);
    if (!self || answer != 0)
        co_return;
    // It may have ended meanwhile, and another process have its number: the start time tells.
    const std::optional<ProcessId> process = m_state.sessionTracker().runningProcess(gameId);
    if (!process)
        co_return;
    m_stopping = gameId;
    Q_EMIT changed();
    const bool asked = m_state.host().processes.askToEnd(*process);
    if (asked)
        co_await m_state.host().clock.sleep(patience);
    if (!self)
        co_return;
    if (m_stopping == gameId)
        m_stopping.clear();
    Q_EMIT changed();
    if (m_state.host().processes.isRunning(*process))
        Q_EMIT warned(tr("\"%1\" does not end. Close it in its own window.").arg(title));
}

} // namespace ludarium

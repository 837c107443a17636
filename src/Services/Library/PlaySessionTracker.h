#pragma once

#include "Host/ProcessRunner.h"
#include "Models/Game.h"
#include "Services/Library/RunningGames.h"
#include "Services/Library/SessionJournal.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

namespace ludarium {

struct Host;

/// Measures how long a game runs. It watches the process that the launcher started; where there is none to watch it
/// looks for a known emulator among the machine's processes. An open session is journalled, so that a crash or a quit
/// loses little of it. Main thread only.
class PlaySessionTracker : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isTracking READ isTracking NOTIFY sessionChanged)
    Q_PROPERTY(double currentSessionDuration READ currentSessionDuration NOTIFY durationChanged)
  public:
    explicit PlaySessionTracker(Host &host, QObject *parent = nullptr);
    ~PlaySessionTracker() override;

    /// Opens a session, closing one that is open. `process` is what the launcher started, when it can be watched.
    void startSession(GamePtr game, std::optional<ProcessId> process);
    /// Closes the open session and reports it; nothing without one. Called when the process has gone, by the next
    /// `startSession` and at quit.
    void endSession();

    /// For the end of the program: leaves the journal of a session whose game still runs to the next start, which goes
    /// on with it or reports it; closes any other session.
    void suspend();

    /// Takes up the sessions that programs which have ended left open: one whose game still runs goes on, any other is
    /// reported with the time that its journal holds. Call once the library has its games; `find` gives a game by id.
    /// A game that still runs and is not in the library is left to whoever has its collection.
    void recover(const std::function<GamePtr(const QString &id)> &find);

    /// Called with each closed session; every length counts. A session of a game that is not in the library comes
    /// with its id alone.
    std::function<void(const QString &gameId, double seconds)> onSessionEnded;
    /// Reports a closed session to a community service, when there is one.
    std::function<void(GamePtr game, int minutes, QDateTime startedAt)> reportSession;

    bool isTracking() const { return m_game != nullptr; }
    GamePtr currentGame() const { return m_game; }
    /// Whether the end of the game will be noticed.
    bool isWatching() const { return m_game && m_entry.process; }
    double currentSessionDuration() const { return m_duration; } ///< seconds, refreshed once a second

    /// Whether a process of the game exists, whichever of our programs started it; a change comes with
    /// `runningChanged` within a second. Cheap enough for every row of a list.
    bool isRunning(const QString &gameId) const { return m_running->contains(gameId); }
    /// The same, looked up at this moment, for who is about to start the game.
    bool isRunningNow(const QString &gameId) const;
    /// How long the game's process has existed; 0 without one.
    double runningSeconds(const QString &gameId) const { return m_running->seconds(gameId); }

    /// Names that an emulator's process is known by.
    static const QStringList &emulatorProcessNames();
    /// The first process of a listing of "pid command" lines that is a known emulator.
    static std::optional<qint64> emulatorInListing(const QByteArray &psOutput);

  Q_SIGNALS:
    void sessionChanged();
    void durationChanged();
    void runningChanged();

  private:
    QCoro::Task<> monitor(quint64 session, std::optional<ProcessId> process);
    QCoro::Task<std::optional<ProcessId>> findEmulatorProcess();
    void open(GamePtr game, const SessionJournal::Entry &entry);
    void writeJournal();
    double elapsed() const;
    bool isOpen(quint64 session) const { return m_game && m_session == session; }

    Host &m_host;
    std::unique_ptr<RunningGames> m_running;
    SessionJournal m_journal;
    SessionJournal::Entry m_entry;
    GamePtr m_game;
    quint64 m_session = 0; ///< counts sessions, so that a monitor knows when its own is over
    std::chrono::nanoseconds m_startedAt{0};
    double m_secondsBefore = 0; ///< of a session that an earlier run began
    double m_duration = 0;
    QTimer m_timer;
};

} // namespace ludarium

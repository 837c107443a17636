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

/// Measures how long games run. It watches the process that the launcher started; where there is none to watch it
/// looks for a known emulator among the machine's processes. Open sessions are journalled, so that a crash or a quit
/// loses little of them. Main thread only.
class PlaySessionTracker : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isTracking READ isTracking NOTIFY sessionChanged)
    Q_PROPERTY(double currentSessionDuration READ currentSessionDuration NOTIFY durationChanged)
  public:
    explicit PlaySessionTracker(Host &host, QObject *parent = nullptr);
    ~PlaySessionTracker() override;

    /// Opens a session, closing the one before. `process` is what the launcher started, when it can be watched.
    void startSession(GamePtr game, std::optional<ProcessId> process);
    /// Closes the current session and reports it; nothing without one. Called when the process has gone, by the next
    /// `startSession` and at quit. Returns why its time could not be stored, empty when it was; then the journal stays,
    /// and the next start stores it.
    QString endSession();

    /// For the end of the program: leaves the journals of sessions whose game still runs to a keeper, or else to the
    /// next start, and closes any other session.
    void suspend();

    /// Takes up the sessions that programs which have ended left open: one whose game still runs goes on, any other is
    /// reported with the time that its journal holds. Call once the library has its games; `find` gives a game by id.
    /// A game that still runs and is not in the library is left to whoever has its collection.
    void recover(const std::function<GamePtr(const QString &id)> &find);
    /// Whether `recover` goes on with games that run, and takes them over from their keepers: a window does, a command
    /// that ends at once does not.
    void setTakingOver(bool takes) { m_takesOver = takes; }

    /// Called with each closed session; every length counts. A session of a game that is not in the library comes
    /// with its id alone. Returns why the time could not be stored, empty when it was.
    std::function<QString(const QString &gameId, double seconds)> onSessionEnded;
    /// Reports a closed session to a community service, when there is one.
    std::function<void(GamePtr game, int minutes, QDateTime startedAt)> reportSession;
    /// Starts a small program that stays until the game of a journal has ended and stores its time; when there is one.
    std::function<void(const QString &journalFile)> startKeeper;

    bool isTracking() const { return m_current != nullptr; }
    GamePtr currentGame() const { return m_current ? m_current->game : GamePtr(); }
    /// Whether the end of the game will be noticed.
    bool isWatching() const { return m_current && m_current->entry.process; }
    double currentSessionDuration() const { return m_duration; } ///< seconds, refreshed once a second

    /// Whether a process of the game exists, whichever of our programs started it; a change comes with
    /// `runningChanged` within a second. Cheap enough for every row of a list.
    bool isRunning(const QString &gameId) const { return m_running->contains(gameId) || measuredProcess(gameId); }
    /// The same, looked up at this moment, for who is about to start the game.
    bool isRunningNow(const QString &gameId) const;
    /// How long the game's process has existed; 0 without one.
    double runningSeconds(const QString &gameId) const;
    /// The ids of all games that run, in a fixed order.
    QStringList runningGames() const;
    /// The game's recorded process, looked up at this moment.
    std::optional<ProcessId> runningProcess(const QString &gameId) const;

    /// Names that an emulator's process is known by.
    static const QStringList &emulatorProcessNames();
    /// The first process of a listing of "pid command" lines that is a known emulator.
    static std::optional<qint64> emulatorInListing(const QByteArray &psOutput);

  Q_SIGNALS:
    void sessionChanged();
    void durationChanged();
    void runningChanged();

  private:
    /// A game that runs. Those that are not the current one were taken over beside it, or go on after their time was
    /// stored.
    struct Session {
        SessionJournal journal;
        SessionJournal::Entry entry;
        GamePtr game;
        std::chrono::nanoseconds startedAt{0};
        double secondsBefore = 0; ///< that an earlier program measured
    };
    using SessionPtr = std::shared_ptr<Session>;

    QCoro::Task<> monitor(SessionPtr session);
    QCoro::Task<std::optional<ProcessId>> findEmulatorProcess();
    void open(const SessionPtr &session, bool isCurrent);
    QString close(SessionPtr session);
    void leave(SessionPtr session);
    void takeUp(const SessionJournal &journal, const std::function<GamePtr(const QString &id)> &find);
    void writeJournal(Session &session);
    void everySecond();
    double elapsed(const Session &session) const;
    bool runs(const Session &session) const;
    std::optional<ProcessId> measuredProcess(const QString &gameId) const;
    bool isOpen(const SessionPtr &session) const { return m_sessions.contains(session); }

    Host &m_host;
    std::unique_ptr<RunningGames> m_running;
    QList<SessionPtr> m_sessions;
    SessionPtr m_current;
    bool m_takesOver = true;
    double m_duration = 0;
    QTimer m_timer;
};

} // namespace ludarium

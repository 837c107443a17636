#include "Services/Library/PlaySessionTracker.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/FileLock.h"
#include "Host/Host.h"
#include "Host/ProcessTable.h"
#include "Models/PlayTime.h"

#include <QCoreApplication>
#include <QPointer>
#include <csignal>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto tick = 1s;
constexpr auto firstLook = 2s;
constexpr int searchRounds = 30;
constexpr double journalInterval = 30; // seconds

ProcessId thisProgram() {
    const qint64 pid = QCoreApplication::applicationPid();
    return {pid, processStartTime(pid).value_or(0)};
}

} // namespace

const QStringList &PlaySessionTracker::emulatorProcessNames() {
    static const QStringList names = [] {
        QStringList list;
        for (const char *name :
             {"dosbox", "dosbox-staging", "dosbox-x", "dosbox-ece", "scummvm", "retroarch", "RetroArch",
              "mame",   "mame64",         "Ryujinx",  "ryujinx",    "Cemu",    "cemu",      "rpcs3",
              "RPCS3",  "Vita3K",         "vita3k",   "wine64",     "wine",    "wineserver"})
            list.append(QString::fromUtf8(name));
        return list;
    }();
    return names;
}

PlaySessionTracker::PlaySessionTracker(Host &host, QObject *parent)
    : QObject(parent), m_host(host), m_running(std::make_unique<RunningGames>(host.processes, host.paths.state())) {
    connect(m_running.get(), &RunningGames::changed, this, &PlaySessionTracker::runningChanged);
    m_timer.setInterval(tick);
    connect(&m_timer, &QTimer::timeout, this, &PlaySessionTracker::everySecond);
}

PlaySessionTracker::~PlaySessionTracker() = default;

void PlaySessionTracker::everySecond() {
    for (const SessionPtr &session : std::as_const(m_sessions))
        if (!session->entry.isClosed && elapsed(*session) - session->entry.seconds >= journalInterval)
            writeJournal(*session);
    if (!m_current)
        return;
    m_duration = elapsed(*m_current);
    Q_EMIT durationChanged();
}

bool PlaySessionTracker::isRunningNow(const QString &gameId) const {
    m_running->look();
    return isRunning(gameId);
}

std::optional<ProcessId> PlaySessionTracker::runningProcess(const QString &gameId) const {
    m_running->look();
    const std::optional<ProcessId> process = m_running->process(gameId);
    return process ? process : measuredProcess(gameId);
}

double PlaySessionTracker::runningSeconds(const QString &gameId) const {
    if (const double seconds = m_running->seconds(gameId); seconds > 0)
        return seconds;
    const std::optional<ProcessId> process = measuredProcess(gameId);
    return process ? secondsSinceProcessStart(process->startTime) : 0;
}

QStringList PlaySessionTracker::runningGames() const {
    QStringList ids = m_running->games();
    for (const SessionPtr &session : m_sessions)
        if (runs(*session) && !ids.contains(session->entry.gameId))
            ids.append(session->entry.gameId);
    ids.sort();
    return ids;
}

/// Of a game whose journal could not be written its own session tells.
std::optional<ProcessId> PlaySessionTracker::measuredProcess(const QString &gameId) const {
    for (const SessionPtr &session : m_sessions)
        if (session->entry.gameId == gameId && runs(*session))
            return session->entry.process;
    return std::nullopt;
}

bool PlaySessionTracker::runs(const Session &session) const {
    return session.entry.process && m_host.processes.isRunning(*session.entry.process);
}

double PlaySessionTracker::elapsed(const Session &session) const {
    return session.secondsBefore + std::chrono::duration<double>(m_host.clock.monotonic() - session.startedAt).count();
}

void PlaySessionTracker::writeJournal(Session &session) {
    session.entry.seconds = elapsed(session);
    session.journal.write(session.entry);
}

void PlaySessionTracker::open(const SessionPtr &session, bool isCurrent) {
    session->secondsBefore = session->entry.seconds;
    session->startedAt = m_host.clock.monotonic();
    m_sessions.append(session);
    m_timer.start();
    if (isCurrent) {
        m_current = session;
        m_duration = session->entry.seconds;
        Q_EMIT sessionChanged();
    }
    m_running->look();
    spawn(monitor(session), "watching the emulator");
}

void PlaySessionTracker::startSession(GamePtr game, std::optional<ProcessId> process) {
    endSession();
    Log::info(u"🎮 PlaySessionTracker: Starting session for %1"_s.arg(game->title));
    auto session = std::make_shared<Session>();
    session->entry = {.gameId = game->id,
                      .title = game->title,
                      .startedAt = m_host.clock.now(),
                      .process = process,
                      .owner = thisProgram(),
                      .startedSinceBoot = SessionJournal::secondsSinceBoot()};
    session->game = std::move(game);
    session->journal = SessionJournal::create(session->entry.owner, m_host.paths.state());
    session->journal.write(session->entry);
    open(session, true);
}

QString PlaySessionTracker::endSession() {
    return m_current ? close(m_current) : QString();
}

/// Takes a session off the list, whatever becomes of its journal.
void PlaySessionTracker::leave(SessionPtr session) {
    m_sessions.removeOne(session);
    if (m_sessions.isEmpty())
        m_timer.stop();
    if (m_current != session)
        return;
    m_current.reset();
    m_duration = 0;
    Q_EMIT sessionChanged();
}

QString PlaySessionTracker::close(SessionPtr session) {
    const double seconds = elapsed(*session);
    SessionJournal::Entry &entry = session->entry;
    Log::info(u"🎮 PlaySessionTracker: Session ended for %1 - Duration: %2"_s.arg(entry.title,
                                                                                 formatSessionDuration(seconds)));
    // The journal goes last: what is reported twice after a crash in between is better than what is lost.
    const QString refusal = onSessionEnded ? onSessionEnded(entry.gameId, seconds) : QString();
    if (!refusal.isEmpty()) {
        entry.seconds = seconds;
        entry.owner = {}; // for whoever comes next
        session->journal.write(entry);
        Log::error(u"❌ The play time of %1 is kept in its journal: %2"_s.arg(entry.title, refusal));
        leave(session);
    } else if (runs(*session)) {
        // Its time is told, but nobody shall start it once more.
        entry.isClosed = true;
        session->journal.write(entry);
        m_current.reset();
        m_duration = 0;
        Q_EMIT sessionChanged();
    } else {
        session->journal.clear();
        leave(session);
    }
    if (reportSession && session->game)
        reportSession(session->game, static_cast<int>(seconds / 60.0), entry.startedAt);
    m_running->look();
    return refusal;
}

void PlaySessionTracker::suspend() {
    const QList<SessionPtr> sessions = m_sessions;
    for (const SessionPtr &session : sessions) {
        if (!runs(*session)) {
            if (session->entry.isClosed)
                session->journal.clear();
            else
                close(session);
        } else if (!session->entry.isClosed) {
            session->entry.owner = {};
            writeJournal(*session);
            if (startKeeper)
                startKeeper(session->journal.file());
        }
        leave(session);
    }
}

void PlaySessionTracker::recover(const std::function<GamePtr(const QString &)> &find) {
    const FileLock lock(SessionJournal::lockFile(m_host.paths.state()));
    for (const SessionJournal &journal : SessionJournal::inFolder(m_host.paths.state()))
        takeUp(journal, find);
    m_running->look();
}

void PlaySessionTracker::takeUp(const SessionJournal &journal, const std::function<GamePtr(const QString &)> &find) {
    const std::optional<SessionJournal::Entry> left = journal.read();
    if (!left)
        return;
    const bool isOwned = left->owner.pid != 0 && m_host.processes.isRunning(left->owner);
    const bool runs = left->process && m_host.processes.isRunning(*left->process);
    if (left->isClosed) {
        if (!runs)
            journal.clear();
        return;
    }
    if (isOwned && !(left->isKept && m_takesOver && runs))
        return;
    SessionJournal::Entry entry = *left;
    if (!runs) {
        Log::info(u"🎮 PlaySessionTracker: Session ended for %1 - Duration: %2"_s.arg(
            entry.title, formatSessionDuration(entry.seconds)));
        if (!onSessionEnded || onSessionEnded(entry.gameId, entry.seconds).isEmpty())
            journal.clear();
        return;
    }
    const GamePtr game = find(entry.gameId);
    if (!m_takesOver || !game)
        return; // a game of another collection, which will find it
    // The game has been running all the while, also while nobody measured it.
    entry.seconds = entry.secondsUntilNow();
    const ProcessId keeper = std::exchange(entry.owner, thisProgram());
    entry.isKept = false;
    if (!journal.write(entry))
        return;
    if (isOwned)
        ::kill(static_cast<pid_t>(keeper.pid), SIGTERM); // it has nothing more to do
    Log::info(u"🎮 PlaySessionTracker: Going on with the session for %1"_s.arg(entry.title));
    auto session = std::make_shared<Session>();
    session->journal = journal;
    session->entry = entry;
    session->game = game;
    open(session, m_current == nullptr);
}

QCoro::Task<> PlaySessionTracker::monitor(SessionPtr session) {
    const QPointer<PlaySessionTracker> self(this);
    Clock &clock = m_host.clock;
    std::optional<ProcessId> process = session->entry.process;
    if (!process) {
        co_await clock.sleep(firstLook);
        for (int round = 0; round < searchRounds && !process; ++round) {
            if (!self || !isOpen(session))
                co_return;
            process = co_await findEmulatorProcess();
            if (!process)
                co_await clock.sleep(tick);
        }
        if (!self || !isOpen(session))
            co_return;
        if (!process) {
            // The session stays open until the next one begins or the program quits.
            Log::warning(u"🎮 PlaySessionTracker: No emulator process found after 30s"_s);
            co_return;
        }
        session->entry.process = process;
        writeJournal(*session);
        m_running->look();
        Q_EMIT sessionChanged();
    }
    Log::info(u"🎮 PlaySessionTracker: Found emulator process (PID: %1)"_s.arg(process->pid));
    while (m_host.processes.isRunning(*process)) {
        co_await clock.sleep(tick);
        if (!self || !isOpen(session))
            co_return;
    }
    Log::info(u"🎮 PlaySessionTracker: Emulator process (PID: %1) has exited"_s.arg(process->pid));
    if (!isOpen(session))
        co_return;
    if (!session->entry.isClosed) {
        close(session);
        co_return;
    }
    session->journal.clear();
    leave(session);
    m_running->look();
}

std::optional<qint64> PlaySessionTracker::emulatorInListing(const QByteArray &psOutput) {
    static const QStringList lowerNames = emulatorProcessNames().join(u'\n').toLower().split(u'\n');
    for (const QByteArray &raw : psOutput.split('\n')) {
        const QString line = QString::fromUtf8(raw).trimmed();
        const qsizetype blank = line.indexOf(u' ');
        bool isNumber = false;
        const int pid = line.first(std::max<qsizetype>(blank, 0)).toInt(&isNumber);
        if (!isNumber)
            continue;
        const QString command = line.sliced(blank).trimmed();
        const QString name = command.sliced(command.lastIndexOf(u'/') + 1).toLower();
        for (const QString &known : lowerNames)
            if (name.contains(known))
                return pid;
    }
    return std::nullopt;
}

QCoro::Task<std::optional<ProcessId>> PlaySessionTracker::findEmulatorProcess() {
    ProcessSpec spec;
    spec.program = QStringLiteral("/bin/ps");
    spec.arguments = QStringList{QStringLiteral("-axo"), QStringLiteral("pid,comm")};
    try {
        const ProcessResult result = co_await m_host.processes.run(spec);
        if (const auto pid = emulatorInListing(result.standardOutput))
            if (const auto startTime = processStartTime(*pid))
                co_return ProcessId{*pid, *startTime};
    } catch (const ProcessError &error) {
        Log::error(QStringLiteral("Failed to list processes: %1").arg(QString::fromUtf8(error.what())));
    }
    co_return std::nullopt;
}

} // namespace ludarium

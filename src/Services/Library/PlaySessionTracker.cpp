#include "Services/Library/PlaySessionTracker.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/ProcessTable.h"
#include "Services/Library/PlayStatistics.h"

#include <QCoreApplication>
#include <QPointer>

namespace ludarium {

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
    : QObject(parent), m_host(host), m_running(std::make_unique<RunningGames>(host.processes, host.paths.state())),
      m_journal(host.paths.state() + QStringLiteral("/session.json")) {
    connect(m_running.get(), &RunningGames::changed, this, &PlaySessionTracker::runningChanged);
    m_timer.setInterval(tick);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_duration = elapsed();
        Q_EMIT durationChanged();
        if (m_duration - m_entry.seconds >= journalInterval)
            writeJournal();
    });
}

PlaySessionTracker::~PlaySessionTracker() = default;

bool PlaySessionTracker::isRunningNow(const QString &gameId) const {
    m_running->look();
    return m_running->contains(gameId);
}

double PlaySessionTracker::elapsed() const {
    return m_secondsBefore + std::chrono::duration<double>(m_host.clock.monotonic() - m_startedAt).count();
}

void PlaySessionTracker::writeJournal() {
    m_entry.seconds = elapsed();
    m_journal.write(m_entry);
}

void PlaySessionTracker::open(GamePtr game, const SessionJournal::Entry &entry) {
    m_entry = entry;
    m_secondsBefore = entry.seconds;
    m_startedAt = m_host.clock.monotonic();
    m_duration = entry.seconds;
    m_game = std::move(game);
    ++m_session;
    m_timer.start();
    Q_EMIT sessionChanged();
    spawn(monitor(m_session, entry.process), "watching the emulator");
}

void PlaySessionTracker::startSession(GamePtr game, std::optional<ProcessId> process) {
    endSession();
    Log::info(QStringLiteral("🎮 PlaySessionTracker: Starting session for %1").arg(game->title));
    const SessionJournal::Entry entry{game->id, game->title, m_host.clock.now(), 0, process, thisProgram()};
    m_journal = SessionJournal::of(entry.owner, m_host.paths.state());
    m_journal.write(entry);
    open(std::move(game), entry);
}

void PlaySessionTracker::endSession() {
    if (!m_game)
        return;
    const double seconds = elapsed();
    const GamePtr game = std::exchange(m_game, nullptr);
    Log::info(QStringLiteral("🎮 PlaySessionTracker: Session ended for %1 - Duration: %2")
                  .arg(game->title, formatSessionDuration(seconds)));
    m_timer.stop();
    m_duration = 0;
    // The journal goes last: what is reported twice after a crash in between is better than what is lost.
    if (onSessionEnded)
        onSessionEnded(game->id, seconds);
    m_journal.clear();
    if (reportSession)
        reportSession(game, static_cast<int>(seconds / 60.0), m_entry.startedAt);
    Q_EMIT sessionChanged();
}

void PlaySessionTracker::suspend() {
    if (!m_game || !m_entry.process || !m_host.processes.isRunning(*m_entry.process)) {
        endSession();
        return;
    }
    writeJournal();
    m_timer.stop();
    m_game = nullptr;
}

void PlaySessionTracker::recover(const std::function<GamePtr(const QString &)> &find) {
    if (m_game)
        return;
    for (const SessionJournal &journal : SessionJournal::inFolder(m_host.paths.state())) {
        const std::optional<SessionJournal::Entry> left = journal.read();
        if (!left || m_host.processes.isRunning(left->owner))
            continue;
        SessionJournal::Entry entry = *left;
        const GamePtr game = find(entry.gameId);
        if (entry.process && m_host.processes.isRunning(*entry.process)) {
            if (!game)
                continue; // a game of another collection, which will find it
            // The game has been running all the while, also while nobody measured it.
            const double sinceStart = static_cast<double>(entry.startedAt.msecsTo(m_host.clock.now())) / 1000;
            entry.seconds = std::max(entry.seconds, sinceStart);
            if (!m_game) {
                entry.owner = thisProgram();
                m_journal = journal;
                m_journal.write(entry);
                Log::info(QStringLiteral("🎮 PlaySessionTracker: Going on with the session for %1").arg(entry.title));
                open(game, entry);
                continue;
            }
        }
        Log::info(QStringLiteral("🎮 PlaySessionTracker: Session ended for %1 - Duration: %2")
                      .arg(entry.title, formatSessionDuration(entry.seconds)));
        if (onSessionEnded)
            onSessionEnded(entry.gameId, entry.seconds);
        journal.clear();
    }
}

QCoro::Task<> PlaySessionTracker::monitor(quint64 session, std::optional<ProcessId> process) {
    const QPointer<PlaySessionTracker> self(this);
    Clock &clock = m_host.clock;
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
            Log::warning(QStringLiteral("🎮 PlaySessionTracker: No emulator process found after 30s"));
            co_return;
        }
        m_entry.process = process;
        writeJournal();
        Q_EMIT sessionChanged();
    }
    Log::info(QStringLiteral("🎮 PlaySessionTracker: Found emulator process (PID: %1)").arg(process->pid));
    while (m_host.processes.isRunning(*process)) {
        co_await clock.sleep(tick);
        if (!self || !isOpen(session))
            co_return;
    }
    Log::info(QStringLiteral("🎮 PlaySessionTracker: Emulator process (PID: %1) has exited").arg(process->pid));
    if (isOpen(session))
        endSession();
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

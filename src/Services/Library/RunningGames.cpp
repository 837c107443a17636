#include "Services/Library/RunningGames.h"

#include "Host/ProcessTable.h"

#include <QDir>

namespace ludarium {

namespace {

constexpr std::chrono::seconds interval{1};

} // namespace

RunningGames::RunningGames(const ProcessRunner &processes, QString folder, QObject *parent)
    : QObject(parent), m_processes(processes), m_folder(std::move(folder)) {
    m_timer.setInterval(interval);
    connect(&m_timer, &QTimer::timeout, this, &RunningGames::look);
}

bool RunningGames::contains(const QString &gameId) {
    watch();
    return m_running.contains(gameId);
}

double RunningGames::seconds(const QString &gameId) {
    watch();
    const auto found = m_running.constFind(gameId);
    return found == m_running.cend() ? 0 : secondsSinceProcessStart(found->startTime);
}

QStringList RunningGames::games() {
    watch();
    QStringList ids = m_running.keys();
    ids.sort();
    return ids;
}

std::optional<ProcessId> RunningGames::process(const QString &gameId) const {
    const auto found = m_running.constFind(gameId);
    return found == m_running.cend() ? std::nullopt : std::optional(*found);
}

void RunningGames::watch() {
    if (m_watcher)
        return;
    QDir().mkpath(m_folder);
    m_watcher = std::make_unique<QFileSystemWatcher>(QStringList{m_folder});
    connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, this, &RunningGames::look);
    look();
}

void RunningGames::look() {
    QHash<QString, ProcessId> running;
    for (const SessionJournal &journal : SessionJournal::inFolder(m_folder)) {
        const std::optional<SessionJournal::Entry> entry = journal.read();
        if (entry && entry->process && m_processes.isRunning(*entry->process))
            running.insert(entry->gameId, *entry->process);
    }
    // The folder tells of games that start; only a look at its process tells that one has ended.
    if (running.isEmpty())
        m_timer.stop();
    else if (m_watcher)
        m_timer.start();
    if (std::exchange(m_running, running) != running)
        Q_EMIT changed();
}

} // namespace ludarium

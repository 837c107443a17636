#include "Services/Library/SessionKeeper.h"

#include "Host/FileLock.h"
#include "Host/ProcessTable.h"
#include "Host/SqliteSettingsStore.h"
#include "Services/Library/SessionJournal.h"
#include "Services/Library/UserData.h"

#include <QFileInfo>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace ludarium {

namespace {

constexpr int journalInterval = 30'000; // milliseconds
constexpr int pollInterval = 1000;      // where the system does not tell of the end of a process

volatile std::sig_atomic_t told = 0;

double monotonicSeconds() {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

bool isRunning(const ProcessId &process) {
    return processStartTime(process.pid) == process.startTime;
}

/// Sleeps until the process has ended, a signal comes, or it is time for the journal.
void waitAWhile(int descriptor) {
    if (descriptor < 0) {
        ::poll(nullptr, 0, pollInterval);
        return;
    }
    pollfd process{descriptor, POLLIN, 0};
    ::poll(&process, 1, journalInterval);
}

int openProcess(const ProcessId &process) {
#ifdef SYS_pidfd_open
    return static_cast<int>(::syscall(SYS_pidfd_open, static_cast<pid_t>(process.pid), 0));
#else
    Q_UNUSED(process)
    return -1;
#endif
}

bool store(const SessionJournal::Entry &entry, const QString &settingsFolder) {
    try {
        SqliteSettingsStore settings(settingsFolder);
        UserData(settings).addPlayTime(entry.gameId, entry.seconds);
        return true;
    } catch (const std::exception &) {
        return false; // the journal stays for the next start, which tells why
    }
}

} // namespace

int keepSession(const QString &journalFile, const QString &settingsFolder) {
    struct sigaction action {};
    action.sa_handler = [](int) { told = 1; };
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(signal, &action, nullptr); // ends the sleep
    const SessionJournal journal(journalFile);
    const QString lockFile = SessionJournal::lockFile(QFileInfo(journalFile).path());
    const qint64 pid = ::getpid();
    const ProcessId self{pid, processStartTime(pid).value_or(0)};

    std::optional<SessionJournal::Entry> entry;
    {
        const FileLock lock(lockFile);
        entry = journal.read();
        if (!entry || !entry->process || entry->isClosed || (entry->owner.pid != 0 && isRunning(entry->owner)))
            return EXIT_FAILURE;
        entry->owner = self;
        entry->isKept = true;
        journal.write(*entry);
    }
    const double before = entry->seconds;
    const double start = monotonicSeconds();
    const int descriptor = openProcess(*entry->process);
    double journalled = start;
    for (bool ended = false; !ended && told == 0;) {
        waitAWhile(descriptor);
        ended = !isRunning(*entry->process);
        const double now = monotonicSeconds();
        if (!ended && told == 0 && now - journalled < journalInterval / 1000)
            continue;
        journalled = now;
        const FileLock lock(lockFile);
        const std::optional<SessionJournal::Entry> current = journal.read();
        if (current && current->owner != self)
            return EXIT_SUCCESS; // taken over
        entry->seconds = before + now - start;
        if (ended && store(*entry, settingsFolder)) {
            journal.clear();
            return EXIT_SUCCESS;
        }
        if (ended || told != 0)
            entry->owner = {};
        journal.write(*entry);
    }
    return EXIT_FAILURE;
}

} // namespace ludarium

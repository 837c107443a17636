#include "Host/AppLogger.h"

#include "Host/Async.h"
#include "Host/HostPaths.h"
#include "Host/LogRedactor.h"
#include "Host/SafeFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <condition_variable>
#include <cstdio>
#include <deque>
#include <mutex>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ludarium {

namespace {

/// Lines waiting for a disk that hangs may take this much memory; what comes after is dropped and counted.
constexpr qint64 maxPendingBytes = 64LL << 20;

QLatin1StringView levelText(LogLevel level) {
    switch (level) {
    case LogLevel::Debug:
        return QLatin1StringView("DEBUG");
    case LogLevel::Info:
        return QLatin1StringView("INFO");
    case LogLevel::Warning:
        return QLatin1StringView("WARN");
    case LogLevel::Error:
        return QLatin1StringView("ERROR");
    }
    return QLatin1StringView("ERROR");
}

QString timestamp() {
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
}

QString formattedLine(LogLevel level, const QString &message, const std::source_location &where) {
    const QByteArrayView file(where.file_name());
    return QLatin1Char('[') + timestamp() + QLatin1String("] [") + levelText(level) + QLatin1String("] [") +
           QString::fromUtf8(file.sliced(file.lastIndexOf('/') + 1)) + QLatin1Char(':') +
           QString::number(where.line()) + QLatin1String("] ") + singleLine(message) + QLatin1Char('\n');
}

QString banner() {
    const MachineInfo machine = MachineInfo::current();
    const QString rule(60, QLatin1Char('='));
#ifdef Q_OS_MACOS
    const QLatin1StringView systemLabel("macOS");
#else
    const QLatin1StringView systemLabel("System");
#endif
    const QStringList lines{
        QString(),
        rule,
        QStringLiteral("Ludarium Session Started"),
        rule,
        QLatin1String("Timestamp: ") + timestamp(),
        QStringLiteral("App Version: " LUDARIUM_VERSION " (" LUDARIUM_BUILD ")"),
        systemLabel + QLatin1String(": ") + machine.systemVersion,
        QLatin1String("Hardware: ") + machine.hardwareModel,
        QStringLiteral("Memory: %1 GB").arg(machine.memoryGigabytes, 0, 'f', 1),
        QLatin1String("Host: ") + machine.hostName,
        rule,
        QString(),
    };
    return lines.join(QLatin1Char('\n'));
}

bool writeFully(int descriptor, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), size_t(bytes.size()));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return true;
}

} // namespace

/// The queue and its one thread. Everything below "queue side" is touched by that thread only, which is the only lock
/// that the files need.
struct AppLogger::State {
    explicit State(QString logDirectory)
        : directory(std::move(logDirectory)), file(directory + QStringLiteral("/ludarium.log")) {
        enqueue([this] {
            QDir().mkpath(directory);
            openLogFile();
            writeToFile(banner());
        });
        thread = std::thread([this] { run(); });
    }

    ~State() { stop(); }

    /// Writes what is waiting and ends the thread. What is logged afterwards is dropped.
    void stop() {
        {
            const std::lock_guard lock(mutex);
            stopping = true;
        }
        wakeUp.notify_one();
        if (thread.joinable())
            thread.join();
        closeLogFile();
    }

    void enqueue(std::function<void()> job, qint64 size = 0) noexcept {
        try {
            {
                const std::lock_guard lock(mutex);
                if (stopping)
                    return;
                if (size > 0 && pendingBytes + size > maxPendingBytes) {
                    ++dropped;
                    return;
                }
                jobs.push_back({std::move(job), size});
                pendingBytes += size;
            }
            wakeUp.notify_one();
        } catch (...) {
            // Out of memory: the line is lost, the caller goes on.
        }
    }

    void log(LogLevel level, const QString &message, const std::source_location &where) noexcept {
        try {
            QString line = formattedLine(level, message, where);
            const qint64 size = line.size() * qint64(sizeof(QChar));
            enqueue([this, line = std::move(line)] { writeToFile(LogRedactor::redacted(line)); }, size);
        } catch (...) {
        }
    }

    /// Runs `job` on the queue after everything that was logged so far, and waits for it.
    void runAndWait(const std::function<void()> &job) {
        std::mutex doneMutex;
        std::condition_variable doneSignal;
        bool done = false;
        bool accepted = false;
        {
            const std::lock_guard lock(mutex);
            if (!stopping) {
                accepted = true;
                jobs.push_back({[&] {
                                    job();
                                    const std::lock_guard guard(doneMutex);
                                    done = true;
                                    doneSignal.notify_one();
                                },
                                0});
            }
        }
        if (!accepted)
            return;
        wakeUp.notify_one();
        std::unique_lock lock(doneMutex);
        doneSignal.wait(lock, [&] { return done; });
    }

    // --- queue side ---

    void run() {
        while (true) {
            Job job;
            qint64 lost = 0;
            {
                std::unique_lock lock(mutex);
                wakeUp.wait(lock, [this] { return stopping || !jobs.empty(); });
                if (jobs.empty())
                    return;
                job = std::move(jobs.front());
                jobs.pop_front();
                pendingBytes -= job.size;
                if (jobs.empty())
                    lost = std::exchange(dropped, 0);
            }
            try {
                job.work();
                if (lost > 0)
                    writeToFile(formattedLine(LogLevel::Warning,
                                              QStringLiteral("%1 lines were lost: the disk was too slow").arg(lost),
                                              std::source_location::current()));
            } catch (...) {
                // No failure of the log may end the program.
            }
        }
    }

    void openLogFile() {
        closeLogFile();
        // Appending at every write keeps the lines of two processes whole.
        descriptor = ::open(QFile::encodeName(file).constData(),
                            O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    }

    void closeLogFile() {
        if (descriptor >= 0)
            ::close(std::exchange(descriptor, -1));
    }

    void rotateLog() {
        closeLogFile();
        const QString old = file + QStringLiteral(".1");
        QFile::remove(old);
        QFile::rename(file, old);
        openLogFile();
    }

    void writeToFile(const QString &line) {
        const QByteArray bytes = line.toUtf8();
        if (mirror)
            writeFully(STDERR_FILENO, bytes);
        // By name, not by handle: another process may have rotated or removed the file.
        struct stat named {};
        struct stat opened {};
        const bool exists = ::stat(QFile::encodeName(file).constData(), &named) == 0;
        if (exists && named.st_size > maxLogSize)
            rotateLog();
        else if (descriptor < 0 || !exists || ::fstat(descriptor, &opened) != 0 || opened.st_ino != named.st_ino ||
                 opened.st_dev != named.st_dev)
            openLogFile();
        if (descriptor >= 0)
            writeFully(descriptor, bytes);
    }

    struct Job {
        std::function<void()> work;
        qint64 size = 0;
    };

    const QString directory;
    const QString file;
    std::atomic<bool> mirror = false;
    int descriptor = -1;

    std::mutex mutex;
    std::condition_variable wakeUp;
    std::deque<Job> jobs;
    qint64 pendingBytes = 0;
    qint64 dropped = 0;
    bool stopping = false;
    std::thread thread;
};

struct AppLogger::Shared {
    std::mutex mutex;
    AppLogger *logger = nullptr;
    std::weak_ptr<State> state;

    static Shared &instance() {
        // Never destroyed: threads may log while the program ends.
        static auto *shared = new Shared;
        return *shared;
    }

    /// Weakly held, so that a call that comes while the logger goes loses its line and nothing else.
    static void log(LogLevel level, const QString &message, const std::source_location &where) noexcept {
        std::shared_ptr<State> state;
        try {
            Shared &shared = instance();
            const std::lock_guard lock(shared.mutex);
            state = shared.state.lock();
        } catch (...) {
            return;
        }
        if (state)
            state->log(level, message, where);
    }
};

AppLogger *AppLogger::shared() {
    Shared &shared = Shared::instance();
    const std::lock_guard lock(shared.mutex);
    return shared.logger;
}

void AppLogger::setShared(AppLogger *logger) {
    Shared &shared = Shared::instance();
    const std::lock_guard lock(shared.mutex);
    shared.logger = logger;
    shared.state = logger ? logger->m_state : nullptr;
}

AppLogger::AppLogger(QString logDirectory) : m_state(std::make_shared<State>(std::move(logDirectory))) {}

AppLogger::~AppLogger() {
    if (shared() == this)
        setShared(nullptr);
    m_state->stop();
}

void AppLogger::log(LogLevel level, const QString &message, const std::source_location &where) {
    m_state->log(level, message, where);
}

void AppLogger::setMirrorToStandardError(bool mirror) {
    m_state->mirror = mirror;
}

QString AppLogger::logFile() const {
    return m_state->file;
}

QString AppLogger::text() {
    flush();
    QFile file(logFile());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QCoro::Task<QString> AppLogger::readAll() {
    const std::shared_ptr<State> state = m_state;
    auto read = [state] {
        QByteArray bytes;
        state->runAndWait([&] {
            QFile file(state->file);
            if (file.open(QIODevice::ReadOnly))
                bytes = file.readAll();
        });
        return QString::fromUtf8(bytes);
    };
    co_return co_await runOnPool(read);
}

void AppLogger::clearLogs() {
    State *state = m_state.get();
    state->enqueue([state] {
        state->closeLogFile();
        QFile::remove(state->file);
        state->openLogFile();
        state->writeToFile(banner());
    });
}

void AppLogger::flush() {
    m_state->runAndWait([] {});
}

namespace Log {
void debug(const QString &message, const std::source_location &where) {
    AppLogger::writeShared(LogLevel::Debug, message, where);
}
void info(const QString &message, const std::source_location &where) {
    AppLogger::writeShared(LogLevel::Info, message, where);
}
void warning(const QString &message, const std::source_location &where) {
    AppLogger::writeShared(LogLevel::Warning, message, where);
}
void error(const QString &message, const std::source_location &where) {
    AppLogger::writeShared(LogLevel::Error, message, where);
}
} // namespace Log

void AppLogger::writeShared(LogLevel level, const QString &message, const std::source_location &where) {
    Shared::log(level, message, where);
}

} // namespace ludarium

#include "Host/SqliteSettingsStore.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Host/SettingsDatabase.h"
#include "Host/SettingsGenerations.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ludarium {

// Whoever opens the store alone holds the lock file exclusively meanwhile: only then is it checked, restored and
// copied. While the store is in use, each of its processes shares the lock.

namespace {

constexpr int lockAttempts = 2000;
constexpr int lockPause = 10; // milliseconds
constexpr std::chrono::milliseconds lookInterval{700};

QString reasonOf(const std::exception &error) {
    return QString::fromUtf8(error.what());
}

/// Makes the file when there is none; SQLite would make it readable for everybody.
void makePrivate(const QString &file) {
    // A file that exists is not opened: closing it again would end the locks of another connection of this process.
    const QByteArray path = QFile::encodeName(file);
    const int descriptor = ::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor >= 0)
        ::close(descriptor);
    else if (errno != EEXIST)
        throw SqliteError(SQLITE_CANTOPEN, QString::fromLocal8Bit(std::strerror(errno)));
    else
        ::chmod(path.constData(), 0600);
}

} // namespace

SqliteSettingsStore::~SqliteSettingsStore() {
    m_watcher.reset();
    m_database.reset();
    if (m_lock >= 0)
        ::close(m_lock);
}

void SqliteSettingsStore::open() {
    m_problem.clear();
    try {
        if (!QFileInfo::exists(m_folder)) {
            if (!QDir().mkpath(m_folder))
                throw SqliteError(SQLITE_CANTOPEN, QString::fromLocal8Bit(std::strerror(errno)));
            QFile::setPermissions(m_folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        const bool alone = lock(true);
        if (!alone && !lock(false))
            throw SqliteError(SQLITE_BUSY, m_lock < 0 ? QString::fromLocal8Bit(std::strerror(errno))
                                                      : QStringLiteral("another process is opening them"));
        openFile(alone);
        if (alone) {
            keepGeneration();
            ::flock(m_lock, LOCK_SH);
        }
        watchOtherProcesses();
    } catch (const std::exception &error) {
        m_database.reset();
        m_problem = reasonOf(error);
        if (m_lock >= 0)
            ::flock(m_lock, LOCK_UN);
        Log::error(QStringLiteral("❌ The settings in %1 cannot be written: %2").arg(m_file, m_problem));
        readWithoutWriting();
    }
}

QString SqliteSettingsStore::notice() const {
    if (m_problem.isEmpty())
        return m_repair;
    return QStringLiteral("The settings cannot be saved: %1. What you change now holds until the program ends.\n\n%2")
        .arg(m_problem, m_file);
}

bool SqliteSettingsStore::lock(bool alone) {
    if (m_lock < 0)
        m_lock =
            ::open(QFile::encodeName(m_file + QStringLiteral(".lock")).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (m_lock < 0)
        return false;
    if (alone)
        return ::flock(m_lock, LOCK_EX | LOCK_NB) == 0;
    for (int attempt = 0; attempt < lockAttempts; ++attempt) {
        if (::flock(m_lock, LOCK_SH | LOCK_NB) == 0)
            return true;
        QThread::msleep(lockPause);
    }
    return false;
}

void SqliteSettingsStore::openFile(bool alone) {
    const QFileInfo info(m_file);
    const bool missing = !info.exists() || info.size() == 0;
    // A store that is gone although generations of it were kept was lost, perhaps between the steps of a restoration.
    if (alone && missing && !SettingsGenerations(m_file).all().isEmpty())
        restore(QStringLiteral("it is missing or empty"));

    try {
        load();
    } catch (const SqliteError &error) {
        m_database.reset();
        if (!error.isDamage())
            throw;
        if (repair(reasonOf(error)))
            return;
        if (!alone)
            throw;
        restore(reasonOf(error));
        load();
    }
}

void SqliteSettingsStore::load() {
    makePrivate(m_file);
    m_database = SettingsDatabase::open(m_file);
    m_values.clear();
    m_revision = 0;
    m_dataVersion = m_database->dataVersion();
    apply(m_database->changesSince(m_revision));
    m_readProblem.clear();
}

void SqliteSettingsStore::restore(const QString &damage) {
    Log::error(QStringLiteral("❌ The settings in %1 are damaged: %2").arg(m_file, damage));
    // What is to take the place of the damaged file is found before anything is moved.
    QByteArray image;
    QString source;
    for (const SettingsGenerations::Generation &generation : SettingsGenerations(m_file).all()) {
        try {
            image = generation.read();
            qint64 revision = 0;
            SettingsDatabase::fromImage(image)->changesSince(revision);
            source = generation.file;
            break;
        } catch (const std::exception &error) {
            image.clear();
            Log::error(
                QStringLiteral("❌ The kept settings in %1 are damaged too: %2").arg(generation.file, reasonOf(error)));
            setAsideCorrupt(generation.file);
        }
    }
    QString keptAside;
    for (const char *suffix : {"-wal", "-shm", ""}) {
        const QString part = m_file + QLatin1String(suffix);
        if (!QFileInfo::exists(part))
            continue;
        const QString aside = setAsideCorrupt(part);
        if (aside.isEmpty())
            throw SqliteError(SQLITE_CANTOPEN, QStringLiteral("the damaged file could not be set aside"));
        Log::info(QStringLiteral("The damaged file was set aside as %1").arg(aside));
        keptAside = QStringLiteral("\n\nThe damaged file was set aside as %1").arg(aside);
    }
    if (image.isEmpty()) {
        Log::warning(QStringLiteral("⚠️ No kept settings can be restored; the defaults hold"));
        m_repair =
            QStringLiteral("The settings were damaged and no kept copy could be read, so that they start anew.") +
            keptAside;
        return;
    }
    if (const QString problem = writeAtomically(m_file, image, true); !problem.isEmpty())
        throw SqliteError(SQLITE_CANTOPEN, problem);
    Log::warning(QStringLiteral("⚠️ The settings of %1 were restored").arg(source));
    m_repair =
        QStringLiteral("The settings were damaged. A kept copy took their place; what was changed since then may "
                       "be missing.") +
        keptAside;
}

void SqliteSettingsStore::readWithoutWriting() {
    m_values.clear();
    m_revision = 0;
    m_readProblem.clear();
    const auto take = [this](std::unique_ptr<SettingsDatabase> database) {
        m_revision = 0;
        apply(database->changesSince(m_revision));
    };
    struct stat info {};
    if (::lstat(QFile::encodeName(m_file).constData(), &info) != 0 && errno == ENOENT)
        return; // nothing was ever stored
    try {
        const QString log = m_file + QStringLiteral("-wal");
        if (QFileInfo(log).size() == 0)
            return take(SettingsDatabase::openReadOnly(m_file));
        // The newest values are still in the log, which SQLite cannot read without files beside it.
        const QTemporaryDir folder;
        const QString copy = folder.filePath(QStringLiteral("settings.sqlite"));
        if (QFile::copy(m_file, copy) && QFile::copy(log, copy + QStringLiteral("-wal"))) {
            QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
            QFile::setPermissions(copy + QStringLiteral("-wal"), QFile::ReadOwner | QFile::WriteOwner);
            return take(SettingsDatabase::open(copy));
        }
        m_readProblem = QStringLiteral("the newest changes are in %1, which cannot be read").arg(log);
        take(SettingsDatabase::openReadOnly(m_file));
    } catch (const std::exception &error) {
        m_values.clear();
        m_readProblem = reasonOf(error);
        Log::error(QStringLiteral("❌ The settings cannot be read: %1").arg(m_readProblem));
        if (const auto kept = newestGeneration(m_revision))
            apply(*kept);
    }
}

std::optional<QHash<QString, QVariant>> SqliteSettingsStore::newestGeneration(qint64 &revision) const {
    for (const SettingsGenerations::Generation &generation : SettingsGenerations(m_file).all()) {
        try {
            qint64 found = 0;
            const SettingsDatabase::Changes values =
                SettingsDatabase::fromImage(generation.read())->changesSince(found);
            Log::warning(QStringLiteral("⚠️ The settings of %1 are used").arg(generation.file));
            revision = found;
            return values;
        } catch (const std::exception &error) {
            Log::error(
                QStringLiteral("❌ The kept settings in %1 are damaged too: %2").arg(generation.file, reasonOf(error)));
        }
    }
    return std::nullopt;
}

void SqliteSettingsStore::keepGeneration() {
    SettingsGenerations generations(m_file);
    const QList<SettingsGenerations::Generation> kept = generations.all();
    if (m_revision == 0 || (!kept.isEmpty() && kept.constFirst().revision == m_revision))
        return;
    try {
        if (const QString problem = generations.keep(m_database->image(), m_revision); !problem.isEmpty())
            Log::warning(QStringLiteral("⚠️ No copy of the settings could be kept: %1").arg(problem));
    } catch (const SqliteError &error) {
        Log::warning(QStringLiteral("⚠️ No copy of the settings could be kept: %1").arg(reasonOf(error)));
    }
}

void SqliteSettingsStore::watchOtherProcesses() {
    if (!QCoreApplication::instance())
        return;
    // The log exists as long as the store is open, and every write of every process goes through it.
    const QString log = m_file + QStringLiteral("-wal");
    m_watcher = std::make_unique<QFileSystemWatcher>(QStringList{log});
    // The log is written before its change can be seen, a killed process touches nothing afterwards, and some file
    // systems tell of nothing at all. Asking whether anything has changed costs microseconds.
    m_look.callOnTimeout(this, [this] { noticeForeignChanges(); });
    m_look.start(lookInterval);
    connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, this, [this, log] {
        if (!m_watcher->files().contains(log))
            m_watcher->addPath(log); // made anew
        noticeForeignChanges();
    });
}

} // namespace ludarium

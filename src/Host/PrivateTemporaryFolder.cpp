#include "Host/PrivateTemporaryFolder.h"

#include "Host/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace ludarium {

namespace {

constexpr std::chrono::hours keptAfterLastChange{1};
constexpr char runPrefix[] = "run-";

/// Makes `folder`, or accepts the one that is there if it is a folder of this user and not a link. Returns an errno.
int claim(const QByteArray &folder) {
    if (::mkdir(folder.constData(), 0700) != 0 && errno != EEXIST)
        return errno;
    // Opened without following a link, so that owner and mode are those of the folder that was checked.
    const int fd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        return errno;
    struct stat info {};
    int error = 0;
    if (::fstat(fd, &info) != 0)
        error = errno;
    else if (info.st_uid != ::geteuid())
        error = EPERM;
    else if ((info.st_mode & 07777) != 0700 && ::fchmod(fd, 0700) != 0)
        error = errno;
    ::close(fd);
    return error;
}

/// The time of the last change anywhere in a folder, links not followed.
std::time_t lastChange(const QString &folder) {
    struct stat info {};
    if (::lstat(QFile::encodeName(folder).constData(), &info) != 0)
        return 0;
    std::time_t newest = info.st_mtime;
    if (S_ISDIR(info.st_mode))
        for (const QString &name : listFolder(folder).value_or(QStringList()))
            newest = std::max(newest, lastChange(folder + u'/' + name));
    return newest;
}

void sweep(const QString &base) {
    const std::time_t now = std::time(nullptr);
    const std::time_t kept = std::chrono::seconds(keptAfterLastChange).count();
    for (const QString &name : listFolder(base).value_or(QStringList())) {
        if (!name.startsWith(QLatin1StringView(runPrefix)))
            continue;
        const QString run = base + u'/' + name;
        const int fd = ::open(QFile::encodeName(run).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (fd < 0)
            continue;
        // A living run holds the lock; the system drops it however the run ended.
        if (::flock(fd, LOCK_EX | LOCK_NB) == 0 && now - lastChange(run) > kept)
            removeInside(base, run);
        ::close(fd);
    }
}

} // namespace

PrivateTemporaryFolder::PrivateTemporaryFolder(QStringList parents) : m_parents(std::move(parents)) {}

PrivateTemporaryFolder::~PrivateTemporaryFolder() {
    close();
}

void PrivateTemporaryFolder::close() {
    if (m_lock < 0)
        return;
    ::rmdir(QFile::encodeName(m_path).constData());
    ::close(m_lock);
    m_lock = -1;
    m_path.clear();
}

QString PrivateTemporaryFolder::path() {
    const std::lock_guard guard(m_mutex);
    if (!m_path.isEmpty() && ::access(QFile::encodeName(m_path).constData(), F_OK) == 0)
        return m_path;
    close();

    int error = ENOENT;
    QString refused;
    for (const QString &parent : m_parents) {
        const QString base = QStringLiteral("%1/ludarium-%2").arg(parent).arg(::geteuid());
        refused = base;
        QDir().mkpath(parent);
        error = claim(QFile::encodeName(base));
        if (error != 0)
            continue;
        QByteArray run = QFile::encodeName(base) + '/' + runPrefix + "XXXXXX";
        if (::mkdtemp(run.data()) == nullptr) {
            error = errno;
            continue;
        }
        m_lock = ::open(run.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (m_lock < 0) {
            error = errno;
            continue;
        }
        ::flock(m_lock, LOCK_EX | LOCK_NB);
        m_path = QFile::decodeName(run);
        sweep(base);
        return m_path;
    }
    throw std::system_error(error, std::generic_category(), refused.toStdString());
}

} // namespace ludarium

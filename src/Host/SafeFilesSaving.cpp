#include "Host/SafeFiles.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace ludarium {

namespace {

/// Flushes to the medium. Returns an errno; what cannot be flushed at all (some network and FUSE file systems) is not
/// an error.
int flush(int fd) {
#ifdef Q_OS_MACOS
    // fsync() leaves the data in the drive's cache there.
    if (::fcntl(fd, F_FULLFSYNC) == 0)
        return 0;
#endif
    if (::fsync(fd) == 0 || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS)
        return 0;
    return errno;
}

int flushFolder(const QByteArray &folder) {
    const int fd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return errno == EACCES ? 0 : errno; // a folder that may be written but not read
    const int error = flush(fd);
    ::close(fd);
    return error;
}

int writeAll(int fd, const QByteArray &data) {
    qsizetype done = 0;
    while (done < data.size()) {
        const ssize_t written = ::write(fd, data.constData() + done, static_cast<std::size_t>(data.size() - done));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return errno;
        if (written == 0)
            return ENOSPC;
        done += written;
    }
    return 0;
}

/// Returns an errno, 0 on success.
int replaceFile(const QString &path, const QByteArray &data, bool privateFile) {
    if (path.isEmpty() || path.contains(QChar(u'\0')))
        return EINVAL;
    const QByteArray target = QFile::encodeName(path);
    const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    struct stat old {};
    const bool exists = ::lstat(target.constData(), &old) == 0 && S_ISREG(old.st_mode);

    QByteArray temporary;
    int fd = -1;
    for (int attempt = 0; fd < 0 && attempt < 100; ++attempt) {
        // A name of its own, not one made from the target's, which may be as long as names can be.
        temporary = folder + "/.ludarium-" + QByteArray::number(QRandomGenerator::system()->generate64(), 36);
        fd = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                    privateFile ? 0600 : 0666);
        if (fd < 0 && errno != EEXIST)
            return errno;
    }
    if (fd < 0)
        return EEXIST;
    if (exists && !privateFile)
        ::fchmod(fd, old.st_mode & 07777); // volumes without permissions refuse, which is no loss
    int error = writeAll(fd, data);
    if (error == 0)
        error = flush(fd);
    // Network volumes and quotas report a failed write as late as here.
    if (::close(fd) != 0 && error == 0)
        error = errno;
    if (error == 0 && ::rename(temporary.constData(), target.constData()) != 0)
        error = errno;
    if (error != 0) {
        ::unlink(temporary.constData());
        return error;
    }
    return flushFolder(folder);
}

/// Renames unless `to` exists. Returns an errno.
int renameWithoutReplacing(const QByteArray &from, const QByteArray &to) {
#ifdef Q_OS_MACOS
    if (::renamex_np(from.constData(), to.constData(), RENAME_EXCL) == 0)
        return 0;
#else
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
#endif
    if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP)
        return errno;
    // A volume without that call.
    struct stat info {};
    if (::lstat(to.constData(), &info) == 0)
        return EEXIST;
    return ::rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}

} // namespace

QString writeAtomically(const QString &path, const QByteArray &data, bool privateFile) {
    const int error = replaceFile(path, data, privateFile);
    return error == 0 ? QString() : qt_error_string(error);
}

void writeAtomicallyOrThrow(const QString &path, const QByteArray &data, bool privateFile) {
    if (const int error = replaceFile(path, data, privateFile))
        throw std::system_error(error, std::generic_category(), path.toStdString());
}

QString setAsideCorrupt(const QString &path) {
    const QString stem =
        path + QStringLiteral(".corrupt-") + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    for (int number = 1; number < 1000; ++number) {
        const QString aside = number == 1 ? stem : QStringLiteral("%1-%2").arg(stem).arg(number);
        const int error = renameWithoutReplacing(QFile::encodeName(path), QFile::encodeName(aside));
        if (error == EEXIST)
            continue;
        if (error != 0)
            return {};
        flushFolder(QFile::encodeName(QFileInfo(path).path()));
        return aside;
    }
    return {};
}

} // namespace ludarium

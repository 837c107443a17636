#include "Host/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ludarium {

namespace {

QString reason(int error) {
    return qt_error_string(error);
}

/// Mount points in the machine's table; spaces and backslashes stand there as "\040" and "\134". Empty where there is
/// no such table: the device numbers then have to do.
QList<QByteArray> mountPoints() {
    QFile table(QStringLiteral("/proc/self/mountinfo"));
    if (!table.open(QIODevice::ReadOnly))
        return {};
    QList<QByteArray> points;
    for (const QByteArray &line : table.readAll().split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() < 5)
            continue;
        QByteArray point;
        const QByteArray &text = fields[4];
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (text[i] == '\\' && i + 3 < text.size()) {
                point += static_cast<char>(text.mid(i + 1, 3).toInt(nullptr, 8));
                i += 3;
            } else {
                point += text[i];
            }
        }
        points << point;
    }
    return points;
}

/// Whether the file `target` is `path` or a folder above it. By identity, so that another spelling on a volume that
/// ignores case, or a link, is seen through.
bool holds(const struct stat &target, const QString &path) {
    QString folder = QFileInfo(path).canonicalFilePath();
    while (!folder.isEmpty()) {
        struct stat info {};
        if (::stat(QFile::encodeName(folder).constData(), &info) == 0 && info.st_dev == target.st_dev &&
            info.st_ino == target.st_ino)
            return true;
        if (folder == u'/')
            break;
        folder = QFileInfo(folder).path();
    }
    return false;
}

/// Removes the entry `name` of the open folder `parent`. No step of the walk follows a link, also when one takes a
/// folder's place meanwhile: folders are opened from their parent's descriptor. Returns an errno.
int removeEntry(int parent, const char *name, dev_t device) {
    struct stat info {};
    if (::fstatat(parent, name, &info, AT_SYMLINK_NOFOLLOW) != 0)
        return errno;
    if (!S_ISDIR(info.st_mode))
        return ::unlinkat(parent, name, 0) == 0 ? 0 : errno;
    if (info.st_dev != device)
        return EBUSY;
    // An archive may hold folders without write permission; ours to remove all the same.
    if ((info.st_mode & S_IRWXU) != S_IRWXU)
        ::fchmodat(parent, name, (info.st_mode & 07777) | S_IRWXU, 0);
    const int fd = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        return errno;
    DIR *stream = ::fdopendir(fd);
    if (stream == nullptr) {
        const int error = errno;
        ::close(fd);
        return error;
    }
    // Names first: removing while reading skips entries on some file systems.
    QList<QByteArray> names;
    while (const dirent *entry = ::readdir(stream))
        if (QByteArrayView(entry->d_name) != "." && QByteArrayView(entry->d_name) != "..")
            names << entry->d_name;
    int error = 0;
    for (const QByteArray &entry : names)
        if (error = removeEntry(fd, entry.constData(), device); error != 0)
            break;
    ::closedir(stream);
    if (error != 0)
        return error;
    return ::unlinkat(parent, name, AT_REMOVEDIR) == 0 ? 0 : errno;
}

} // namespace

QString removeInside(const QString &base, const QString &path, const QStringList &protectedPaths) {
    if (!QDir::isAbsolutePath(base) || !QDir::isAbsolutePath(path) || path.contains(QChar(u'\0')))
        return reason(EINVAL);
    const QStringList components = path.split(u'/', Qt::SkipEmptyParts);
    if (components.isEmpty() || components.contains(QStringLiteral("..")) || components.contains(QStringLiteral(".")))
        return reason(EINVAL);
    const QString name = components.last();
    if (!isDeletableName(name))
        return reason(EPERM);

    const QString parentText = u'/' + components.first(components.size() - 1).join(u'/');
    const QString canonicalBase = QFileInfo(base).canonicalFilePath();
    const QString canonicalParent = QFileInfo(parentText).canonicalFilePath();
    if (canonicalBase.isEmpty() || canonicalParent.isEmpty())
        return reason(ENOENT);
    if (canonicalParent != canonicalBase && canonicalBase != u"/" && !canonicalParent.startsWith(canonicalBase + u'/'))
        return reason(EPERM);

    const int parent = ::open(QFile::encodeName(canonicalParent).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (parent < 0)
        return reason(errno);
    const QByteArray entry = QFile::encodeName(name);
    struct stat target {};
    struct stat folder {};
    int error = 0;
    if (::fstatat(parent, entry.constData(), &target, AT_SYMLINK_NOFOLLOW) != 0 || ::fstat(parent, &folder) != 0) {
        error = errno;
    } else if (!S_ISLNK(target.st_mode)) {
        const QByteArray full = QFile::encodeName(canonicalParent == u"/" ? QString() : canonicalParent) + '/' + entry;
        // Folders only: a layered file system gives its files device numbers of their own.
        if (S_ISDIR(target.st_mode) && target.st_dev != folder.st_dev)
            error = EBUSY;
        for (const QByteArray &point : mountPoints())
            if (point == full || point.startsWith(full + '/'))
                error = EBUSY;
        for (const QString &kept : QStringList{base, QDir::homePath()} + protectedPaths)
            if (holds(target, kept))
                error = EPERM;
    }
    if (error == 0)
        error = removeEntry(parent, entry.constData(), folder.st_dev);
    ::close(parent);
    return error == 0 ? QString() : reason(error);
}

} // namespace ludarium

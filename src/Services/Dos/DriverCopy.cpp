#include "Services/Dos/DriverCopy.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Services/Dos/FolderView.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

const QString copyPrefix = u".ludarium-"_s;
const QString copySuffix = u".new"_s;

QString systemReason() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// Waits until a written file, or the names of a folder, are on the disk.
bool flush(const QString &path) {
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool done = ::fsync(descriptor) == 0;
    ::close(descriptor);
    return done;
}

bool renameOver(const QString &from, const QString &to) {
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

bool isRealFolder(const QString &path) {
    const QFileInfo info(path);
    return info.isDir() && !info.isSymLink();
}

bool sameContent(const QString &one, const QString &other) {
    const QFileInfo a(one), b(other);
    if (!a.isFile() || !b.isFile() || a.size() != b.size())
        return false;
    QFile first(one), second(other);
    if (!first.open(QIODevice::ReadOnly) || !second.open(QIODevice::ReadOnly))
        return false;
    constexpr qint64 piece = 1 << 16;
    while (!first.atEnd())
        if (first.read(piece) != second.read(piece))
            return false;
    return first.error() == QFileDevice::NoError && second.error() == QFileDevice::NoError;
}

/// The entry of a folder that DOS takes for `name`; `name` itself when there is none.
QString presentName(const QString &folder, const QString &name) {
    const QStringList names = listFolder(folder).value_or(QStringList());
    if (names.contains(name))
        return name;
    for (const QString &other : names)
        if (other.compare(name, Qt::CaseInsensitive) == 0)
            return other;
    return name;
}

/// Whether the content of a file lies in a folder beside it under the same name, as it does after a switch from one
/// sound card's drivers to another's.
bool liesInDriverFolder(const QString &path) {
    const QString folder = parentPath(path), name = lastPathComponent(path);
    for (const QString &other : listFolder(folder).value_or(QStringList())) {
        const QString below = childPath(folder, other);
        if (isRealFolder(below) && sameContent(path, childPath(below, presentName(below, name))))
            return true;
    }
    return false;
}

/// Makes sure that the item at `path` outlives its replacement. Returns why that failed.
QString keep(const QString &path) {
    const bool isFolder = isRealFolder(path);
    if (!isFolder && (QFileInfo(path).isSymLink() || liesInDriverFolder(path)))
        return {};
    for (int number = 1;; ++number) {
        const QString kept = path + u".kept"_s + (number > 1 ? QString::number(number) : QString());
        if (QFileInfo::exists(kept) || QFileInfo(kept).isSymLink()) {
            if (!isFolder && sameContent(path, kept))
                return {};
            continue;
        }
        // A second name leaves the first in its place until the new file takes it. Not every file system has them.
        if (!isFolder && ::link(QFile::encodeName(path).constData(), QFile::encodeName(kept).constData()) == 0) {
            flush(parentPath(kept));
        } else if (!renameOver(path, kept)) {
            return systemReason();
        }
        Log::info(u"   %1 differs from its replacement and is kept as %2"_s.arg(path, lastPathComponent(kept)));
        return {};
    }
}

/// A copy of a file beside its target, whole and on the disk. `made` names it; the result is why it failed.
QString copyBeside(const QString &source, const QString &target, QString &made) {
    made = childPath(parentPath(target), copyPrefix + QString::number(::getpid()) + u'-' +
                                             QUuid::createUuid().toString(QUuid::Id128).left(12) + copySuffix);
    QFile file(source);
    if (!file.copy(made))
        return file.errorString();
    // A collection on read-only media hands its permissions on; the next launch has to replace the copy again.
    QFile::setPermissions(made, QFile::permissions(made) | QFileDevice::WriteOwner);
    if (QFileInfo(made).size() != QFileInfo(source).size())
        return u"%1 was not copied whole"_s.arg(source);
    return flush(made) ? QString() : systemReason();
}

QString replaceFile(const QString &source, const QString &target) {
    if (!QFileInfo(source).isFile())
        return u"%1 is not a regular file"_s.arg(source);
    if (!QFileInfo(target).isSymLink() && sameContent(source, target))
        return {};
    QString made;
    QString problem = copyBeside(source, target, made);
    if (problem.isEmpty() && QFileInfo::exists(target))
        problem = keep(target);
    if (problem.isEmpty() && !renameOver(made, target))
        problem = systemReason();
    if (problem.isEmpty())
        flush(parentPath(target));
    else
        QFile::remove(made);
    return problem;
}

} // namespace

QString copyOver(const QString &source, const QString &target) {
    if (!QFileInfo(source).isDir())
        return replaceFile(source, target);
    const QFileInfo present(target);
    if (present.isSymLink()) {
        // Removed, not followed: what it leads to is none of the game's.
        if (::unlink(QFile::encodeName(target).constData()) != 0)
            return systemReason();
    } else if (present.exists() && !present.isDir()) {
        if (const QString problem = keep(target); !problem.isEmpty())
            return problem;
        QFile::remove(target);
    }
    if (!isRealFolder(target) && !QDir().mkdir(target))
        return systemReason();
    sweepCopies(target);
    const std::optional<QStringList> names = listFolder(source);
    if (!names)
        return u"%1 cannot be listed"_s.arg(source);
    for (const QString &name : *names) {
        const QString item = childPath(source, name);
        if (QFileInfo(item).isSymLink())
            continue;
        if (const QString problem = copyOver(item, childPath(target, presentName(target, name))); !problem.isEmpty())
            return problem;
    }
    return {};
}

void sweepCopies(const QString &folder) {
    for (const QString &name : listFolder(folder).value_or(QStringList())) {
        if (!name.startsWith(copyPrefix) || !name.endsWith(copySuffix))
            continue;
        // Another program of ours may be at work on the same folder.
        const qint64 maker = name.mid(copyPrefix.size()).section(u'-', 0, 0).toLongLong();
        if (name.count(u'-') > 1 && maker > 0 && (::kill(pid_t(maker), 0) == 0 || errno == EPERM))
            continue;
        if (const QString problem = removeInside(folder, childPath(folder, name)); !problem.isEmpty())
            Log::warning(u"%1 stays behind: %2"_s.arg(name, problem));
    }
}

} // namespace ludarium

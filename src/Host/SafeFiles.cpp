#include "Host/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ludarium {

namespace {

constexpr qsizetype longestName = 255; // bytes on disk, of every file system that matters here

bool isDriveLetter(const QString &text) {
    return text.size() >= 2 && text[1] == u':' && text[0].unicode() < 128 && text[0].isLetter();
}

bool isSeparator(QChar character) {
    return character == u'/' || character == u'\\';
}

/// Whether `path` is `folder` or lies below it; both canonical.
bool isWithin(const QByteArray &path, const QByteArray &folder) {
    return path == folder || folder == "/" || path.startsWith(folder + '/');
}

} // namespace

bool isSafeName(const QString &name) {
    if (name.isEmpty() || name == u"." || name == u"..")
        return false;
    for (const QChar character : name)
        if (isSeparator(character) || character.category() == QChar::Other_Control)
            return false;
    return QFile::encodeName(name).size() <= longestName;
}

bool isDeletableName(const QString &name) {
    return isSafeName(name) && !name.startsWith(u'!');
}

QStringList pathComponents(const QString &windowsPath) {
    QString text = windowsPath;
    return text.replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts);
}

std::optional<QString> pathInside(const QString &base, const QStringList &components) {
    if (base.isEmpty() || base.contains(QChar(u'\0')) || components.isEmpty())
        return std::nullopt;
    for (const QString &component : components)
        if (!isSafeName(component))
            return std::nullopt;

    // The base may be a link, and may still have to be made: then nothing below it can lead away.
    const QByteArray canonicalBase = QFile::encodeName(QFileInfo(base).canonicalFilePath());
    if (!canonicalBase.isEmpty()) {
        QByteArray folder = canonicalBase;
        for (const QString &component : components.first(components.size() - 1)) {
            folder = (folder == "/" ? QByteArray() : folder) + '/' + QFile::encodeName(component);
            struct stat info {};
            if (::lstat(folder.constData(), &info) != 0) {
                if (errno == ENOENT)
                    break;
                return std::nullopt;
            }
            if (!S_ISLNK(info.st_mode))
                continue;
            const std::unique_ptr<char, decltype(&std::free)> target(::realpath(folder.constData(), nullptr),
                                                                     &std::free);
            if (!target || !isWithin(target.get(), canonicalBase))
                return std::nullopt;
            folder = target.get();
        }
    }
    QString path = base;
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return (path == u'/' ? QString() : path) + u'/' + components.join(u'/');
}

std::optional<QString> pathInside(const QString &base, const QString &relative) {
    if (relative.isEmpty() || isSeparator(relative[0]) || isDriveLetter(relative))
        return std::nullopt;
    QStringList components = pathComponents(relative);
    components.removeAll(QStringLiteral("."));
    return pathInside(base, components);
}

std::optional<QByteArray> readSmallFile(const QString &path, qint64 limit) {
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return std::nullopt;
    std::optional<QByteArray> result;
    struct stat info {};
    QFile file;
    if (::fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode) && info.st_size <= limit &&
        file.open(descriptor, QIODevice::ReadOnly, QFileDevice::DontCloseHandle)) {
        const QByteArray bytes = file.read(limit);
        if (file.error() == QFileDevice::NoError)
            result = bytes;
    }
    ::close(descriptor);
    return result;
}

std::optional<QStringList> listFolder(const QString &folder) {
    DIR *stream = ::opendir(QFile::encodeName(folder).constData());
    if (stream == nullptr)
        return std::nullopt;
    QStringList names;
    while (const dirent *entry = ::readdir(stream)) {
        const QByteArrayView name(entry->d_name);
        if (name != "." && name != "..")
            names << QFile::decodeName(entry->d_name);
    }
    ::closedir(stream);
    return names;
}

} // namespace ludarium

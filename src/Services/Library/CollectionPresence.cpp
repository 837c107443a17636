#include "Services/Library/CollectionPresence.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <dirent.h>
#include <sys/stat.h>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array parts{"Data"_L1, "xml"_L1, "eXo"_L1, "Content"_L1, "Images"_L1, "Videos"_L1, "Manuals"_L1};

enum class Holding { nothing, something, error };

/// Whether a folder has an entry; what file systems make by themselves does not count. `errno` tells of an error.
Holding holding(const QString &folder) {
    DIR *const stream = ::opendir(QFile::encodeName(folder).constData());
    if (stream == nullptr)
        return Holding::error;
    Holding found = Holding::nothing;
    errno = 0;
    while (const dirent *entry = ::readdir(stream)) {
        const std::string_view name(entry->d_name);
        if (name != "." && name != ".." && name != "lost+found" && !name.starts_with(".Trash")) {
            found = Holding::something;
            break;
        }
    }
    const int error = errno;
    ::closedir(stream);
    errno = error;
    return found == Holding::nothing && error != 0 ? Holding::error : found;
}

bool isNamed(const QString &path) {
    struct stat info {};
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0;
}

/// Null when the folder can be listed and is not empty.
QString problem(const QString &folder) {
    switch (holding(folder)) {
    case Holding::something:
        return {};
    case Holding::nothing:
        return u"The folder %1 is empty."_s.arg(folder);
    case Holding::error:
        break;
    }
    const int error = errno;
    if (error == ENOENT)
        return u"The folder %1 is not there."_s.arg(folder);
    return u"The folder %1 cannot be read: %2."_s.arg(folder, qt_error_string(error));
}

/// The same of a folder that a collection need not have.
QString problemOfPart(const QString &folder) {
    return isNamed(folder) ? problem(folder) : QString();
}

} // namespace

CollectionPresence CollectionPresence::look(const QString &collection) {
    CollectionPresence presence;
    presence.collection = problem(collection);
    if (presence.isAway())
        return presence;
    if (std::none_of(parts.begin(), parts.end(),
                     [&](QLatin1StringView part) { return isNamed(collection + u'/' + part); })) {
        presence.collection = u"The folder %1 holds no collection."_s.arg(collection);
        presence.holdsOther = true;
        return presence;
    }
    const QString games = problemOfPart(collection + u"/eXo"_s);
    for (int i = 0; i < gameFamilyCount; ++i)
        presence.families[static_cast<size_t>(i)] =
            !games.isNull() ? games : problemOfPart(collection + u'/' + gameFamilyFolder(static_cast<GameFamily>(i)));
    return presence;
}

} // namespace ludarium

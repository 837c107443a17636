#include "Services/Launch/VideoFolder.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Models/LaunchError.h"

#include <QFileInfo>
#include <algorithm>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

QStringList listOrThrow(const QString &folder) {
    std::optional<QStringList> names = listFolder(folder);
    if (!names)
        throw LaunchError(LaunchError::Case::fileNotFound, u"Cannot access video folder: %1"_s.arg(folder));
    return *std::move(names);
}

/// {root}/{name} when that is a folder and the name is fit to be one; empty otherwise.
QString folderInRoot(const QString &root, const QString &name) {
    const QString path = root + u'/' + name;
    return isSafeName(name) && QFileInfo(path).isDir() ? path : QString();
}

/// The piece behind "Videos" in a path of the record.
QString pieceBehindVideos(const QString &path) {
    const QStringList pieces = pathComponents(path);
    const qsizetype videos = pieces.indexOf(u"Videos"_s);
    return videos < 0 ? QString() : pieces.value(videos + 1);
}

QString byListing(const QString &root, const QString &title) {
    const QStringList names = listOrThrow(root);
    QString wanted = title;
    wanted.remove(u" (Redux)"_s).remove(u" [Redux]"_s);
    wanted = wanted.trimmed();
    const QString wantedLower = wanted.toLower();
    // An empty name would fit everything.
    if (!wanted.isEmpty()) {
        const auto first = [&](const auto &fits) {
            for (const QString &name : names)
                if (fits(name))
                    if (const QString folder = folderInRoot(root, name); !folder.isEmpty())
                        return folder;
            return QString();
        };
        QString folder = first([&](const QString &name) { return name == wanted; });
        if (folder.isEmpty())
            folder = first([&](const QString &name) { return name.startsWith(wanted); });
        if (folder.isEmpty())
            folder = first([&](const QString &name) { return name.toLower().contains(wantedLower); });
        if (!folder.isEmpty())
            return folder;
    }
    for (const QString &name : names.first(std::min<qsizetype>(10, names.size())))
        Log::info(u"      - %1"_s.arg(name));
    throw LaunchError(LaunchError::Case::fileNotFound, u"Video folder not found for: %1"_s.arg(title));
}

} // namespace

QString VideoFolder::script() const {
    for (const QString &ending : {u".bsh"_s, u".command"_s})
        for (const QString &name : contents)
            if (name.endsWith(ending))
                return path + u'/' + name;
    return {};
}

VideoFolder VideoFolder::find(const Game &game, const QString &collection) {
    const QString root = collection + u"/eXo/Videos"_s;
    QString folder = folderInRoot(root, game.title);
    for (const QString &path : {game.applicationPath, game.configurationPath})
        if (folder.isEmpty())
            folder = folderInRoot(root, pieceBehindVideos(path));
    if (folder.isEmpty())
        folder = byListing(root, game.title);
    return {folder, listOrThrow(folder)};
}

} // namespace ludarium

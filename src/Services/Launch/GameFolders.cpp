#include "Services/Launch/GameFolders.h"

#include "Host/SafeFiles.h"
#include "Services/Dos/FolderView.h"
#include "Services/Launch/LaunchRoute.h"

#include <QFileInfo>

namespace ludarium::GameFolders {

using namespace Qt::StringLiterals;

QString asOnDisk(const QString &folder, const QString &collection) {
    if (folder.isEmpty() || QFileInfo::exists(folder))
        return folder;
    FolderView view;
    const QString found = view.resolve(collection, folder.mid(collection.size() + 1));
    return found.isNull() ? folder : found;
}

bool leadsOutOfCollection(const QString &folder, const QString &collection) {
    const QString real = QFileInfo(folder).canonicalFilePath();
    if (real.isEmpty())
        return false;
    // The folder of all games may be a link to another disk; a game in it then lies where that leads.
    for (const QString &base : {collection, parentPath(folder)})
        if (const QString home = QFileInfo(base).canonicalFilePath(); !home.isEmpty() && real.startsWith(home + u'/'))
            return false;
    return true;
}

QString extractGameFolderName(const QString &path) {
    const QStringList pieces = pathComponents(path);
    for (qsizetype i = 0; i + 1 < pieces.size(); ++i)
        if (pieces.at(i).startsWith(u'!'))
            return pieces.at(i + 1);
    if (pieces.size() < 2 || !pieces.last().contains(u'.'))
        return {};
    return pieces.at(pieces.size() - 2);
}

QString scriptFolder(const QString &path, const QString &collection) {
    QString text = path;
    text.replace(u'\\', u'/');
    // A path that ends in "/" has an empty last piece, so its folder stays even when that has a ".".
    const qsizetype lastPiece = text.lastIndexOf(u'/') + 1;
    if (text.indexOf(u'.', lastPiece) >= 0)
        text.truncate(lastPiece);
    QString folder = collection;
    for (const QString &piece : pathComponents(text)) {
        if (piece == u"."_s)
            continue;
        if (!isSafeName(piece))
            return {};
        folder += u'/' + piece;
    }
    return asOnDisk(folder, collection);
}

static QString dataFolderOfRecord(const Game &game, const QString &collection) {
    const QString name = extractGameFolderName(game.configurationPath);
    if (!isSafeName(name))
        return {};
    const QString root = collection + u"/eXo/"_s;
    switch (setupRoute(game)) {
    case LaunchRoute::scummVM: {
        QString family = u"eXoScummVM"_s;
        for (const QString &piece : pathComponents(game.configurationPath)) {
            if (piece.startsWith(family) && isSafeName(piece)) {
                family = piece;
                break;
            }
        }
        return root + family + u'/' + name;
    }
    case LaunchRoute::dreamm:
        return root + u"eXoDREAMM/"_s + name;
    case LaunchRoute::windows3x:
        return root + u"eXoWin3x/"_s + name;
    case LaunchRoute::windows9x:
        return game.releaseYear ? root + u"eXoWin9x/%1/"_s.arg(*game.releaseYear) + name : root + u"eXoWin9x/"_s + name;
    case LaunchRoute::appleIIGS:
        return root + u"eXoAppleIIGS/"_s + name;
    default:
        return root + u"eXoDOS/"_s + name;
    }
}

QString dataFolder(const Game &game, const QString &collection) {
    const QString folder = asOnDisk(dataFolderOfRecord(game, collection), collection);
    return leadsOutOfCollection(folder, collection) ? QString() : folder;
}

} // namespace ludarium::GameFolders

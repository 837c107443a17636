#include "Services/Library/BatchFiles.h"

#include "Host/SafeFiles.h"
#include "Models/Platform.h"
#include "Models/RecordEncoder.h"
#include "Services/Collections/ExoCollectionType.h"
#include "Services/Launch/GameFolders.h"
#include "Services/Library/MetadataIndexes.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <nlohmann/json.hpp>

namespace ludarium::BatchFiles {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype longestName = 255; // bytes, of Linux and macOS file systems

bool isYear(const QString &name) {
    return name.size() == 4 && std::all_of(name.cbegin(), name.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool leadsOut(const QString &folder, const QString &collection) {
    return QFileInfo(folder).isSymLink() &&
           !QFileInfo(folder).canonicalFilePath().startsWith(QFileInfo(collection).canonicalFilePath() + u'/');
}

} // namespace

QString removableFolder(const Game &game, const QString &collection) {
    // These always count as installed, and the folder that their paths name can be another game's.
    if (Platform::named(game.platform, {}).isROMPlatform() || isContentPlatform(game.platform))
        return {};
    const QString folder = GameFolders::dataFolder(game, collection);
    const QString name = folder.sliced(folder.lastIndexOf(u'/') + 1);
    if (!isDeletableName(name) || leadsOut(folder, collection))
        return {};
    // The set of Windows 9x games keeps them in a folder for each year, which is what the path of such a game names
    // first.
    const bool inYears = folder == collection + u"/eXo/eXoWin9x/"_s + name;
    return inYears && isYear(name) ? QString() : folder;
}

QString removeFolder(const QString &folder, const QString &collection) {
    QStringList kept{collection, collection + u"/eXo"_s, collection + u"/Content"_s};
    for (const ExoCollection &set : ExoCollection::all()) {
        const QString scripts = collection + u'/' + set.scriptFolder;
        kept += {scripts, QFileInfo(scripts).path()};
    }
    return removeInside(collection, folder, kept);
}

QString exportName(const QString &title) {
    const QString ending = u".json"_s;
    QString name = singleLine(title);
    name.replace(u'/', u'-').replace(u'\\', u'-');
    if (QFile::encodeName(name + ending).size() <= longestName)
        return name + ending;
    const QByteArray digest = QCryptographicHash::hash(title.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    const QString behind = u'_' + QString::fromLatin1(digest) + ending;
    // Cut between characters, never inside a surrogate pair.
    while (QFile::encodeName(name).size() + behind.size() > longestName)
        name.chop(name.size() > 1 && name.back().isLowSurrogate() ? 2 : 1);
    return name + behind;
}

QString exportGame(const Game &game, const QString &folder) {
    QByteArray record;
    appendJson(record, game);
    // An ordered document keeps the keys in the order of the record.
    const auto document = nlohmann::ordered_json::parse(record.toStdString());
    const std::string text = document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
    if (!QDir().mkpath(folder))
        return u"The folder %1 could not be made"_s.arg(folder);
    const std::optional<QString> path = pathInside(folder, {exportName(game.title)});
    if (!path)
        return u"\"%1\" cannot be a file name"_s.arg(singleLine(game.title));
    return writeAtomically(*path, QByteArray::fromStdString(text));
}

} // namespace ludarium::BatchFiles

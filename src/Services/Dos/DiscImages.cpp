#include "Services/Dos/DiscImages.h"

#include "Host/SafeFiles.h"
#include "Models/LaunchError.h"
#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/DosNames.h"
#include "Services/Dos/GuestDrives.h"

#include <QCollator>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <optional>
#include <vector>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

/// All digits of a name read as one number: "Disc 2 of 3.cue" gives 23.
std::optional<qlonglong> digitsOf(const QString &name) {
    QString digits;
    for (const QChar c : name)
        if (c.isDigit())
            digits.append(c);
    bool ok = false;
    const qlonglong number = digits.toLongLong(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

QStringList inDiscOrder(const QStringList &names) {
    // A fixed locale: the C locale of a bare session has no numeric order.
    QCollator collator{QLocale(QLocale::English, QLocale::UnitedStates)};
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    struct Item {
        QString name;
        std::optional<qlonglong> number;
        QCollatorSortKey key;
    };
    const auto before = [](const Item &a, const Item &b) {
        if (a.number && b.number && *a.number != *b.number)
            return *a.number < *b.number;
        const int order = a.key.compare(b.key);
        return order != 0 ? order < 0 : a.name < b.name;
    };
    // Numbered and unnumbered names together can stand in a circle ("x3" before "b10" before "c" before "x3"), which
    // the sorts of the standard library must not be given. Inserting one after the other ends whatever the order says.
    std::vector<Item> sorted;
    for (const QString &name : names) {
        Item item{name, digitsOf(name), collator.sortKey(name)};
        auto place = sorted.end();
        while (place != sorted.begin() && before(item, *std::prev(place)))
            --place;
        sorted.insert(place, std::move(item));
    }
    QStringList result;
    for (const Item &item : sorted)
        result.append(item.name);
    return result;
}

bool isDiscFolderName(const QString &name) {
    const QString lower = name.toLower();
    return lower == QStringLiteral("cd") || lower == QStringLiteral("discs") || lower == QStringLiteral("disc");
}

/// A line on its way to absolute paths: what has been written is set apart and never looked at again, so that a path
/// which itself holds ".\" cannot be rewritten for ever.
struct Piece {
    QByteArray text;
    bool written = false;
};

/// Where the path that starts at `start` ends. `ends` tells by what follows the first blank whether the path ends
/// there.
template<typename Ends>
qsizetype pathEnd(const QByteArray &text, qsizetype start, Ends ends) {
    if (start > 0 && text[start - 1] == '"') {
        const qsizetype quote = text.indexOf('"', start);
        return quote < 0 ? text.size() : quote;
    }
    const qsizetype blank = text.indexOf(' ', start);
    return blank >= 0 && ends(text.mid(blank + 1)) ? blank : text.size();
}

template<typename Ends, typename Path>
QList<Piece> rewritten(const QList<Piece> &pieces, const QByteArray &marker, Ends ends, Path path) {
    QList<Piece> result;
    for (const Piece &piece : pieces) {
        if (piece.written) {
            result.append(piece);
            continue;
        }
        QByteArray rest = piece.text;
        for (qsizetype start = rest.indexOf(marker); start >= 0; start = rest.indexOf(marker)) {
            const qsizetype end = pathEnd(rest, start, ends);
            const bool quoted = start > 0 && rest[start - 1] == '"';
            QByteArray name = rest.mid(start + marker.size(), end - start - marker.size());
            // Blanks before a path that was written already belong to the line.
            const qsizetype used = name.size();
            while (name.endsWith(' '))
                name.chop(1);
            const qsizetype kept = used - name.size();
            result.append({rest.left(quoted ? start - 1 : start)});
            result.append({quotedHostPath(path(hostNameFrom(name.replace('\\', '/')))), true});
            rest = rest.mid(quoted && end < rest.size() ? end + 1 : end - kept);
        }
        result.append({rest});
    }
    return result;
}

} // namespace

QStringList findAllCDImages(FolderView &view, const QString &folder) {
    const QStringList names = view.names(folder);
    for (const QLatin1StringView ending :
         {QLatin1StringView(".cue"), QLatin1StringView(".iso"), QLatin1StringView(".img")}) {
        QStringList images;
        for (const QString &name : names)
            if (name.endsWith(ending, Qt::CaseInsensitive))
                images.append(name);
        if (images.isEmpty())
            continue;
        images = inDiscOrder(images);
        for (QString &name : images)
            name = childPath(folder, name);
        return images;
    }
    return {};
}

QStringList findDiscImagesInFolder(FolderView &view, const QString &folder) {
    for (const QString &name : view.names(folder)) {
        const QString path = childPath(folder, name);
        if (!isDiscFolderName(name) || !view.isDirectory(path))
            continue;
        if (const QStringList images = findAllCDImages(view, path); !images.isEmpty())
            return images;
    }
    return {};
}

FoundDiscs findLaunchDiscs(FolderView &view, const DiscSearch &folders) {
    const auto &[mountFolder, cdPath, gameDataFolder, collection] = folders;
    const auto search = [&view](const QString &folder, const QString &source) {
        return FoundDiscs{findDiscImagesInFolder(view, folder), source};
    };
    // In the folder of all games, one that is called "Disc" is a game and no folder of discs.
    const QString allGames = childPath(collection, u"eXo/eXoDOS"_s);
    if (mountFolder != allGames && mountFolder != parentPath(allGames))
        if (const FoundDiscs found = search(mountFolder, u"mount folder"_s); !found.images.isEmpty())
            return found;
    const QString inside = cdPath.isEmpty() ? QString() : view.resolve(mountFolder, cdPath);
    if (view.isDirectory(inside))
        if (const FoundDiscs found = search(inside, u"game folder %1"_s.arg(cdPath)); !found.images.isEmpty())
            return found;
    if (!cdPath.isEmpty()) {
        const QString parent = parentPath(inside.isNull() ? QDir::cleanPath(childPath(mountFolder, cdPath)) : inside);
        if (parent != mountFolder && parent.startsWith(mountFolder + u'/'))
            if (const FoundDiscs found = search(parent, u"parent folder %1"_s.arg(parent.mid(mountFolder.size() + 1)));
                !found.images.isEmpty())
                return found;
    }
    const QStringList components = cdPath.split(u'/', Qt::SkipEmptyParts);
    if (components.size() > 1) {
        const QString first = view.resolve(mountFolder, components.constFirst());
        if (view.isDirectory(first))
            if (const FoundDiscs found = search(first, u"game folder %1"_s.arg(components.constFirst()));
                !found.images.isEmpty())
                return found;
    }
    for (const QString &name : view.names(gameDataFolder)) {
        const QString folder = childPath(gameDataFolder, name);
        if (view.isDirectory(folder))
            if (const FoundDiscs found = search(folder, u"subfolder %1"_s.arg(name)); !found.images.isEmpty())
                return found;
    }
    return gameDataFolder != mountFolder ? search(gameDataFolder, u"game folder"_s) : FoundDiscs();
}

bool isFloppyLine(const QByteArray &line) {
    const QByteArray lower = line.trimmed().toLower();
    return lower.startsWith("imgmount") && lower.contains("-t floppy");
}

QString collectionPathOf(FolderView &view, const QString &base, const QString &relative, const QString &collection) {
    // The collection's files were written for Windows, where the spelling of a path does not matter.
    const QString found = view.resolve(base, relative);
    const QString path = found.isNull() ? childPath(base, relative) : found;
    if (!QDir::cleanPath(path).startsWith(QDir::cleanPath(collection) + u'/'))
        throw LaunchError(
            LaunchError::Case::launchFailed,
            QStringLiteral("The configuration names %1, which lies outside the collection.").arg(singleLine(relative)));
    return path;
}

void refuseImagesOutside(const QByteArray &line, const QString &collection) {
    if (dosCommandWord(line) != "imgmount")
        return;
    const QString root = QDir::cleanPath(collection) + u'/';
    for (const QByteArray &word : guestArguments(line)) {
        const QString path = hostNameFrom(QByteArray(word).replace("%%", "%"));
        const bool isAbsolute = path.startsWith(u'/') && path.count(u'/') > 1;
        if ((isAbsolute && !QDir::cleanPath(path).startsWith(root)) || path.startsWith(u"~/"_s))
            throw LaunchError(
                LaunchError::Case::launchFailed,
                u"The configuration names %1, which lies outside the collection."_s.arg(singleLine(path)));
    }
}

QByteArray absoluteFloppyLine(FolderView &view, const QByteArray &line, const QString &collection,
                              const QString &gamesFolder) {
    const QString allGames = childPath(collection, QStringLiteral("eXo/eXoDOS"));
    QList<Piece> pieces{{line.trimmed()}};
    pieces = rewritten(
        pieces, ".\\eXoDOS\\",
        [](const QByteArray &behind) { return behind.startsWith('-') || behind.startsWith(".\\"); },
        [&](const QString &tail) { return collectionPathOf(view, allGames, tail, collection); });
    pieces = rewritten(
        pieces, ".\\", [](const QByteArray &behind) { return behind.startsWith('-'); },
        [&](const QString &tail) { return collectionPathOf(view, gamesFolder, tail, collection); });
    QByteArray result;
    for (const Piece &piece : std::as_const(pieces))
        result += piece.text;
    refuseImagesOutside(result, collection);
    return result;
}

} // namespace ludarium

#include "Services/Dos/ProgramPlace.h"

#include "Services/Dos/DosNames.h"

#include <QFile>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

constexpr int deepestFolder = 4;
constexpr qsizetype mostFolders = 2000;

/// The program's path in `folder`, null when it is not there. `relative` may lack its ending.
QString programIn(FolderView &view, const QString &folder, const QString &relative) {
    for (const QLatin1StringView ending : {""_L1, ".com"_L1, ".exe"_L1, ".bat"_L1}) {
        const QString name = relative + ending;
        const QString lower = name.toLower();
        if (!lower.endsWith(".com"_L1) && !lower.endsWith(".exe"_L1) && !lower.endsWith(".bat"_L1))
            continue;
        if (const QString found = view.resolve(folder, name); view.isFile(found))
            return found;
    }
    return {};
}

/// The nearest program of that name below a folder.
QString programBelow(FolderView &view, const QString &folder, const QString &name) {
    QStringList level{folder};
    qsizetype looked = 0;
    for (int depth = 0; depth < deepestFolder && !level.isEmpty(); ++depth) {
        QStringList below;
        for (const QString &parent : std::as_const(level))
            for (const QString &child : view.names(parent)) {
                const QString path = childPath(parent, child);
                if (child.startsWith(u'.') || !view.isDirectory(path))
                    continue;
                if (++looked > mostFolders)
                    return {};
                if (const QString found = programIn(view, path, name); !found.isNull())
                    return found;
                below.append(path);
            }
        level = below;
    }
    return {};
}

QString located(FolderView &view, const QString &program, const QString &folder, const QString &gameFolder,
                const QString &hardDisk) {
    QString relative = program;
    relative.replace(u'\\', u'/');
    if (relative.size() > 1 && relative[1] == u':')
        relative.remove(0, 2);
    while (relative.startsWith(u'/'))
        relative.remove(0, 1);
    if (relative.isEmpty())
        return {};
    for (const QString &base : {folder, gameFolder, relative.contains(u'/') ? hardDisk : QString()})
        if (!base.isNull())
            if (const QString found = programIn(view, base, relative); !found.isNull())
                return found;
    const QString name = lastPathComponent(relative);
    const QString found = folder.isNull() ? QString() : programBelow(view, folder, name);
    return found.isNull() ? programBelow(view, gameFolder, name) : found;
}

/// The name under which a guest finds an entry of a folder of the host; null for none.
QByteArray guestName(FolderView &view, const QString &path) {
    const QString name = lastPathComponent(path);
    if (isDosName(name))
        return QFile::encodeName(name);
    return guestNames(view.names(parentPath(path))).key(name);
}

} // namespace

GameCommand parsedCommand(const QString &command) {
    QStringList words = command.trimmed().split(u' ');
    GameCommand result;
    const QString first = words.constFirst().toLower();
    if (first == "loadfix"_L1 || first == "loadfix.com"_L1) {
        QStringList loader{words.takeFirst()};
        while (!words.isEmpty() && (words.constFirst().isEmpty() || words.constFirst().startsWith(u'-') ||
                                    words.constFirst().startsWith(u'/')))
            loader.append(words.takeFirst());
        result.loader = loader.join(u' ').simplified();
    }
    result.program = words.isEmpty() ? QString() : words.takeFirst();
    result.arguments = words.join(u' ').trimmed();
    return result;
}

std::optional<ProgramPlace> findProgramPlace(FolderView &view, const QString &program, const QString &folder,
                                             const QString &gameFolder, const QString &hardDisk) {
    const QString path = located(view, program, folder, gameFolder, hardDisk);
    if (path.isNull())
        return std::nullopt;
    ProgramPlace place{hardDisk, {}, guestName(view, path)};
    QStringList way;
    for (QString parent = parentPath(path); parent != place.hardDisk && parent.startsWith(hardDisk + u'/');
         parent = parentPath(parent)) {
        if (!isDosName(lastPathComponent(parent))) {
            place.hardDisk = parent;
            break;
        }
        way.prepend(lastPathComponent(parent));
    }
    place.folder = QFile::encodeName(way.join(u'/'));
    return place.program.isEmpty() ? std::nullopt : std::optional(place);
}

} // namespace ludarium

#include "Services/Dos/ExecutableDetection.h"

#include "Host/AppLogger.h"

#include <algorithm>

namespace ludarium {

namespace {

const QSet<QString> &excludedStems() {
    static const QSet<QString> stems = [] {
        const QString words = QStringLiteral(
            "setup install config setsound sound setblast readme read help manual dos4gw cwsdpmi univbe uvconfig sb16 "
            "sbpro mt32 gm adlib uninstall remove patch update crack keygen imuse setmuse bootmkr savefix autokill "
            "askecho network sfxed95 war2ed95 war2edit war2kali patch1 patch2 patch3 patch4 patch5 dottfix dottcd");
        const QStringList list = words.split(u' ');
        return QSet<QString>(list.cbegin(), list.cend());
    }();
    return stems;
}

const QStringList &preferredStems() {
    static const QStringList stems{QStringLiteral("go"),   QStringLiteral("start"), QStringLiteral("play"),
                                   QStringLiteral("game"), QStringLiteral("main"),  QStringLiteral("launch")};
    return stems;
}

bool isSearchedSubfolder(const QString &name) {
    static const QSet<QString> skipped{QStringLiteral("cd"),    QStringLiteral("discs"), QStringLiteral("disc"),
                                       QStringLiteral("mt32"),  QStringLiteral("sb16"),  QStringLiteral("sc55"),
                                       QStringLiteral("adlib"), QStringLiteral("gm"),    QStringLiteral("manual"),
                                       QStringLiteral("docs")};
    return !skipped.contains(name.toLower());
}

struct Entry {
    QString name;
    qint64 size = 0; ///< bytes
    QString stem() const { return name.toLower().chopped(4); }
    bool isExe() const { return name.endsWith(QStringLiteral(".exe"), Qt::CaseInsensitive); }
    bool isMenuScript() const { return stem() == QStringLiteral("run"); }
};

bool hasProgramEnding(const QString &name) {
    return name.endsWith(QStringLiteral(".exe"), Qt::CaseInsensitive) ||
           name.endsWith(QStringLiteral(".bat"), Qt::CaseInsensitive) ||
           name.endsWith(QStringLiteral(".com"), Qt::CaseInsensitive);
}

QList<Entry> findExecutables(FolderView &view, const QString &folder) {
    QList<Entry> found;
    for (const QString &name : view.names(folder)) {
        const QString path = childPath(folder, name);
        if (!hasProgramEnding(name) || !view.exists(path) || view.isDirectory(path))
            continue;
        const Entry entry{name, view.size(path)};
        if (!excludedStems().contains(entry.stem()))
            found.append(entry);
    }
    return found;
}

QStringList searchedSubfolders(FolderView &view, const QString &folder) {
    QStringList result;
    for (const QString &name : view.names(folder))
        if (isSearchedSubfolder(name) && view.isDirectory(childPath(folder, name)))
            result.append(name);
    return result;
}

DetectedExecutable chosen(const QString &how, const QString &name, const QString &subfolder) {
    const QString where = subfolder.isNull() ? QString() : QStringLiteral(" in subfolder '%1'").arg(subfolder);
    Log::info(QStringLiteral("   Using %1 executable: %2%3").arg(how, name, where));
    return {name, subfolder};
}

/// The program behind a lone menu script: the largest of the first subfolder that has one.
std::optional<DetectedExecutable> behindMenuScript(FolderView &view, const QString &folder, const QString &script) {
    Log::info(
        QStringLiteral("   Only executable is menu script '%1', searching subfolders for actual game...").arg(script));
    for (const QString &subfolder : searchedSubfolders(view, folder)) {
        QList<Entry> entries = findExecutables(view, childPath(folder, subfolder));
        entries.removeIf([](const Entry &entry) { return entry.isMenuScript(); });
        if (entries.isEmpty())
            continue;
        std::stable_sort(entries.begin(), entries.end(),
                         [](const Entry &a, const Entry &b) { return a.size > b.size; });
        const auto exe = std::find_if(entries.cbegin(), entries.cend(), [](const Entry &e) { return e.isExe(); });
        const QString name = exe == entries.cend() ? entries.constFirst().name : exe->name;
        Log::info(QStringLiteral("   Using subfolder executable: %1 in '%2'").arg(name, subfolder));
        return DetectedExecutable{name, subfolder};
    }
    Log::info(QStringLiteral("   No better executables found in subfolders, using menu script: %1").arg(script));
    return std::nullopt;
}

DetectedExecutable best(QList<Entry> candidates, const QString &subfolder) {
    std::stable_sort(candidates.begin(), candidates.end(), [](const Entry &a, const Entry &b) {
        if (a.isMenuScript() != b.isMenuScript())
            return b.isMenuScript();
        if (a.isExe() != b.isExe())
            return a.isExe();
        return a.size > b.size;
    });
    return chosen(QStringLiteral("best"), candidates.constFirst().name, subfolder);
}

DetectedExecutable pick(const QList<Entry> &candidates, const QString &folder, const QString &subfolder) {
    for (const QString &stem : preferredStems())
        for (const Entry &entry : candidates)
            if (entry.name.startsWith(stem + u'.', Qt::CaseInsensitive))
                return chosen(QStringLiteral("preferred"), entry.name, subfolder);

    const QString folderText = (subfolder.isNull() ? lastPathComponent(folder) : subfolder).toLower();
    QList<Entry> matches;
    for (const Entry &entry : candidates)
        if (!entry.stem().isEmpty() && folderText.contains(entry.stem()))
            matches.append(entry);
    for (const Entry &entry : std::as_const(matches))
        if (entry.isExe())
            return chosen(QStringLiteral("folder-matching"), entry.name, subfolder);
    if (!matches.isEmpty()) {
        // No match is a program of its own; one elsewhere in the folder is the better guess.
        if (std::none_of(candidates.cbegin(), candidates.cend(), [](const Entry &e) { return e.isExe(); }))
            return chosen(QStringLiteral("folder-matching"), matches.constFirst().name, subfolder);
        Log::info(QStringLiteral("   Folder-matching %1 is a batch file, checking for better .exe options...")
                      .arg(matches.constFirst().name));
    }
    return best(candidates, subfolder);
}

QString programNames(FolderView &view, const QString &folder) {
    QStringList names;
    for (const QString &name : view.names(folder))
        if (hasProgramEnding(name))
            names.append(name);
    return names.isEmpty() ? QStringLiteral("(none)") : names.join(QStringLiteral(", "));
}

/// The first entry of a folder, in its order, that is one of the wanted names, ignoring case.
QString wantedName(FolderView &view, const QString &folder, const QStringList &wanted, bool noteDirectories) {
    for (const QString &name : view.names(folder))
        for (const QString &want : wanted) {
            if (name.compare(want, Qt::CaseInsensitive) != 0)
                continue;
            if (!view.isDirectory(childPath(folder, name)))
                return name;
            if (noteDirectories)
                Log::info(QStringLiteral("   Skipping directory '%1'").arg(name));
        }
    return {};
}

} // namespace

std::optional<DetectedExecutable> autoDetectExecutable(FolderView &view, const QString &folder) {
    QList<Entry> candidates = findExecutables(view, folder);
    QString subfolder;
    if (candidates.isEmpty()) {
        Log::info(QStringLiteral("   No executables in root, checking subfolders..."));
        for (const QString &name : searchedSubfolders(view, folder)) {
            candidates = findExecutables(view, childPath(folder, name));
            if (!candidates.isEmpty()) {
                subfolder = name;
                break;
            }
        }
    }
    if (candidates.isEmpty()) {
        Log::info(QStringLiteral("   No executables found in %1 or subfolders").arg(lastPathComponent(folder)));
        return std::nullopt;
    }
    if (candidates.size() == 1) {
        const Entry &only = candidates.constFirst();
        if (only.isMenuScript() && subfolder.isNull())
            if (const auto behind = behindMenuScript(view, folder, only.name))
                return behind;
        return chosen(QStringLiteral("only"), only.name, subfolder);
    }
    return pick(candidates, folder, subfolder);
}

bool isGameProgram(FolderView &view, const QString &folder, const QString &name) {
    const QString path = childPath(folder, name);
    return !name.startsWith(u'.') && hasProgramEnding(name) && view.exists(path) && !view.isDirectory(path) &&
           !excludedStems().contains(name.toLower().chopped(4));
}

bool folderHasExecutables(FolderView &view, const QString &folder) {
    const QList<Entry> entries = findExecutables(view, folder);
    return std::any_of(entries.cbegin(), entries.cend(),
                       [](const Entry &entry) { return !entry.name.startsWith(u'.'); });
}

bool isValidDatabaseExecutable(const QString &executable) {
    const QString text = executable.trimmed().toLower();
    // "call " with nothing behind it has lost its blank to the trimming.
    if (text == QStringLiteral("call"))
        return false;
    if (text.startsWith(QStringLiteral("call ")))
        return true;
    QString word = text.section(u' ', 0, 0, QString::SectionSkipEmpty);
    if (hasProgramEnding(word))
        word.chop(4);
    return word != QStringLiteral("start") && word != QStringLiteral("imgmount") && word != QStringLiteral("boot");
}

QStringList autoDetectReport(FolderView &view, const QString &title, const QString &folder,
                             const DetectedExecutable &detected) {
    QStringList lines{QStringLiteral("📋 AUTO-DETECT REPORT for '%1'").arg(title),
                      QStringLiteral("   Folder: %1").arg(lastPathComponent(folder)),
                      QStringLiteral("   Root executables: %1").arg(programNames(view, folder))};
    const QString subfolder = detected.subfolder;
    if (!subfolder.isNull())
        lines.append(QStringLiteral("   Subfolder '%1' executables: %2")
                         .arg(subfolder, programNames(view, childPath(folder, subfolder))));
    lines.append(
        QStringLiteral("   Selected: %1%2")
            .arg(detected.executable, subfolder.isNull() ? QString() : QStringLiteral(" (in %1)").arg(subfolder)));
    return lines;
}

void logAutoDetectInfo(FolderView &view, const QString &title, const QString &folder,
                       const DetectedExecutable &detected) {
    for (const QString &line : autoDetectReport(view, title, folder, detected))
        Log::info(line);
}

bool isDiscFolder(const QString &name) {
    static const QSet<QString> names{QStringLiteral("cd"),  QStringLiteral("disc"), QStringLiteral("discs"),
                                     QStringLiteral("cd1"), QStringLiteral("cd2"),  QStringLiteral("cd3"),
                                     QStringLiteral("cd4")};
    return names.contains(name.toLower());
}

bool isDiscOrDiskFolder(const QString &name) {
    const QString lower = name.toLower();
    return isDiscFolder(lower) || lower == QStringLiteral("disk") || lower == QStringLiteral("disk1") ||
           lower == QStringLiteral("disk2");
}

std::optional<ResolvedCommand> resolveCommandCase(FolderView &view, const QString &word, const QString &gameDataFolder,
                                                  const QString &workingDirectory) {
    const QString inside = view.resolve(gameDataFolder, workingDirectory);
    const QString folder = inside.isNull() ? gameDataFolder : inside;
    if (word.isEmpty() || !view.canList(folder))
        return std::nullopt;
    const QStringList wanted{word, word + QStringLiteral(".exe"), word + QStringLiteral(".bat"),
                             word + QStringLiteral(".com")};
    if (const QString name = wantedName(view, folder, wanted, true); !name.isNull()) {
        Log::info(QStringLiteral("   Resolved executable case: '%1' -> '%2'").arg(word, name));
        return ResolvedCommand{name, {}};
    }
    if (isDiscOrDiskFolder(workingDirectory) && folder != gameDataFolder)
        if (const QString name = wantedName(view, gameDataFolder, wanted, true); !name.isNull()) {
            Log::info(QStringLiteral("   Resolved executable case from parent: '%1' -> '%2'").arg(word, name));
            return ResolvedCommand{name, {}};
        }
    Log::info(QStringLiteral("   Executable '%1' not found in main folder, searching subfolders...").arg(word));
    for (const QString &subfolder : view.names(folder)) {
        if (subfolder.startsWith(u'.') || isDiscOrDiskFolder(subfolder) ||
            !view.isDirectory(childPath(folder, subfolder)))
            continue;
        if (const QString name = wantedName(view, childPath(folder, subfolder), wanted, false); !name.isNull())
            return ResolvedCommand{name, subfolder};
    }
    return std::nullopt;
}

} // namespace ludarium

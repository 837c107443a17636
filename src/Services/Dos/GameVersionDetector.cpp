#include "Services/Dos/GameVersionDetector.h"

#include "Host/AppLogger.h"
#include "Host/SafeJson.h"
#include "Services/Dos/VersionFolders.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <mutex>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// `file` names it in the log; empty for the one of the program.
std::optional<VersionDatabase> parsed(const QByteArray &json, const QString &file = {}) {
    QString problem;
    std::optional<VersionDatabase> database = parseVersionDatabase(json, &problem);
    if (!database)
        Log::error(u"GameVersionDetector: Failed to load database: %1"_s.arg(
            file.isEmpty() ? problem : file + u": "_s + problem));
    return database;
}

void addUsersOwn(VersionDatabase &database, const QString &path) {
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return;
    // A look at anything but a file, such as a pipe, could wait for ever.
    if (!info.isFile()) {
        Log::error(u"GameVersionDetector: Failed to load database: %1: not a regular file"_s.arg(path));
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        Log::error(u"GameVersionDetector: Failed to load database: %1: %2"_s.arg(path, file.errorString()));
        return;
    }
    const std::optional<VersionDatabase> own = parsed(file.read(JsonLimit::bytes + 1), path);
    if (!own)
        return;
    for (auto it = own->cbegin(); it != own->cend(); ++it) {
        DatabaseEntry entry = *it;
        entry.isUsersOwn = true;
        database.insert(it.key(), entry);
    }
    Log::info(u"GameVersionDetector: %1 games from %2"_s.arg(own->size()).arg(path));
}

bool looksLikeFloppy(const GameVersionOption &option) {
    const QString folder = option.workingDirectory.toLower();
    return folder.contains("floppy"_L1) || folder.contains("disk"_L1) || folder == "ega"_L1 || folder == "vga"_L1;
}

bool isDisc(const GameVersionOption &option) {
    return option.versionType == VersionType::talkie || option.versionType == VersionType::cd;
}

} // namespace

struct GameVersionDetector::Private {
    Sources sources;
    std::once_flag loaded;
    std::once_flag collected;
    VersionLookup lookup;
    QSet<QString> mt32Titles;
    QSet<QString> mt32Normalized;

    void load() {
        VersionDatabase database;
        if (sources.database.isNull())
            Log::warning(u"GameVersionDetector: No database found"_s);
        else
            database = parsed(sources.database).value_or(VersionDatabase());
        if (!sources.usersDatabase.isEmpty())
            addUsersOwn(database, sources.usersDatabase);
        lookup = VersionLookup(std::move(database));
        sources.database = {};
    }

    void collectMt32Titles() {
        const VersionDatabase &database = lookup.database();
        for (auto it = database.cbegin(); it != database.cend(); ++it)
            if (std::any_of(it->versions.cbegin(), it->versions.cend(),
                            [](const DatabaseVersion &version) { return version.isMt32(); })) {
                mt32Titles.insert(it.key());
                mt32Normalized.insert(sources.normalizeForMT32 ? sources.normalizeForMT32(it.key()) : it.key());
            }
    }
};

GameVersionDetector::GameVersionDetector(Sources sources) : d(new Private{std::move(sources), {}, {}, {}, {}, {}}) {}

GameVersionDetector::~GameVersionDetector() = default;

const VersionLookup &GameVersionDetector::lookup() const {
    std::call_once(d->loaded, [this] { d->load(); });
    return d->lookup;
}

const QSet<QString> &GameVersionDetector::mt32GameTitles() const {
    lookup();
    std::call_once(d->collected, [this] { d->collectMt32Titles(); });
    return d->mt32Titles;
}

const QSet<QString> &GameVersionDetector::mt32NormalizedTitles() const {
    mt32GameTitles();
    return d->mt32Normalized;
}

std::optional<GameVersionMenu> GameVersionDetector::detectVersions(const QString &gameTitle,
                                                                   const QString &gameDataFolder) const {
    const QString found = lookup().findGame(gameTitle, lastPathComponent(gameDataFolder));
    if (found.isNull()) {
        Log::info(u"GameVersionDetector: '%1' not found in database, using folder detection"_s.arg(gameTitle));
        return detectVersionsFromFolders(gameDataFolder);
    }
    const DatabaseEntry entry = lookup().database().value(found);
    const QString origin =
        (entry.isUsersOwn ? u"\"%1\" of the user's own version database"_s : u"\"%1\" of the version database"_s)
            .arg(found);
    QList<GameVersionOption> options;
    for (const DatabaseVersion &version : entry.versions)
        options.append(version.option(origin));
    options = filterDuplicateVersions(options);
    if (std::none_of(options.cbegin(), options.cend(), isDisc) &&
        std::any_of(options.cbegin(), options.cend(), looksLikeFloppy)) {
        FolderView view;
        const QList<GameVersionOption> discs = detectCDVersions(view, gameDataFolder);
        if (!discs.isEmpty())
            Log::info(u"Found %1 CD/Talkie versions from folder detection"_s.arg(discs.size()));
        options += discs;
    }
    return versionMenu(gameTitle, options);
}

std::optional<GameVersionMenu> GameVersionDetector::detectVersionsFromFolders(const QString &gameDataFolder) const {
    FolderView view;
    return ludarium::detectVersionsFromFolders(view, gameDataFolder);
}

QList<GameVersionOption> filterDuplicateVersions(const QList<GameVersionOption> &options) {
    const auto hasProgram = [](const GameVersionOption &option) { return !option.executable.isNull(); };
    const auto hasFolder = [](const GameVersionOption &option) { return !option.workingDirectory.isEmpty(); };
    const bool anyProgram = std::any_of(options.cbegin(), options.cend(), hasProgram);
    const bool anyFolder = std::any_of(options.cbegin(), options.cend(), hasFolder);
    QList<GameVersionOption> kept;
    QSet<QString> seen;
    for (const GameVersionOption &option : options) {
        if (anyProgram ? !hasProgram(option) : anyFolder && !hasFolder(option))
            continue;
        const QString key = QStringList{option.workingDirectory.isNull() ? u"root"_s : option.workingDirectory,
                                        versionTypeText(option.versionType),
                                        option.audioType ? audioTypeText(*option.audioType) : u"default"_s,
                                        option.executable.isNull() ? u"default"_s : option.executable}
                                .join(u'|');
        if (seen.contains(key))
            continue;
        seen.insert(key);
        kept.append(option);
    }
    return kept;
}

} // namespace ludarium

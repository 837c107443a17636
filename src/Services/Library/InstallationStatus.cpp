#include "Services/Library/InstallationStatus.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Host/ShareOut.h"
#include "Models/Platform.h"
#include "Services/Collections/AriaIndexManager.h"
#include "Services/Library/CollectionScan.h"
#include "Services/Library/DownloadTitles.h"
#include "Services/Library/MetadataIndexes.h"

#include <QElapsedTimer>
#include <string>
#include <utility>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

/// Under which names beside folder and title the archive of a game may lie. All titles are also tried with ": " as
/// " - ".
struct ArchiveNames {
    bool any = true;
    bool configBase = false;
    bool years = false;   ///< title and year
    bool noColon = false; ///< the title without ":"
};

constexpr ArchiveNames archiveNames(GameFamily family) {
    using enum GameFamily;
    switch (family) {
    case dos:
        return {.configBase = true, .years = true, .noColon = true};
    case windows3x:
    case GameFamily::dreamm:
        return {.configBase = true, .years = true};
    case scummVM:
        return {.configBase = true};
    case appleIIGS:
        return {.years = true};
    case interactiveFiction:
    case demoScene:
        return {};
    case windows9x:
        return {.any = false};
    }
    return {};
}

/// What a platform's name says of all its games. Games come in runs of one platform.
struct PlatformKind {
    QString name;
    bool alwaysInstalled = false;
    GameFamily family = GameFamily::dos;
    ArchiveNames archives;

    void assign(const QString &platform) {
        if (platform == name && !name.isNull())
            return;
        name = platform;
        alwaysInstalled = isContentPlatform(platform) || Platform::isRetroArchPlatformName(platform);
        family = gameFamily(platform);
        archives = archiveNames(family);
    }
};

/// Tests games against the names of a scan. Its buffers are used again for each game.
class Classifier {
  public:
    explicit Classifier(const CollectionScan &scan) : m_scan(scan) {}

    GameStatus classify(const Game &game, const PlatformKind &platform) {
        const NameTable &names = m_scan.names(platform.family);
        if (std::exchange(m_family, platform.family) != platform.family)
            m_configBase = {};
        if (names.isEmpty())
            return {};
        const ConfigurationNames configuration = ConfigurationNames::of(game.configurationPath);
        assignNameKey(m_folder, configuration.folder);
        const std::uint8_t folder = names.kinds(m_folder);
        if ((folder & NameTable::installed) != 0)
            return {.isInstalled = true};
        if (platform.archives.any && ((folder & NameTable::archive) != 0 ||
                                      hasArchive(game, platform.archives, names, configuration.configBase)))
            return {.isCompressed = true};
        return {};
    }

  private:
    bool hasArchive(const Game &game, ArchiveNames wanted, const NameTable &names, QStringView configBase) {
        if (wanted.configBase && !configBase.isEmpty()) {
            // Most games of a family call it the same.
            if (configBase != m_configBase) {
                m_configBase = configBase;
                assignNameKey(m_other, configBase);
                m_configBaseIsArchive = names.has(m_other, NameTable::archive);
            }
            if (m_configBaseIsArchive)
                return true;
        }
        m_year.clear();
        // An archive "{title} (1995)" stands as "{title}" too, so only a year of another kind has to be tried.
        if (wanted.years && game.releaseYear && (*game.releaseYear < 1000 || *game.releaseYear > 9999))
            m_year = " (" + std::to_string(*game.releaseYear) + ')';
        const std::string_view title = titleKey(game);
        if (hasTitle(title, names))
            return true;
        if (title.find(':') == std::string_view::npos)
            return false;
        assignReplaced(m_form, title, " - ");
        if (hasTitle(m_form, names))
            return true;
        if (!wanted.noColon)
            return false;
        assignReplaced(m_form, title, " ");
        std::erase(m_form, ':');
        return hasTitle(m_form, names);
    }

    /// The title in lower case as it stands in the record, made anew only where composing may change it.
    std::string_view titleKey(const Game &game) {
        const std::string_view title(game.searchTitle.constData(), size_t(game.searchTitle.size()));
        if (isAscii(title))
            return title;
        assignNameKey(m_title, title);
        return m_title;
    }

    bool hasTitle(std::string_view title, const NameTable &names) {
        if (names.has(title, NameTable::archive | NameTable::archiveTitle))
            return true;
        if (m_year.empty())
            return false;
        m_other.assign(title).append(m_year);
        return names.has(m_other, NameTable::archive);
    }

    /// `text` with `by` for each ": ".
    static void assignReplaced(std::string &result, std::string_view text, std::string_view by) {
        result.clear();
        for (size_t from = 0;;) {
            const size_t at = text.find(": ", from);
            result += text.substr(from, at - from);
            if (at == std::string_view::npos)
                return;
            result += by;
            from = at + 2;
        }
    }

    const CollectionScan &m_scan;
    std::string m_folder;
    std::string m_title;
    std::string m_form;
    std::string m_other;
    std::string m_year;
    QStringView m_configBase; ///< of a game before, in this family
    bool m_configBaseIsArchive = false;
    GameFamily m_family = GameFamily::dos;
};

/// Brings the records of the games to come into the cache: each game is looked at once, and its parts lie all over
/// the memory.
void prefetch(const GameList &games, qsizetype at) {
    if (at + 12 < games.size()) {
        const Game &game = *games[at + 12];
        __builtin_prefetch(&game.platform);
        __builtin_prefetch(&game.configurationPath);
        __builtin_prefetch(&game.searchTitle);
    }
    if (at + 6 < games.size()) {
        const Game &game = *games[at + 6];
        __builtin_prefetch(game.configurationPath.constData());
        __builtin_prefetch(game.searchTitle.constData());
    }
}

const IndexEntry *findDownload(const AriaIndex &index, const Game &game, const QString &collection) {
    const QString folder = ConfigurationNames::of(game.configurationPath).folder.toString();
    if (const IndexEntry *entry = index.getDownloadInfo(folder))
        return entry;
    const IndexEntry *found = nullptr;
    const auto look = [&](const QString &title) {
        found = index.getDownloadInfoByTitle(title, true);
        return found != nullptr;
    };
    if (forDownloadTitles(game.title, game.releaseYear, look))
        return found;
    const QString script = scriptName(collection, folder, {".bat"_L1});
    return script.isEmpty() ? nullptr : index.getDownloadInfoByTitle(script, true);
}

void offerDownload(GameStatus &status, const AriaIndex &index, const Game &game, const QString &collection) {
    if (index.isEmpty())
        return;
    if (const IndexEntry *entry = findDownload(index, game, collection)) {
        status.isDownloadable = true;
        status.downloadSize = entry->sizeFormatted();
    }
}

/// Games that one thread checks at a time.
constexpr qsizetype partSize = 2'000;

} // namespace

ConfigurationNames ConfigurationNames::of(QStringView path) {
    const auto isSeparator = [](QChar c) { return c == u'\\' || c == u'/'; };
    const auto takeLast = [&]() {
        qsizetype begin = path.size();
        while (begin > 0 && !isSeparator(path[begin - 1]))
            --begin;
        const QStringView last = path.sliced(begin);
        path = path.first(std::max<qsizetype>(begin - 1, 0));
        return last;
    };
    ConfigurationNames names;
    // A last piece with a "." is a file; behind a separator at the end there is none.
    const QStringView last = takeLast();
    if (const qsizetype point = last.lastIndexOf(u'.'); point >= 0)
        names.configBase = point > 0 ? last.first(point) : last;
    else
        names.folder = last;
    while (names.folder.isEmpty() && !path.isEmpty())
        names.folder = takeLast();
    return names;
}

QString scriptName(const QString &collection, const QString &folder,
                   std::initializer_list<QLatin1StringView> extensions, QLatin1StringView exceptPrefix) {
    const auto path = pathInside(collection, {u"eXo"_s, u"eXoDOS"_s, u"!dos"_s, folder});
    const auto names = path ? listFolder(*path) : std::nullopt;
    if (!names)
        return {};
    // The first in alphabetical order, so that every file system gives the same one.
    QString first;
    for (const QString &name : *names) {
        const bool fits = std::any_of(extensions.begin(), extensions.end(),
                                      [&](QLatin1StringView extension) { return name.endsWith(extension); });
        if (fits && (exceptPrefix.isEmpty() || !name.startsWith(exceptPrefix)) && (first.isNull() || name < first))
            first = name;
    }
    return first.isNull() ? first : first.chopped(4);
}

InstallationStatus::InstallationStatus(std::shared_ptr<const AriaIndexManager> downloads)
    : m_downloads(std::move(downloads)) {}

QList<GameStatus> InstallationStatus::check(const GameList &games, const QString &collection) const {
    const auto index = m_downloads->index();
    Log::debug(u"Checking the status of %1 games (%2 entries in the download index)"_s.arg(games.size())
                   .arg(index->entries().size()));
    QElapsedTimer timer;
    timer.start();
    const CollectionScan scan = CollectionScan::scanCollectionDirectories(collection, !index->isEmpty());
    Log::debug(u"⏱️ Directory scan: %1ms"_s.arg(timer.restart()));

    QList<GameStatus> statuses(games.size());
    GameStatus *const results = statuses.data();
    const auto checkPart = [&](size_t part) {
        const qsizetype start = static_cast<qsizetype>(part) * partSize;
        const qsizetype end = std::min(start + partSize, games.size());
        Classifier classifier(scan);
        PlatformKind platform;
        for (qsizetype i = start; i < end; ++i) {
            prefetch(games, i);
            const Game &game = *games[i];
            platform.assign(game.platform);
            if (platform.alwaysInstalled) {
                results[i].isInstalled = true;
                continue;
            }
            results[i] = classifier.classify(game, platform);
            if (!results[i].isInstalled && !results[i].isCompressed && platform.family == GameFamily::dos)
                offerDownload(results[i], *index, game, collection);
        }
    };
    // Two checks may run at a time (a load's and one that the user asked for), both on the pool.
    shareOut(static_cast<size_t>((games.size() + partSize - 1) / partSize), checkPart);
    Log::debug(u"⏱️ Analysis: %1ms"_s.arg(timer.elapsed()));
    return statuses;
}

} // namespace ludarium

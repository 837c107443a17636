// The closer look at a single game, after it was installed, downloaded or removed.

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Models/Platform.h"
#include "Services/Collections/AriaIndexManager.h"
#include "Services/Collections/CollectionLayout.h"
#include "Services/Launch/GameFolders.h"
#include "Services/Library/CollectionScan.h"
#include "Services/Library/InstallationStatus.h"
#include "Services/Library/MetadataIndexes.h"

#include <QFileInfo>
#include <algorithm>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

/// Launch scripts, which a collection puts into the folder of a game that is not installed.
bool isScript(const QString &name) {
    const qsizetype point = name.lastIndexOf(u'.');
    if (point <= 0)
        return false;
    const QString extension = name.sliced(point + 1).toLower();
    return extension == "msh"_L1 || extension == "bsh"_L1 || extension == "sh"_L1 || extension == "command"_L1;
}

bool isInstallation(const QString &folder) {
    const auto names = listFolder(folder);
    return names && !std::all_of(names->begin(), names->end(), isScript);
}

/// The first piece of four digits inside a path.
QString yearOf(const QString &path) {
    const QStringList pieces = QString(path).replace(u'\\', u'/').split(u'/');
    for (qsizetype i = 1; i + 1 < pieces.size(); ++i)
        if (pieces[i].size() == 4 &&
            std::all_of(pieces[i].begin(), pieces[i].end(), [](QChar c) { return c.isDigit(); }))
            return pieces[i];
    return u"1995"_s;
}

struct Places {
    QString games;
    QString archives;
};

Places placesOf(const Game &game, GameFamily family, const QString &collection) {
    QString folder = collection + u'/' + gameFamilyFolder(family);
    if (family == GameFamily::windows9x)
        folder += u'/' + yearOf(game.configurationPath);
    Places places{folder, folder};
    if (family == GameFamily::scummVM) {
        // Variants of the set have folders of their own for games, but not for archives.
        for (const QString &piece : pathComponents(game.configurationPath)) {
            if (piece.startsWith("eXoScummVM"_L1) && isSafeName(piece)) {
                places.games = collection + "/eXo/"_L1 + piece;
                break;
            }
        }
    }
    return places;
}

class ArchiveSearch {
  public:
    ArchiveSearch(QString folder, bool isLiteCollection)
        : m_folder(std::move(folder)), m_isLiteCollection(isLiteCollection) {}

    bool hasExact(const QStringList &names) const {
        return std::any_of(names.begin(), names.end(), [&](const QString &name) {
            return isArchive(name + ".zip"_L1) || isArchive(name + ".7z"_L1);
        });
    }

    /// An archive whose name begins with one of `names`.
    bool hasLoose(const QStringList &names) const {
        QStringList candidates = listFolder(m_folder).value_or(QStringList());
        candidates.sort();
        for (const QString &candidate : candidates) {
            if (!candidate.endsWith(".zip"_L1) && !candidate.endsWith(".7z"_L1))
                continue;
            const bool begins = std::any_of(names.begin(), names.end(), [&](const QString &name) {
                return candidate.startsWith(name) || candidate.toLower().startsWith(name.toLower());
            });
            if (begins && isArchive(candidate)) {
                Log::info(u"   📦 Found archive by loose match: %1"_s.arg(candidate));
                return true;
            }
        }
        return false;
    }

  private:
    bool isArchive(const QString &name) const {
        if (!isSafeName(name))
            return false;
        const QFileInfo file(m_folder + u'/' + name);
        return file.exists() &&
               !(m_isLiteCollection && file.isFile() && file.size() <= CollectionLayout::maxPlaceholderSize);
    }

    const QString m_folder;
    const bool m_isLiteCollection;
};

const IndexEntry *findDownload(const AriaIndex &index, const QString &folder, const QStringList &titles,
                               const QString &collection) {
    if (const IndexEntry *entry = index.getDownloadInfo(folder))
        return entry;
    const QString script = scriptName(collection, folder, {".bsh"_L1, ".bat"_L1}, "install"_L1);
    for (const QString &title : QStringList(script) + titles)
        if (const IndexEntry *entry = index.getDownloadInfoByTitle(title, false))
            return entry;
    return nullptr;
}

} // namespace

std::optional<GameStatus> InstallationStatus::checkGame(const GamePtr &game, const QString &collection) const {
    if (isContentPlatform(game->platform) || Platform::isRetroArchPlatformName(game->platform))
        return GameStatus{.isInstalled = true};
    if (game->configurationPath.isNull())
        return std::nullopt;
    const auto index = m_downloads->index();
    const GameFamily family = gameFamily(game->platform);
    const Places places = placesOf(*game, family, collection);
    // A name that is no single usable one stands for no folder; an empty one would stand for that of all games.
    const QString named = ConfigurationNames::of(game->configurationPath).folder.toString();
    const QString folder = isSafeName(named) ? named : QString();
    if (!folder.isEmpty() && isInstallation(GameFolders::asOnDisk(places.games + u'/' + folder, collection)))
        return GameStatus{.isInstalled = true};

    QStringList titles;
    if (!game->title.isEmpty())
        titles << game->title
               << (game->releaseYear ? u"%1 (%2)"_s.arg(game->title).arg(*game->releaseYear) : game->title);
    QStringList names = titles;
    if (!folder.isEmpty())
        names.prepend(folder);
    const ArchiveSearch archives(places.archives, !index->isEmpty());
    if (archives.hasExact(names) || archives.hasLoose(names))
        return GameStatus{.isCompressed = true};

    GameStatus status;
    if (family == GameFamily::dos && !index->isEmpty()) {
        if (const IndexEntry *entry = findDownload(*index, folder, titles, collection)) {
            status.isDownloadable = true;
            status.downloadSize = entry->sizeFormatted();
        }
    }
    return status;
}

} // namespace ludarium

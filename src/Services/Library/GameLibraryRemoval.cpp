// Taking games, or all that is known of a collection, out of the library.

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/SafeFiles.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Library/GameLibrary.h"

#include <QFile>
#include <QPointer>
#include <stdexcept>

namespace ludarium {

void GameLibrary::clearCollectionData() {
    keep([this] {
        m_host.settings.transaction([this] {
            m_host.settings.remove(Settings::cachedGamesData);
            m_host.settings.remove(Settings::cachedGamesVersion);
            m_host.settings.remove(Settings::installedGames);
            m_host.settings.remove(Settings::compressedGames);
        });
    });
    m_metadata = {};
    m_allPlatforms.clear();
    m_platforms.clear();
    m_playlists.clear();
    publish({}, {});
    Q_EMIT platformsChanged();
    Q_EMIT playlistsChanged();
    m_shownCollection.clear();
    m_statusChanges.clear();
    m_statusesKept = false;
    // Those of the next collection come with its first look at the disk.
    auto forget = [files = CacheFiles(m_host.paths), time = LibraryCache::toCacheDate(now())] {
        const CacheFiles::Lock lock(files);
        files.prepareFolder();
        SeenStatuses nothing;
        nothing.time = time;
        nothing.save(files);
    };
    m_saves.post({}, forget);
    Log::info(QStringLiteral("🧹 Cleared collection-specific data"));
}

QCoro::Task<> GameLibrary::removePlatform(QString name) {
    if (m_collection.isEmpty())
        throw std::runtime_error("No collection loaded");
    const std::optional<QString> file =
        pathInside(m_collection, {QStringLiteral("Data"), QStringLiteral("Platforms"), name + QStringLiteral(".xml")});
    if (!file || name.isEmpty())
        throw std::runtime_error(QStringLiteral("\"%1\" is no name of a platform").arg(name).toStdString());
    const QPointer<GameLibrary> self(this);
    const QString collection = m_collection;
    const QString kept =
        *file + QStringLiteral(".removed-") + now().toUTC().toString(QStringLiteral("yyyyMMdd-HHmmsszzz"));
    auto remove = [path = *file, kept] {
        QFile xml(path);
        if (!xml.exists())
            return;
        if (!xml.rename(kept))
            throw std::runtime_error(xml.errorString().toStdString());
        Log::info(QStringLiteral("Deleted platform XML: %1").arg(path));
    };
    co_await runOnPool(remove);
    if (!self || collection != m_collection)
        co_return;
    clearCache(collection);
    const auto isIt = [&](const Platform &platform) { return platform.name == name; };
    m_allPlatforms.removeIf(isIt);
    m_platforms.removeIf(isIt);
    // A game that changes meanwhile makes the list another one: then once more, with the list as it is.
    struct Rest {
        GameList games;
        QHash<QString, qsizetype> positions;
        MetadataIndexes metadata;
        std::shared_ptr<const LibraryIndex> index;
    };
    Rest rest;
    GameList before;
    do {
        before = m_games;
        auto leaveOut = [before, name, buildIndex = indexBuilder()] {
            Rest rest;
            rest.games = before;
            rest.games.removeIf([&](const GamePtr &game) { return game->platform == name; });
            rest.positions = positionsOf(rest.games);
            rest.metadata = MetadataIndexes::build(rest.games);
            rest.index = buildIndex(rest.games);
            return rest;
        };
        rest = co_await runOnPool(leaveOut);
        if (!self || collection != m_collection)
            co_return;
    } while (!m_games.isSharedWith(before));
    m_metadata = std::move(rest.metadata);
    publish(std::move(rest.games), std::move(rest.positions), std::move(rest.index));
    Q_EMIT platformsChanged();
}

QString GameLibrary::clearCache(const QString &collection) {
    // The cache is all that is known of a collection that cannot be read again.
    const CollectionPresence presence = CollectionPresence::look(collection);
    if (presence.isAway() && !presence.holdsOther) {
        Log::warning(QStringLiteral("⚠️ The cache is kept: %1").arg(presence.collection));
        return presence.collection;
    }
    LibraryCache(cacheFiles(collection)).clear();
    return {};
}

void GameLibrary::resetForTesting() {
    SettingsStore &settings = m_host.settings;
    settings.transaction([&settings] {
        const auto forget = [&settings](const auto &...setting) { (settings.remove(setting), ...); };
        forget(Settings::collectionPath, Settings::collectionBookmark, Settings::hasCompletedFirstRun);
        forget(Settings::favoriteGames, Settings::playCounts, Settings::playTimes, Settings::lastPlayedDates,
               Settings::recentlyPlayedIds, Settings::gameNotes, Settings::gameRatings, Settings::gameProgress);
        forget(Settings::installedGames, Settings::cachedGamesData, Settings::cachedGamesVersion,
               Settings::compressedGames, Settings::retroachievements_username, Settings::retroachievements_apiKey);
    });
}

} // namespace ludarium

// The load of a collection from its own files.

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/NotificationCenter.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Library/DiskLook.h"
#include "Services/Library/LaunchBoxParser.h"
#include "Services/Library/LoadSteps.h"
#include "Services/Library/LoadedRecords.h"
#include "Services/Library/PlaylistRules.h"

#include <QtConcurrent/QtConcurrentRun>
#include <algorithm>

namespace ludarium {

namespace {

bool isWindows9x(const QString &platform) {
    return platform == QLatin1StringView("Windows 9x") || platform == QLatin1StringView("Windows 9.x");
}

} // namespace

/// What the steps of a full load hand on, on the pool.
struct GameLibrary::Loaded {
    GameList games;
    QList<AdditionalApplication> applications;
};

QCoro::Task<> GameLibrary::fullLoad(QString collection, SeenStatuses seen) {
    const QPointer<GameLibrary> self(this);
    co_await step(QStringLiteral("No cache found. Loading from XML files (first time only)..."), 0);
    auto validate = [collection] { return validateCollectionStructure(collection); };
    const bool valid = co_await runOnPool(validate);
    requireAlive(self);
    if (!valid) {
        setStatus(QStringLiteral("Validation failed"), m_loadingProgress);
        setErrorMessage(QStringLiteral("Invalid collection. Expected folders: Data/, eXo/, Images/"));
        co_return;
    }

    QElapsedTimer timer;
    timer.start();
    co_await step(QStringLiteral("Loading platforms..."), 0.1);
    auto parsePlatforms = [collection] { return LaunchBoxParser().parsePlatforms(collection); };
    QList<Platform> platforms = co_await runOnPool(parsePlatforms);
    requireAlive(self);
    const QList<Platform> allPlatforms = platforms.isEmpty() ? Platform::defaultPlatforms() : std::move(platforms);
    // Platforms without games are better than none, but not than those of the games that are shown.
    if (m_games.isEmpty()) {
        m_platforms = allPlatforms;
        Q_EMIT platformsChanged();
    }

    co_await step(QStringLiteral("Parsing game metadata... This can take 2-5 minutes for large collections. Please be "
                                 "patient."),
                  0.2);
    // The parser reports from its own threads; the status belongs to the main thread.
    const auto progress = [self](const QString &text) {
        if (GameLibrary *library = self.data())
            QMetaObject::invokeMethod(
                library,
                [library, text] {
                    if (library->m_isLoading && library->m_loadingProgress <= 0.25)
                        library->setStatus(text, 0.25);
                },
                Qt::QueuedConnection);
    };
    auto parseGames = [collection, progress] {
        QElapsedTimer parsing;
        parsing.start();
        LaunchBoxParser::Games parsed = LaunchBoxParser().parseGamesWithAdditionalApps(collection, progress);
        // What was read of a collection that is gone by now may be half of it.
        if (const CollectionPresence presence = CollectionPresence::look(collection); presence.isAway())
            throw CollectionAway(presence.collection);
        Loaded result{std::move(parsed.games), std::move(parsed.additionalApplications)};
        const qsizetype dropped =
            result.games.removeIf([](const GamePtr &game) { return isWindows9x(game->platform); });
        Log::info(QStringLiteral("✅ Finished parsing: %1 games, %2 additional apps")
                      .arg(result.games.size())
                      .arg(result.applications.size()));
        if (dropped > 0)
            Log::info(QStringLiteral("   (Filtered out %1 Win9x games - not yet supported)").arg(dropped));
        Log::info(QStringLiteral("⏱️ Parsed %1 games/s")
                      .arg(result.games.size() * 1000 / std::max<qint64>(parsing.elapsed(), 1)));
        return result;
    };
    Loaded loaded = co_await runOnPool(parseGames);
    requireAlive(self);

    co_await step(QStringLiteral("Processing %1 games...").arg(loaded.games.size()), 0.5);
    const LibraryServices services = m_services;
    auto associate = [loaded = std::move(loaded)]() mutable {
        associateAdditionalApplications(loaded.games, loaded.applications);
        loaded.applications.clear();
        return std::move(loaded);
    };
    loaded = co_await runOnPool(associate);
    requireAlive(self);
    co_await step(QStringLiteral("Loading emulator requirements..."), 0.55);
    if (services.requirement) {
        auto applyRequirements = [loaded = std::move(loaded), services]() mutable {
            QHash<EmulatorType, int> counts;
            for (GamePtr &game : loaded.games) {
                if (game->platform != QLatin1StringView("MS-DOS"))
                    continue;
                if (const auto requirement = services.requirement(game->title)) {
                    Game &changed = changeable(game);
                    changed.requiredEmulatorType = requirement->type;
                    changed.requiredEmulatorVersion = requirement->version;
                    ++counts[requirement->type];
                }
            }
            Log::info(QStringLiteral("⏱️ Emulator requirements: %1 Wine, %2 DOSBox-X, %3 DOSBox Staging, %4 DOSBox")
                          .arg(counts[EmulatorType::ece] + counts[EmulatorType::custom])
                          .arg(counts[EmulatorType::dosboxX])
                          .arg(counts[EmulatorType::staging])
                          .arg(counts[EmulatorType::vanilla]));
            return std::move(loaded);
        };
        loaded = co_await runOnPool(applyRequirements);
        requireAlive(self);
    }
    requireAlive(self);

    const bool skip = skipInstallCheck();
    co_await step(
        skip ? QStringLiteral("Skipping file checks (fast mode)...") : QStringLiteral("Checking game folders..."), 0.6);
    struct Checked {
        GameList games;
        QString unavailable;
    };
    const double lookBegan = LibraryCache::toCacheDate(now());
    const auto known = [seen](const Game &game) { return seen.of(game.id); };
    auto checkDisk = [games = std::move(loaded.games), services, skip, collection, known]() mutable {
        QElapsedTimer checking;
        checking.start();
        Checked result;
        if (skip) {
            for (GamePtr &game : games)
                changeable(game).isInstalled = true;
        } else if (services.checkStatus) {
            const DiskLook look = DiskLook::take(services, games, collection, known);
            result.unavailable = look.unavailable;
            if (look.isAway)
                throw CollectionAway(look.unavailable);
            const QList<GameStatus> &statuses = look.statuses;
            qsizetype installed = 0;
            qsizetype compressed = 0;
            qsizetype downloadable = 0;
            for (qsizetype i = 0; i < games.size(); ++i) {
                Game &game = changeable(games[i]);
                game.isInstalled = statuses[i].isInstalled;
                game.isCompressed = statuses[i].isCompressed;
                game.isDownloadable = statuses[i].isDownloadable;
                game.downloadSize = statuses[i].downloadSize;
                installed += game.isInstalled;
                compressed += game.isCompressed;
                downloadable += game.isDownloadable;
            }
            Log::info(QStringLiteral("⏱️ Installation check complete: %1").arg(milliseconds(checking)));
            Log::info(QStringLiteral("   - Games installed: %1").arg(installed));
            Log::info(QStringLiteral("   - Games compressed: %1").arg(compressed));
            Log::info(QStringLiteral("   - Games downloadable (Lite): %1").arg(downloadable));
            Log::info(QStringLiteral("   - Games per second: %1")
                          .arg(games.size() * 1000 / std::max<qint64>(checking.elapsed(), 1)));
        }
        result.games = std::move(games);
        return result;
    };
    Checked checked = co_await runOnPool(checkDisk);
    requireAlive(self);
    setUnavailable(checked.unavailable);
    const bool looked = !skip && services.checkStatus;

    co_await step(QStringLiteral("Applying favorites and play history..."), 0.7);
    const UserData::Values user = m_userData.values();
    const QSet<QString> installedIds = looked ? QSet<QString>() : seen.installed;
    struct Applied {
        GameList games;
        MetadataIndexes metadata;
        std::shared_ptr<const LibraryIndex> index;
        QHash<QString, qsizetype> positions;
        QList<Platform> platforms;
    };
    auto applyUserData = [games = std::move(checked.games), user, installedIds, buildIndex = indexBuilder(),
                          allPlatforms]() mutable {
        QElapsedTimer applying;
        applying.start();
        PlatformTest isROM(&Platform::isRetroArchPlatformName);
        for (GamePtr &pointer : games) {
            const bool installed = isROM(pointer->platform) || installedIds.contains(pointer->id);
            if ((!installed || pointer->isInstalled) && !user.knows(pointer->id))
                continue;
            Game &game = changeable(pointer);
            user.applyTo(game);
            game.isInstalled = game.isInstalled || installed;
        }
        const double seconds = std::max(static_cast<double>(applying.elapsed()) / 1000, 0.001);
        Log::info(QStringLiteral("✅ Finished applyUserData in %1s (%2 games/s)")
                      .arg(seconds, 0, 'f', 3)
                      .arg(static_cast<qint64>(static_cast<double>(games.size()) / seconds)));
        Applied result;
        QFuture<std::shared_ptr<const LibraryIndex>> index = QtConcurrent::run([&] { return buildIndex(games); });
        result.metadata = MetadataIndexes::build(games);
        result.platforms = platformsWithPlayableGames(allPlatforms, games);
        result.positions = positionsOf(games);
        result.index = index.result();
        result.games = std::move(games);
        return result;
    };
    Applied applied = co_await runOnPool(applyUserData);
    requireAlive(self);
    publish(std::move(applied.games), std::move(applied.positions), applied.index);
    m_shownCollection = collection;
    m_allPlatforms = allPlatforms;
    m_platforms = applied.platforms;
    const GameList published = m_games;
    Q_EMIT platformsChanged();
    m_statusesKept = false;
    if (looked)
        saveAllStatuses(lookBegan);

    co_await step(QStringLiteral("Building indexes..."), 0.8);
    m_metadata = applied.metadata;
    if (looked)
        m_host.notifications.post(Notifications::gameStatusesUpdated);
    co_await step(QStringLiteral("Loading playlists..."), 0.9);
    auto parsePlaylists = [collection] { return LaunchBoxParser().parsePlaylists(collection); };
    QList<Playlist> playlists = co_await runOnPool(parsePlaylists);
    requireAlive(self);
    co_await step(QStringLiteral("Applying playlist filters..."), 0.9);
    auto fillPlaylists = [playlists, published] { return applyPlaylistFilters(playlists, published); };
    QList<Playlist> filled = co_await runOnPool(fillPlaylists);
    requireAlive(self);
    m_playlists = filled;
    Q_EMIT playlistsChanged();
    buildRecentlyPlayedList();

    co_await step(QStringLiteral("Saving to cache... (Next launch will be instant!)"), 0.95);
    // What this load read: the members may be another's by now, whose games must not stand under this path.
    CachedCollectionData cached{published, allPlatforms, filled, collection, LibraryCache::toCacheDate(now())};
    saveCache(std::move(cached));
    if (services.indexForDesktopSearch && m_host.settings.value(Settings::spotlightIndexingEnabled))
        services.indexForDesktopSearch(m_games, collection);
    setStatus(QStringLiteral("Complete! Loaded %1 games. Next launch will be much faster!").arg(m_games.size()), 1.0);
    Log::info(QStringLiteral("⏱️ ========== TOTAL FULL LOAD TIME: %1 ==========").arg(milliseconds(m_loadTimer)));
    co_await m_host.clock.sleep(std::chrono::milliseconds(50));
}

void GameLibrary::saveCache(CachedCollectionData data) {
    Log::info(QStringLiteral("Saving cache: %1 games, %2 platforms, %3 playlists")
                  .arg(data.games.size())
                  .arg(data.platforms.size())
                  .arg(data.playlists.size()));
    const QString name = QStringLiteral("cache of ") + data.collectionPath;
    auto save = [cache = LibraryCache(cacheFiles(data.collectionPath)), data = std::move(data)] { cache.save(data); };
    m_saves.post(name, save);
}

} // namespace ludarium

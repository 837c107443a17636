// The load of a collection: the order of its steps, with what each announces.

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Library/LoadSteps.h"
#include "Services/Library/LoadedRecords.h"

#include <QtConcurrent/QtConcurrentRun>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

/// What a list from the cache becomes before it is published.
struct Refreshed {
    GameList games;
    QHash<QString, qsizetype> positions;
    QList<Platform> platforms;
    MetadataIndexes metadata;
    std::shared_ptr<const LibraryIndex> index;
};

} // namespace

QCoro::Task<> GameLibrary::step(QString status, double progress) {
    if (!m_step.isNull())
        Log::debug(QStringLiteral("⏱️ %1 %2").arg(m_step, milliseconds(m_stepTimer)));
    m_step = status;
    m_stepTimer.start();
    setStatus(status, progress);
    // A turn of the event loop, so that the interface can show the status.
    const QPointer<GameLibrary> self(this);
    co_await m_host.clock.sleep(std::chrono::milliseconds(0));
    requireAlive(self);
}

QCoro::Task<> GameLibrary::loadCollection(QString collection) {
    const QPointer<GameLibrary> self(this);
    Log::info(QStringLiteral("========== LOADING COLLECTION: %1 ==========").arg(collection));
    m_loadTimer.start();
    m_step = QString();
    const bool isOther = std::exchange(m_collection, collection) != collection;
    setLoading(true);
    setErrorMessage({});
    if (isOther)
        setUnavailable({});
    const UserData::Values user = m_userData.values();
    QString failure;
    QString away;
    try {
        co_await step(QStringLiteral("Checking collection..."), 0);
        auto look = [collection] { return CollectionPresence::look(collection); };
        const CollectionPresence presence = co_await runOnPool(look);
        requireAlive(self);
        // What was told of it holds no more once it has come back; of a part of it the look at the games tells.
        if (!presence.isAway() && !presence.hasReason(m_unavailable))
            setUnavailable({});
        const bool shown = presence.isAway() && co_await loadUnavailable(collection, presence);
        if (!self)
            co_return;
        if (shown) {
            setLoading(false);
            co_return;
        }
        const bool prepared = co_await prepare(collection);
        if (!self || !prepared)
            co_return;
        co_await step(QStringLiteral("Checking for cached data..."), m_loadingProgress);
        auto open = cacheOpener(collection);
        Opened opened = co_await runOnPool(open);
        if (!self)
            co_return;
        m_loadedFromCache = opened.cached.has_value();
        if (opened.cached)
            co_await finishCacheLoad(std::move(*opened.cached), std::move(opened.seen), true);
        else
            co_await fullLoad(collection, std::move(opened.seen));
    } catch (const Abandoned &) {
        co_return;
    } catch (const CollectionAway &error) {
        failure = away = error.reason;
    } catch (...) {
        failure = currentExceptionText();
    }
    if (!self)
        co_return;
    if (!away.isEmpty())
        setUnavailable(away);
    // What the user did meanwhile was done to records that are gone.
    if (m_userData.values() != user)
        refreshAllFromUserData();
    if (!failure.isEmpty()) {
        Log::error(QStringLiteral("❌ Error during load: %1").arg(failure));
        setStatus(QStringLiteral("Error: %1").arg(failure), m_loadingProgress);
        setErrorMessage(QStringLiteral("Failed to load collection: %1").arg(failure));
    }
    setLoading(false);
}

std::function<std::shared_ptr<const LibraryIndex>(const GameList &games)> GameLibrary::indexBuilder() const {
    if (!m_indexedAtLoad)
        return [](const GameList &) { return nullptr; };
    return [titles = m_services.mt32Titles](const GameList &games) {
        return LibraryIndex::build(games, titles ? titles() : QSet<QString>());
    };
}

/// Reads what the last load and the last look at the disk left, for the thread pool.
std::function<GameLibrary::Opened()> GameLibrary::cacheOpener(const QString &collection) const {
    const bool arePlain = cacheFiles(collection).arePlain();
    const std::optional<QStringList> olderInstalled = m_host.settings.storedValue(Settings::installedGames);
    const std::optional<QStringList> olderCompressed = m_host.settings.storedValue(Settings::compressedGames);
    return [=, runInOrder = m_saves.runner(), cache = LibraryCache(cacheFiles(collection)), today = now()] {
        Opened opened;
        runInOrder([&] {
            cache.settle(collection);
            const CacheFiles::Lock lock(cache.files());
            opened.seen = SeenStatuses::load(cache.files());
        });
        // Where older versions kept the ids.
        const auto migrate = [&](QSet<QString> &ids, const std::optional<QStringList> &older, const char *what) {
            if (opened.seen.found || !arePlain || !older)
                return;
            ids = QSet<QString>(older->cbegin(), older->cend());
            Log::info(u"%1 %2 game IDs from UserDefaults"_s.arg(ids.size()).arg(QLatin1StringView(what)));
        };
        migrate(opened.seen.installed, olderInstalled, "installed");
        migrate(opened.seen.compressed, olderCompressed, "compressed");
        if (opened.seen.found) {
            Log::info(u"%1 installed game IDs from file cache"_s.arg(opened.seen.installed.size()));
            Log::info(u"%1 compressed game IDs from file cache"_s.arg(opened.seen.compressed.size()));
        }
        opened.cached = cache.load(collection, today);
        return opened;
    };
}

/// What is known of a collection that cannot be looked at: what stands in memory, else what the cache holds. False when
/// that is nothing and the folder is there.
QCoro::Task<bool> GameLibrary::loadUnavailable(QString collection, CollectionPresence presence) {
    const QPointer<GameLibrary> self(this);
    if (m_shownCollection == collection && !m_games.isEmpty()) {
        setUnavailable(presence.collection);
        setStatus({}, 1.0);
        co_return true;
    }
    co_await step(QStringLiteral("Checking for cached data..."), m_loadingProgress);
    auto open = cacheOpener(collection);
    Opened opened = co_await runOnPool(open);
    requireAlive(self);
    if (!opened.cached && presence.holdsOther)
        co_return false;
    setUnavailable(presence.collection);
    m_loadedFromCache = opened.cached.has_value();
    if (opened.cached) {
        co_await finishCacheLoad(std::move(*opened.cached), std::move(opened.seen), false);
        co_return true;
    }
    setStatus(QStringLiteral("Validation failed"), m_loadingProgress);
    setErrorMessage(QStringLiteral("Invalid collection. Expected folders: Data/, eXo/, Images/"));
    co_return true;
}

/// With `verify` the disk is looked at afterwards.
QCoro::Task<> GameLibrary::finishCacheLoad(CachedCollectionData data, SeenStatuses seen, bool verify) {
    const QPointer<GameLibrary> self(this);
    const QString collection = data.collectionPath;
    co_await step(QStringLiteral("Loading from cache (fast!)..."), 0.5);
    co_await step(QStringLiteral("Refreshing favorites and play counts..."), 0.7);
    // User data goes into the records before they are published, while nobody else holds them: one publication, and
    // no record is copied. The sidebar stands as soon as the games do, so what it needs is made with them.
    const bool statusesKept = seen.found;
    auto prepareGames = [user = m_userData.values(), seen = std::move(seen), platforms = data.platforms,
                         games = std::move(data.games), buildIndex = indexBuilder()]() mutable {
        Refreshed result;
        // What the user and the disk say is in no index.
        QFuture<void> indexes = QtConcurrent::run([&] {
            result.metadata = MetadataIndexes::build(games);
            result.index = buildIndex(games);
        });
        result.positions = positionsOf(games);
        const qsizetype count = refreshRecords(games, result.positions, seen, user);
        if (count == 0)
            Log::info(QStringLiteral("No user data to refresh"));
        else
            Log::info(QStringLiteral("✅ Refreshed user data of %1 games").arg(count));
        result.platforms = platformsWithPlayableGames(platforms, games);
        indexes.waitForFinished();
        result.games = std::move(games);
        return result;
    };
    Refreshed refreshed = co_await runOnPool(prepareGames);
    requireAlive(self);
    m_playlists = std::move(data.playlists);
    m_allPlatforms = std::move(data.platforms);
    co_await step(QStringLiteral("Using cached installation data..."), 0.8);
    publish(std::move(refreshed.games), std::move(refreshed.positions), refreshed.index);
    m_shownCollection = collection;
    m_statusesKept = statusesKept;
    m_platforms = std::move(refreshed.platforms);
    co_await step(QStringLiteral("Building indexes..."), 0.9);
    m_metadata = std::move(refreshed.metadata);
    buildRecentlyPlayedList();
    Q_EMIT platformsChanged();
    Q_EMIT playlistsChanged();
    co_await step(QStringLiteral("Ready! Loaded %1 games from cache ⚡").arg(m_games.size()), 1.0);
    Log::info(QStringLiteral("⏱️ ========== TOTAL CACHE LOAD TIME: %1 ==========").arg(milliseconds(m_loadTimer)));
    if (m_services.indexForDesktopSearch && m_host.settings.value(Settings::spotlightIndexingEnabled))
        m_services.indexForDesktopSearch(m_games, collection);
    setLoading(false);
    if (!verify)
        co_return;
    Log::info(QStringLiteral("🔄 Starting background filesystem verification (non-blocking)..."));
    ++m_verifications;
    spawn(verifyStatuses(collection), "verifying the installation status");
}

} // namespace ludarium

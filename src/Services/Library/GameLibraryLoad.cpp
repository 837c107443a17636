// The load of a collection: the order of its steps, with what each announces.

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/NotificationCenter.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/LaunchBoxParser.h"
#include "Services/Library/PlaylistRules.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <unistd.h>

namespace ludarium {

namespace {

/// The library was destroyed while its load was waiting for something.
struct Abandoned {};

/// To be called after every wait of a step, before the library is touched again.
void requireAlive(const QPointer<GameLibrary> &library) {
    if (!library)
        throw Abandoned();
}

/// The record to change: the shared one itself while nobody else holds it, which is so until a list is published.
Game &changeable(GamePtr &game) {
    if (game.use_count() != 1)
        game = std::make_shared<Game>(*game);
    return const_cast<Game &>(*game);
}

bool isWindows9x(const QString &platform) {
    return platform == QLatin1StringView("Windows 9x") || platform == QLatin1StringView("Windows 9.x");
}

/// Remembers for the last platform name whether it is one of ROM files: games come in runs of one platform.
class RomPlatformTest {
  public:
    bool operator()(const QString &name) {
        if (name != m_name || m_name.isNull()) {
            m_name = name;
            m_isROM = Platform::isRetroArchPlatformName(name);
        }
        return m_isROM;
    }

  private:
    QString m_name;
    bool m_isROM = false;
};

void associateAdditionalApplications(GameList &games, const QList<AdditionalApplication> &applications) {
    QHash<QString, QList<AdditionalApplication>> byGame;
    for (const AdditionalApplication &application : applications)
        byGame[application.gameId].append(application);
    for (GamePtr &game : games)
        if (const auto found = byGame.constFind(game->id); found != byGame.cend())
            changeable(game).additionalApplications = *found;
}

void logLinuxPatch(const QString &collection) {
    const QDir dos(collection + QStringLiteral("/eXo/eXoDOS"));
    if (!dos.exists()) {
        Log::info(QStringLiteral(
            "ℹ️ No eXoDOS folder found - skipping Linux patch check (standalone non-DOS collection)"));
        return;
    }
    if (!dos.exists(QStringLiteral("!dos"))) {
        Log::warning(
            QStringLiteral("⚠️ eXoDOS present but !dos folder not found - Linux patch may not be installed"));
        return;
    }
    // One folder tells: the patch adds scripts to every game.
    const QDir scripts(dos.filePath(QStringLiteral("!dos")));
    int looked = 0;
    for (const QString &name : scripts.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted)) {
        if (!QDir(scripts.filePath(name)).entryList({QStringLiteral("*.bsh")}, QDir::Files).isEmpty()) {
            Log::info(QStringLiteral("✅ Linux patch detected - .bsh scripts found"));
            return;
        }
        if (++looked == 20)
            break;
    }
    Log::warning(QStringLiteral("⚠️ No .bsh files found in eXoDOS game folders"));
}

QString milliseconds(const QElapsedTimer &timer) {
    return QStringLiteral("%1ms").arg(timer.elapsed());
}

} // namespace

bool GameLibrary::validateCollectionStructure(const QString &collection) {
    const QDir folder(collection);
    if (!folder.exists(QStringLiteral("Data")) && !folder.exists(QStringLiteral("xml"))) {
        Log::error(QStringLiteral("❌ Validation failed: No Data or xml folder found"));
        return false;
    }
    if (folder.exists(QStringLiteral("Data/Platforms")))
        return true;
    if (folder.exists(QStringLiteral("xml/all"))) {
        Log::info(QStringLiteral("✅ Lite collection structure detected: xml/all/"));
        return true;
    }
    for (const char *name : {"eXo", "Images", "Videos", "Manuals"})
        if (folder.exists(QLatin1StringView(name)))
            return true;
    return false;
}

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

QCoro::Task<bool> GameLibrary::mayUseReadOnly(QString collection) {
    const QPointer<GameLibrary> self(this);
    // A folder that is gone is not a read-only one: a cached library is shown all the same.
    auto testWritable = [collection] {
        return !QFileInfo::exists(collection) || ::access(QFile::encodeName(collection).constData(), W_OK) == 0;
    };
    const bool writable = co_await runOnPool(testWritable);
    requireAlive(self);
    if (writable)
        co_return true;
    Log::warning(QStringLiteral("Collection volume is read-only: %1").arg(collection));
    Alert alert;
    alert.title = QStringLiteral("Read-Only Collection");
    alert.text = QStringLiteral("The collection at \"%1\" is on a read-only volume. Games may not launch correctly "
                                "because the app needs to write configuration files.\n\nPlease copy the collection to "
                                "a writable drive, or remount the volume with write access.")
                     .arg(QFileInfo(collection).fileName());
    alert.buttons = QStringList{QStringLiteral("Continue Anyway"), QStringLiteral("Cancel")};
    alert.style = Alert::Style::Warning;
    const int answer = co_await m_host.dialogs.ask(alert);
    requireAlive(self);
    co_return answer == 0;
}

QCoro::Task<> GameLibrary::offerSetup(QString collection) {
    const QPointer<GameLibrary> self(this);
    if (!m_services.setupStatus || !m_services.promptSetup || !m_services.runSetup ||
        (m_services.isSettingUp && m_services.isSettingUp()))
        co_return;
    const auto status = m_services.setupStatus;
    auto readStatus = [=] { return status(collection); };
    const LibraryServices::Setup setup = co_await runOnPool(readStatus);
    requireAlive(self);
    if (!setup.needsSetup)
        co_return;
    co_await step(QStringLiteral("Collection needs setup..."), m_loadingProgress);
    const bool wanted = co_await m_services.promptSetup(collection);
    requireAlive(self);
    if (!wanted)
        co_return;
    co_await step(QStringLiteral("Running collection setup..."), m_loadingProgress);
    QString failure;
    try {
        co_await m_services.runSetup(collection);
    } catch (...) {
        failure = currentExceptionText();
    }
    requireAlive(self);
    if (!failure.isEmpty()) {
        Log::error(QStringLiteral("Collection setup failed: %1").arg(failure));
        co_return;
    }
    clearCache();
    Log::info(QStringLiteral("✅ Cache cleared after setup to force re-parsing"));
}

QCoro::Task<> GameLibrary::offerRepair(QString collection) {
    const QPointer<GameLibrary> self(this);
    if (!m_services.setupStatus || !m_services.promptRepair || !m_services.repairMetadataExtraction ||
        (m_services.isSettingUp && m_services.isSettingUp()))
        co_return;
    const auto status = m_services.setupStatus;
    auto readStatus = [=] { return status(collection); };
    const LibraryServices::Setup setup = co_await runOnPool(readStatus);
    requireAlive(self);
    if (setup.incomplete.isEmpty())
        co_return;
    co_await step(QStringLiteral("Checking metadata extraction..."), m_loadingProgress);
    Log::info(QStringLiteral("Detected incomplete metadata extraction - prompting for repair"));
    for (const QString &name : setup.incomplete) {
        Log::info(QStringLiteral("Collection %1 needs metadata repair").arg(name));
        const bool wanted = co_await m_services.promptRepair(collection, name);
        requireAlive(self);
        if (!wanted)
            continue;
        co_await step(QStringLiteral("Repairing %1 metadata...").arg(name), m_loadingProgress);
        QString failure;
        try {
            co_await m_services.repairMetadataExtraction(collection, name);
        } catch (...) {
            failure = currentExceptionText();
        }
        requireAlive(self);
        if (failure.isEmpty())
            Log::info(QStringLiteral("Metadata repair completed for %1").arg(name));
        else
            Log::error(QStringLiteral("Metadata repair failed for %1: %2").arg(name, failure));
    }
}

/// Everything that comes before the first game is read; false when the user cancelled.
QCoro::Task<bool> GameLibrary::prepare(QString collection) {
    const QPointer<GameLibrary> self(this);
    const bool goOn = co_await mayUseReadOnly(collection);
    if (!goOn) {
        setLoading(false);
        setStatus({}, m_loadingProgress);
        co_return false;
    }
    co_await offerSetup(collection);
    co_await offerRepair(collection);
    const LibraryServices services = m_services;
    auto loadDatabases = [collection, services] {
        logLinuxPatch(collection);
        if (services.loadScummVMDatabase)
            services.loadScummVMDatabase(collection);
    };
    co_await runOnPool(loadDatabases);
    requireAlive(self);
    co_await step(QStringLiteral("Checking download-on-demand support..."), m_loadingProgress);
    if (services.ensureDownloadIndex)
        co_await services.ensureDownloadIndex(collection);
    requireAlive(self);
    auto loadIndexes = [collection, services] {
        if (services.loadDownloadIndex)
            services.loadDownloadIndex(collection);
        if (services.loadRequirements)
            services.loadRequirements(collection);
    };
    co_await runOnPool(loadIndexes);
    requireAlive(self);
    co_return true;
}

QCoro::Task<> GameLibrary::loadCollection(QString collection) {
    const QPointer<GameLibrary> self(this);
    Log::info(QStringLiteral("========== LOADING COLLECTION: %1 ==========").arg(collection));
    m_loadTimer.start();
    m_step = QString();
    m_collection = collection;
    setLoading(true);
    setErrorMessage({});
    const UserData::Values user = m_userData.values();
    QString failure;
    try {
        co_await step(QStringLiteral("Checking collection..."), 0);
        const bool prepared = co_await prepare(collection);
        if (!self || !prepared)
            co_return;
        co_await step(QStringLiteral("Checking for cached data..."), m_loadingProgress);
        const LibraryCache cache = m_cache;
        const QDateTime today = now();
        auto loadCache = [=] { return cache.load(collection, today); };
        std::optional<CachedCollectionData> cached = co_await runOnPool(loadCache);
        if (!self)
            co_return;
        m_loadedFromCache = cached.has_value();
        if (cached)
            co_await finishCacheLoad(std::move(*cached));
        else
            co_await fullLoad(collection);
    } catch (const Abandoned &) {
        co_return;
    } catch (...) {
        failure = currentExceptionText();
    }
    if (!self)
        co_return;
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

QCoro::Task<> GameLibrary::finishCacheLoad(CachedCollectionData data) {
    const QPointer<GameLibrary> self(this);
    const QString collection = data.collectionPath;
    co_await step(QStringLiteral("Loading from cache (fast!)..."), 0.5);
    co_await step(QStringLiteral("Refreshing favorites and play counts..."), 0.7);
    // User data goes into the records before they are published, while nobody else holds them: one publication, and
    // no record is copied.
    const UserData::Values user = m_userData.values();
    const QSet<QString> installed = m_installedIds;
    const QSet<QString> compressed = m_compressedIds;
    auto refresh = [user, installed, compressed, games = std::move(data.games)]() mutable {
        RomPlatformTest isROM;
        QString contentName;
        bool isContent = false;
        qsizetype count = 0;
        for (GamePtr &pointer : games) {
            const QString &platform = pointer->platform;
            if (platform != contentName || contentName.isNull()) {
                contentName = platform;
                isContent = isContentPlatform(platform);
            }
            const QString &id = pointer->id;
            const bool isInstalled = installed.contains(id);
            const bool isCompressed = !isInstalled && compressed.contains(id);
            const bool counts = isROM(platform) || isContent;
            const bool known = user.knows(id);
            if (!counts && !isInstalled && !isCompressed && !known)
                continue;
            Game &game = changeable(pointer);
            game.isInstalled = counts || isInstalled;
            game.isCompressed = !isContent && isCompressed;
            if (known)
                user.applyTo(game);
            ++count;
        }
        if (count == 0)
            Log::info(QStringLiteral("No user data to refresh"));
        else
            Log::info(QStringLiteral("✅ Refreshed user data of %1 games").arg(count));
        return games;
    };
    auto refreshed = co_await runOnPool(refresh);
    requireAlive(self);
    m_playlists = std::move(data.playlists);
    m_allPlatforms = std::move(data.platforms);
    co_await step(QStringLiteral("Using cached installation data..."), 0.8);
    const QList<Platform> platforms = m_allPlatforms;
    // The sidebar and the first list stand as soon as the games do, so what they need is made with them.
    struct Prepared {
        QList<Platform> platforms;
        MetadataIndexes metadata;
        std::shared_ptr<const LibraryIndex> index;
    };
    auto prepareSidebar = [platforms, refreshed, services = m_services] {
        return Prepared{platformsWithPlayableGames(platforms, refreshed), MetadataIndexes::build(refreshed),
                        LibraryIndex::build(refreshed, services.mt32Titles ? services.mt32Titles() : QSet<QString>())};
    };
    const Prepared prepared = co_await runOnPool(prepareSidebar);
    requireAlive(self);
    publish(std::move(refreshed), prepared.index);
    m_platforms = prepared.platforms;
    co_await step(QStringLiteral("Building indexes..."), 0.9);
    m_metadata = prepared.metadata;
    buildRecentlyPlayedList();
    Q_EMIT platformsChanged();
    Q_EMIT playlistsChanged();
    co_await step(QStringLiteral("Ready! Loaded %1 games from cache ⚡").arg(m_games.size()), 1.0);
    Log::info(QStringLiteral("⏱️ ========== TOTAL CACHE LOAD TIME: %1 ==========").arg(milliseconds(m_loadTimer)));
    if (m_services.indexForDesktopSearch && m_host.settings.value(Settings::spotlightIndexingEnabled))
        m_services.indexForDesktopSearch(m_games, collection);
    setLoading(false);
    Log::info(QStringLiteral("🔄 Starting background filesystem verification (non-blocking)..."));
    spawn(checkInstalledStatusSilent(collection), "verifying the installation status");
}

/// What the steps of a full load hand on, on the pool.
struct GameLibrary::Loaded {
    GameList games;
    QList<AdditionalApplication> applications;
};

QCoro::Task<> GameLibrary::fullLoad(QString collection) {
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
    m_allPlatforms = platforms.isEmpty() ? Platform::defaultPlatforms() : std::move(platforms);
    const QList<Platform> allPlatforms = m_allPlatforms; // of this load, whatever another makes of the member
    m_platforms = m_allPlatforms;
    Q_EMIT platformsChanged();

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
        QSet<QString> installed;
        QSet<QString> compressed;
    };
    auto checkDisk = [games = std::move(loaded.games), services, skip, collection]() mutable {
        QElapsedTimer checking;
        checking.start();
        Checked result;
        if (skip) {
            for (GamePtr &game : games)
                changeable(game).isInstalled = true;
        } else if (services.checkStatus) {
            const QList<GameStatus> statuses = services.checkStatus(games, collection);
            qsizetype downloadable = 0;
            for (qsizetype i = 0; i < games.size(); ++i) {
                Game &game = changeable(games[i]);
                game.isInstalled = statuses[i].isInstalled;
                game.isCompressed = statuses[i].isCompressed;
                game.isDownloadable = statuses[i].isDownloadable;
                game.downloadSize = statuses[i].downloadSize;
                if (game.isInstalled)
                    result.installed.insert(game.id);
                if (game.isCompressed)
                    result.compressed.insert(game.id);
                downloadable += game.isDownloadable;
            }
            Log::info(QStringLiteral("⏱️ Installation check complete: %1").arg(milliseconds(checking)));
            Log::info(QStringLiteral("   - Games installed: %1").arg(result.installed.size()));
            Log::info(QStringLiteral("   - Games compressed: %1").arg(result.compressed.size()));
            Log::info(QStringLiteral("   - Games downloadable (Lite): %1").arg(downloadable));
            Log::info(QStringLiteral("   - Games per second: %1")
                          .arg(games.size() * 1000 / std::max<qint64>(checking.elapsed(), 1)));
        }
        result.games = std::move(games);
        return result;
    };
    Checked checked = co_await runOnPool(checkDisk);
    requireAlive(self);
    if (!skip && services.checkStatus) {
        m_installedIds = checked.installed;
        m_compressedIds = checked.compressed;
        saveStatusIds();
    }

    co_await step(QStringLiteral("Applying favorites and play history..."), 0.7);
    const UserData::Values user = m_userData.values();
    const QSet<QString> installedIds = m_installedIds;
    struct Applied {
        GameList games;
        MetadataIndexes metadata;
        std::shared_ptr<const LibraryIndex> index;
        QList<Platform> platforms;
    };
    auto applyUserData = [games = std::move(checked.games), user, installedIds, services,
                          all = m_allPlatforms]() mutable {
        QElapsedTimer applying;
        applying.start();
        RomPlatformTest isROM;
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
        result.metadata = MetadataIndexes::build(games);
        result.platforms = platformsWithPlayableGames(all, games);
        result.index = LibraryIndex::build(games, services.mt32Titles ? services.mt32Titles() : QSet<QString>());
        result.games = std::move(games);
        return result;
    };
    Applied applied = co_await runOnPool(applyUserData);
    requireAlive(self);
    publish(std::move(applied.games), applied.index);
    m_platforms = applied.platforms;
    const GameList published = m_games;
    Q_EMIT platformsChanged();

    co_await step(QStringLiteral("Building indexes..."), 0.8);
    m_metadata = applied.metadata;
    if (!skip && services.checkStatus)
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
    auto save = [cache = m_cache, data = std::move(data)] { cache.save(data); };
    spawn(runOnPool(save), "saving the library cache");
}

} // namespace ludarium

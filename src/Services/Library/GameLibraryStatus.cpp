// What the disk says of the games, and what is kept of that for the next start.

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/NotificationCenter.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Library/DiskLook.h"
#include "Services/Library/GameLibrary.h"

#include <QElapsedTimer>
#include <QPointer>

namespace ludarium {

void GameLibrary::setGameStatus(const QString &id, const GameStatus &status) {
    const auto at = position(id);
    if (!at)
        return;
    if (status != GameStatus::of(*m_games[*at]))
        replaceGame(*at, [&](Game &game) {
            game.isInstalled = status.isInstalled;
            game.isCompressed = status.isCompressed;
            game.isDownloadable = status.isDownloadable;
            game.downloadSize = status.downloadSize;
        });
    status.isInstalled ? void(m_installedIds.insert(id)) : void(m_installedIds.remove(id));
    status.isCompressed ? void(m_compressedIds.insert(id)) : void(m_compressedIds.remove(id));
    saveStatusIds();
}

QCoro::Task<> GameLibrary::markGameInstalled(QString id, bool installed) {
    const QPointer<GameLibrary> self(this);
    const auto check = m_services.checkGame;
    const QString collection = m_collection;
    bool hasArchive = false;
    if (const GamePtr known = game(id); known && !installed && !collection.isEmpty() && check) {
        auto look = [=] { return check(known, collection); };
        const std::optional<GameStatus> found = co_await runOnPool(look);
        hasArchive = found && found->isCompressed;
    }
    const GamePtr current = self && collection == m_collection ? game(id) : GamePtr();
    if (!current)
        co_return;
    GameStatus status = GameStatus::of(*current);
    status.isInstalled = installed;
    status.isCompressed = hasArchive;
    setGameStatus(id, status);
}

QCoro::Task<> GameLibrary::updateGameStatus(QString id) {
    const GamePtr wanted = game(id);
    if (!wanted || !m_services.checkGame)
        co_return;
    if (wanted->configurationPath.isNull()) {
        Log::warning(QStringLiteral("⚠️ updateGameStatus: No config path for %1, skipping").arg(wanted->title));
        co_return;
    }
    const QPointer<GameLibrary> self(this);
    const auto check = m_services.checkGame;
    const QString collection = m_collection;
    struct Look {
        std::optional<GameStatus> status;
        CollectionPresence presence;
    };
    auto look = [=] { return Look{check(wanted, collection), CollectionPresence::look(collection)}; };
    const Look found = co_await runOnPool(look);
    if (!self || !found.status || collection != m_collection)
        co_return;
    const QString &family = found.presence.reasonFor(gameFamily(wanted->platform));
    const bool isSeen = found.status->isInstalled || found.status->isCompressed;
    const bool wasSeen = wanted->isInstalled || wanted->isCompressed;
    if (found.presence.isAway() || (!family.isNull() && wasSeen && !isSeen)) {
        setUnavailable(found.presence.isAway() ? found.presence.collection : family);
        co_return;
    }
    const std::optional<GameStatus> &status = found.status;
    setGameStatus(id, *status);
    const auto flag = [](bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); };
    Log::info(QStringLiteral("   ✅ Updated: isInstalled=%1, isCompressed=%2, isDownloadable=%3")
                  .arg(flag(status->isInstalled), flag(status->isCompressed), flag(status->isDownloadable)));
    m_host.notifications.post(Notifications::gameStatusesUpdated);
}

QCoro::Task<> GameLibrary::checkInstalledStatusSilent(QString collection) {
    if (!m_services.checkStatus)
        co_return;
    const QPointer<GameLibrary> self(this);
    const GameList snapshot = m_games;
    QElapsedTimer timer;
    timer.start();
    auto look = [=, services = m_services] {
        return DiskLook::take(services, snapshot, collection, [](const Game &game) { return GameStatus::of(game); });
    };
    const DiskLook found = co_await runOnPool(look);
    if (!self || collection != m_collection)
        co_return;
    setUnavailable(found.unavailable);
    const QList<GameStatus> &statuses = found.statuses;
    if (statuses.size() != snapshot.size())
        co_return;

    // The list may have changed meanwhile: results go to the current record of each id.
    GameList games = m_games;
    QSet<QString> installed;
    QSet<QString> compressed;
    qsizetype changes = 0;
    for (qsizetype i = 0; i < snapshot.size(); ++i) {
        const QString &id = snapshot[i]->id;
        if (statuses[i].isInstalled)
            installed.insert(id);
        if (statuses[i].isCompressed)
            compressed.insert(id);
        const auto at = position(id);
        if (!at || GameStatus::of(*games[*at]) == statuses[i])
            continue;
        auto changed = std::make_shared<Game>(*games[*at]);
        changed->isInstalled = statuses[i].isInstalled;
        changed->isCompressed = statuses[i].isCompressed;
        changed->isDownloadable = statuses[i].isDownloadable;
        changed->downloadSize = statuses[i].downloadSize;
        games[*at] = std::move(changed);
        ++changes;
    }
    const bool idsChanged = installed != m_installedIds || compressed != m_compressedIds;
    m_installedIds = std::move(installed);
    m_compressedIds = std::move(compressed);
    if (idsChanged)
        saveStatusIds();
    if (changes == 0) {
        Log::info(QStringLiteral("🔇 Silent check: no changes detected — UI unchanged"));
    } else {
        Log::info(QStringLiteral("🔇 Silent check found %1 status changes — updating UI").arg(changes));
        publishChanged(std::move(games));
        m_platforms = platformsWithPlayableGames(m_allPlatforms, m_games);
        Q_EMIT platformsChanged();
        m_host.notifications.post(Notifications::gameStatusesUpdated);
    }
    Log::info(QStringLiteral("⏱️ Silent check took %1s, %2 changes")
                  .arg(static_cast<double>(timer.elapsed()) / 1000, 0, 'f', 2)
                  .arg(changes));
}

void GameLibrary::loadStatusIds() {
    bool migrates = false;
    const auto read = [&](const QString &file, const Setting<QStringList> &older, const char *what) {
        if (const auto ids = LibraryCache::loadIds(file)) {
            Log::info(QStringLiteral("%1 %2 game IDs from file cache").arg(ids->size()).arg(QLatin1StringView(what)));
            return *ids;
        }
        const std::optional<QStringList> list = m_host.settings.storedValue(older);
        if (!list)
            return QSet<QString>();
        migrates = true;
        Log::info(QStringLiteral("%1 %2 game IDs from UserDefaults").arg(list->size()).arg(QLatin1StringView(what)));
        return QSet<QString>(list->cbegin(), list->cend());
    };
    m_installedIds = read(m_cache.installedIdsFile(), Settings::installedGames, "installed");
    m_compressedIds = read(m_cache.compressedIdsFile(), Settings::compressedGames, "compressed");
    if (migrates)
        saveStatusIds();
}

void GameLibrary::saveStatusIds() {
    auto save = [cache = m_cache, installed = m_installedIds, compressed = m_compressedIds] {
        LibraryCache::saveIds(cache.installedIdsFile(), installed);
        LibraryCache::saveIds(cache.compressedIdsFile(), compressed);
    };
    spawn(runOnPool(save), "saving the ids of installed games");
}

} // namespace ludarium

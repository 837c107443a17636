// What the disk says of the games, and what is kept of that for the next start.

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/NotificationCenter.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Library/DiskLook.h"
#include "Services/Library/GameLibrary.h"

#include <QCoro/QCoroSignal>
#include <QElapsedTimer>
#include <algorithm>

namespace ludarium {

using namespace Qt::StringLiterals;

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
    if (m_looks > 0)
        m_changedDuringLooks.insert(id);
    m_statusChanges.append({id, status});
    if (m_statusHolds == 0)
        saveStatusChanges();
}

GameLibrary::StatusHold::~StatusHold() {
    if (m_library && --m_library->m_statusHolds == 0)
        m_library->saveStatusChanges();
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
    const double began = LibraryCache::toCacheDate(now());
    QElapsedTimer timer;
    timer.start();
    ++m_looks;
    auto look = [=, services = m_services] {
        return DiskLook::take(services, snapshot, collection, [](const Game &game) { return GameStatus::of(game); });
    };
    const DiskLook found = co_await runOnPool(look);
    if (!self)
        co_return;
    const QSet<QString> changedMeanwhile = m_changedDuringLooks;
    if (--m_looks == 0)
        m_changedDuringLooks.clear();
    if (collection != m_collection)
        co_return;
    setUnavailable(found.unavailable);
    const QList<GameStatus> &statuses = found.statuses;
    if (statuses.size() != snapshot.size())
        co_return;

    // The list may have changed meanwhile: results go to the current record of each id.
    GameList games = m_games;
    qsizetype changes = 0;
    for (qsizetype i = 0; i < snapshot.size(); ++i) {
        const QString &id = snapshot[i]->id;
        const auto at = position(id);
        if (!at || GameStatus::of(*games[*at]) == statuses[i] || changedMeanwhile.contains(id))
            continue;
        auto changed = std::make_shared<Game>(*games[*at]);
        changed->isInstalled = statuses[i].isInstalled;
        changed->isCompressed = statuses[i].isCompressed;
        changed->isDownloadable = statuses[i].isDownloadable;
        changed->downloadSize = statuses[i].downloadSize;
        games[*at] = std::move(changed);
        ++changes;
    }
    if (changes == 0) {
        Log::info(QStringLiteral("🔇 Silent check: no changes detected — UI unchanged"));
    } else {
        Log::info(QStringLiteral("🔇 Silent check found %1 status changes — updating UI").arg(changes));
        publishChanged(std::move(games));
        m_platforms = platformsWithPlayableGames(m_allPlatforms, m_games);
        Q_EMIT platformsChanged();
        m_host.notifications.post(Notifications::gameStatusesUpdated);
    }
    if (changes != 0 || !m_statusesKept)
        saveAllStatuses(began);
    Log::info(QStringLiteral("⏱️ Silent check took %1s, %2 changes")
                  .arg(static_cast<double>(timer.elapsed()) / 1000, 0, 'f', 2)
                  .arg(changes));
}

QCoro::Task<> GameLibrary::verifyStatuses(QString collection) {
    const QPointer<GameLibrary> self(this);
    QString failure;
    try {
        co_await checkInstalledStatusSilent(collection);
    } catch (...) {
        failure = currentExceptionText();
    }
    if (!failure.isEmpty())
        Log::error(u"❌ verifying the installation status: %1"_s.arg(failure));
    if (!self)
        co_return;
    --m_verifications;
    Q_EMIT verificationEnded();
}

QCoro::Task<> GameLibrary::statusesVerified() {
    const QPointer<GameLibrary> self(this);
    while (self && m_verifications > 0)
        co_await qCoro(this, &GameLibrary::verificationEnded);
}

CacheFiles GameLibrary::cacheFiles(const QString &collection) const {
    return CacheFiles(m_host.paths, collection, m_host.settings.value(Settings::collectionPath));
}

void GameLibrary::saveAllStatuses(double time) {
    m_statusesKept = true;
    m_statusChanges.clear(); // they stand in the records
    auto save = [files = cacheFiles(m_shownCollection), games = m_games, time, today = now()] {
        const SeenStatuses seen = SeenStatuses::of(games, time);
        const CacheFiles::Lock lock(files);
        files.prepareFolder();
        if (!seen.saveUnlessOlder(files, LibraryCache::toCacheDate(today)))
            Log::info(u"The status of games was seen later by another process; that stays"_s);
    };
    m_saves.post(u"statuses of "_s + m_shownCollection, save);
}

void GameLibrary::saveStatusChanges() {
    if (m_statusChanges.isEmpty())
        return;
    const double time = LibraryCache::toCacheDate(now());
    if (!m_statusesKept)
        return saveAllStatuses(time);
    // Into what is there: another process may have kept changes of its own.
    auto save = [files = cacheFiles(m_shownCollection), changes = std::exchange(m_statusChanges, {}), time] {
        const CacheFiles::Lock lock(files);
        files.prepareFolder();
        SeenStatuses seen = SeenStatuses::load(files);
        for (const auto &[id, status] : changes)
            seen.set(id, status);
        seen.time = std::max(seen.time, time);
        seen.save(files);
    };
    m_saves.post({}, save);
}

} // namespace ludarium

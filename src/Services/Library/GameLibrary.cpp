#include "Services/Library/GameLibrary.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/NotificationCenter.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <QPointer>

namespace ludarium {

GameLibrary::GameLibrary(Host &host, LibraryServices services, QObject *parent)
    : QObject(parent), m_host(host), m_services(std::move(services)), m_cache(host.paths), m_userData(host.settings) {
    loadStatusIds();
    // The first to hear of new games, so that nobody sees a recent list of records that are gone.
    connect(this, &GameLibrary::gamesChanged, this, &GameLibrary::buildRecentlyPlayedList);
    connect(&m_userData, &UserData::changedElsewhere, this, &GameLibrary::refreshAllFromUserData);
}

QDateTime GameLibrary::now() const {
    return m_host.clock.now();
}

bool GameLibrary::skipInstallCheck() const {
    return m_host.settings.value(Settings::skipInstallCheck);
}

std::optional<qsizetype> GameLibrary::position(const QString &id) const {
    const auto found = m_positions.constFind(id);
    return found == m_positions.cend() ? std::nullopt : std::optional(*found);
}

GamePtr GameLibrary::game(const QString &id) const {
    const auto at = position(id);
    return at ? m_games[*at] : GamePtr();
}

const LibraryIndex &GameLibrary::index() const {
    if (!m_index)
        m_index = LibraryIndex::build(m_games, m_services.mt32Titles ? m_services.mt32Titles() : QSet<QString>());
    return *m_index;
}

QHash<QString, qsizetype> GameLibrary::positionsOf(const GameList &games) {
    QHash<QString, qsizetype> positions;
    positions.reserve(games.size());
    for (qsizetype i = 0; i < games.size(); ++i)
        positions.insert(games[i]->id, i);
    return positions;
}

void GameLibrary::publish(GameList games, QHash<QString, qsizetype> positions,
                          std::shared_ptr<const LibraryIndex> index) {
    m_games = std::move(games);
    m_positions = std::move(positions);
    m_index = std::move(index);
    Q_EMIT gamesChanged();
}

void GameLibrary::publishChanged(GameList games) {
    m_games = std::move(games);
    Q_EMIT gamesChanged();
}

void GameLibrary::replaceGame(qsizetype position, const std::function<void(Game &)> &change) {
    auto changed = std::make_shared<Game>(*m_games[position]);
    change(*changed);
    const QString id = changed->id;
    const GamePtr old = std::exchange(m_games[position], std::move(changed));
    Q_EMIT gameReplaced(position, old);
    Q_EMIT gamesChanged();
    Q_EMIT gameChanged(id);
}

// --- What the user does

bool GameLibrary::keep(const std::function<void()> &change) {
    try {
        change();
        return true;
    } catch (const std::exception &error) {
        const QString reason = QString::fromUtf8(error.what());
        Log::error(QStringLiteral("❌ Failed to keep user data: %1").arg(reason));
        Q_EMIT userDataRefused(reason);
        return false;
    }
}

void GameLibrary::refreshFromUserData(const QString &id) {
    const auto at = position(id);
    if (at && m_userData.values().differsFrom(*m_games[*at]))
        replaceGame(*at, [this](Game &game) { m_userData.values().applyTo(game); });
}

void GameLibrary::refreshAllFromUserData() {
    GameList games = m_games;
    for (GamePtr &game : games)
        if (m_userData.values().differsFrom(*game)) {
            auto changed = std::make_shared<Game>(*game);
            m_userData.values().applyTo(*changed);
            game = std::move(changed);
        }
    publishChanged(std::move(games));
    buildRecentlyPlayedList(); // the list of ids may be what changed
    Q_EMIT userDataChanged();
}

void GameLibrary::toggleFavorite(const QString &id) {
    if (keep([&] { m_userData.toggleFavorite(id); }))
        refreshFromUserData(id);
}

void GameLibrary::recordPlay(const QString &id, double seconds) {
    if (!keep([&] { m_userData.recordPlay(id, seconds, now()); }))
        return;
    refreshFromUserData(id);
    buildRecentlyPlayedList();
}

void GameLibrary::addPlayTime(const QString &id, double seconds) {
    if (!(seconds > 0) || !keep([&] { m_userData.addPlayTime(id, seconds); }))
        return;
    refreshFromUserData(id);
    const GamePtr played = game(id);
    Log::info(QStringLiteral("⏱️ Added %1s play time to %2").arg(seconds).arg(played ? played->title : id));
}

bool GameLibrary::setNotes(const QString &id, const QString &text) {
    if (!keep([&] { m_userData.setNotes(id, text); }))
        return false;
    Q_EMIT userDataChanged();
    return true;
}

void GameLibrary::setRating(const QString &id, int rating) {
    if (keep([&] { m_userData.setRating(id, rating); }))
        Q_EMIT userDataChanged();
}

void GameLibrary::setProgress(const QString &id, GameProgress progress) {
    if (keep([&] { m_userData.setProgress(id, progress); }))
        refreshFromUserData(id);
}

void GameLibrary::buildRecentlyPlayedList() {
    GameList recent;
    for (const QString &id : m_userData.recentlyPlayedIds())
        if (const GamePtr played = game(id))
            recent.append(played);
    if (recent == m_recentlyPlayed)
        return;
    m_recentlyPlayed = std::move(recent);
    Q_EMIT recentlyPlayedChanged();
}

// --- What the disk says

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
    auto look = [=] { return check(wanted, collection); };
    const std::optional<GameStatus> status = co_await runOnPool(look);
    if (!self || !status || collection != m_collection)
        co_return;
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
    const auto check = m_services.checkStatus;
    const GameList snapshot = m_games;
    QElapsedTimer timer;
    timer.start();
    auto look = [=] { return check(snapshot, collection); };
    const QList<GameStatus> statuses = co_await runOnPool(look);
    if (!self || collection != m_collection || statuses.size() != snapshot.size())
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

// --- State of a load

void GameLibrary::setLoading(bool loading) {
    if (m_isLoading == loading)
        return;
    m_isLoading = loading;
    Q_EMIT isLoadingChanged();
}

void GameLibrary::setStatus(const QString &status, double progress) {
    m_loadingStatus = status;
    m_loadingProgress = progress;
    Q_EMIT loadingChanged();
}

void GameLibrary::setErrorMessage(const QString &message) {
    if (m_errorMessage == message)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}

} // namespace ludarium

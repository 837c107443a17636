#include "Services/Library/GameLibrary.h"

#include "Host/AppLogger.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <QCoreApplication>

namespace ludarium {

using namespace Qt::StringLiterals;

GameLibrary::GameLibrary(Host &host, LibraryServices services, QObject *parent)
    : QObject(parent), m_host(host), m_services(std::move(services)), m_userData(host.settings) {
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

QString GameLibrary::keep(const std::function<void()> &change) {
    try {
        change();
        return {};
    } catch (const std::exception &error) {
        const QString reason = QString::fromUtf8(error.what());
        Log::error(QStringLiteral("❌ Failed to keep user data: %1").arg(reason));
        Q_EMIT userDataRefused(reason);
        return reason;
    }
}

void GameLibrary::refreshFromUserData(const QString &id) {
    const auto at = position(id);
    if (at && m_userData.values().differsFrom(*m_games[*at]))
        replaceGame(*at, [this](Game &game) { m_userData.values().applyTo(game); });
}

void GameLibrary::refreshFromUserData(const QStringList &ids) {
    if (ids.size() == 1)
        return refreshFromUserData(ids.constFirst());
    GameList games = m_games;
    for (const QString &id : ids)
        if (const auto at = position(id); at && m_userData.values().differsFrom(*games[*at])) {
            auto changed = std::make_shared<Game>(*games[*at]);
            m_userData.values().applyTo(*changed);
            games[*at] = std::move(changed);
        }
    publishChanged(std::move(games));
}

void GameLibrary::refreshAllFromUserData() {
    const UserData::Values &values = m_userData.values();
    // Every program of a home writes into one log.
    Log::debug(QStringLiteral("🔄 %1 took over what another program changed: %2 favorites, %3 games played, %4 notes, "
                              "%5 ratings, %6 with progress")
                   .arg(QCoreApplication::applicationName())
                   .arg(values.favorites.size())
                   .arg(values.playCounts.size())
                   .arg(values.notes.size())
                   .arg(values.ratings.size())
                   .arg(values.progress.size()));
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

QString GameLibrary::toggleFavorite(const QString &id) {
    return setFavorites({id}, !m_userData.favoriteIds().contains(id));
}

QString GameLibrary::setFavorites(const QStringList &ids, bool favorite) {
    const QString reason = keep([&] { m_userData.setFavorites(ids, favorite); });
    if (reason.isEmpty())
        refreshFromUserData(ids);
    return reason;
}

QString GameLibrary::recordPlay(const QString &id, double seconds) {
    const QString reason = keep([&] { m_userData.recordPlay(id, seconds, now()); });
    if (reason.isEmpty()) {
        refreshFromUserData(id);
        buildRecentlyPlayedList();
    }
    return reason;
}

QString GameLibrary::addPlayTime(const QString &id, double seconds) {
    if (!(seconds > 0))
        return {};
    const QString reason = keep([&] { m_userData.addPlayTime(id, seconds); });
    if (!reason.isEmpty())
        return reason;
    refreshFromUserData(id);
    const GamePtr played = game(id);
    Log::info(QStringLiteral("⏱️ Added %1s play time to %2").arg(seconds).arg(played ? played->title : id));
    return {};
}

QString GameLibrary::setNotes(const QString &id, const QString &text) {
    const QString reason = keep([&] { m_userData.setNotes(id, text); });
    if (reason.isEmpty())
        Q_EMIT userDataChanged();
    return reason;
}

QString GameLibrary::setRating(const QString &id, int rating) {
    const QString reason = keep([&] { m_userData.setRating(id, rating); });
    if (reason.isEmpty())
        Q_EMIT userDataChanged();
    return reason;
}

QString GameLibrary::setProgress(const QString &id, GameProgress progress) {
    const QString reason = keep([&] { m_userData.setProgress(id, progress); });
    if (reason.isEmpty())
        refreshFromUserData(id);
    return reason;
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

void GameLibrary::setUnavailable(const QString &text) {
    if (m_unavailable == text)
        return;
    m_unavailable = text;
    if (!text.isEmpty())
        Log::warning(u"⚠️ %1 Games stay as they were last seen."_s.arg(text));
    Q_EMIT unavailableChanged();
}

void GameLibrary::setErrorMessage(const QString &message) {
    if (m_errorMessage == message)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}

} // namespace ludarium

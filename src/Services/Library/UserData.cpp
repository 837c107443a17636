#include "Services/Library/UserData.h"

#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Models/Game.h"

#include <QScopeGuard>

namespace ludarium {

namespace {

/// The stored value of a key. One of another type is set aside before it counts as absent.
template<typename T>
T readOrSetAside(SettingsStore &settings, const Setting<T> &setting) {
    if (auto stored = settings.storedValue(setting))
        return *stored;
    settings.setAside(QString::fromUtf8(setting.key));
    return setting.defaultValue();
}

template<typename V>
QHash<QString, V> readMap(SettingsStore &settings, const Setting<QMap<QString, V>> &setting) {
    const QMap<QString, V> map = readOrSetAside(settings, setting);
    QHash<QString, V> result;
    result.reserve(map.size());
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        result.insert(it.key(), it.value());
    return result;
}

std::optional<QDateTime> found(const QHash<QString, QDateTime> &dates, const QString &id) {
    const auto it = dates.constFind(id);
    return it == dates.cend() ? std::nullopt : std::optional(*it);
}

GameProgress progressOf(const QHash<QString, qint64> &numbers, const QString &id) {
    return gameProgressFromNumber(numbers.value(id)).value_or(GameProgress::notPlayed);
}

} // namespace

UserData::UserData(SettingsStore &settings, QObject *parent) : QObject(parent), m_settings(settings) {
    m_writing = true;
    load({});
    m_writing = false;
    connect(&settings, &SettingsStore::changed, this, [this](const QString &key) {
        if (m_writing)
            return;
        m_writing = true;
        const bool isMine = load(key);
        m_writing = false;
        if (isMine)
            Q_EMIT changedElsewhere();
    });
}

bool UserData::load(const QString &key) {
    bool any = false;
    const auto wanted = [&](const auto &setting) {
        const bool is = key.isEmpty() || key == QLatin1StringView(setting.key);
        any = any || is;
        return is;
    };
    if (wanted(Settings::favoriteGames)) {
        const QStringList favorites = readOrSetAside(m_settings, Settings::favoriteGames);
        m_values.favorites = QSet<QString>(favorites.cbegin(), favorites.cend());
    }
    if (wanted(Settings::playCounts))
        m_values.playCounts = readMap(m_settings, Settings::playCounts);
    if (wanted(Settings::playTimes))
        m_values.playTimes = readMap(m_settings, Settings::playTimes);
    if (wanted(Settings::lastPlayedDates))
        m_values.lastPlayed = readMap(m_settings, Settings::lastPlayedDates);
    if (wanted(Settings::recentlyPlayedIds))
        m_values.recent = readOrSetAside(m_settings, Settings::recentlyPlayedIds);
    if (wanted(Settings::gameNotes))
        m_values.notes = readMap(m_settings, Settings::gameNotes);
    if (wanted(Settings::gameRatings))
        m_values.ratings = readMap(m_settings, Settings::gameRatings);
    if (wanted(Settings::gameProgress))
        m_values.progress = readMap(m_settings, Settings::gameProgress);
    return any;
}

template<typename Function>
void UserData::change(const Function &write) {
    m_writing = true;
    const auto done = qScopeGuard([this] { m_writing = false; });
    m_settings.transaction(write);
}

template<typename V>
void UserData::writeEntry(const Setting<QMap<QString, V>> &setting, QHash<QString, V> &values, const QString &id,
                          const std::optional<V> &value) {
    change([&] {
        if (value)
            m_settings.setEntry(setting, id, *value);
        else
            m_settings.removeEntry(setting, id);
    });
    if (value)
        values.insert(id, *value);
    else
        values.remove(id);
}

bool UserData::Values::knows(const QString &id) const {
    return favorites.contains(id) || playCounts.contains(id) || playTimes.contains(id) || lastPlayed.contains(id) ||
           progress.contains(id);
}

void UserData::Values::applyTo(Game &game) const {
    game.isFavorite = favorites.contains(game.id);
    game.playCount = static_cast<int>(playCounts.value(game.id));
    game.playTime = playTimes.value(game.id);
    game.lastPlayed = found(lastPlayed, game.id);
    game.gameProgress = progressOf(progress, game.id);
}

bool UserData::Values::differsFrom(const Game &game) const {
    return game.isFavorite != favorites.contains(game.id) || game.playCount != playCounts.value(game.id) ||
           game.playTime != playTimes.value(game.id) || game.lastPlayed != found(lastPlayed, game.id) ||
           game.gameProgress != progressOf(progress, game.id);
}

// Each change is written first and taken over afterwards: a write that throws leaves memory and store alike. What the
// new value depends on is read inside the transaction, never from memory, which another process may have left behind.

void UserData::setFavorites(const QStringList &ids, bool favorite) {
    QSet<QString> changed;
    change([&] {
        const QStringList stored = m_settings.value(Settings::favoriteGames);
        changed = QSet<QString>(stored.cbegin(), stored.cend());
        const qsizetype before = changed.size();
        const QSet<QString> named(ids.cbegin(), ids.cend());
        favorite ? changed.unite(named) : changed.subtract(named);
        if (changed.size() != before)
            m_settings.setValue(Settings::favoriteGames, QStringList(changed.cbegin(), changed.cend()));
    });
    m_values.favorites = std::move(changed);
}

void UserData::recordPlay(const QString &id, double seconds, const QDateTime &now) {
    qint64 count = 0;
    double time = 0;
    bool firstPlay = false;
    QStringList recent;
    change([&] {
        count = m_settings.entry(Settings::playCounts, id).value_or(0) + 1;
        time = m_settings.entry(Settings::playTimes, id).value_or(0) + seconds;
        firstPlay = count == 1 && m_settings.entry(Settings::gameProgress, id).value_or(0) == 0;
        recent = m_settings.value(Settings::recentlyPlayedIds);
        recent.removeAll(id);
        recent.prepend(id);
        if (recent.size() > recentLimit)
            recent.resize(recentLimit);
        if (firstPlay)
            m_settings.setEntry(Settings::gameProgress, id, static_cast<qint64>(GameProgress::playing));
        m_settings.setEntry(Settings::playCounts, id, count);
        m_settings.setEntry(Settings::playTimes, id, time);
        m_settings.setEntry(Settings::lastPlayedDates, id, now);
        m_settings.setValue(Settings::recentlyPlayedIds, recent);
    });
    if (firstPlay)
        m_values.progress.insert(id, static_cast<qint64>(GameProgress::playing));
    m_values.playCounts.insert(id, count);
    m_values.playTimes.insert(id, time);
    m_values.lastPlayed.insert(id, now);
    m_values.recent = std::move(recent);
}

void UserData::addPlayTime(const QString &id, double seconds) {
    if (!(seconds > 0))
        return;
    double time = 0;
    change([&] {
        time = m_settings.entry(Settings::playTimes, id).value_or(0) + seconds;
        m_settings.setEntry(Settings::playTimes, id, time);
    });
    m_values.playTimes.insert(id, time);
}

void UserData::setNotes(const QString &id, const QString &text) {
    writeEntry(Settings::gameNotes, m_values.notes, id, text.isEmpty() ? std::nullopt : std::optional(text));
}

void UserData::setRating(const QString &id, int rating) {
    const bool given = rating >= 1 && rating <= 5;
    writeEntry(Settings::gameRatings, m_values.ratings, id, given ? std::optional<qint64>(rating) : std::nullopt);
}

void UserData::setProgress(const QString &id, GameProgress progress) {
    const auto number = static_cast<qint64>(progress);
    writeEntry(Settings::gameProgress, m_values.progress, id, number != 0 ? std::optional(number) : std::nullopt);
}

} // namespace ludarium

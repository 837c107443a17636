#pragma once

#include "Host/Setting.h"
#include "Models/GameProgress.h"

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

namespace ludarium {

class SettingsStore;
struct Game;

/// What the user did with games, keyed by game id: favourites, plays, notes, ratings, progress. It survives a change
/// of collection and a rebuild of the cache. Every change is made to what the store holds at that moment, and is in
/// the store when the call returns; a write that fails throws and leaves the data as it was. Main thread only.
class UserData : public QObject {
    Q_OBJECT
  public:
    static constexpr int recentLimit = 50;

    /// Reads everything. A key that holds another type than expected is set aside instead of being overwritten by the
    /// next change.
    explicit UserData(SettingsStore &settings, QObject *parent = nullptr);

    const QSet<QString> &favoriteIds() const { return m_values.favorites; }
    /// Newest first.
    const QStringList &recentlyPlayedIds() const { return m_values.recent; }
    int playCount(const QString &id) const { return static_cast<int>(m_values.playCounts.value(id)); }
    double playTime(const QString &id) const { return m_values.playTimes.value(id); }
    QString notes(const QString &id) const { return m_values.notes.value(id); }
    /// 1 to 5, or 0 when the user gave none.
    int rating(const QString &id) const { return static_cast<int>(m_values.ratings.value(id)); }
    const QHash<QString, QString> &allNotes() const { return m_values.notes; }
    const QHash<QString, qint64> &allRatings() const { return m_values.ratings; }

    /// What a game takes over from here; a copy of this can be applied on another thread.
    struct Values {
        QSet<QString> favorites;
        QHash<QString, qint64> playCounts;
        QHash<QString, double> playTimes; ///< seconds
        QHash<QString, QDateTime> lastPlayed;
        QStringList recent;
        QHash<QString, QString> notes;
        QHash<QString, qint64> ratings;
        QHash<QString, qint64> progress; ///< number of GameProgress

        bool knows(const QString &id) const;
        /// Calls `action` for every id that is known, for some more than once.
        template<typename Action>
        void forEachId(const Action &action) const {
            for (const QString &id : favorites)
                action(id);
            const auto forKeys = [&](const auto &map) {
                for (auto it = map.keyBegin(); it != map.keyEnd(); ++it)
                    action(*it);
            };
            forKeys(playCounts);
            forKeys(playTimes);
            forKeys(lastPlayed);
            forKeys(progress);
        }
        bool operator==(const Values &) const = default;
        /// Sets isFavorite, playCount, playTime, lastPlayed and gameProgress, which a number that nobody knows leaves
        /// at notPlayed.
        void applyTo(Game &game) const;
        /// Whether `applyTo` would change the game.
        bool differsFrom(const Game &game) const;
    };
    const Values &values() const { return m_values; }

    /// All of them in one transaction.
    void setFavorites(const QStringList &ids, bool favorite);
    void setFavorite(const QString &id, bool favorite) { setFavorites({id}, favorite); }
    /// Counts a start of the game; the first one makes a game without progress `playing`.
    void recordPlay(const QString &id, double seconds, const QDateTime &now);
    void addPlayTime(const QString &id, double seconds);
    /// An empty text removes the entry.
    void setNotes(const QString &id, const QString &text);
    /// A number outside 1 to 5 removes the entry.
    void setRating(const QString &id, int rating);
    void setProgress(const QString &id, GameProgress progress);

  Q_SIGNALS:
    /// Another process wrote user data, which is read again by now.
    void changedElsewhere();

  private:
    /// Reads a key again, all for an empty one; whether it is one of user data.
    bool load(const QString &key);
    /// Runs `write` as one transaction of the store, without taking its notices for somebody else's.
    template<typename Function>
    void change(const Function &write);
    /// Writes one entry, or removes it for none.
    template<typename V>
    void writeEntry(const Setting<QMap<QString, V>> &setting, QHash<QString, V> &values, const QString &id,
                    const std::optional<V> &value);

    SettingsStore &m_settings;
    Values m_values;
    bool m_writing = false;
};

} // namespace ludarium

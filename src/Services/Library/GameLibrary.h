#pragma once

#include "Models/Game.h"
#include "Models/Platform.h"
#include "Models/Playlist.h"
#include "Services/Library/CollectionPresence.h"
#include "Services/Library/LibraryCache.h"
#include "Services/Library/LibraryIndex.h"
#include "Services/Library/LibraryServices.h"
#include "Services/Library/MetadataIndexes.h"
#include "Services/Library/SaveQueue.h"
#include "Services/Library/SeenStatuses.h"
#include "Services/Library/UserData.h"

#include <QCoro/QCoroTask>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>

namespace ludarium {

struct Host;

/// The in-memory library. All state belongs to the main thread; loading works on the thread pool and publishes whole
/// lists. A change of one game replaces one record and leaves the list and its index where they are.
class GameLibrary : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString loadingStatus READ loadingStatus NOTIFY loadingChanged)
    Q_PROPERTY(double loadingProgress READ loadingProgress NOTIFY loadingChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(QString unavailable READ unavailable NOTIFY unavailableChanged)
  public:
    explicit GameLibrary(Host &host, LibraryServices services = {}, QObject *parent = nullptr);

    /// Fills the library from a collection folder, from the cache or by a full parse. Never throws: the outcome is in
    /// `games` and `errorMessage`. Loads are not queued: of two that overlap the later assignment wins.
    QCoro::Task<> loadCollection(QString collection);
    /// Whether a load brings `index` with it, for a caller that browses at once; otherwise the first use makes it.
    void setIndexedAtLoad(bool wanted) { m_indexedAtLoad = wanted; }
    void clearCollectionData();
    /// The next load of a collection reads its files. While the collection cannot be looked at the cache stays; then
    /// this tells why, and is empty otherwise.
    QString clearCache(const QString &collection);
    /// Makes the next start a first one: forgets the collection's folder, the first run and everything that the user
    /// did with games. Throws SettingsError, with nothing forgotten, when the store cannot keep that.
    void resetForTesting();
    /// Takes a platform and its games out of the collection: its XML file is renamed beside itself to a name that no
    /// load reads, and the cache goes. Throws std::runtime_error without a collection, for a name that is no file
    /// name, and when the file cannot be renamed; then nothing has changed.
    QCoro::Task<> removePlatform(QString name);
    static bool validateCollectionStructure(const QString &collection);

    const GameList &games() const { return m_games; }
    const QList<Platform> &platforms() const { return m_platforms; }
    const QList<Playlist> &playlists() const { return m_playlists; }
    const MetadataIndexes &metadata() const { return m_metadata; }
    /// Newest first; only games of this collection.
    const GameList &recentlyPlayed() const { return m_recentlyPlayed; }
    /// The current record of a game; null when there is none.
    GamePtr game(const QString &id) const;
    /// Where a game stands in `games`.
    std::optional<qsizetype> position(const QString &id) const;
    /// What is known of `games` in advance; made on first use when the load did not bring it.
    const LibraryIndex &index() const;
    const UserData &userData() const { return m_userData; }
    QString collectionURL() const { return m_collection; }
    QDateTime now() const;

    bool isLoading() const { return m_isLoading; }
    QString loadingStatus() const { return m_loadingStatus; }
    double loadingProgress() const { return m_loadingProgress; }
    /// Whether the last load took its games from the cache.
    bool loadedFromCache() const { return m_loadedFromCache; }
    /// Empty when the last load went well.
    QString errorMessage() const { return m_errorMessage; }
    /// A sentence that names the folder of the collection that could not be looked at lately (unplugged, not mounted)
    /// and why; empty when there is none. The games then stand as they were last seen. Another load of
    /// `collectionURL` looks again.
    QString unavailable() const { return m_unavailable; }

    // What the user does. Each is in the settings store when the call returns with an empty text; when the store
    // cannot keep it, nothing changes, `userDataRefused` tells why and the call returns the same reason.
    QString toggleFavorite(const QString &id);
    /// All of them in one write of the store.
    QString setFavorites(const QStringList &ids, bool favorite);
    QString recordPlay(const QString &id, double seconds);
    QString addPlayTime(const QString &id, double seconds);
    QString setNotes(const QString &id, const QString &text);
    QString setRating(const QString &id, int rating);
    QString setProgress(const QString &id, GameProgress progress);

    /// Looks at the disk for one game and takes over what it finds.
    QCoro::Task<> updateGameStatus(QString id);
    /// While one lives, changes of statuses are kept for the next start all at once at its end: for a batch of many.
    class StatusHold {
      public:
        explicit StatusHold(GameLibrary &library) : m_library(&library) { ++library.m_statusHolds; }
        ~StatusHold();
        StatusHold(const StatusHold &) = delete;
        StatusHold &operator=(const StatusHold &) = delete;

      private:
        QPointer<GameLibrary> m_library;
    };
    /// What an install or an uninstall ended with. After an uninstall the disk tells whether an archive is there.
    QCoro::Task<> markGameInstalled(QString id, bool installed);
    /// Takes over a status that is known.
    void setGameStatus(const QString &id, const GameStatus &status);
    /// Compares every game's status with the disk; publishes only when something changed.
    QCoro::Task<> checkInstalledStatusSilent(QString collection);

    /// Waits for the look at the disk that goes on behind a load from the cache; then the games stand as on the disk.
    QCoro::Task<> statusesVerified();

    /// Full loads trust that every game is installed instead of looking at the disk.
    bool skipInstallCheck() const;

  Q_SIGNALS:
    /// One game's record was replaced, which was `old`; comes before `gamesChanged`.
    void gameReplaced(qsizetype position, const ludarium::GamePtr &old);
    /// The list was replaced as a whole, or games in it were.
    void gamesChanged();
    /// One game's record was replaced; follows `gamesChanged`.
    void gameChanged(const QString &id);
    void platformsChanged();
    void playlistsChanged();
    void recentlyPlayedChanged();
    /// Notes or ratings changed, which stand in no record.
    void userDataChanged();
    void userDataRefused(const QString &reason);
    void isLoadingChanged();
    void loadingChanged();
    void errorMessageChanged();
    void unavailableChanged();
    void verificationEnded();

  private:
    struct Loaded;

    QCoro::Task<bool> prepare(QString collection);
    QCoro::Task<bool> mayUseReadOnly(QString collection);
    QCoro::Task<> offerSetup(QString collection);
    QCoro::Task<> offerRepair(QString collection);
    QCoro::Task<bool> loadUnavailable(QString collection, CollectionPresence presence);
    QCoro::Task<> finishCacheLoad(CachedCollectionData data, SeenStatuses seen, bool verify);
    QCoro::Task<> fullLoad(QString collection, SeenStatuses seen);
    QCoro::Task<> verifyStatuses(QString collection);
    QCoro::Task<> step(QString status, double progress);
    std::function<std::shared_ptr<const LibraryIndex>(const GameList &games)> indexBuilder() const;
    void saveCache(CachedCollectionData data);
    static QHash<QString, qsizetype> positionsOf(const GameList &games);
    void publish(GameList games, QHash<QString, qsizetype> positions, std::shared_ptr<const LibraryIndex> index = {});
    /// Other records of the same games at the same places.
    void publishChanged(GameList games);
    void replaceGame(qsizetype position, const std::function<void(Game &)> &change);
    void refreshFromUserData(const QString &id);
    void refreshFromUserData(const QStringList &ids);
    void refreshAllFromUserData();
    void buildRecentlyPlayedList();
    CacheFiles cacheFiles(const QString &collection) const;
    struct Opened;
    std::function<Opened()> cacheOpener(const QString &collection) const;
    /// Keeps what is known of all games, as of a look at the disk that began at `time`.
    void saveAllStatuses(double time);
    void saveStatusChanges();
    QString keep(const std::function<void()> &change);
    void setLoading(bool loading);
    void setStatus(const QString &status, double progress);
    void setErrorMessage(const QString &message);
    void setUnavailable(const QString &text);

    Host &m_host;
    LibraryServices m_services;
    UserData m_userData;
    SaveQueue m_saves;
    QList<std::pair<QString, GameStatus>> m_statusChanges; ///< that are not saved yet
    int m_statusHolds = 0;
    /// Looks at the disk that go on, and the games whose status became known otherwise meanwhile.
    int m_looks = 0;
    QSet<QString> m_changedDuringLooks;
    int m_verifications = 0;
    bool m_statusesKept = false; ///< the files tell what is known of the games
    QString m_collection;
    QString m_shownCollection; ///< whose games `m_games` are
    GameList m_games;
    QHash<QString, qsizetype> m_positions;
    mutable std::shared_ptr<const LibraryIndex> m_index;
    QList<Platform> m_allPlatforms; ///< as the collection names them; what is shown of them changes with the games
    QList<Platform> m_platforms;
    QList<Playlist> m_playlists;
    MetadataIndexes m_metadata;
    GameList m_recentlyPlayed;
    QElapsedTimer m_loadTimer;
    QElapsedTimer m_stepTimer; ///< of the step of a load that `m_step` names
    QString m_step;
    bool m_isLoading = false;
    bool m_indexedAtLoad = false;
    bool m_loadedFromCache = false;
    QString m_loadingStatus;
    double m_loadingProgress = 0;
    QString m_errorMessage;
    QString m_unavailable;
};

} // namespace ludarium

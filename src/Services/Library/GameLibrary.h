#pragma once

#include "Models/Game.h"
#include "Models/Platform.h"
#include "Models/Playlist.h"

#include <QCoro/QCoroTask>
#include <QHash>
#include <QObject>

namespace ludarium {

struct Host;

/// The in-memory library. All state belongs to the main thread; loading works on the thread pool and publishes whole
/// lists.
class GameLibrary : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString loadingStatus READ loadingStatus NOTIFY loadingChanged)
    Q_PROPERTY(double loadingProgress READ loadingProgress NOTIFY loadingChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
  public:
    explicit GameLibrary(Host &host, QObject *parent = nullptr);

    /// Fills the library from a collection folder. Never throws: the outcome is in `games` and `errorMessage`.
    QCoro::Task<> loadCollection(QString collection);
    void clearCollectionData();
    static bool validateCollectionStructure(const QString &collection);

    const GameList &games() const { return m_games; }
    const QList<Platform> &platforms() const { return m_platforms; }
    const QList<Playlist> &playlists() const { return m_playlists; }
    /// The current record of a game; null when there is none.
    GamePtr game(const QString &id) const { return m_gamesById.value(id); }
    QString collectionURL() const { return m_collection; }

    bool isLoading() const { return m_isLoading; }
    QString loadingStatus() const { return m_loadingStatus; }
    double loadingProgress() const { return m_loadingProgress; }
    /// Empty when the last load went well.
    QString errorMessage() const { return m_errorMessage; }

  Q_SIGNALS:
    void gamesChanged();
    void platformsChanged();
    void playlistsChanged();
    void isLoadingChanged();
    void loadingChanged();
    void errorMessageChanged();

  private:
    void setLoading(bool loading);
    void setStatus(const QString &status, double progress);
    void setErrorMessage(const QString &message);
    void setGames(GameList games);
    QCoro::Task<> fullLoad(QString collection);

    Host &m_host;
    QString m_collection;
    GameList m_games;
    QHash<QString, GamePtr> m_gamesById;
    QList<Platform> m_platforms;
    QList<Playlist> m_playlists;
    bool m_isLoading = false;
    QString m_loadingStatus;
    double m_loadingProgress = 0;
    QString m_errorMessage;
};

} // namespace ludarium

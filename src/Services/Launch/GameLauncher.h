#pragma once

#include "Host/ProcessRunner.h"
#include "Models/Game.h"
#include "Models/GameVersionOption.h"
#include "Models/LaunchPlan.h"
#include "Services/Dos/DosLauncher.h"
#include "Services/Launch/LaunchCollaborators.h"
#include "Services/Launch/LaunchRoute.h"

#include <QCoro/QCoroTask>
#include <QObject>

namespace ludarium {

struct Host;
class EmulatorManager;

/// The one object through which every game, document, soundtrack and video is opened.
class GameLauncher : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isLaunching READ isLaunching NOTIFY launchStateChanged)
    Q_PROPERTY(QString launchError READ launchError NOTIFY launchStateChanged)
    Q_PROPERTY(QString setupStatus READ setupStatus NOTIFY launchStateChanged)
  public:
    GameLauncher(Host &host, EmulatorManager &emulators, DosCollaborators dosCollaborators = {},
                 QObject *parent = nullptr);
    ~GameLauncher() override;

    void setCollectionURL(const QString &collection);
    QString collectionURL() const;
    /// Whether the collection came without its games, by `liteCollectionTest`; memoised until the collection is set
    /// again.
    bool isLiteCollection();
    std::function<bool(const QString &collection)> liteCollectionTest;
    /// Makes a collection ready for launches; started in the background whenever one is set.
    std::function<QCoro::Task<>(QString collection)> collectionPreparation;

    /// A runner for a route other than `dos`. Returns the process it started, if it started one that can be watched.
    /// Soundtracks and videos have one of their own, which uses `mediaCollaborators`.
    using Runner = std::function<QCoro::Task<std::optional<ProcessId>>(GamePtr, LaunchMode, QString collection)>;
    void setRunner(LaunchRoute route, Runner runner);
    /// The flow of a mode other than `play`; that of `setup` is for DOS games, the others have theirs in their runner.
    void setFlow(LaunchMode mode, Runner flow);
    void setDosRouteCollaborators(DosRouteCollaborators collaborators);
    void setMediaCollaborators(MediaCollaborators collaborators);
    /// Why nothing of a kind can be launched whatever the game's files are, such as a missing runner; empty when it
    /// can. Looks at no disk.
    QString whyNotLaunched(const Game &game, LaunchMode mode) const;
    QString whyNotLaunched(const AdditionalApplication &app) const;

    /// Throws only `LaunchError::noCollectionPath`; every other failure is in `launchError` and in the log.
    QCoro::Task<> launch(GamePtr game, LaunchMode mode = LaunchMode::play,
                         std::optional<GameVersionOption> version = {});
    /// Starts what stands beside a game's main launch. Throws LaunchError.
    QCoro::Task<> launchAdditionalApp(AdditionalApplication app, GamePtr game);
    /// What `launch` in mode `play` would do for a DOS game. Asks nothing, writes nothing. Throws LaunchError.
    QCoro::Task<LaunchPlan> plan(GamePtr game, std::optional<GameVersionOption> version = {});

    /// The route of a game and why, by the first test that holds.
    static std::pair<LaunchRoute, QString> route(const Game &game);

    bool isLaunching() const { return m_isLaunching; }
    GamePtr currentGame() const { return m_currentGame; }
    /// Empty when the last launch went well.
    QString launchError() const { return m_launchError; }
    QString setupStatus() const { return m_setupStatus; }
    void setSetupStatus(const QString &status);
    /// The process that the last `play` started, when it can be watched.
    std::optional<ProcessId> lastProcess() const { return m_lastProcess; }

    /// Whether a game runs at this moment, started by whichever program; then no mode that would start something in its
    /// folder is begun.
    std::function<bool(const QString &gameId)> runningTest;

    /// Called after a `play` flow that started a game, for the play-session tracker.
    std::function<void(GamePtr, std::optional<ProcessId>)> onStarted;

    /// The script folder of a game's Windows-style path; empty when the path leaves the collection.
    static QString getGameFolderURL(const QString &path, const QString &collection);
    /// The folder of the installed game; empty when its name is not a usable folder name.
    static QString getGameDataFolderURL(const Game &game, const QString &collection);
    static QString extractGameFolderName(const QString &path);

    /// Shows the script folder in the file manager. Throws LaunchError.
    void openGameFolder(const Game &game);
    bool hasSetupScript(const Game &game) const;

  Q_SIGNALS:
    void launchStateChanged();

  private:
    using Started = std::optional<ProcessId>;
    void refuse(const QString &reason);
    QCoro::Task<Started> runFlow(GamePtr game, LaunchMode mode, std::optional<GameVersionOption> version,
                                 QString collection);
    QCoro::Task<Started> launchGame(GamePtr game, std::optional<GameVersionOption> version, QString collection);
    QCoro::Task<Started> launchSetup(GamePtr game, QString collection);
    QCoro::Task<Started> launchSoundtrack(GamePtr game);
    QCoro::Task<Started> launchVideo(GamePtr game, QString collection);

    struct Private;
    std::unique_ptr<Private> d;
    bool m_isLaunching = false;
    GamePtr m_currentGame;
    QString m_launchError;
    QString m_setupStatus;
    std::optional<ProcessId> m_lastProcess;
};

} // namespace ludarium

#pragma once

#include "Models/Game.h"
#include "Services/Library/BatchOperation.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <chrono>
#include <functional>
#include <optional>

namespace ludarium {

struct Host;
class GameLibrary;

/// Runs one action over many games, one after another, on the main thread. A game that fails never stops the others.
class BatchOperationsManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
  public:
    /// Puts a game's files into the collection; throws why it cannot.
    using Installer = std::function<QCoro::Task<>(GamePtr game, QString collection)>;
    /// Status and message of one game.
    struct Outcome {
        BatchOperationStatus status;
        QString message;
        bool operator==(const Outcome &) const = default;
    };

    /// What uninstalling does with a game that no archive can bring back. Removing is for a user who was told so.
    enum class OnlyCopies { keep, remove };

    static constexpr qsizetype historySize = 10;

    explicit BatchOperationsManager(Host &host, QObject *parent = nullptr);

    /// The library may go away at any time.
    void setGameLibrary(GameLibrary *library) { m_library = library; }
    /// Without one, games cannot be installed.
    void setInstaller(Installer installer) { m_installer = std::move(installer); }
    /// Between two games, so that a window stays live; 0.1 s.
    void setPause(std::chrono::milliseconds pause) { m_pause = pause; }

    const QSet<QString> &selectedGameIds() const { return m_selectedGameIds; }
    void toggleSelection(const QString &id);
    void selectAll(const GameList &games);
    void selectInstalled();
    void selectNotInstalled();

    bool isRunning() const { return m_isRunning; }
    /// The run that is under way, else the last one.
    const std::optional<BatchOperation> &currentOperation() const { return m_currentOperation; }
    /// The last finished runs, newest first.
    const QList<BatchOperation> &operationHistory() const { return m_operationHistory; }

    /// Runs on these games in their order; without any, on the selected ones in the library's order. Refused while
    /// another run is under way; behind a cancelled one it waits for the game that is still being worked on. Never
    /// throws.
    QCoro::Task<> execute(BatchOperationType type, QStringList ids = {}, OnlyCopies onlyCopies = OnlyCopies::keep);
    /// No further game is begun. The one under way ends and keeps its result; the rest stay pending.
    void cancelOperation();

    /// What a run does for one game.
    QCoro::Task<Outcome> executeOperation(BatchOperationType type, GamePtr game,
                                          OnlyCopies onlyCopies = OnlyCopies::keep);

  Q_SIGNALS:
    void isRunningChanged();
    void currentOperationChanged();
    void operationHistoryChanged();
    void selectedGameIdsChanged();
    /// No game is being worked on any more.
    void runEnded();

  private:
    void select(const std::function<bool(const Game &)> &test);
    QStringList selectionInOrder() const;
    BatchOperation newOperation(BatchOperationType type, const QStringList &ids) const;
    QCoro::Task<> runOperation(OnlyCopies onlyCopies);
    /// The favourites of the games from `place` on, as many as are written together; the place behind them.
    qsizetype setFavoritesTogether(qsizetype place);
    void publishResult(qsizetype place, const Outcome &outcome);
    void setRunning(bool running);
    QCoro::Task<Outcome> install(GamePtr game, QString collection);
    QCoro::Task<Outcome> uninstall(GamePtr game, QString collection, OnlyCopies onlyCopies);
    Outcome setFavorite(const Game &game, bool favorite);
    QCoro::Task<Outcome> exportMetadata(GamePtr game);
    QCoro::Task<Outcome> verifyFiles(GamePtr game, QString collection);

    Host &m_host;
    QPointer<GameLibrary> m_library;
    Installer m_installer;
    std::chrono::milliseconds m_pause{100};
    QSet<QString> m_selectedGameIds;
    std::optional<BatchOperation> m_currentOperation;
    QList<BatchOperation> m_operationHistory;
    bool m_isRunning = false;
    bool m_isWorking = false; ///< also while the last game of a cancelled run ends
};

} // namespace ludarium

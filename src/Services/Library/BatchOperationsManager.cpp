#include "Services/Library/BatchOperationsManager.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/SafeFiles.h"
#include "Models/Platform.h"
#include "Services/Collections/GameArchive.h"
#include "Services/Library/BatchFiles.h"
#include "Services/Library/GameLibrary.h"

#include <QCoro/QCoroSignal>
#include <QFileInfo>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;
using Status = BatchOperationStatus;
using Outcome = BatchOperationsManager::Outcome;
using OnlyCopies = BatchOperationsManager::OnlyCopies;

/// Games of one write of the store; few enough that a run can be cancelled soon.
constexpr qsizetype writtenTogether = 1000;

bool isThere(const QString &path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

Outcome uninstalled(const Game &game, const QString &collection, OnlyCopies onlyCopies) {
    const QString folder = BatchFiles::removableFolder(game, collection);
    if (folder.isEmpty() || !isThere(folder))
        return {Status::failed,
                u"Game folder not found at %1"_s.arg(folder.isEmpty() ? game.configurationPath : folder)};
    if (onlyCopies == OnlyCopies::keep) {
        // Looked at as late as can be: what was there when the user was asked may be gone.
        const GameArchive::Proof proof = GameArchive::proofOfCopy(game, folder, collection);
        if (!proof.problem.isEmpty())
            return {Status::skipped, u"Kept, as it is the only copy: %1"_s.arg(proof.problem)};
    }
    const QString problem = BatchFiles::removeFolder(folder, collection);
    return problem.isEmpty() ? Outcome{Status::completed, u"Uninstalled successfully"_s}
                             : Outcome{Status::failed, problem};
}

bool isFavoriteOperation(BatchOperationType type) {
    return type == BatchOperationType::addToFavorites || type == BatchOperationType::removeFromFavorites;
}

Outcome favoriteOutcome(bool favorite, bool changed, const QString &refusal) {
    if (!changed)
        return {Status::skipped, favorite ? u"Already a favorite"_s : u"Not a favorite"_s};
    if (!refusal.isEmpty())
        return {Status::failed, refusal};
    return {Status::completed, favorite ? u"Added to favorites"_s : u"Removed from favorites"_s};
}

Outcome verified(const Game &game, const QString &collection) {
    if (Platform::named(game.platform, {}).isROMPlatform()) {
        // The path as it stands, not one of the collection's.
        const bool found = !game.applicationPath.isEmpty() && QFileInfo(game.applicationPath).isFile();
        return found ? Outcome{Status::completed, u"ROM file verified"_s}
                     : Outcome{Status::failed, u"ROM file not found"_s};
    }
    const std::optional<QString> folder = collection.isEmpty() || game.configurationPath.isEmpty()
                                              ? std::nullopt
                                              : pathInside(collection + u"/eXo/eXoDOS"_s, game.configurationPath);
    return {Status::completed,
            folder && QFileInfo(*folder).isDir() ? u"Game files verified"_s : u"Verification skipped"_s};
}

} // namespace

BatchOperationsManager::BatchOperationsManager(Host &host, QObject *parent) : QObject(parent), m_host(host) {}

// --- Selection

void BatchOperationsManager::toggleSelection(const QString &id) {
    if (!m_selectedGameIds.remove(id))
        m_selectedGameIds.insert(id);
    Q_EMIT selectedGameIdsChanged();
}

void BatchOperationsManager::selectAll(const GameList &games) {
    m_selectedGameIds.clear();
    for (const GamePtr &game : games)
        m_selectedGameIds.insert(game->id);
    Q_EMIT selectedGameIdsChanged();
}

void BatchOperationsManager::select(const std::function<bool(const Game &)> &test) {
    GameList games;
    if (m_library)
        for (const GamePtr &game : m_library->games())
            if (test(*game))
                games.append(game);
    selectAll(games);
}

void BatchOperationsManager::selectInstalled() {
    select([](const Game &game) { return game.isInstalled; });
}

void BatchOperationsManager::selectNotInstalled() {
    select([](const Game &game) { return !game.isInstalled; });
}

QStringList BatchOperationsManager::selectionInOrder() const {
    QStringList ids;
    if (m_library)
        for (const GamePtr &game : m_library->games())
            if (m_selectedGameIds.contains(game->id))
                ids.append(game->id);
    return ids;
}

// --- Runs

void BatchOperationsManager::setRunning(bool running) {
    if (std::exchange(m_isRunning, running) != running)
        Q_EMIT isRunningChanged();
}

BatchOperation BatchOperationsManager::newOperation(BatchOperationType type, const QStringList &ids) const {
    BatchOperation operation;
    operation.type = type;
    operation.gameIds = ids;
    operation.gameIds.removeDuplicates();
    operation.startTime = m_host.clock.now();
    for (const QString &id : std::as_const(operation.gameIds))
        if (const GamePtr game = m_library ? m_library->game(id) : GamePtr()) {
            BatchOperationResult result;
            result.gameId = id;
            result.gameTitle = game->title;
            operation.results.append(result);
        }
    return operation;
}

QCoro::Task<> BatchOperationsManager::execute(BatchOperationType type, QStringList ids, OnlyCopies onlyCopies) {
    const QPointer<BatchOperationsManager> self(this);
    while (m_isWorking) {
        if (m_isRunning) {
            Log::warning(u"Batch operation refused: another one is running"_s);
            co_return;
        }
        co_await qCoro(this, &BatchOperationsManager::runEnded);
        if (!self)
            co_return;
    }
    m_isWorking = true;
    m_currentOperation = newOperation(type, ids.isEmpty() ? selectionInOrder() : ids);
    setRunning(true);
    Q_EMIT currentOperationChanged();
    co_await runOperation(onlyCopies);
    if (!self)
        co_return;

    m_currentOperation->isComplete = true;
    m_currentOperation->endTime = m_host.clock.now();
    Q_EMIT currentOperationChanged();
    m_operationHistory.prepend(*m_currentOperation);
    if (m_operationHistory.size() > historySize)
        m_operationHistory.resize(historySize);
    Q_EMIT operationHistoryChanged();
    Log::info(u"Batch operation completed: %1 success, %2 failed"_s.arg(m_currentOperation->successCount())
                  .arg(m_currentOperation->failureCount()));
    m_isWorking = false;
    setRunning(false);
    Q_EMIT runEnded();
}

QCoro::Task<> BatchOperationsManager::runOperation(OnlyCopies onlyCopies) {
    const QPointer<BatchOperationsManager> self(this);
    const BatchOperationType type = m_currentOperation->type;
    std::optional<GameLibrary::StatusHold> hold;
    if (m_library)
        hold.emplace(*m_library);
    const qsizetype count = m_currentOperation->results.size();
    // Where nobody watches the games go by, many are written at once: each write of the store is flushed to disk.
    const bool together = m_pause.count() == 0 && m_library && isFavoriteOperation(type);
    for (qsizetype i = 0; i < count; ++i) {
        if (i > 0) {
            co_await m_host.clock.sleep(m_pause);
            if (!self)
                co_return;
        }
        if (!m_isRunning)
            co_return;
        if (together) {
            i = setFavoritesTogether(i) - 1;
            continue;
        }
        // The library may have lost the game meanwhile.
        const GamePtr game = m_library ? m_library->game(m_currentOperation->results[i].gameId) : GamePtr();
        if (!game)
            continue;
        publishResult(i, {Status::inProgress, {}});
        const Outcome outcome = co_await executeOperation(type, game, onlyCopies);
        if (!self)
            co_return;
        m_currentOperation->progress = double(i + 1) / double(count);
        publishResult(i, outcome);
    }
}

qsizetype BatchOperationsManager::setFavoritesTogether(qsizetype place) {
    const bool favorite = m_currentOperation->type == BatchOperationType::addToFavorites;
    const qsizetype end = std::min(place + writtenTogether, m_currentOperation->results.size());
    QStringList changing;
    for (qsizetype i = place; i < end; ++i) {
        const QString &id = m_currentOperation->results[i].gameId;
        if (const GamePtr game = m_library->game(id); game && game->isFavorite != favorite)
            changing.append(id);
    }
    const QString refusal = changing.isEmpty() ? QString() : m_library->setFavorites(changing, favorite);
    const QSet<QString> changed(changing.cbegin(), changing.cend());
    // What is published as done is on disk.
    for (qsizetype i = place; i < end; ++i) {
        const QString id = m_currentOperation->results[i].gameId;
        m_currentOperation->progress = double(i + 1) / double(m_currentOperation->results.size());
        if (m_library->game(id))
            publishResult(i, favoriteOutcome(favorite, changed.contains(id), refusal));
    }
    return end;
}

void BatchOperationsManager::publishResult(qsizetype place, const Outcome &outcome) {
    BatchOperationResult &result = m_currentOperation->results[place];
    result.status = outcome.status;
    result.message = outcome.message;
    Q_EMIT currentOperationChanged();
}

void BatchOperationsManager::cancelOperation() {
    if (!m_isRunning)
        return;
    m_currentOperation->isComplete = true;
    m_currentOperation->endTime = m_host.clock.now();
    setRunning(false);
    Q_EMIT currentOperationChanged();
}

// --- One game

QCoro::Task<Outcome> BatchOperationsManager::executeOperation(BatchOperationType type, GamePtr game,
                                                              OnlyCopies onlyCopies) {
    const QString collection = m_library ? m_library->collectionURL() : QString();
    const bool changesFiles = type == BatchOperationType::install || type == BatchOperationType::uninstall;
    const bool needsInstalled = type == BatchOperationType::uninstall || type == BatchOperationType::verifyFiles;
    const bool needsLibrary =
        changesFiles || type == BatchOperationType::addToFavorites || type == BatchOperationType::removeFromFavorites;
    if (type == BatchOperationType::install && game->isInstalled)
        co_return Outcome{Status::skipped, u"Already installed"_s};
    if (needsInstalled && !game->isInstalled)
        co_return Outcome{Status::skipped, u"Not installed"_s};
    if (needsLibrary && !m_library)
        co_return Outcome{Status::failed, u"Game library not available"_s};
    if (changesFiles && collection.isEmpty())
        co_return Outcome{Status::failed, u"Collection path not found"_s};

    std::optional<Outcome> outcome;
    QString problem;
    try {
        switch (type) {
        case BatchOperationType::install:
            outcome = co_await install(game, collection);
            break;
        case BatchOperationType::uninstall:
            outcome = co_await uninstall(game, collection, onlyCopies);
            break;
        case BatchOperationType::addToFavorites:
            outcome = setFavorite(*game, true);
            break;
        case BatchOperationType::removeFromFavorites:
            outcome = setFavorite(*game, false);
            break;
        case BatchOperationType::addToPlaylist:
            outcome = Outcome{Status::skipped, u"No playlist selected"_s};
            break;
        case BatchOperationType::exportMetadata:
            outcome = co_await exportMetadata(game);
            break;
        case BatchOperationType::verifyFiles:
            outcome = co_await verifyFiles(game, collection);
            break;
        }
    } catch (...) {
        problem = currentExceptionText();
    }
    co_return outcome.value_or(Outcome{Status::failed, problem});
}

QCoro::Task<Outcome> BatchOperationsManager::install(GamePtr game, QString collection) {
    if (!m_installer)
        co_return Outcome{Status::failed, u"Installing games is not available"_s};
    const QPointer<GameLibrary> library(m_library);
    co_await m_installer(game, collection);
    if (library && library->collectionURL() == collection)
        co_await library->markGameInstalled(game->id, true);
    co_return Outcome{Status::completed, u"Installed successfully"_s};
}

QCoro::Task<Outcome> BatchOperationsManager::uninstall(GamePtr game, QString collection, OnlyCopies onlyCopies) {
    const QPointer<GameLibrary> library(m_library);
    auto work = [=] { return uninstalled(*game, collection, onlyCopies); };
    const Outcome outcome = co_await runOnPool(work);
    if (outcome.status == Status::completed && library && library->collectionURL() == collection)
        co_await library->markGameInstalled(game->id, false);
    co_return outcome;
}

Outcome BatchOperationsManager::setFavorite(const Game &game, bool favorite) {
    const bool changes = game.isFavorite != favorite;
    return favoriteOutcome(favorite, changes, changes ? m_library->setFavorites({game.id}, favorite) : QString());
}

QCoro::Task<Outcome> BatchOperationsManager::exportMetadata(GamePtr game) {
    auto work = [game, folder = m_host.paths.documents() + u"/Ludarium/Exports"_s] {
        return BatchFiles::exportGame(*game, folder);
    };
    const QString problem = co_await runOnPool(work);
    if (!problem.isEmpty())
        co_return Outcome{Status::failed, problem};
    co_return Outcome{Status::completed, u"Exported to %1"_s.arg(BatchFiles::exportName(game->title))};
}

QCoro::Task<Outcome> BatchOperationsManager::verifyFiles(GamePtr game, QString collection) {
    auto work = [=] { return verified(*game, collection); };
    co_return co_await runOnPool(work);
}

} // namespace ludarium

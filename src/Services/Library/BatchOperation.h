#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>
#include <optional>

namespace ludarium {

enum class BatchOperationType {
    install,
    uninstall,
    addToFavorites,
    removeFromFavorites,
    addToPlaylist,
    exportMetadata,
    verifyFiles
};

/// Every kind, in the order of the batch window.
const QList<BatchOperationType> &batchOperationTypes();
/// Stored text: "install", "addToFavorites", …
QString batchOperationName(BatchOperationType type);
/// What the user reads: "Install Games", …
QString batchOperationTitle(BatchOperationType type);

enum class BatchOperationStatus { pending, inProgress, completed, failed, skipped };

/// Stored text: "pending", "inProgress", …
QString batchOperationStatusName(BatchOperationStatus status);

/// What came of one game.
struct BatchOperationResult {
    QUuid id = QUuid::createUuid();
    QString gameId;
    QString gameTitle;
    BatchOperationStatus status = BatchOperationStatus::pending;
    QString message = {}; ///< why it failed or was skipped, or what was done; null before
};

/// One action over many games.
struct BatchOperation {
    QUuid id = QUuid::createUuid();
    BatchOperationType type = BatchOperationType::install;
    QStringList gameIds;
    QList<BatchOperationResult> results; ///< one for each of these games that the library held at the start
    double progress = 0;                 ///< 0 to 1
    bool isComplete = false;
    QDateTime startTime = {};
    QDateTime endTime = {}; ///< null before the end

    /// Skipped games count as neither.
    qsizetype successCount() const { return count(BatchOperationStatus::completed); }
    qsizetype failureCount() const { return count(BatchOperationStatus::failed); }
    qsizetype count(BatchOperationStatus status) const;
};

} // namespace ludarium

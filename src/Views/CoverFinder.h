#pragma once

#include "Models/Game.h"

#include <QHash>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <memory>
#include <mutex>

namespace ludarium {

/// Finds the picture of a game below `{collection}/Images/{platform}`. Every folder is listed once, so a lookup is a
/// few hash probes. Any thread; lists folders, so never the main one.
class CoverFinder {
  public:
    explicit CoverFinder(QString collection) : m_collection(std::move(collection)) {}

    /// The path of the box front, or of the next best kind of picture; empty when there is none.
    QString find(const Game &game);

    /// The file names, without extension, that a picture of the game may have, best first.
    static QStringList candidates(const Game &game);

  private:
    /// One folder of pictures. `filesByLower` leads from the lower-case file name to the name on disk.
    struct Folder {
        std::once_flag once;
        QHash<QString, QString> filesByLower;
        QList<std::pair<QString, QString>> normalized; ///< letters and digits of the name, and the name on disk
        QStringList regions;                           ///< subfolders, in the order of the disk
    };
    std::shared_ptr<Folder> folder(const QString &path, bool withRegions);
    QString findKind(const Game &game, const QStringList &names, const QString &folderPath);

    const QString m_collection;
    QMutex m_mutex;
    QHash<QString, std::shared_ptr<Folder>> m_folders;
};

} // namespace ludarium

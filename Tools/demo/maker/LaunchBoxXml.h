#pragma once

#include "maker/DemoGame.h"

#include <QByteArray>

namespace ludarium::demo {

/// Paths of a game as its XML holds them, with "\".
struct GamePaths {
    QString application, configuration, rootFolder, manual, music;
    QList<QPair<QString, QString>> additional; ///< name, path
};

QByteArray platformsXml(const QStringList &platforms);
/// The games of one platform with their additional applications.
QByteArray gamesXml(const QList<DemoGame> &games, const QList<GamePaths> &paths);
QByteArray playlistXml(const DemoPlaylist &playlist, const QList<DemoGame> &games);

} // namespace ludarium::demo

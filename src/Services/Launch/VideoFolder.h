#pragma once

#include "Models/Game.h"

#include <QString>
#include <QStringList>

namespace ludarium {

/// The folder of a video entry and the names in it, in the order of the file system.
struct VideoFolder {
    QString path;
    QStringList contents;

    /// The script that the collection plays the video with; empty when the folder has none.
    QString script() const;

    /// Looks by title, by the paths of the record and by the names in {collection}/eXo/Videos. Throws LaunchError.
    static VideoFolder find(const Game &game, const QString &collection);
};

} // namespace ludarium

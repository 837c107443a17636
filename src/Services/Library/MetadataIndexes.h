#pragma once

#include "Models/Game.h"
#include "Models/Platform.h"

#include <QList>
#include <QStringList>

namespace ludarium {

/// The sorted facet lists of a library, without duplicates.
struct MetadataIndexes {
    QStringList genres; ///< pieces of `genre`, split at ";"
    QStringList developers;
    QStringList publishers;
    QStringList series;
    QList<int> years;
    bool operator==(const MetadataIndexes &) const = default;

    static MetadataIndexes build(const GameList &games);
};

/// The platforms that the sidebar shows: those with something to play, and those whose games are never looked for on
/// the disk.
QList<Platform> platformsWithPlayableGames(const QList<Platform> &platforms, const GameList &games);

/// Whether a platform holds documents and media, which always count as installed.
bool isContentPlatform(const QString &name);

} // namespace ludarium

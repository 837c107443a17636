#pragma once

#include "Models/Game.h"
#include "Models/Playlist.h"

#include <QList>

namespace ludarium {

/// Fills every dynamic playlist with the ids of the games that all of its rules hold for, in library order; static
/// ones keep what the collection gave them.
QList<Playlist> applyPlaylistFilters(QList<Playlist> playlists, const GameList &games);

/// Whether a rule holds for a game. Comparisons ignore case; an unknown comparison never holds and is logged.
bool matchesFilter(const Game &game, const PlaylistFilter &filter);

/// The text that a rule on `fieldKey` looks at. A key without a field of its own gives "true" when notes or overview
/// mention it.
QString getFieldValue(const Game &game, const QString &fieldKey);

} // namespace ludarium

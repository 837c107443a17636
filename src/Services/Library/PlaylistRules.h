#pragma once

#include "Models/Game.h"
#include "Models/Playlist.h"

#include <QList>

namespace ludarium {

/// Fills every dynamic playlist with the ids of the games that all of its rules hold for, in library order; static
/// ones keep what the collection gave them. A rule is worked out once for each text that its field has, and once for
/// all playlists, so that the cost is that of looking at the games once and of writing down the ids.
QList<Playlist> applyPlaylistFilters(QList<Playlist> playlists, const GameList &games);

/// Whether a rule holds for a game. Comparisons ignore case; an unknown comparison never holds and is logged.
bool matchesFilter(const Game &game, const PlaylistFilter &filter);

} // namespace ludarium

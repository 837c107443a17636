#pragma once

#include "Models/Game.h"

#include <cstdint>

namespace ludarium {

/// What the rules of dynamic playlists can look at in a game. The texts come lower-cased, as UTF-8: two such texts
/// contain, begin and end with each other exactly where the UTF-16 they are made from does.
struct PlaylistField {
    QByteArray (*lowerText)(const Game &game);
    /// Games with the same number have the same text. Null when nearly every game has a text of its own.
    std::uint64_t (*sameText)(const Game &game);
};

/// Null for a key without a field of its own: then a rule asks whether notes or overview mention the key.
const PlaylistField *playlistField(const QString &lowerCasedKey);
/// Notes, a blank and overview, in which a key without a field is looked for.
QByteArray lowerDescription(const Game &game);

} // namespace ludarium

#pragma once

#include "Services/Library/LibraryCache.h"

#include <QByteArray>

namespace ludarium {

/// What the written form of games and platforms leaves out, in a file of its own beside the cache: dates, players,
/// ratings and votes, flags, the emulator that a game asks for, additional applications.
///
/// The file is little-endian and in the order of the cache: a head with a checksum over the rest; path, date, number of
/// games and a fingerprint of their ids, by which it is known whose it is; platforms; where each run of games begins;
/// games. Only the fields that a game has take room.
class LibraryDetails {
  public:
    static QByteArray encode(const CachedCollectionData &data);

    /// Completes games and platforms that came from the cache and that nobody else holds yet. False when the bytes are
    /// damaged or belong to another state of the collection: then nothing is changed.
    static bool apply(const QByteArray &bytes, CachedCollectionData &data);
};

} // namespace ludarium

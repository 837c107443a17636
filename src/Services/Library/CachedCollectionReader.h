#pragma once

#include "Services/Library/LibraryCache.h"

#include <QFile>
#include <stdexcept>

namespace ludarium {

/// The cache file is not what the cache writes; `what()` tells where.
class CacheReadError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Reads a cache file with simdjson. Any JSON object with the keys of the cache is understood; one in the order in
/// which the cache writes it (games last) is read in pieces by several threads without holding the whole file.
class CachedCollectionReader {
  public:
    /// Small enough that a piece and what simdjson makes of it stay in a processor's cache.
    static constexpr qint64 usualPieceSize = 512LL << 10;

    /// Throws CacheReadError when the file cannot be read. A file larger than `pieceSize` is read in pieces.
    explicit CachedCollectionReader(const QString &file, qint64 pieceSize = usualPieceSize);

    /// Everything but the games. Throws CacheReadError.
    CachedCollectionData readAllButGames();
    /// In file order. Throws CacheReadError. Call after `readAllButGames`.
    GameList readGames();

  private:
    bool locateGames();
    /// The bytes of a range of the file, with uninitialised room behind. Safe on several threads.
    QByteArray readRange(qint64 from, qint64 to, int behind = 0) const;
    void readInto(char *target, qint64 from, qint64 to) const;
    qint64 nextGameFrom(qint64 offset) const;

    QFile m_file;
    const qint64 m_pieceSize;
    qint64 m_size = 0;
    /// Offsets of the first byte inside the brackets of the games list and of its closing bracket, when the file is in
    /// the order of the writer; -1 otherwise.
    qint64 m_gamesBegin = -1;
    qint64 m_gamesEnd = -1;
    GameList m_games; ///< of a file in another order
};

} // namespace ludarium

#pragma once

#include "Models/Game.h"
#include "Services/Artwork/ArtworkFinder.h"

#include <QMutex>
#include <atomic>
#include <functional>
#include <stop_token>

class QThreadPool;

namespace ludarium {

class ThumbnailDiskCache;

/// What a run over many games did.
struct PreCacheCount {
    int cached = 0;  ///< copies made
    int skipped = 0; ///< games that have one, or no picture
    int total = 0;
    bool stopped = false;
    int failed = 0;       ///< of the skipped ones: games whose picture could not be copied
    QString failure = {}; ///< why the last of them could not
};

/// Copies the pictures of many games to the local disk, several at a time. `run` blocks the thread that it is called
/// on, and works on it and on others of the pool, as far as those are free.
class PreCacheRun {
  public:
    PreCacheRun(ArtworkFinder &finder, const ThumbnailDiskCache &cache, GameList games, QString collectionPath)
        : m_finder(finder), m_cache(cache), m_games(std::move(games)), m_collectionPath(std::move(collectionPath)) {}

    /// `begun` is called on each thread that begins to work on games, the folders being listed by then, and `advanced`
    /// after each game.
    PreCacheCount run(QThreadPool &pool, int mostAtOnce, const std::stop_token &stop,
                      const std::function<void()> &begun = {}, const std::function<void()> &advanced = {});
    /// As far as it is. Any thread.
    PreCacheCount count() const;

  private:
    /// Makes the copy of a game's picture, and counts what came of it.
    void processGameForCache(const Game &game, const std::stop_token &stop);

    ArtworkFinder &m_finder;
    const ThumbnailDiskCache &m_cache;
    const GameList m_games;
    const QString m_collectionPath;
    ArtworkFinder::Folders m_dirCache;
    std::atomic<qsizetype> m_next = 0;
    std::atomic<int> m_cached = 0;
    std::atomic<int> m_skipped = 0;
    std::atomic<int> m_failed = 0;
    mutable QMutex m_failureMutex;
    QString m_failure;
};

} // namespace ludarium

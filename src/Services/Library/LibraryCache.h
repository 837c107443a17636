#pragma once

#include "Models/Game.h"
#include "Models/Platform.h"
#include "Models/Playlist.h"
#include "Services/Library/CacheFiles.h"

#include <QDateTime>
#include <QString>
#include <optional>

namespace ludarium {

/// One parsed collection as the cache keeps it.
struct CachedCollectionData {
    GameList games;
    QList<Platform> platforms;
    QList<Playlist> playlists;
    QString collectionPath;
    double cacheDate = 0; ///< seconds since 2001-01-01 00:00:00 UTC
};

/// The parse result of one collection in files that can be thrown away at any time: a JSON file, beside it what that
/// form leaves out (see LibraryDetails), and what the last look at the disk saw (see SeenStatuses). All calls block and
/// may run on any thread.
class LibraryCache {
  public:
    explicit LibraryCache(CacheFiles files) : m_files(std::move(files)) {}
    /// That of the collection in the settings.
    explicit LibraryCache(const HostPaths &paths) : m_files(paths) {}

    const CacheFiles &files() const { return m_files; }
    QString cacheFile() const { return m_files.cache(); }

    /// To be called before the first use in a process: gives the files of a collection the names that it has by the
    /// settings of now, and makes the folder private and clean.
    void settle(const QString &collection) const;
    /// The cached collection, or none when there is no usable cache for exactly this path: no file, another
    /// collection's, not readable, 30 days old or more, without a game. The file is left as it is. Large files are
    /// read and decoded by two threads. Without a fitting file beside it games come back without what their written
    /// form leaves out.
    std::optional<CachedCollectionData> load(const QString &collection, const QDateTime &now) const;
    /// Replaces the files as a whole, unless another process has saved a later state; a failure is logged.
    void save(const CachedCollectionData &data) const;
    void clear() const;

    static double toCacheDate(const QDateTime &time);
    static QDateTime fromCacheDate(double date);

  private:
    void saveHeld(const CachedCollectionData &data) const;

    CacheFiles m_files;
};

} // namespace ludarium

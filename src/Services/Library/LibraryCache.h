#pragma once

#include "Models/Game.h"
#include "Models/Platform.h"
#include "Models/Playlist.h"

#include <QDateTime>
#include <QSet>
#include <QString>
#include <optional>

namespace ludarium {

class HostPaths;

/// One parsed collection as the cache keeps it. Games come back without what their written form leaves out.
struct CachedCollectionData {
    GameList games;
    QList<Platform> platforms;
    QList<Playlist> playlists;
    QString collectionPath;
    double cacheDate = 0; ///< seconds since 2001-01-01 00:00:00 UTC
};

/// The parse result of one collection in a JSON file that can be thrown away at any time, and the two id files of the
/// last look at the disk. All calls block and may run on any thread.
class LibraryCache {
  public:
    explicit LibraryCache(const HostPaths &paths);

    QString cacheFile() const;
    QString installedIdsFile() const;
    QString compressedIdsFile() const;

    /// The cached collection, or none when there is no usable cache for exactly this path: no file, another
    /// collection's, not readable, 30 days old or more, without a game. The file is left as it is. Large files are
    /// read and decoded by two threads.
    std::optional<CachedCollectionData> load(const QString &collection, const QDateTime &now) const;
    /// Replaces the file as a whole; a failure is logged.
    void save(const CachedCollectionData &data) const;
    void clear() const;

    /// None when the file is missing or not a list of texts.
    static std::optional<QSet<QString>> loadIds(const QString &file);
    static void saveIds(const QString &file, const QSet<QString> &ids);

    static double toCacheDate(const QDateTime &time);
    static QDateTime fromCacheDate(double date);

  private:
    QString m_folder;
};

} // namespace ludarium

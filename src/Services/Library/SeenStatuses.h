#pragma once

#include "Services/Library/LibraryServices.h"

#include <QDateTime>
#include <QHash>
#include <QSet>

namespace ludarium {

class CacheFiles;

/// What the last look at the disk saw of a collection's games, kept in three files for the next start: the ids of the
/// installed and of the compressed ones, and those that can be downloaded with their sizes and the time of the look.
struct SeenStatuses {
    QSet<QString> installed;
    QSet<QString> compressed;
    QHash<QString, QString> downloadable; ///< size by id
    double time = 0;                      ///< of the look, as LibraryCache::toCacheDate gives it; 0 when not told
    bool found = false;                   ///< there were files

    GameStatus of(const QString &id) const;
    void set(const QString &id, const GameStatus &status);

    static SeenStatuses of(const GameList &games, double time);

    // All of these block, and belong under a CacheFiles::Lock.
    static SeenStatuses load(const CacheFiles &files);
    /// False when a file holds what was seen later (but not in the future of `now`), by another process then.
    bool saveUnlessOlder(const CacheFiles &files, double now) const;
    void save(const CacheFiles &files) const;

    /// None when the file is missing or not a list of texts.
    static std::optional<QSet<QString>> loadIds(const QString &file);
    static void saveIds(const QString &file, const QSet<QString> &ids);
};

} // namespace ludarium

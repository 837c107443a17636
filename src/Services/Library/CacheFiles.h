#pragma once

#include <QString>
#include <QStringList>

namespace ludarium {

class HostPaths;

/// The files that a library leaves in the user's folder for caches, and who may write them when.
///
/// The collection of the settings has the plain names, every other collection names made from its path; of those the
/// eight that were used last are kept.
class CacheFiles {
  public:
    /// The plain names.
    explicit CacheFiles(const HostPaths &paths);
    /// Those of `collection`; without a collection in the settings, plain ones too.
    CacheFiles(const HostPaths &paths, const QString &collection, const QString &collectionOfSettings);

    QString cache() const { return file("GameLibraryCache", ".json"); }
    QString details() const { return file("GameLibraryDetails", ".bin"); }
    QString installedIds() const { return file("installedGameIds", ".json"); }
    QString compressedIds() const { return file("compressedGameIds", ".json"); }
    QString downloadable() const { return file("downloadableGames", ".json"); }
    QStringList all() const { return {cache(), details(), installedIds(), compressedIds(), downloadable()}; }
    bool arePlain() const { return m_suffix.isEmpty(); }

    CacheFiles plain() const;
    CacheFiles named(const QString &collection) const;

    /// Gives these files the names of `to`, whose own go.
    void moveTo(const CacheFiles &to) const;
    /// Notes that a collection other than that of the settings was used, and removes those that were not for longest.
    void noteUse() const;

    /// Makes the folder, private to the user, and removes what a save that was killed left in it. While a Lock is held.
    void prepareFolder() const;

    /// Keeps the other processes from changing the files. A process that does not let go for long is not waited for:
    /// all that can get lost is a cache.
    class Lock {
      public:
        explicit Lock(const CacheFiles &files);
        ~Lock();
        Lock(const Lock &) = delete;
        Lock &operator=(const Lock &) = delete;

      private:
        int m_descriptor;
    };

  private:
    QString file(const char *kind, const char *ending) const;

    QString m_folder;
    bool m_ownFolder; ///< no other program has files there
    QString m_suffix;
};

} // namespace ludarium

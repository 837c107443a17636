#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <memory>
#include <mutex>
#include <vector>

namespace ludarium {

/// One folder as it was when it was listed.
struct DirCacheEntry {
    QHash<QString, QString> filesByLower; ///< folded name to the name on disk
    QStringList files;                    ///< the pictures among them, in the order of the disk
    QStringList subdirs;                  ///< region folders, in the order of the disk; a region has none
    QDateTime modified;                   ///< of the folder, before it was listed
    bool settled = false;                 ///< it had not changed so lately that another change might bear the same time

    /// The first picture of whose letters and digits `wanted` is a part; null when there is none.
    QString findLoosely(const QString &wanted) const;

  private:
    /// The normalised names of `files` as one text to search, made when it is first needed.
    mutable std::once_flag m_normalizeOnce;
    mutable QByteArray m_normalized;
    mutable std::vector<qsizetype> m_starts;
};

/// Keeps what folders hold, so that one listing serves every game. A folder that cannot be listed stays as an empty
/// one until `clear`. Any thread; it lists folders, so never the main one.
class ImageDirectories {
  public:
    using Entry = std::shared_ptr<const DirCacheEntry>;

    /// A folder of pictures with its region folders; null when it does not exist.
    Entry images(const QString &path) { return entry(path, true, false); }
    Entry imagesAnew(const QString &path) { return entry(path, true, true); }
    /// A folder whose files are all of interest: a region folder, or one of videos, manuals or music.
    Entry plain(const QString &path) { return entry(path, false, false); }
    Entry plainAnew(const QString &path) { return entry(path, false, true); }
    /// The same, listed again when the folder has changed since.
    Entry plainOfNow(const QString &path);

    void clear();
    /// Forgets what lies below a folder, and the folder.
    void clearBelow(const QString &path);

  private:
    struct Slot {
        std::once_flag once;
        Entry entry;
    };
    Entry entry(const QString &path, bool pictures, bool anew);

    QMutex m_mutex; ///< guards the map; never held while a folder is listed
    QHash<QString, std::shared_ptr<Slot>> m_slots;
};

} // namespace ludarium

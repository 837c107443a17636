#pragma once

#include "Services/Collections/AriaIndex.h"

#include <QList>
#include <memory>
#include <mutex>
#include <optional>

namespace ludarium {

/// Knows which file of which torrent holds which game of the current collection. Callable from any thread: a load
/// makes a new index, and whoever works with the one before keeps it.
class AriaIndexManager {
  public:
    AriaIndexManager() : m_index(std::make_shared<AriaIndex>()) {}

    /// The collections that a folder holds some part of, in table order. Looks at the disk.
    static QList<CollectionType> detectCollections(const QString &collectionURL);

    /// Reads the index files of a collection and replaces what was known. Blocks, for the thread pool; what cannot be
    /// read is logged and left out.
    void loadIndex(const QString &collectionURL);

    /// Never null; empty before the first load.
    std::shared_ptr<const AriaIndex> index() const;
    bool isLoaded() const { return !index()->isEmpty() || index()->gameDataCount() > 0; }
    /// The collection of the last load.
    QString collectionURL() const;

    std::optional<IndexEntry> getDownloadInfo(const QString &name) const;
    std::optional<IndexEntry> getDownloadInfoByTitle(const QString &title, bool fastOnly) const;

  private:
    mutable std::mutex m_lock;
    std::shared_ptr<const AriaIndex> m_index;
    QString m_collectionURL;
};

} // namespace ludarium

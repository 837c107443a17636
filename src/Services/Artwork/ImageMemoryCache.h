#pragma once

#include "Host/Imaging/Bitmap.h"

#include <QHash>
#include <QMutex>
#include <QString>
#include <list>

namespace ludarium {

/// Decoded pictures by key, the least recently used dropped first. Bounded by number and by bytes, where a picture
/// counts width × height × 4; one that is larger than the whole bound is not kept. Opaque pictures, nearly all, are
/// kept without their alpha, so that they take a quarter less than they count. Any thread.
class ImageMemoryCache {
  public:
    ImageMemoryCache(qsizetype countLimit, qint64 totalCostLimit)
        : m_countLimit(countLimit), m_totalCostLimit(totalCostLimit) {}

    /// Null when it is not there.
    Bitmap object(const QString &key);
    void insert(const QString &key, Bitmap image);
    void remove(const QString &key);
    /// Removes every key that begins so.
    void removePrefix(const QString &prefix);
    void clear();

    qsizetype count() const;
    qint64 totalCost() const;

  private:
    struct Entry {
        QString key;
        Bitmap image; ///< of an opaque one, `pixels` are packed
    };
    using Entries = std::list<Entry>;
    void erase(Entries::iterator entry);

    const qsizetype m_countLimit;
    const qint64 m_totalCostLimit;
    mutable QMutex m_mutex;
    Entries m_entries; ///< most recently used first
    QHash<QString, Entries::iterator> m_byKey;
    qint64 m_totalCost = 0;
};

} // namespace ludarium

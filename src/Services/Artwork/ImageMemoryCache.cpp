#include "Services/Artwork/ImageMemoryCache.h"

#include <algorithm>

namespace ludarium {

namespace {

QByteArray withoutAlpha(const Bitmap &image) {
    QByteArray packed(image.pixels.size() / 4 * 3, Qt::Uninitialized);
    const char *from = image.pixels.constData();
    char *to = packed.data();
    for (const char *const end = to + packed.size(); to != end; from += 4, to += 3)
        std::copy_n(from, 3, to);
    return packed;
}

QByteArray withAlpha(const QByteArray &packed) {
    QByteArray pixels(packed.size() / 3 * 4, Qt::Uninitialized);
    const char *from = packed.constData();
    char *to = pixels.data();
    for (const char *const end = to + pixels.size(); to != end; from += 3, to += 4) {
        std::copy_n(from, 3, to);
        to[3] = char(255);
    }
    return pixels;
}

} // namespace

Bitmap ImageMemoryCache::object(const QString &key) {
    Bitmap image;
    {
        const QMutexLocker lock(&m_mutex);
        const auto found = m_byKey.constFind(key);
        if (found == m_byKey.cend())
            return {};
        m_entries.splice(m_entries.begin(), m_entries, *found);
        image = m_entries.front().image;
    }
    if (image.opaque)
        image.pixels = withAlpha(image.pixels);
    return image;
}

void ImageMemoryCache::insert(const QString &key, Bitmap image) {
    if (image.opaque && !image.isNull())
        image.pixels = withoutAlpha(image);
    const QMutexLocker lock(&m_mutex);
    if (const auto old = m_byKey.constFind(key); old != m_byKey.cend())
        erase(*old);
    if (image.isNull() || image.bytes() > m_totalCostLimit)
        return;
    m_entries.push_front({key, image});
    m_byKey.insert(key, m_entries.begin());
    m_totalCost += image.bytes();
    while (m_totalCost > m_totalCostLimit || m_byKey.size() > m_countLimit)
        erase(std::prev(m_entries.end()));
}

void ImageMemoryCache::erase(Entries::iterator entry) {
    m_totalCost -= entry->image.bytes();
    m_byKey.remove(entry->key);
    m_entries.erase(entry);
}

void ImageMemoryCache::remove(const QString &key) {
    const QMutexLocker lock(&m_mutex);
    if (const auto found = m_byKey.constFind(key); found != m_byKey.cend())
        erase(*found);
}

void ImageMemoryCache::removePrefix(const QString &prefix) {
    const QMutexLocker lock(&m_mutex);
    for (auto entry = m_entries.begin(); entry != m_entries.end();) {
        const auto here = entry++;
        if (here->key.startsWith(prefix))
            erase(here);
    }
}

void ImageMemoryCache::clear() {
    const QMutexLocker lock(&m_mutex);
    m_entries.clear();
    m_byKey.clear();
    m_totalCost = 0;
}

qsizetype ImageMemoryCache::count() const {
    const QMutexLocker lock(&m_mutex);
    return m_byKey.size();
}

qint64 ImageMemoryCache::totalCost() const {
    const QMutexLocker lock(&m_mutex);
    return m_totalCost;
}

} // namespace ludarium

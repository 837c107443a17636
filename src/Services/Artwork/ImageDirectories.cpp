#include "Services/Artwork/ImageDirectories.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Services/Artwork/ArtworkNames.h"

#include <QFileInfo>
#include <algorithm>

namespace ludarium {

namespace {

bool isPicture(const QString &name) {
    return ArtworkNames::imageExtensions().contains(ArtworkNames::lowerExtension(name));
}

/// Null when there is no such folder.
std::shared_ptr<DirCacheEntry> scan(const QString &path, bool pictures) {
    const QDateTime modified = QFileInfo(path).lastModified();
    const std::optional<QStringList> names = listFolder(path);
    if (!names && !QFileInfo::exists(path))
        return nullptr;
    auto entry = std::make_shared<DirCacheEntry>();
    entry->modified = modified;
    constexpr qint64 coarsestTimes = 2; // seconds, of FAT
    entry->settled = modified.secsTo(QDateTime::currentDateTime()) > coarsestTimes;
    if (!names) {
        Log::warning(QStringLiteral("Folder cannot be listed: %1").arg(path));
        return entry;
    }
    for (const QString &name : *names) {
        if (name.startsWith(QLatin1StringView("._")))
            continue; // what macOS keeps beside a file on disks of other systems, under the same extension
        const bool picture = isPicture(name);
        if (picture)
            entry->files.append(name);
        if (picture || !pictures)
            entry->filesByLower.insert(ArtworkNames::folded(name), name);
        else if (!name.startsWith(QLatin1Char('.')) && QFileInfo(path + QLatin1Char('/') + name).isDir())
            entry->subdirs.append(name);
    }
    return entry;
}

} // namespace

QString DirCacheEntry::findLoosely(const QString &wanted) const {
    std::call_once(m_normalizeOnce, [this] {
        m_starts.reserve(size_t(files.size()));
        for (const QString &name : files) {
            m_starts.push_back(m_normalized.size());
            m_normalized += ArtworkNames::normalizeForSearch(name).toUtf8();
            m_normalized += '\n'; // in no text that is looked for, so nothing is found across two names
        }
    });
    const qsizetype hit = m_normalized.indexOf(wanted.toUtf8());
    if (hit < 0)
        return {};
    const auto next = std::upper_bound(m_starts.begin(), m_starts.end(), hit);
    return files[next - m_starts.begin() - 1];
}

ImageDirectories::Entry ImageDirectories::entry(const QString &path, bool pictures, bool anew) {
    std::shared_ptr<Slot> slot;
    {
        const QMutexLocker lock(&m_mutex);
        std::shared_ptr<Slot> &kept = m_slots[path];
        if (!kept || anew)
            kept = std::make_shared<Slot>();
        slot = kept;
    }
    // Many games ask for the same folder at once: one thread lists it, the others wait for that.
    std::call_once(slot->once, [&] { slot->entry = scan(path, pictures); });
    if (!slot->entry) {
        const QMutexLocker lock(&m_mutex);
        if (m_slots.value(path) == slot)
            m_slots.remove(path);
    }
    return slot->entry;
}

ImageDirectories::Entry ImageDirectories::plainOfNow(const QString &path) {
    const Entry kept = plain(path);
    return kept && (!kept->settled || kept->modified != QFileInfo(path).lastModified()) ? plainAnew(path) : kept;
}

void ImageDirectories::clear() {
    const QMutexLocker lock(&m_mutex);
    m_slots.clear();
}

void ImageDirectories::clearBelow(const QString &path) {
    const QMutexLocker lock(&m_mutex);
    m_slots.removeIf(
        [&](const auto &slot) { return slot.key() == path || slot.key().startsWith(path + QLatin1Char('/')); });
}

} // namespace ludarium

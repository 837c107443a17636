#include "Services/Collections/AriaIndexManager.h"

#include "Host/AppLogger.h"
#include "Services/Collections/CollectionLayout.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

/// An index has about a hundred bytes a file.
constexpr qint64 maxIndexSize = 64 * 1024 * 1024;

/// The text of an index file; none, with the reason, when it cannot be read.
std::optional<QString> readIndexFile(const QString &path, QString &problem) {
    // Opening a pipe of that name would wait for ever.
    if (!QFileInfo(path).isFile()) {
        problem = u"not a regular file"_s;
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        problem = file.errorString();
        return std::nullopt;
    }
    if (file.size() > maxIndexSize) {
        problem = u"larger than 64 MiB"_s;
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        problem = file.errorString();
        return std::nullopt;
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(bytes);
    if (decoder.hasError()) {
        problem = u"not UTF-8"_s;
        return std::nullopt;
    }
    return text;
}

} // namespace

QList<CollectionType> AriaIndexManager::detectCollections(const QString &collectionURL) {
    QList<CollectionType> found;
    for (const CollectionTypeInfo &collection : CollectionTypeInfo::all()) {
        const QString places[]{
            collectionURL + u'/' + CollectionLayout::packedGameData + u'/' + collection.rawValue,
            collectionURL + u'/' + collection.eXoPathComponent,
            collectionURL + u'/' + CollectionLayout::aria + u'/' + collection.torrentFilename,
        };
        for (const QString &place : places) {
            if (QFileInfo::exists(place)) {
                found.append(collection.type);
                break;
            }
        }
    }
    return found;
}

void AriaIndexManager::loadIndex(const QString &collectionURL) {
    auto loaded = std::make_shared<AriaIndex>();
    const QString folder = collectionURL + u'/' + CollectionLayout::aria + u'/';
    for (const CollectionType type : detectCollections(collectionURL)) {
        QString path = folder + CollectionTypeInfo::of(type).indexFilename();
        // The name from the days when there was only one collection.
        if (type == CollectionType::eXoDOS && !QFileInfo::exists(path))
            path = folder + "index.txt"_L1;
        if (!QFileInfo::exists(path))
            continue;
        QString problem;
        if (const auto text = readIndexFile(path, problem))
            loaded->parseIndex(*text, type);
        else
            Log::error(u"AriaIndexManager: Failed to read %1: %2"_s.arg(path, problem));
    }
    if (loaded->isEmpty() && loaded->gameDataCount() == 0)
        Log::info(u"AriaIndexManager: No index files found"_s);
    else
        Log::info(u"AriaIndexManager: Total loaded: %1 entries (GameData: %2)"_s.arg(loaded->entries().size())
                      .arg(loaded->gameDataCount()));
    const std::lock_guard lock(m_lock);
    m_index = std::move(loaded);
    m_collectionURL = collectionURL;
}

std::shared_ptr<const AriaIndex> AriaIndexManager::index() const {
    const std::lock_guard lock(m_lock);
    return m_index;
}

QString AriaIndexManager::collectionURL() const {
    const std::lock_guard lock(m_lock);
    return m_collectionURL;
}

std::optional<IndexEntry> AriaIndexManager::getDownloadInfo(const QString &name) const {
    const auto current = index();
    const IndexEntry *entry = current->getDownloadInfo(name);
    return entry == nullptr ? std::nullopt : std::optional(*entry);
}

std::optional<IndexEntry> AriaIndexManager::getDownloadInfoByTitle(const QString &title, bool fastOnly) const {
    const auto current = index();
    const IndexEntry *entry = current->getDownloadInfoByTitle(title, fastOnly);
    return entry == nullptr ? std::nullopt : std::optional(*entry);
}

} // namespace ludarium

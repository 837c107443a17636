#pragma once

#include <QString>
#include <span>

namespace ludarium {

/// The collections whose games can be fetched one by one, in the order of all loops over them.
enum class CollectionType { eXoDOS, eXoScummVM, eXoWin3x, eXoWin9x, eXoDREAMM, eXoIF, eXoDemoScene };

struct CollectionTypeInfo {
    CollectionType type;
    QString rawValue;
    QString torrentFilename;
    QString gameDataPathComponent; ///< in the paths of companion archives
    QString eXoPathComponent;      ///< in the paths of game archives

    QString indexFilename() const;

    static std::span<const CollectionTypeInfo> all();
    static const CollectionTypeInfo &of(CollectionType type);
};

/// One file of a torrent.
struct IndexEntry {
    qint64 index = 0; ///< in the torrent, from 1, as `aria2c --select-file` counts
    QString path;     ///< inside the torrent
    QString filename; ///< its last component, usable as one
    QString gameName; ///< `filename` without ".zip" or ".7z"
    qint64 sizeBytes = 0;
    CollectionType collectionType = CollectionType::eXoDOS;

    QString sizeFormatted() const;

    bool operator==(const IndexEntry &) const = default;
};

/// A size in units of KB, MB and GB, which are powers of 1000 as file managers count them.
QString formattedFileSize(qint64 bytes);

} // namespace ludarium

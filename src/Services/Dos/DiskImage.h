#pragma once

#include "Services/Dos/FolderView.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QList>
#include <memory>
#include <optional>

namespace ludarium {

/// What a guest finds under a name.
enum class GuestEntry { missing, folder, file };

/// The folders of a disc or disk image, as far as they are asked for. A damaged image is one with fewer files.
class DiskImage {
  public:
    virtual ~DiskImage() = default;
    /// `path` in capitals, each piece 8.3; an empty one is the root.
    GuestEntry find(const QByteArrayList &path);

    /// A disc with an ISO 9660 file system, in a plain image, a raw one or the first track of a cue sheet; null for
    /// anything else.
    static std::unique_ptr<DiskImage> openDisc(FolderView &view, const QString &path);
    /// A floppy or hard disk with a FAT12 or FAT16 file system, the latter in its first partition; null for anything
    /// else.
    static std::unique_ptr<DiskImage> openDisk(const QString &path);

  protected:
    struct Entry {
        QByteArray name; ///< in capitals
        bool isFolder = false;
        quint32 start = 0; ///< where it begins, in the file system's own count
        quint32 size = 0;
    };
    virtual Entry root() const = 0;
    virtual QList<Entry> list(const Entry &folder) = 0;
};

} // namespace ludarium

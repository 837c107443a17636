#pragma once

#include "Host/Imaging/Bitmap.h"

#include <QString>
#include <stop_token>

namespace ludarium {

/// Small JPEG copies of pictures on the local disk, shared by all collections: a file is named by a digest of the
/// picture's path. A copy that is older than its picture counts as missing. Losing a copy loses nothing, so copies are
/// renamed into place whole but not flushed to the medium; a damaged one is removed when it is met. Any thread but the
/// main one; one object a folder.
class ThumbnailDiskCache {
  public:
    /// Longer side of a copy, in pixels.
    static constexpr int diskCacheMaxDimension = 600;
    static constexpr int jpegQuality = 80;

    explicit ThumbnailDiskCache(QString directory) : m_directory(std::move(directory)) {}

    QString directory() const { return m_directory; }
    /// Makes the folder private to the user, and removes what copying that was killed left in it.
    void settle() const;
    /// Named by the lower-case path.
    QString diskCacheURL(const QString &path) const;
    /// As earlier versions named it: by the path as it is written.
    QString legacyDiskCacheURL(const QString &path) const;

    /// Whether there is a copy, be it old or new.
    bool contains(const QString &path) const;
    /// The copy made `longestSide` pixels long or shorter; null when there is none.
    Bitmap loadFromDiskCache(const QString &path, int longestSide, const std::stop_token &stop = {}) const;
    /// Makes the copy unless there is one that is not older than the picture; says whether it made one.
    /// Failures go to the log, and to `failure` too.
    bool saveToDiskCacheFromSource(const QString &path, const std::stop_token &stop = {},
                                   QString *failure = nullptr) const;

    /// Bytes of all copies.
    qint64 diskCacheSize() const;
    void clearDiskCache() const;

  private:
    /// The file that holds the copy; null when there is none or an old one.
    QString freshFile(const QString &path) const;

    QString m_directory;
};

} // namespace ludarium

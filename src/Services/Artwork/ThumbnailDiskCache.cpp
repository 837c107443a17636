#include "Services/Artwork/ThumbnailDiskCache.h"

#include "Host/AppLogger.h"
#include "Host/Imaging/ImageCodec.h"
#include "Host/SafeFiles.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <cstdio>
#include <system_error>

namespace ludarium {

namespace {

constexpr int digestBytes = 16;

QString hashName(const QString &text) {
    const QByteArray digest = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.first(digestBytes).toHex()) + QStringLiteral(".jpg");
}

QString nameOf(const QString &path) {
    return QFileInfo(path).fileName();
}

void logFailure(const QString &what) {
    Log::debug(QStringLiteral("Disk cache save failed: %1").arg(what));
}

/// Whole or not at all. Returns the reason, empty on success.
QString writeWhole(const QString &directory, const QString &target, const QByteArray &data) {
    QTemporaryFile file(directory + QStringLiteral("/.XXXXXX.part"));
    if (!file.open() || file.write(data) != data.size() || !file.flush())
        return file.errorString();
    const QByteArray from = QFile::encodeName(file.fileName());
    file.close();
    if (std::rename(from.constData(), QFile::encodeName(target).constData()) != 0)
        return QString::fromStdString(std::generic_category().message(errno));
    file.setAutoRemove(false);
    return {};
}

/// Covers tell what somebody collects: nobody else's business.
bool makeFolder(const QString &directory) {
    return QDir().mkpath(directory) &&
           QFile::setPermissions(directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

void ThumbnailDiskCache::settle() const {
    if (!QFileInfo::exists(m_directory))
        return;
    makeFolder(m_directory);
    const QDateTime aWhileAgo = QDateTime::currentDateTime().addSecs(-600);
    const QFileInfoList left =
        QDir(m_directory).entryInfoList({QStringLiteral(".*.part")}, QDir::Files | QDir::Hidden, QDir::NoSort);
    for (const QFileInfo &file : left)
        if (file.lastModified() < aWhileAgo)
            QFile::remove(file.filePath());
}

QString ThumbnailDiskCache::diskCacheURL(const QString &path) const {
    return m_directory + QLatin1Char('/') + hashName(path.toLower());
}

QString ThumbnailDiskCache::legacyDiskCacheURL(const QString &path) const {
    return m_directory + QLatin1Char('/') + hashName(path);
}

bool ThumbnailDiskCache::contains(const QString &path) const {
    return QFileInfo::exists(diskCacheURL(path)) || QFileInfo::exists(legacyDiskCacheURL(path));
}

QString ThumbnailDiskCache::freshFile(const QString &path) const {
    QFileInfo copy(diskCacheURL(path));
    if (!copy.exists())
        copy.setFile(legacyDiskCacheURL(path));
    if (!copy.exists())
        return {};
    // A picture that is not there at the moment, its disk unplugged, leaves its copy valid.
    const QFileInfo source(path);
    return source.exists() && source.lastModified() > copy.lastModified() ? QString() : copy.filePath();
}

Bitmap ThumbnailDiskCache::loadFromDiskCache(const QString &path, int longestSide, const std::stop_token &stop) const {
    const QString file = freshFile(path);
    if (file.isNull())
        return {};
    try {
        return decodeImageFile(file, longestSide, stop);
    } catch (const ImageError &error) {
        Log::debug(QStringLiteral("Removing a damaged thumbnail of %1: %2")
                       .arg(nameOf(path), QString::fromUtf8(error.what())));
        QFile::remove(file);
        return {};
    }
}

bool ThumbnailDiskCache::saveToDiskCacheFromSource(const QString &path, const std::stop_token &stop,
                                                   QString *failure) const {
    if (!freshFile(path).isNull())
        return false;
    const auto fail = [failure](const QString &what) {
        logFailure(what);
        if (failure)
            *failure = what;
    };
    Bitmap image;
    try {
        image = decodeImageFile(path, diskCacheMaxDimension, stop);
    } catch (const ImageError &error) {
        fail((error.kind() == ImageError::Case::unreadable ? QStringLiteral("cannot read source %1")
                                                           : QStringLiteral("cannot generate thumbnail for %1"))
                 .arg(nameOf(path)));
        return false;
    }
    if (image.isNull() || stop.stop_requested())
        return false;
    QByteArray data;
    try {
        data = encodeJpeg(image, jpegQuality);
    } catch (const ImageError &) {
        fail(QStringLiteral("JPEG conversion failed for %1").arg(nameOf(path)));
        return false;
    }
    const QString target = diskCacheURL(path);
    QString problem = writeWhole(m_directory, target, data);
    if (!problem.isEmpty() && !QFileInfo::exists(m_directory) && makeFolder(m_directory))
        problem = writeWhole(m_directory, target, data);
    if (!problem.isEmpty())
        fail(QStringLiteral("write error for %1: %2").arg(nameOf(path), problem));
    return problem.isEmpty();
}

qint64 ThumbnailDiskCache::diskCacheSize() const {
    qint64 sum = 0;
    for (QDirIterator files(m_directory, QDir::Files | QDir::Hidden); files.hasNext();) {
        files.next();
        sum += files.fileInfo().size();
    }
    return sum;
}

void ThumbnailDiskCache::clearDiskCache() const {
    const QString problem =
        QFileInfo::exists(m_directory) ? removeInside(QFileInfo(m_directory).path(), m_directory) : QString();
    if (!problem.isEmpty())
        Log::warning(QStringLiteral("Failed to clear the disk thumbnail cache: %1").arg(problem));
    else if (makeFolder(m_directory))
        Log::info(QStringLiteral("Disk thumbnail cache cleared"));
}

} // namespace ludarium

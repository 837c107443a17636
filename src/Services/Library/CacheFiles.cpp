#include "Services/Library/CacheFiles.h"

#include "Host/AppLogger.h"
#include "Host/HostPaths.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype keptCollections = 8;

QString suffixFor(const QString &collection) {
    const QByteArray digest = QCryptographicHash::hash(collection.toUtf8(), QCryptographicHash::Sha256);
    return u'-' + QString::fromLatin1(digest.first(8).toHex());
}

} // namespace

CacheFiles::CacheFiles(const HostPaths &paths)
    : m_folder(paths.layout() == HostLayout::MacOS ? QFileInfo(paths.caches()).path() : paths.caches()),
      m_ownFolder(paths.layout() != HostLayout::MacOS) {}

CacheFiles::CacheFiles(const HostPaths &paths, const QString &collection, const QString &collectionOfSettings)
    : CacheFiles(paths) {
    if (!collectionOfSettings.isEmpty() && collection != collectionOfSettings)
        m_suffix = suffixFor(collection);
}

QString CacheFiles::file(const char *kind, const char *ending) const {
    return m_folder + "/com.ludarium.app."_L1 + QLatin1StringView(kind) + m_suffix + QLatin1StringView(ending);
}

CacheFiles CacheFiles::plain() const {
    CacheFiles files = *this;
    files.m_suffix.clear();
    return files;
}

CacheFiles CacheFiles::named(const QString &collection) const {
    CacheFiles files = *this;
    files.m_suffix = suffixFor(collection);
    return files;
}

void CacheFiles::moveTo(const CacheFiles &to) const {
    const QStringList mine = all();
    const QStringList theirs = to.all();
    for (qsizetype i = 0; i < mine.size(); ++i) {
        const QByteArray target = QFile::encodeName(theirs[i]);
        if (::rename(QFile::encodeName(mine[i]).constData(), target.constData()) != 0)
            ::unlink(target.constData()); // what is not here must not be there from before
    }
}

void CacheFiles::noteUse() const {
    if (!arePlain())
        ::utimensat(AT_FDCWD, QFile::encodeName(cache()).constData(), nullptr, 0);
    // Newest first.
    const QFileInfoList others =
        QDir(m_folder).entryInfoList({u"com.ludarium.app.GameLibraryCache-*.json"_s}, QDir::Files, QDir::Time);
    for (qsizetype i = keptCollections; i < others.size(); ++i) {
        CacheFiles old = *this;
        const QString name = others[i].completeBaseName();
        old.m_suffix = name.sliced(name.lastIndexOf(u'-'));
        for (const QString &file : old.all())
            QFile::remove(file);
        Log::debug(u"Removed the cache of a collection that was not used lately: %1"_s.arg(others[i].fileName()));
    }
}

void CacheFiles::prepareFolder() const {
    QDir().mkpath(m_folder);
    if (m_ownFolder)
        ::chmod(QFile::encodeName(m_folder).constData(), 0700);
    for (const QString &file : all())
        ::chmod(QFile::encodeName(file).constData(), 0600);
    // Every save into this folder is made under the lock that is held here, so these are nobody's; the age is for a
    // file system that has no locks.
    const QDateTime aWhileAgo = QDateTime::currentDateTime().addSecs(-60);
    for (const QFileInfo &file : QDir(m_folder).entryInfoList({u".ludarium-*"_s}, QDir::Files | QDir::Hidden))
        if (file.lastModified() < aWhileAgo && QFile::remove(file.filePath()))
            Log::debug(u"Removed what a save left that did not end: %1"_s.arg(file.fileName()));
}

CacheFiles::Lock::Lock(const CacheFiles &files) {
    QDir().mkpath(files.m_folder);
    m_descriptor = ::open(QFile::encodeName(files.m_folder + u"/com.ludarium.app.GameLibraryCache.lock"_s).constData(),
                          O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_descriptor < 0)
        return;
    for (int attempt = 0; attempt < 500; ++attempt) {
        if (::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    Log::warning(u"⚠️ Another process holds the library cache; going on without waiting for it"_s);
}

CacheFiles::Lock::~Lock() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

} // namespace ludarium

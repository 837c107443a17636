#include "Services/Artwork/ArtworkFinder.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Services/Artwork/ArtworkNames.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace ludarium {

namespace {

/// A name that contains the title of fewer letters than this proves nothing.
constexpr int shortestLooseTitle = 5;

QString below(const QString &folder, const QString &name) {
    return folder + QLatin1Char('/') + name;
}

/// Where a kind's pictures are; null for a platform whose name is no folder's.
QString imageFolder(const QString &collectionPath, const QString &platform, ImageType type) {
    return isSafeName(platform) ? QStringLiteral("%1/Images/%2/%3").arg(collectionPath, platform, rawValue(type))
                                : QString();
}

QString mediaFolder(const QString &collectionPath, const char *media, const QString &platform) {
    return isSafeName(platform) ? QStringLiteral("%1/%2/%3").arg(collectionPath, QLatin1StringView(media), platform)
                                : QString();
}

QString videoKey(const Game &game) {
    return QStringLiteral("video_") + game.id;
}

QString lookUp(const DirCacheEntry &folder, const QStringList &candidates) {
    for (const QString &candidate : candidates) {
        const QString name = ArtworkNames::folded(candidate);
        const QString safe = ArtworkNames::safeName(name);
        for (const QString &extension : ArtworkNames::imageExtensions()) {
            const QString suffix = QLatin1Char('.') + extension;
            auto hit = folder.filesByLower.constFind(name + suffix);
            if (hit == folder.filesByLower.cend() && safe != name)
                hit = folder.filesByLower.constFind(safe + suffix);
            if (hit != folder.filesByLower.cend())
                return *hit;
        }
    }
    return {};
}

/// A file of the collection that a record names; none for a folder.
std::optional<QString> namedFile(const QString &collectionPath, const QString &path) {
    if (path.isEmpty())
        return std::nullopt;
    std::optional<QString> file = pathInside(collectionPath, path);
    return file && QFileInfo(*file).isFile() ? file : std::nullopt;
}

} // namespace

std::optional<QString> ArtworkFinder::find(const Game &game, ImageType type, const QString &collectionPath,
                                           const FolderSource &source) const {
    const QString path = imageFolder(collectionPath, game.platform, type);
    const ImageDirectories::Entry top = path.isNull() ? nullptr : source(path, false);
    if (!top)
        return std::nullopt;
    QList<std::pair<QString, ImageDirectories::Entry>> folders{{path, top}};
    for (const QString &region : top->subdirs)
        if (ImageDirectories::Entry entry = source(below(path, region), true))
            folders.append({below(path, region), std::move(entry)});
    const QStringList candidates = ArtworkNames::imageCandidates(game);
    for (const auto &[folder, entry] : std::as_const(folders))
        if (const QString name = lookUp(*entry, candidates); !name.isEmpty())
            return below(folder, name);
    const QString wanted = ArtworkNames::normalizeForSearch(game.title);
    if (wanted.size() >= shortestLooseTitle)
        for (const auto &[folder, entry] : std::as_const(folders))
            if (const QString name = entry->findLoosely(wanted); !name.isEmpty())
                return below(folder, name);
    return std::nullopt;
}

std::optional<QString> ArtworkFinder::findImageURL(const Game &game, ImageType type, const QString &collectionPath) {
    return find(game, type, collectionPath, [&](const QString &path, bool region) {
        ImageDirectories::Entry entry = region ? m_directories.plain(path) : m_directories.images(path);
        if (!entry && type == ImageType::boxFront) {
            const QMutexLocker lock(&m_urlCacheLock);
            if (!m_missingLogged.contains(path)) {
                m_missingLogged.insert(path); // once, not for each of thousands of games
                Log::debug(QStringLiteral("Image folder not found: %1").arg(path));
            }
        }
        return entry;
    });
}

std::optional<QString> ArtworkFinder::findImageURLCached(const Game &game, ImageType type,
                                                         const QString &collectionPath, const Folders &folders) const {
    return find(game, type, collectionPath, [&](const QString &path, bool) { return folders.value(path); });
}

std::optional<QString> ArtworkFinder::KnownImages::url(ImageType type) const {
    const auto hit =
        std::find_if(found.begin(), found.end(), [=](const FoundImage &image) { return image.type == type; });
    return hit == found.end() ? std::nullopt : std::optional(hit->url);
}

void ArtworkFinder::KnownImages::set(ImageType type, const std::optional<QString> &url) {
    lookedFor |= quint16(1 << int(type));
    found.removeIf([=](const FoundImage &image) { return image.type == type; });
    if (url)
        found.append({type, *url});
}

std::optional<FoundImage> ArtworkFinder::firstOf(const ImageTypes &preference, const Game &game,
                                                 const std::function<std::optional<QString>(ImageType)> &look) {
    for (const ImageType type : preference) {
        std::optional<QString> url;
        bool known = false;
        int generation = 0;
        {
            const QMutexLocker lock(&m_urlCacheLock);
            generation = m_generation;
            const auto kept = m_imageURLCache.constFind(game.id);
            known = kept != m_imageURLCache.cend() && kept->knows(type);
            if (known)
                url = kept->url(type);
        }
        if (!known) {
            url = look(type);
            const QMutexLocker lock(&m_urlCacheLock);
            if (generation == m_generation)
                m_imageURLCache[game.id].set(type, url);
        }
        if (url)
            return FoundImage{type, *url};
    }
    return std::nullopt;
}

std::optional<FoundImage> ArtworkFinder::bestAvailableImageURL(const Game &game, const QString &collectionPath) {
    return firstOf(gridPreference, game, [&](ImageType type) { return findImageURL(game, type, collectionPath); });
}

std::optional<FoundImage> ArtworkFinder::coverflowImageURL(const Game &game, const QString &collectionPath) {
    return firstOf(coverflowPreference, game, [&](ImageType type) { return findImageURL(game, type, collectionPath); });
}

std::optional<FoundImage> ArtworkFinder::bestListedImageURL(const Game &game, const QString &collectionPath,
                                                            const Folders &folders) {
    for (const ImageType type : gridPreference) {
        const std::optional<QString> url = findImageURLCached(game, type, collectionPath, folders);
        {
            const QMutexLocker lock(&m_urlCacheLock);
            if (folders.generation == m_generation)
                m_imageURLCache[game.id].set(type, url);
        }
        if (url)
            return FoundImage{type, *url};
    }
    return std::nullopt;
}

std::optional<QString> ArtworkFinder::boxFrontURL(const Game &game, const QString &collectionPath) const {
    const QString folder = imageFolder(collectionPath, game.platform, ImageType::boxFront);
    for (const char *ending : {"-01.jpg", "-01.png", ".jpg", ".png"}) {
        const QString name = game.title + QLatin1StringView(ending);
        if (!folder.isNull() && isSafeName(name) && QFileInfo(below(folder, name)).isFile())
            return below(folder, name);
    }
    return std::nullopt;
}

QList<FoundImage> ArtworkFinder::allImages(const Game &game, const QString &collectionPath) {
    const QStringList prefixes = ArtworkNames::galleryPrefixes(game);
    const auto isOfGame = [&](const QString &name) {
        const QString base = ArtworkNames::composed(name.left(name.lastIndexOf(QLatin1Char('.'))));
        return std::any_of(prefixes.begin(), prefixes.end(),
                           [&](const QString &prefix) { return base.startsWith(prefix); });
    };
    QList<FoundImage> found;
    for (const ImageType type : imageTypes) {
        const QString path = imageFolder(collectionPath, game.platform, type);
        const ImageDirectories::Entry top = path.isNull() ? nullptr : m_directories.images(path);
        if (!top)
            continue;
        QStringList urls;
        const auto take = [&](const QString &folder, const DirCacheEntry &entry) {
            for (const QString &name : entry.files)
                if (isOfGame(name))
                    urls.append(below(folder, name));
        };
        take(path, *top);
        for (const QString &region : top->subdirs)
            if (const ImageDirectories::Entry entry = m_directories.plain(below(path, region)))
                take(below(path, region), *entry);
        urls.sort();
        for (const QString &url : std::as_const(urls))
            found.append({type, url});
    }
    return found;
}

std::optional<QString> ArtworkFinder::fileNamed(const QString &folder, const ImageDirectories::Entry &entry,
                                                const QStringList &names, const QStringList &extensions,
                                                bool alsoSafe) {
    if (!entry)
        return std::nullopt;
    for (const QString &name : names)
        for (const QString &extension : extensions) {
            QStringList forms{name};
            if (alsoSafe && ArtworkNames::safeName(name) != name)
                forms.append(ArtworkNames::safeName(name));
            for (const QString &form : std::as_const(forms))
                if (const auto hit =
                        entry->filesByLower.constFind(ArtworkNames::folded(form + QLatin1Char('.') + extension));
                    hit != entry->filesByLower.cend() && QFileInfo(below(folder, *hit)).isFile())
                    return below(folder, *hit);
        }
    return std::nullopt;
}

std::optional<QString> ArtworkFinder::videoURL(const Game &game, const QString &collectionPath) {
    int generation = 0;
    {
        const QMutexLocker lock(&m_urlCacheLock);
        generation = m_generation;
        if (const auto kept = m_videoURLCache.constFind(videoKey(game)); kept != m_videoURLCache.cend())
            return *kept;
    }
    const QString folder = mediaFolder(collectionPath, "Videos", game.platform);
    std::optional<QString> url = fileNamed(folder, folder.isNull() ? nullptr : m_directories.plain(folder),
                                           ArtworkNames::mediaCandidates(game), ArtworkNames::videoExtensions(), true);
    const QMutexLocker lock(&m_urlCacheLock);
    if (generation == m_generation)
        m_videoURLCache.insert(videoKey(game), url);
    return url;
}

std::optional<QString> ArtworkFinder::manualURL(const Game &game, const QString &collectionPath) {
    if (std::optional<QString> named = namedFile(collectionPath, game.manualPath))
        return named;
    const QString name = game.gameFolderName();
    const QString folder = mediaFolder(collectionPath, "Manuals", game.platform);
    if (name.isEmpty() || folder.isNull())
        return std::nullopt;
    return fileNamed(folder, m_directories.plainOfNow(folder), {name}, ArtworkNames::manualExtensions(), false);
}

std::optional<QString> ArtworkFinder::musicURL(const Game &game, const QString &collectionPath) {
    if (std::optional<QString> named = namedFile(collectionPath, game.musicPath))
        return named;
    const QString folder = mediaFolder(collectionPath, "Music", game.platform);
    const ImageDirectories::Entry entry = folder.isNull() ? nullptr : m_directories.plainOfNow(folder);
    if (!entry)
        return std::nullopt;
    for (const QString &name : ArtworkNames::mediaCandidates(game)) {
        const auto hit = entry->filesByLower.constFind(ArtworkNames::folded(name));
        if (hit != entry->filesByLower.cend()) {
            const QStringList names = listFolder(below(folder, *hit)).value_or(QStringList());
            if (std::any_of(names.begin(), names.end(), [](const QString &track) {
                    return ArtworkNames::musicFolderExtensions().contains(ArtworkNames::lowerExtension(track));
                }))
                return below(folder, *hit);
        }
        if (std::optional<QString> file = fileNamed(folder, entry, {name}, ArtworkNames::musicFileExtensions(), false))
            return file;
    }
    return std::nullopt;
}

QStringList ArtworkFinder::musicFiles(const Game &game, const QString &collectionPath) {
    const std::optional<QString> url = musicURL(game, collectionPath);
    if (!url || !QFileInfo(*url).isDir())
        return url ? QStringList(*url) : QStringList();
    QStringList tracks;
    for (const QString &name : listFolder(*url).value_or(QStringList()))
        if (ArtworkNames::trackExtensions().contains(ArtworkNames::lowerExtension(name)))
            tracks.append(below(*url, name));
    tracks.sort();
    return tracks;
}

ArtworkFinder::Folders ArtworkFinder::preScanImageDirectories(const GameList &games, const QString &collectionPath,
                                                              const std::stop_token &stop) {
    QSet<QString> platforms;
    for (const GamePtr &game : games)
        platforms.insert(game->platform);
    Folders folders;
    {
        const QMutexLocker lock(&m_urlCacheLock);
        folders.generation = m_generation;
    }
    for (const QString &platform : std::as_const(platforms))
        for (const ImageType type : imageTypes) {
            if (stop.stop_requested())
                return folders;
            const QString path = imageFolder(collectionPath, platform, type);
            const ImageDirectories::Entry top = path.isNull() ? nullptr : m_directories.imagesAnew(path);
            if (!top)
                continue;
            folders.insert(path, top);
            for (const QString &region : top->subdirs)
                if (ImageDirectories::Entry entry = m_directories.plainAnew(below(path, region)))
                    folders.insert(below(path, region), std::move(entry));
        }
    return folders;
}

void ArtworkFinder::clearFound() {
    m_directories.clear();
    const QMutexLocker lock(&m_urlCacheLock);
    ++m_generation;
    m_imageURLCache.clear();
    m_videoURLCache.clear();
    m_missingLogged.clear();
}

QStringList ArtworkFinder::clearFound(const Game &game, const QString &collectionPath) {
    if (isSafeName(game.platform))
        m_directories.clearBelow(QStringLiteral("%1/Images/%2").arg(collectionPath, game.platform));
    m_directories.clearBelow(mediaFolder(collectionPath, "Videos", game.platform));
    QStringList known;
    const QMutexLocker lock(&m_urlCacheLock);
    ++m_generation;
    const KnownImages images = m_imageURLCache.take(game.id);
    for (const FoundImage &image : images.found)
        known.append(image.url);
    m_videoURLCache.remove(videoKey(game));
    return known;
}

} // namespace ludarium

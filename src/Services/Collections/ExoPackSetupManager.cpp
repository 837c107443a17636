#include "Services/Collections/ExoPackSetupManager.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Services/Collections/CollectionLayout.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <dirent.h>
#include <unistd.h>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

QString below(const QString &root, QAnyStringView path) {
    return root + u'/' + path.toString();
}

bool isFolder(const QString &path) {
    return QFileInfo(path).isDir();
}

/// Names of a folder, sorted, so that of several archives the same one is taken on every file system.
std::optional<QStringList> sortedNames(const QString &folder) {
    std::optional<QStringList> names = listFolder(folder);
    if (names)
        names->sort();
    return names;
}

/// Counts without keeping the names: an image folder has tens of thousands. None when it cannot be listed.
std::optional<qsizetype> entryCount(const QString &folder) {
    DIR *stream = ::opendir(QFile::encodeName(folder).constData());
    if (stream == nullptr)
        return std::nullopt;
    qsizetype count = 0;
    while (const dirent *entry = ::readdir(stream)) {
        const QByteArrayView name(entry->d_name);
        count += name != "." && name != "..";
    }
    ::closedir(stream);
    return count;
}

QString metadataArchive(const ExoCollection &set, const QStringList &content) {
    const QString wanted = set.metadataArchivePrefix.toLower() + "metadata"_L1;
    const auto found = std::find_if(content.begin(), content.end(), [&](const QString &name) {
        return name.endsWith(".zip"_L1, Qt::CaseInsensitive) && name.contains(wanted, Qt::CaseInsensitive);
    });
    return found == content.end() ? QString() : *found;
}

QStringList xoArchives(const ExoCollection &set, const QStringList &content) {
    QStringList candidates;
    for (const QString &name : content)
        if (name.endsWith(".zip"_L1, Qt::CaseInsensitive) &&
            name.startsWith(set.xoArchivePrefix, Qt::CaseInsensitive) &&
            name.contains("metadata"_L1, Qt::CaseInsensitive))
            candidates.append(name);
    return candidates;
}

/// Null when there is none.
QString xoArchive(const ExoCollection &set, const QStringList &content) {
    const QStringList candidates = xoArchives(set, content);
    if (candidates.isEmpty()) {
        Log::debug(u"   No XO metadata archive found for %1 (pattern: %2metadata*.zip)"_s.arg(
            set.displayName, set.xoArchivePrefix.toLower()));
        return {};
    }
    if (candidates.size() == 1)
        return candidates.first();
    Log::info(u"   (Selected from %1 candidates: %2)"_s.arg(candidates.size()).arg(candidates.join(", "_L1)));
    const auto plain = std::find_if(candidates.begin(), candidates.end(), [](const QString &name) {
        return !name.contains("linux"_L1, Qt::CaseInsensitive);
    });
    return plain == candidates.end() ? candidates.first() : *plain;
}

enum class Markers { write, leave };

/// Setups from before there were markers are known by their images.
void writeRetroactiveMarker(const ExoCollection &set, const QString &root) {
    const QString marker = below(root, set.xoMarkerName());
    const QString problem = ::access(QFile::encodeName(root).constData(), W_OK) == 0 ? writeAtomically(marker, {})
                                                                                     : u"the folder is not writable"_s;
    if (problem.isEmpty())
        Log::info(u"   Created retroactive marker file for %1"_s.arg(set.displayName));
    else
        Log::warning(u"⚠️ No retroactive marker file for %1: %2"_s.arg(set.displayName, problem));
}

bool xoExtracted(const ExoCollection &set, const QString &root, bool metadataExtracted, Markers markers) {
    if (QFileInfo::exists(below(root, set.xoMarkerName()))) {
        Log::info(u"   XO metadata marker file found for %1"_s.arg(set.displayName));
        return true;
    }
    const auto images = entryCount(below(root, set.imagesFolder) + "/Box - Front"_L1);
    if (!images)
        return false;
    // The metadata archive brings no images; without it, the images may be those of another, fuller set.
    const qsizetype threshold = metadataExtracted ? 50 : 1000;
    Log::info(u"   XO metadata check for %1: Box - Front has %2 images (threshold: %3%4)"_s.arg(set.displayName)
                  .arg(*images)
                  .arg(threshold)
                  .arg(metadataExtracted ? u", metadata already extracted"_s : QString()));
    if (*images <= threshold)
        return false;
    if (markers == Markers::write)
        writeRetroactiveMarker(set, root);
    return true;
}

/// Games of the DOS set that every version of it has.
constexpr QLatin1StringView sampleGames[]{"WC"_L1, "zork1"_L1, "UltimaU"_L1, "X-Wing"_L1};

bool hasLaunchFile(const QString &folder) {
    const auto names = listFolder(folder);
    return names && std::any_of(names->begin(), names->end(), [](const QString &name) {
               return name.endsWith(".conf"_L1) || name.endsWith(".bat"_L1) || name.endsWith(".bsh"_L1);
           });
}

bool extractionComplete(const ExoCollection &set, const QString &root, const QStringList &content) {
    const QString scripts = below(root, set.scriptFolder);
    const bool extracted = isFolder(scripts);
    if (set.type == ExoCollectionType::dreamm)
        return extracted;
    if (!extracted) {
        if (!metadataArchive(set, content).isNull())
            return false;
        Log::info(u"📂 No %1metadata.zip archive found for %2 - script folder not expected"_s.arg(
            set.metadataArchivePrefix, set.displayName));
        return true;
    }
    if (set.type != ExoCollectionType::dos) {
        Log::info(u"%1 script folder exists - extraction complete (not a lite collection)"_s.arg(set.displayName));
        return true;
    }
    return std::any_of(std::begin(sampleGames), std::end(sampleGames),
                       [&](QLatin1StringView game) { return hasLaunchFile(below(scripts, game)); }) ||
           metadataArchive(set, content).isNull();
}

CollectionSetupStatus inspect(const ExoCollection &set, const QString &root, const QStringList &content,
                              Markers markers) {
    CollectionSetupStatus status;
    status.collectionType = set.type;
    status.metadataArchiveName = metadataArchive(set, content);
    status.hasMetadataArchive = !status.metadataArchiveName.isNull();
    status.xoMetadataArchiveName = xoArchive(set, content);
    status.hasXOMetadata = !status.xoMetadataArchiveName.isNull();
    status.metadataExtracted = isFolder(below(root, set.scriptFolder));
    status.metadataExtractionIncomplete =
        status.hasMetadataArchive && status.metadataExtracted && !extractionComplete(set, root, content);
    status.xoMetadataExtracted = status.hasXOMetadata && xoExtracted(set, root, status.metadataExtracted, markers);
    return status;
}

bool isZip(const QString &name) {
    return name.endsWith(".zip"_L1);
}

bool hasUtilArchive(const QString &root) {
    const auto names = listFolder(below(root, CollectionLayout::util));
    return names && std::any_of(names->begin(), names->end(), [](const QString &name) {
               return isZip(name) &&
                      (name.startsWith("util"_L1) || name.startsWith("OPT"_L1) || name.startsWith("EXT"_L1));
           });
}

/// The archives of `util` bring the mapping files and the tools of DOSBox; there is no marker file for them.
bool utilExtracted(const QString &root) {
    const QString util = below(root, CollectionLayout::util);
    return std::any_of(std::begin(CollectionLayout::mappingFiles), std::end(CollectionLayout::mappingFiles),
                       [&](QLatin1StringView name) { return QFileInfo::exists(below(util, name)); }) ||
           isFolder(below(root, CollectionLayout::dosboxTools));
}

bool hasGameData(const QString &root) {
    for (const QLatin1StringView place : {CollectionLayout::packedGameData, CollectionLayout::looseGameData}) {
        const QString folder = below(root, place);
        for (const QString &name : listFolder(folder).value_or(QStringList())) {
            const auto inside = listFolder(below(folder, name));
            if (inside && std::any_of(inside->begin(), inside->end(), isZip))
                return true;
        }
    }
    return false;
}

} // namespace

bool SetupStatus::needsSetup() const {
    return (hasUtilArchive && !utilExtracted) ||
           std::any_of(collections.begin(), collections.end(), [](const auto &set) { return set.needsSetup(); });
}

bool ExoPackSetupManager::matchesMediaPattern(const QString &name, const QString &pattern) {
    if (pattern.startsWith(u'*'))
        return name.endsWith(QStringView(pattern).sliced(1));
    if (pattern.endsWith(u'*'))
        return name.startsWith(QStringView(pattern).chopped(1));
    return name.contains(pattern);
}

SetupStatus ExoPackSetupManager::getSetupStatus(const QString &collectionURL) const {
    SetupStatus status;
    const auto content = sortedNames(below(collectionURL, CollectionLayout::content));
    if (!content)
        return status;
    for (const ExoCollection &set : ExoCollection::all()) {
        CollectionSetupStatus one = inspect(set, collectionURL, *content, Markers::write);
        if (one.hasMetadataArchive || one.hasXOMetadata)
            status.collections.append(std::move(one));
    }
    const auto holds = [&](const QString &pattern) {
        return std::any_of(content->begin(), content->end(),
                           [&](const QString &name) { return matchesMediaPattern(name, pattern); });
    };
    status.hasUtilArchive = hasUtilArchive(collectionURL);
    status.utilExtracted = utilExtracted(collectionURL);
    status.hasGameData = hasGameData(collectionURL);
    status.hasMagazines = holds(u"*Magazines.zip"_s) || holds(u"Mag!*.zip"_s);
    status.hasBooks = holds(u"*Books.zip"_s);
    status.hasCatalogs = holds(u"*Catalogs.zip"_s);
    status.hasSoundtracks = holds(u"*Soundtracks.zip"_s);
    status.hasVideos = holds(u"*Videos.zip"_s);
    return status;
}

std::optional<DetectedCollection> ExoPackSetupManager::detectCollection(const QString &url) const {
    const QStringList content = sortedNames(below(url, CollectionLayout::content)).value_or(QStringList());
    for (const ExoCollection &set : ExoCollection::all()) {
        if (m_blockedCollections.contains(set.type))
            continue;
        const bool found = !metadataArchive(set, content).isNull() || !xoArchives(set, content).isEmpty() ||
                           isFolder(below(url, set.scriptFolder));
        if (found)
            return DetectedCollection{set.type, url, inspect(set, url, content, Markers::leave).needsSetup(),
                                      set.displayName};
    }
    return std::nullopt;
}

bool ExoPackSetupManager::isLiteCollection(const QString &collectionURL) const {
    const auto content = listFolder(below(collectionURL, CollectionLayout::content));
    const auto sets = ExoCollection::all();
    return content && std::any_of(sets.begin(), sets.end(),
                                  [&](const ExoCollection &set) { return !xoArchives(set, *content).isEmpty(); });
}

bool ExoPackSetupManager::checkMetadataExtractionComplete(const QString &collectionURL, ExoCollectionType type) const {
    return extractionComplete(ExoCollection::of(type), collectionURL,
                              sortedNames(below(collectionURL, CollectionLayout::content)).value_or(QStringList()));
}

} // namespace ludarium

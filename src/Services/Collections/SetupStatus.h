#pragma once

#include "Services/Collections/ExoCollectionType.h"

#include <QList>
#include <QString>

namespace ludarium {

/// What of one set is packed and what is unpacked. Archive names are null where there is no archive.
struct CollectionSetupStatus {
    ExoCollectionType collectionType = ExoCollectionType::dos;
    bool hasMetadataArchive = false;
    QString metadataArchiveName;
    bool hasXOMetadata = false; ///< the mark of a lite collection
    QString xoMetadataArchiveName;
    bool metadataExtracted = false; ///< the script folder exists
    bool xoMetadataExtracted = false;
    bool metadataExtractionIncomplete = false; ///< began, and was cut short

    bool needsSetup() const {
        return (hasMetadataArchive && !metadataExtracted) || (hasXOMetadata && !xoMetadataExtracted);
    }
    bool operator==(const CollectionSetupStatus &) const = default;
};

/// The same of a whole collection; `collections` holds the sets that have an archive, in table order.
struct SetupStatus {
    QList<CollectionSetupStatus> collections;
    bool hasUtilArchive = false;
    bool hasGameData = false;
    bool hasMagazines = false;
    bool hasBooks = false;
    bool hasCatalogs = false;
    bool hasSoundtracks = false;
    bool hasVideos = false;
    bool utilExtracted = false;

    bool needsSetup() const;
    bool operator==(const SetupStatus &) const = default;
};

struct DetectedCollection {
    ExoCollectionType type;
    QString sourceURL;
    bool needsSetup = false;
    QString displayName;
};

} // namespace ludarium

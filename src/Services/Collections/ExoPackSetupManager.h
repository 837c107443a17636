#pragma once

#include "Services/Collections/SetupStatus.h"

#include <QSet>
#include <optional>

namespace ludarium {

/// Knows which eXo sets a folder holds and what of them is unpacked. Every call looks at the disk and blocks, so it is
/// for the thread pool; calls from several threads do not get in each other's way.
class ExoPackSetupManager {
  public:
    explicit ExoPackSetupManager(QSet<ExoCollectionType> blockedCollections = {})
        : m_blockedCollections(std::move(blockedCollections)) {}

    /// Also leaves the marker file of a set whose images show that its XO archive was extracted before there were
    /// markers, where the folder is writable.
    SetupStatus getSetupStatus(const QString &collectionURL) const;
    /// The first set of the table that the folder holds, passing over the blocked ones. Writes nothing.
    std::optional<DetectedCollection> detectCollection(const QString &url) const;
    /// Whether the collection came without its games: some set has an XO archive.
    bool isLiteCollection(const QString &collectionURL) const;
    /// False when the extraction of a set's metadata archive was cut short.
    bool checkMetadataExtractionComplete(const QString &collectionURL, ExoCollectionType type) const;

    /// Whether a name fits a pattern of media archives: "*" in front stands for a name's end, "*" behind for its
    /// beginning; a pattern with neither has to be in the name as it stands.
    static bool matchesMediaPattern(const QString &name, const QString &pattern);

  private:
    const QSet<ExoCollectionType> m_blockedCollections;
};

} // namespace ludarium

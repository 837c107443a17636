#pragma once

#include <QString>
#include <optional>
#include <span>

namespace ludarium {

/// The eXo sets, in the order in which they are looked for.
enum class ExoCollectionType { dos, scummvm, win3x, win9x, dreamm, interactiveFiction, demoScene, appleIIGS };

/// What is known of one set. Paths are relative to the collection root.
struct ExoCollection {
    ExoCollectionType type;
    QString rawValue;     ///< as stored in marker files, there in lower case
    QString scriptFolder; ///< holds a folder a game with launch scripts and configuration
    QString imagesFolder;
    QString metadataArchivePrefix; ///< followed by "metadata" in the archive's name, in any case
    QString xoArchivePrefix;       ///< of the archive that only lite collections have
    QString displayName;

    /// The file in the root that says that the XO archive was extracted.
    QString xoMarkerName() const;

    static std::span<const ExoCollection> all();
    static const ExoCollection &of(ExoCollectionType type);
    static std::optional<ExoCollectionType> typeFromRawValue(const QString &text);
};

} // namespace ludarium

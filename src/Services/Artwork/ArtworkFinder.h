#pragma once

#include "Models/Game.h"
#include "Services/Artwork/ImageDirectories.h"
#include "Services/Artwork/ImageType.h"

#include <QHash>
#include <QMutex>
#include <QSet>
#include <optional>
#include <stop_token>

namespace ludarium {

/// A picture and what it shows.
struct FoundImage {
    ImageType type = ImageType::boxFront;
    QString url; ///< path of the file
    bool operator==(const FoundImage &) const = default;
};

/// Finds the pictures, video, manual and music of a game below a collection, by the naming rules of LaunchBox. Any
/// thread but the main one, as it looks at the disk. What was found, and what was not, is kept until it is cleared.
/// A name that would lead out of its folder finds nothing.
class ArtworkFinder {
  public:
    /// The folders that a run over many games has listed beforehand.
    struct Folders : QHash<QString, ImageDirectories::Entry> {
        int generation = 0; ///< what is found in folders that were listed before a clearing is not kept
    };

    std::optional<QString> findImageURL(const Game &game, ImageType type, const QString &collectionPath);
    /// The same over listed folders only, without a look at the disk; a folder that is not among them holds nothing.
    std::optional<QString> findImageURLCached(const Game &game, ImageType type, const QString &collectionPath,
                                              const Folders &folders) const;
    /// The picture that stands for the game, kept or looked for.
    std::optional<FoundImage> bestAvailableImageURL(const Game &game, const QString &collectionPath);
    std::optional<FoundImage> coverflowImageURL(const Game &game, const QString &collectionPath);
    /// The picture that stands for the game out of listed folders; remembers it, and what is not there.
    std::optional<FoundImage> bestListedImageURL(const Game &game, const QString &collectionPath,
                                                 const Folders &folders);
    /// The box front by its plainest names, without listing a folder.
    std::optional<QString> boxFrontURL(const Game &game, const QString &collectionPath) const;
    /// Every numbered picture of the game, kind after kind.
    QList<FoundImage> allImages(const Game &game, const QString &collectionPath);

    std::optional<QString> videoURL(const Game &game, const QString &collectionPath);
    std::optional<QString> manualURL(const Game &game, const QString &collectionPath);
    /// A file, or a folder of tracks.
    std::optional<QString> musicURL(const Game &game, const QString &collectionPath);
    /// The tracks to play, in order.
    QStringList musicFiles(const Game &game, const QString &collectionPath);

    /// Lists the folders of the ten kinds, regions included, for every platform of the games, as they are now.
    Folders preScanImageDirectories(const GameList &games, const QString &collectionPath,
                                    const std::stop_token &stop = {});

    void clearFound();
    /// Forgets what is known of one game, and the listings of its platform's pictures. Returns the pictures that were
    /// known. Looks at no disk.
    QStringList clearFound(const Game &game, const QString &collectionPath);

  private:
    /// What is known of one game's pictures. Most games of a large collection lack most kinds.
    struct KnownImages {
        quint16 lookedFor = 0; ///< a bit for each kind
        QList<FoundImage> found;

        bool knows(ImageType type) const { return lookedFor >> int(type) & 1; }
        std::optional<QString> url(ImageType type) const;
        void set(ImageType type, const std::optional<QString> &url);
    };
    using FolderSource = std::function<ImageDirectories::Entry(const QString &path, bool region)>;
    std::optional<QString> find(const Game &game, ImageType type, const QString &collectionPath,
                                const FolderSource &source) const;
    std::optional<FoundImage> firstOf(const ImageTypes &preference, const Game &game,
                                      const std::function<std::optional<QString>(ImageType)> &look);
    static std::optional<QString> fileNamed(const QString &folder, const ImageDirectories::Entry &entry,
                                            const QStringList &names, const QStringList &extensions, bool alsoSafe);

    ImageDirectories m_directories;
    QMutex m_urlCacheLock;                       ///< guards what follows; never held while the disk is looked at
    QHash<QString, KnownImages> m_imageURLCache; ///< by the game's id
    QHash<QString, std::optional<QString>> m_videoURLCache;
    QSet<QString> m_missingLogged;
    int m_generation = 0; ///< of the two caches: an answer that was looked for before a clearing is not kept
};

} // namespace ludarium

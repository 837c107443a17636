#pragma once

#include "Services/Dos/FolderView.h"

#include <QByteArray>
#include <QStringList>

namespace ludarium {

/// Paths of a folder's disc images: all ".cue", else all ".iso", else all ".img", in the order of the disc numbers in
/// their names. The kinds are never mixed, and a ".bin" is reached through its ".cue" alone.
QStringList findAllCDImages(FolderView &view, const QString &folder);

/// The images of the first subfolder "cd", "discs" or "disc" that has any.
QStringList findDiscImagesInFolder(FolderView &view, const QString &folder);

/// The folders of a launch that discs are looked for in.
struct DiscSearch {
    QString mountFolder; ///< becomes C:
    QString cdPath;      ///< of the folder where the game runs, below the mount folder; may be empty
    QString gameDataFolder;
    QString collection;
};
struct FoundDiscs {
    QStringList images;
    QString source; ///< where they were found, for the log
};
/// The images of the first of a launch's folders that has any.
FoundDiscs findLaunchDiscs(FolderView &view, const DiscSearch &folders);

/// Whether a line of an autoexec section mounts floppy images.
bool isFloppyLine(const QByteArray &line);

/// Throws LaunchError when an "imgmount" line names an image of the host outside the collection by its whole path.
void refuseImagesOutside(const QByteArray &line, const QString &collection);

/// A floppy line with its relative paths made absolute, spelled as on disk where they exist. `collection` is the folder
/// above "eXo", `gamesFolder` the one that ".\" stands for. Throws LaunchError when a path cannot be written or leaves
/// the collection.
QByteArray absoluteFloppyLine(FolderView &view, const QByteArray &line, const QString &collection,
                              const QString &gamesFolder);

/// `base`/`relative` as it is spelled on disk, or as it stands when there is no such entry. Throws LaunchError when it
/// lies outside `collection`.
QString collectionPathOf(FolderView &view, const QString &base, const QString &relative, const QString &collection);

} // namespace ludarium

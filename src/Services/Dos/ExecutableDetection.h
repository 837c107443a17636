#pragma once

#include "Services/Dos/FolderView.h"

#include <QStringList>
#include <optional>

namespace ludarium {

/// A program found in a game's folder.
struct DetectedExecutable {
    QString executable; ///< name as on disk
    QString subfolder;  ///< folder directly inside the searched one; null when it lies in that itself
    bool operator==(const DetectedExecutable &) const = default;
};

/// The one program of a folder that most likely is the game; none when there is no candidate.
std::optional<DetectedExecutable> autoDetectExecutable(FolderView &view, const QString &folder);

/// Whether an entry of a folder is a program that is no setup or driver.
bool isGameProgram(FolderView &view, const QString &folder, const QString &name);
/// Whether a folder itself holds a program that is no setup or driver.
bool folderHasExecutables(FolderView &view, const QString &folder);

/// Whether a program of the version database can be started as it stands.
bool isValidDatabaseExecutable(const QString &executable);

/// What a detection saw and chose, line by line; logged so that a wrong guess can become a fix for everybody.
QStringList autoDetectReport(FolderView &view, const QString &title, const QString &folder,
                             const DetectedExecutable &detected);
void logAutoDetectInfo(FolderView &view, const QString &title, const QString &folder,
                       const DetectedExecutable &detected);

/// Folder names of a version that name a disc, so that its program may lie in the folder above.
bool isDiscFolder(const QString &name);       ///< "cd", "disc", "discs", "cd1" to "cd4"
bool isDiscOrDiskFolder(const QString &name); ///< these, "disk", "disk1" and "disk2"

/// Where a command's first word lies on disk.
struct ResolvedCommand {
    QString name;      ///< as on disk
    QString subfolder; ///< null when it needs no change of folder
};
/// Finds the spelling of `word`, with or without a program's ending, in the folder where the game runs, in the one
/// above when that is a disc's, and then in its subfolders. None leaves the command as it is.
std::optional<ResolvedCommand> resolveCommandCase(FolderView &view, const QString &word, const QString &gameDataFolder,
                                                  const QString &workingDirectory);

} // namespace ludarium

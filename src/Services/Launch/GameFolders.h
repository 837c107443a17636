#pragma once

#include "Models/Game.h"

#include <QString>

/// Where a game lives in its collection, from the Windows-style paths of its record.
namespace ludarium::GameFolders {

/// The piece after the first one that begins with "!" and is not the last, else the piece before a last piece with a
/// "."; empty otherwise. The name is data as it stands and need not be usable.
QString extractGameFolderName(const QString &path);
/// The folder of a path, below the collection and spelled as on disk; empty when the path leaves the collection.
QString scriptFolder(const QString &path, const QString &collection);
/// The folder of the installed game by its platform, spelled as on disk; empty when its name is not a usable folder
/// name, or when it is a link that leads out of the collection.
QString dataFolder(const Game &game, const QString &collection);

/// A folder below the collection in the spelling of the disk: the paths of a record come from a system that takes every
/// spelling. As it stands when it is there, or not there in any spelling.
QString asOnDisk(const QString &folder, const QString &collection);
/// Whether a folder of a game is, or lies behind, a link to somewhere outside the collection.
bool leadsOutOfCollection(const QString &folder, const QString &collection);

} // namespace ludarium::GameFolders

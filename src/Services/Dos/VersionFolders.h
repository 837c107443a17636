#pragma once

#include "Models/GameVersionOption.h"
#include "Services/Dos/FolderView.h"

#include <optional>

namespace ludarium {

/// The versions of a game that the database does not know, by how its folder is laid out: folders of sound drivers,
/// folders of whole versions, or folders named for a kind of version.
std::optional<GameVersionMenu> detectVersionsFromFolders(FolderView &view, const QString &gameDataFolder);

/// The versions of the disc images in a game's folder "CD".
QList<GameVersionOption> detectCDVersions(FolderView &view, const QString &gameDataFolder);

/// A menu of options, which says whether they differ and whether any is about sound.
GameVersionMenu versionMenu(const QString &title, const QList<GameVersionOption> &options);

} // namespace ludarium

#pragma once

#include "Services/Dos/FolderView.h"

#include <QByteArray>

namespace ludarium {

struct DosSettings;

/// The text of a script folder's configuration with its paths made absolute, its display settings made the user's, and
/// calls of menu scripts replaced by the program that is found in the game's folder.
QByteArray adaptScriptFolderConfig(const QByteArray &configuration, const DosSettings &settings,
                                   const QString &gameDataFolder, const QString &collection, FolderView &view);

} // namespace ludarium

#pragma once

#include "Models/GameVersionOption.h"
#include "Services/Dos/DosSettings.h"
#include "Services/Dos/FolderView.h"

#include <QByteArray>
#include <optional>

namespace ludarium {

/// Text of a whole configuration for a game that has none. Throws LaunchError when a text cannot stand in it.
QByteArray createMinimalDOSBoxConfig(const DosSettings &settings, const QString &gameFolder,
                                     const std::optional<GameVersionOption> &version, const QString &collection,
                                     FolderView &view);

} // namespace ludarium

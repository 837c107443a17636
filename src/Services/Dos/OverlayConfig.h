#pragma once

#include "Models/GameVersionOption.h"
#include "Services/Dos/DosSettings.h"
#include "Services/Dos/FolderView.h"

#include <QByteArray>
#include <optional>

namespace ludarium {

/// Text of the display and sound settings that go before a game's own configuration. Throws LaunchError when a value
/// cannot stand in a configuration.
QByteArray createIndependentOverlayConfig(const DosSettings &settings, const QString &collection,
                                          const std::optional<GameVersionOption> &version, FolderView &view);

/// The section of a DOSBox setting, for overrides that name the key alone.
QString sectionOfKey(const QString &key);

} // namespace ludarium

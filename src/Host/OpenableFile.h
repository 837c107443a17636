#pragma once

#include <QString>

namespace ludarium {

/// Why a file must not be handed to the desktop to open: it is a program, a script or something that makes the desktop
/// run a command (a `.desktop` file, an installer, an internet shortcut), or it is not there. Null when it may. Links
/// are followed; both names count. Folders may be opened, application bundles not.
QString whyNotOpenable(const QString &path);

} // namespace ludarium

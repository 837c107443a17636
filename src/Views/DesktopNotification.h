#pragma once

class QString;

namespace ludarium {

/// A short note in the desktop's own area for them, for a program that has no window to say it in. Nothing happens on a
/// desktop without such an area.
void showDesktopNotification(const QString &title, const QString &text);

} // namespace ludarium

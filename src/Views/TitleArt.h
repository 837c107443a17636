#pragma once

#include <QString>

namespace ludarium {

/// What a cover is drawn from when a game has no picture: one or two letters and a hue, both of the title alone, so
/// that a game always looks the same.
QString titleInitials(const QString &title);
/// 0 up to 1.
double titleHue(const QString &title);

} // namespace ludarium

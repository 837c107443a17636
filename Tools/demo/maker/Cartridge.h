#pragma once

#include <QByteArray>
#include <QString>

namespace ludarium::demo {

/// A program for the hand-held console, 32 KiB: shows the title over rolling hills that scroll by. The header holds
/// title and checksums but no maker's logo, which is not ours to copy; emulators start it all the same.
QByteArray pocketCartridge(const QString &title);

/// A program for the television console, 24 KiB with its iNES header: shows the title under a starry sky.
QByteArray homeCartridge(const QString &title);

} // namespace ludarium::demo

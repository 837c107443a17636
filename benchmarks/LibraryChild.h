#pragma once

#include <QString>
#include <QStringList>

namespace ludarium {

class GameLibrary;

/// Waits until the tasks that a load leaves behind (saving the cache, the look at the disk) have ended.
void settle(const GameLibrary &library);

/// What bench-library measures in a process of its own, so that no memory of another measurement is there to be used
/// again. Prints numbers, separated by blanks; `mode` is one of
///   read-cache FILE        milliseconds to read the file and to parse it with simdjson's DOM
///   walk COLLECTION        milliseconds of the bare walk over the games files
///   fill COLLECTION        milliseconds to read the playlist files, and to fill the dynamic playlists
///   load HOME COLLECTION   milliseconds of GameLibrary::loadCollection up to its last status
///   memory HOME COLLECTION megabytes that a loaded library and its index add, and those of its texts as UTF-8
int runLibraryChild(const QString &mode, const QStringList &arguments);

} // namespace ludarium

#pragma once

#include <QString>
#include <QStringList>

namespace ludarium {

class HostPaths;

/// Folders where the ROMs of a Roland MT-32 are looked for when a collection brings none, best first.
QStringList mt32RomFolders(const HostPaths &paths);

/// Where the user puts MT-32 ROMs.
QString mt32RomFolder(const HostPaths &paths);

/// Looks for a control and a PCM ROM, and makes `mt32RomFolder` when it is missing. For the thread pool. On Linux,
/// where no one folder is the rule, both may lie in any one of `mt32RomFolders`.
bool checkMT32Roms(const HostPaths &paths);

} // namespace ludarium

#pragma once

#include <QString>

namespace ludarium {

/// A path below the folder of the sources, or below the one they are built in. Only one file knows these folders, so
/// that a compiler cache serves every checkout.
QString inSources(const char *path);
QString inBuild(const char *path);

} // namespace ludarium

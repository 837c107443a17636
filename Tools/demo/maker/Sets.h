#pragma once

#include "maker/LaunchBoxXml.h"
#include "maker/Tree.h"

namespace ludarium::demo {

/// Puts a game's files into its set: folder or archive, script folder, extras; a cartridge into `Games`. `programs` is
/// the folder of the assembled programs. Returns the paths for the XML.
GamePaths addGameFiles(const Tree &tree, const DemoGame &game, const QString &programs);

} // namespace ludarium::demo

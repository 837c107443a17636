#pragma once

#include "Models/Game.h"
#include "Services/Library/XmlRecords.h"

#include <vector>

namespace ludarium {

class TextPool;

/// The games of a document that is not well-formed: every stretch that the regular expression `<Game>(.*?)</Game>`
/// finds and that decodes by itself. Empty when the bytes are not UTF-8. Reads a block at a time and takes time in
/// proportion to the bytes, also when nothing is closed; stretches longer than any game are passed over, and what
/// stands behind the first GiB is not read.
std::vector<GamePtr> recoverGames(XmlSource &source, TextPool &pool);

} // namespace ludarium

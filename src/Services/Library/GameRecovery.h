#pragma once

#include "Models/Game.h"

#include <QByteArray>
#include <vector>

namespace ludarium {

class TextPool;

/// The games of a file that is not well-formed: every stretch that the regular expression `<Game>(.*?)</Game>` finds
/// and that decodes by itself. Empty when the bytes are not UTF-8. Takes time in proportion to the bytes, also when
/// nothing is closed.
std::vector<GamePtr> recoverGames(const QByteArray &bytes, TextPool &pool);

} // namespace ludarium

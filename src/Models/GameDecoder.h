#pragma once

#include "Models/Game.h"

#include <bitset>
#include <memory>
#include <string_view>

namespace ludarium {

class TextPool;

/// Makes one game after the other from keyed texts; the one reader of the XML and of the library cache. Set the fields
/// that the source has, in any order, then take the game with `finish`, which also makes the decoder ready for the
/// next one. Texts are UTF-8; of a field that is set twice the first text counts.
class GameDecoder {
  public:
    explicit GameDecoder(TextPool &pool);

    /// The number of a serial key, for `set`; -1 when a game has no such field. "VideoUrl" names `VideoURL` too.
    static int field(std::string_view key);

    void set(int field, std::string_view text);
    void set(std::string_view key, std::string_view text) { set(field(key), text); }
    /// The cache holds the year as a number.
    void setReleaseYear(int year);

    /// The game with its defaults, its search fields and its year. A game without an id gets one made from its
    /// platform, title and application path, so that what the user did with it survives the next load.
    GamePtr finish();
    /// Forgets what was set.
    void reset();

  private:
    TextPool &m_pool;
    std::shared_ptr<Game> m_game;
    std::bitset<64> m_seen;
    unsigned m_finished = 0;
};

} // namespace ludarium

#include "Services/Library/GameRecovery.h"

#include "Host/AppLogger.h"
#include "Services/Library/GamesSink.h"

#include <simdjson.h>
#include <string>

namespace ludarium {

namespace {

constexpr std::string_view openTag = "<Game>";
constexpr std::string_view closeTag = "</Game>";
constexpr qint64 blockSize = 1LL << 20;
constexpr qint64 readLimit = 1LL << 30;
/// Several times what a game takes whose every text is as long as texts may be read.
constexpr size_t longestGame = 64u << 20;

/// Bytes at the end of a text that begin a character which is not all there yet.
size_t unfinishedCharacter(std::string_view text) {
    for (size_t back = 1; back <= 3 && back <= text.size(); ++back) {
        const auto byte = uint8_t(text[text.size() - back]);
        if ((byte & 0xC0) == 0x80)
            continue;
        const size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        return length > back ? back : 0;
    }
    return 0;
}

class Recovery {
  public:
    explicit Recovery(TextPool &pool) : m_pool(pool) {}

    /// False when the bytes are no text.
    bool take(std::string_view block) {
        m_text += block;
        const std::string_view fresh = std::string_view(m_text).substr(m_checked);
        const size_t whole = fresh.size() - unfinishedCharacter(fresh);
        if (!simdjson::validate_utf8(fresh.data(), whole))
            return false;
        m_checked += whole;
        scan();
        return true;
    }
    bool endsWithinCharacter() const { return m_checked != m_text.size(); }
    std::vector<GamePtr> games;

  private:
    /// Finds all games that are whole, and keeps of the text only what may be the start of the next one.
    void scan() {
        const std::string_view text = m_text;
        size_t at = 0;
        for (;;) {
            if (!m_inGame) {
                const size_t begin = text.find(openTag, at);
                if (begin == std::string_view::npos) {
                    at = std::max(at, text.size() - std::min(text.size(), openTag.size() - 1));
                    break;
                }
                at = begin;
                m_inGame = true;
                m_tooLong = false;
                m_searched = openTag.size();
            }
            const size_t end = text.find(closeTag, at + m_searched);
            if (end == std::string_view::npos) {
                m_searched = std::max(m_searched, text.size() - at - std::min(text.size() - at, closeTag.size() - 1));
                if (text.size() - at > longestGame)
                    m_tooLong = true;
                if (m_tooLong) {
                    at += m_searched;
                    m_searched = 0;
                }
                break;
            }
            const size_t behind = end + closeTag.size();
            if (!m_tooLong)
                decode(text.substr(at, behind - at));
            at = behind;
            m_inGame = false;
        }
        at = std::min(at, m_checked);
        m_text.erase(0, at);
        m_checked -= at;
    }

    void decode(std::string_view stretch) {
        XmlTextSource source("<LaunchBox>", stretch, "</LaunchBox>");
        GamesSink sink(m_pool);
        if (!readXmlRecords(source, sink).wellFormed)
            return;
        GamesFileContent content = sink.takeContent();
        // More than one game means that the stretch is no game by itself ("</Game ><Game >" in it).
        if (content.games.size() == 1 && !content.gamesUndecodable)
            games.push_back(std::move(content.games.front()));
    }

    TextPool &m_pool;
    std::string m_text;    ///< read, and not done with
    size_t m_checked = 0;  ///< bytes of it that are known to be UTF-8
    bool m_inGame = false; ///< the text begins with a start tag
    bool m_tooLong = false;
    size_t m_searched = 0; ///< bytes of the game that no end tag begins in
};

} // namespace

std::vector<GamePtr> recoverGames(XmlSource &source, TextPool &pool) {
    Recovery recovery(pool);
    std::string block(size_t(blockSize), '\0');
    qint64 total = 0;
    while (const qint64 count = source.read(block.data(), std::min(blockSize, readLimit - total))) {
        if (!recovery.take({block.data(), size_t(count)}))
            return {};
        total += count;
        if (total == readLimit) {
            Log::warning(QStringLiteral("    ⚠️ The file is longer than can be recovered; its rest is not read"));
            return std::move(recovery.games);
        }
    }
    return recovery.endsWithinCharacter() ? std::vector<GamePtr>() : std::move(recovery.games);
}

} // namespace ludarium

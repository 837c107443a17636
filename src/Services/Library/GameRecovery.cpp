#include "Services/Library/GameRecovery.h"

#include "Services/Library/GamesSink.h"

namespace ludarium {

std::vector<GamePtr> recoverGames(const QByteArray &bytes, TextPool &pool) {
    if (!bytes.isValidUtf8())
        return {};

    static constexpr std::string_view open = "<Game>";
    static constexpr std::string_view close = "</Game>";
    const std::string_view text(bytes.constData(), size_t(bytes.size()));

    std::vector<GamePtr> games;
    size_t at = 0;
    for (;;) {
        const size_t begin = text.find(open, at);
        if (begin == std::string_view::npos)
            break;
        const size_t end = text.find(close, begin + open.size());
        // Without an end tag behind this start tag there is none behind any later one: the scan is over.
        if (end == std::string_view::npos)
            break;
        at = end + close.size();

        XmlTextSource source("<LaunchBox>", text.substr(begin, at - begin), "</LaunchBox>");
        GamesSink sink(pool);
        if (!readXmlRecords(source, sink).wellFormed)
            continue;
        GamesFileContent content = sink.takeContent();
        // More than one game means that the stretch is no game by itself ("</Game ><Game >" in it).
        if (content.games.size() == 1 && !content.gamesUndecodable)
            games.push_back(std::move(content.games.front()));
    }
    return games;
}

} // namespace ludarium

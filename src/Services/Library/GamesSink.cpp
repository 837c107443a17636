#include "Services/Library/GamesSink.h"

#include <iterator>

namespace ludarium {

void GamesFileContent::append(GamesFileContent &&next) {
    games.insert(games.end(), std::make_move_iterator(next.games.begin()), std::make_move_iterator(next.games.end()));
    additionalApplications.insert(additionalApplications.end(),
                                  std::make_move_iterator(next.additionalApplications.begin()),
                                  std::make_move_iterator(next.additionalApplications.end()));
    gamesUndecodable = gamesUndecodable || next.gamesUndecodable;
    additionalApplicationsUndecodable = additionalApplicationsUndecodable || next.additionalApplicationsUndecodable;
}

void GamesFileContent::settle() {
    if (gamesUndecodable)
        games.clear();
    if (additionalApplicationsUndecodable)
        additionalApplications.clear();
}

bool GamesSink::beginRecord(std::string_view name) {
    m_isGame = name == "Game";
    return m_isGame || name == "AdditionalApplication";
}

int GamesSink::field(std::string_view name) {
    return m_isGame ? GameDecoder::field(name) : AdditionalApplicationDecoder::field(name);
}

void GamesSink::fieldText(int field, std::string_view text) {
    if (m_isGame)
        m_gameDecoder.set(field, text);
    else
        m_applicationDecoder.set(field, text);
}

void GamesSink::fieldUnreadable(int) {
    (m_isGame ? m_content.gamesUndecodable : m_content.additionalApplicationsUndecodable) = true;
}

void GamesSink::endRecord() {
    if (m_isGame) {
        m_content.games.push_back(m_gameDecoder.finish());
    } else {
        m_content.additionalApplications.push_back(m_applicationDecoder.finish());
    }
}

} // namespace ludarium

#pragma once

#include "Models/Game.h"
#include "Models/GameDecoder.h"
#include "Models/RecordDecoder.h"
#include "Services/Library/XmlRecords.h"

#include <vector>

namespace ludarium {

/// The games and additional applications of one document. A list of which one record cannot be decoded, because a
/// field holds elements in place of text, reads as empty.
struct GamesFileContent {
    std::vector<GamePtr> games;
    std::vector<AdditionalApplication> additionalApplications;
    bool gamesUndecodable = false;
    bool additionalApplicationsUndecodable = false;

    /// Adds what comes behind this in the same file.
    void append(GamesFileContent &&next);
    /// Empties the lists that could not be decoded.
    void settle();
};

class GamesSink : public XmlRecordSink {
  public:
    explicit GamesSink(TextPool &pool) : m_gameDecoder(pool) {}
    GamesFileContent takeContent() { return std::exchange(m_content, {}); }

    bool beginRecord(std::string_view name) override;
    int field(std::string_view name) override;
    void fieldText(int field, std::string_view text) override;
    void fieldUnreadable(int field) override;
    void endRecord() override;

  private:
    bool m_isGame = false;
    GameDecoder m_gameDecoder;
    AdditionalApplicationDecoder m_applicationDecoder;
    GamesFileContent m_content;
};

} // namespace ludarium

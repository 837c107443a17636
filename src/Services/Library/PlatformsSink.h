#pragma once

#include "Models/Platform.h"
#include "Models/RecordDecoder.h"
#include "Services/Library/XmlRecords.h"

#include <QList>

namespace ludarium {

/// The platforms of Platforms.xml.
class PlatformsSink : public XmlRecordSink {
  public:
    QList<Platform> platforms;
    bool undecodable = false; ///< a platform's field holds elements in place of text

    bool beginRecord(std::string_view name) override { return name == "Platform"; }
    int field(std::string_view name) override { return PlatformDecoder::field(name); }
    void fieldText(int field, std::string_view text) override { m_decoder.set(field, text); }
    void fieldUnreadable(int) override { undecodable = true; }
    void endRecord() override { platforms.append(m_decoder.finish()); }

  private:
    PlatformDecoder m_decoder;
};

} // namespace ludarium

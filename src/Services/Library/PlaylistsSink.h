#pragma once

#include "Models/Playlist.h"
#include "Models/RecordDecoder.h"
#include "Services/Library/XmlRecords.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QStringList>
#include <utility>

namespace ludarium {

/// What one playlist file holds, and the log lines that belong to it.
struct PlaylistFileContent {
    QList<Playlist> playlists;
    QList<PlaylistGame> games;
    QList<PlaylistFilter> filters;
    QStringList warnings;
    QHash<QByteArray, qsizetype> emptyLinks; ///< links without a playlist id, by the keys that they have
};

/// The playlists of one document. A field that cannot be read takes its default.
class PlaylistsSink : public XmlRecordSink {
  public:
    /// The content of a document that was read to its end.
    PlaylistFileContent takeContent();

    bool beginRecord(std::string_view name) override;
    int field(std::string_view name) override;
    void fieldText(int field, std::string_view text) override;
    void fieldUnreadable(int) override {}
    void endRecord() override;

  private:
    enum class Kind { playlist, game, filter } m_kind = Kind::playlist;
    QByteArray m_keys; ///< of the current PlaylistGame
    PlaylistDecoder m_playlist;
    PlaylistGameDecoder m_game;
    PlaylistFilterDecoder m_filter;
    PlaylistFileContent m_content;
};

} // namespace ludarium

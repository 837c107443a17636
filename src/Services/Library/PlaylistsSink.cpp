#include "Services/Library/PlaylistsSink.h"

namespace ludarium {

bool PlaylistsSink::beginRecord(std::string_view name) {
    m_keys.clear();
    if (name == "Playlist")
        m_kind = Kind::playlist;
    else if (name == "PlaylistGame")
        m_kind = Kind::game;
    else if (name == "PlaylistFilter")
        m_kind = Kind::filter;
    else
        return false;
    return true;
}

int PlaylistsSink::field(std::string_view name) {
    switch (m_kind) {
    case Kind::playlist:
        return PlaylistDecoder::field(name);
    case Kind::game:
        if (!m_keys.isEmpty())
            m_keys += ", ";
        m_keys.append(name.data(), qsizetype(name.size()));
        return PlaylistGameDecoder::field(name);
    case Kind::filter:
        return PlaylistFilterDecoder::field(name);
    }
    Q_UNREACHABLE();
}

void PlaylistsSink::fieldText(int field, std::string_view text) {
    switch (m_kind) {
    case Kind::playlist:
        m_playlist.set(field, text);
        break;
    case Kind::game:
        m_game.set(field, text);
        break;
    case Kind::filter:
        m_filter.set(field, text);
        break;
    }
}

void PlaylistsSink::endRecord() {
    switch (m_kind) {
    case Kind::playlist:
        m_content.playlists.append(m_playlist.finish());
        break;
    case Kind::game:
        m_content.games.append(m_game.finish());
        if (m_content.games.last().playlistId.isEmpty())
            ++m_content.emptyLinks[m_keys];
        break;
    case Kind::filter:
        m_content.filters.append(m_filter.finish());
        break;
    }
}

PlaylistFileContent PlaylistsSink::takeContent() {
    if (m_content.playlists.isEmpty())
        m_content.warnings.append(QStringLiteral("   ⚠️ No playlists found in XML"));
    if (m_content.games.isEmpty())
        m_content.warnings.append(QStringLiteral("   ⚠️ No PlaylistGame entries found in XML"));
    if (m_content.filters.isEmpty())
        m_content.warnings.append(QStringLiteral("   ⚠️ No PlaylistFilter entries found in XML"));
    return std::exchange(m_content, {});
}

} // namespace ludarium

#pragma once

#include "Models/AdditionalApplication.h"
#include "Models/Platform.h"
#include "Models/Playlist.h"

#include <bitset>
#include <string_view>
#include <utility>

namespace ludarium {

/// Makes records other than games from keyed texts (UTF-8); used like GameDecoder. A field that is not set takes its
/// default. Of a field that is set twice the first text counts, save for the lists of a playlist, which grow.
template<typename Record>
class RecordDecoder {
  public:
    /// -1 when the record has no such field.
    static int field(std::string_view key);

    void set(int field, std::string_view text) {
        if (field < 0)
            return;
        assign(field, text, m_seen.test(size_t(field)));
        m_seen.set(size_t(field));
    }
    void set(std::string_view key, std::string_view text) { set(field(key), text); }

    Record finish() {
        applyDefaults();
        m_seen.reset();
        return std::exchange(m_record, Record());
    }
    void reset() {
        m_seen.reset();
        m_record = Record();
    }

  private:
    void assign(int field, std::string_view text, bool again);
    void applyDefaults();

    Record m_record;
    std::bitset<16> m_seen;
};

/// Names: Platform of Platforms.xml, Playlist, PlaylistGame and PlaylistFilter of the playlist files,
/// AdditionalApplication of the games files. The filters of a playlist are records of their own: append them to what
/// `finish` returned.
template<>
int RecordDecoder<Platform>::field(std::string_view key);
template<>
void RecordDecoder<Platform>::assign(int field, std::string_view text, bool again);
template<>
void RecordDecoder<Platform>::applyDefaults();

template<>
int RecordDecoder<Playlist>::field(std::string_view key);
template<>
void RecordDecoder<Playlist>::assign(int field, std::string_view text, bool again);
template<>
void RecordDecoder<Playlist>::applyDefaults();

template<>
int RecordDecoder<PlaylistGame>::field(std::string_view key);
template<>
void RecordDecoder<PlaylistGame>::assign(int field, std::string_view text, bool again);
template<>
void RecordDecoder<PlaylistGame>::applyDefaults();

template<>
int RecordDecoder<PlaylistFilter>::field(std::string_view key);
template<>
void RecordDecoder<PlaylistFilter>::assign(int field, std::string_view text, bool again);
template<>
void RecordDecoder<PlaylistFilter>::applyDefaults();

template<>
int RecordDecoder<AdditionalApplication>::field(std::string_view key);
template<>
void RecordDecoder<AdditionalApplication>::assign(int field, std::string_view text, bool again);
template<>
void RecordDecoder<AdditionalApplication>::applyDefaults();

using PlatformDecoder = RecordDecoder<Platform>;
using PlaylistDecoder = RecordDecoder<Playlist>;
using PlaylistGameDecoder = RecordDecoder<PlaylistGame>;
using PlaylistFilterDecoder = RecordDecoder<PlaylistFilter>;
using AdditionalApplicationDecoder = RecordDecoder<AdditionalApplication>;

} // namespace ludarium

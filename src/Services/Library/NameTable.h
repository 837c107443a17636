#pragma once

#include <QByteArrayView>
#include <QStringView>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ludarium {

/// Writes the form in which names of files and titles of games are compared: lower case, composed (NFC; file names of
/// other systems come decomposed), UTF-8.
void assignNameKey(std::string &key, std::string_view utf8);
void assignNameKey(std::string &key, QStringView text);

bool isAscii(std::string_view text);

/// A set of names, each with what is there under it. Tens of thousands of names go in, hundreds of thousands are asked
/// for, nearly all of which are not there: so it is one flat table over one block of text, without a node or an
/// allocation a name.
class NameTable {
  public:
    enum Kind : std::uint8_t { installed = 1, archive = 2, archiveTitle = 4 };

    /// Adds to what is there under a name. Empty names are passed over.
    void add(std::string_view key, Kind kind);
    /// The kinds of a name, or-ed; 0 when it is not in the table.
    std::uint8_t kinds(std::string_view key) const;
    bool has(std::string_view key, unsigned wanted) const { return (kinds(key) & wanted) != 0; }
    bool isEmpty() const { return m_count == 0; }

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t offset = 0;
        std::uint16_t length = 0; ///< 0: free
        std::uint8_t kinds = 0;
    };
    static constexpr std::uint32_t presentBits = 1 << 18;
    static constexpr std::uint32_t presentBit(std::uint32_t hash) { return hash >> (32 - 18); }

    size_t find(std::uint32_t hash, std::string_view key) const;
    void grow();

    std::string m_text;
    std::vector<Slot> m_slots; ///< a power of two of them, at most half in use
    /// A bit for a few bits of each hash that is there, small enough to stay in the processor's cache: it answers for
    /// most names that are not in the table.
    std::vector<std::uint64_t> m_present = std::vector<std::uint64_t>(presentBits / 64);
    size_t m_count = 0;
};

} // namespace ludarium

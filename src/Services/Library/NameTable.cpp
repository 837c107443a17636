#include "Services/Library/NameTable.h"

#include <QHashFunctions>
#include <QString>
#include <algorithm>
#include <limits>

namespace ludarium {

namespace {

std::uint32_t hashOf(std::string_view key) {
    return static_cast<std::uint32_t>(qHashBits(key.data(), key.size()));
}

char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

void assignUnicodeKey(std::string &key, const QString &text) {
    const QByteArray bytes = text.toLower().normalized(QString::NormalizationForm_C).toUtf8();
    key.assign(bytes.constData(), size_t(bytes.size()));
}

} // namespace

bool isAscii(std::string_view text) {
    char all = 0;
    for (const char c : text)
        all = static_cast<char>(all | c);
    return (static_cast<unsigned char>(all) & 0x80) == 0;
}

void assignNameKey(std::string &key, std::string_view utf8) {
    if (!isAscii(utf8))
        return assignUnicodeKey(key, QString::fromUtf8(utf8.data(), qsizetype(utf8.size())));
    key.resize(utf8.size());
    std::transform(utf8.begin(), utf8.end(), key.begin(), lowerAscii);
}

void assignNameKey(std::string &key, QStringView text) {
    key.resize(size_t(text.size()));
    char16_t all = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        all |= text[i].unicode();
        key[size_t(i)] = lowerAscii(static_cast<char>(text[i].unicode()));
    }
    if (all >= 0x80)
        assignUnicodeKey(key, text.toString());
}

size_t NameTable::find(std::uint32_t hash, std::string_view key) const {
    const size_t mask = m_slots.size() - 1;
    for (size_t at = hash & mask;; at = (at + 1) & mask) {
        const Slot &slot = m_slots[at];
        if (slot.length == 0 || (slot.hash == hash && std::string_view(m_text).substr(slot.offset, slot.length) == key))
            return at;
    }
}

void NameTable::grow() {
    std::vector<Slot> old(std::max<size_t>(1024, m_slots.size() * 4));
    old.swap(m_slots);
    const size_t mask = m_slots.size() - 1;
    for (const Slot &slot : old) {
        if (slot.length == 0)
            continue;
        size_t at = slot.hash & mask;
        while (m_slots[at].length != 0)
            at = (at + 1) & mask;
        m_slots[at] = slot;
    }
}

void NameTable::add(std::string_view key, Kind kind) {
    // A name of a file has at most 255 bytes; no table of names comes near 4 GB.
    if (key.empty() || key.size() > std::numeric_limits<std::uint16_t>::max() ||
        m_text.size() + key.size() > std::numeric_limits<std::uint32_t>::max())
        return;
    if (m_count * 2 >= m_slots.size())
        grow();
    const std::uint32_t hash = hashOf(key);
    m_present[presentBit(hash) / 64] |= std::uint64_t(1) << (presentBit(hash) % 64);
    Slot &slot = m_slots[find(hash, key)];
    if (slot.length == 0) {
        slot.hash = hash;
        slot.offset = static_cast<std::uint32_t>(m_text.size());
        slot.length = static_cast<std::uint16_t>(key.size());
        m_text += key;
        ++m_count;
    }
    slot.kinds |= kind;
}

std::uint8_t NameTable::kinds(std::string_view key) const {
    if (key.empty() || m_count == 0)
        return 0;
    const std::uint32_t hash = hashOf(key);
    if ((m_present[presentBit(hash) / 64] >> (presentBit(hash) % 64) & 1) == 0)
        return 0;
    return m_slots[find(hash, key)].kinds;
}

} // namespace ludarium

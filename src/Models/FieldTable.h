#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ludarium {

/// A serial key and the number of the field that it names.
struct FieldKey {
    std::string_view key;
    int field;
};

/// Finds a field by its serial key with one hash of the key's length and three of its letters, and one comparison: an
/// element of a collection's XML is looked up a hundred times a game. The hash is made free of collisions when the
/// program is compiled.
template<size_t Count>
class FieldTable {
  public:
    consteval explicit FieldTable(const FieldKey (&keys)[Count]) {
        for (m_seed = 1; !fill(keys); ++m_seed) {
        }
    }

    /// -1 for a key that is not in the table.
    constexpr int find(std::string_view key) const {
        if (key.empty())
            return -1;
        const FieldKey &slot = m_slots[hash(key)];
        return slot.key == key ? slot.field : -1;
    }

  private:
    static constexpr size_t slotCount = 256;

    constexpr size_t hash(std::string_view key) const {
        const auto at = [&](size_t i) { return uint32_t(uint8_t(key[i])); };
        const uint32_t mixed =
            uint32_t(key.size()) + (at(0) << 6) + (at(key.size() / 2) << 13) + (at(key.size() - 1) << 20);
        return (mixed * (m_seed * 2654435761u | 1u)) >> 24;
    }
    constexpr bool fill(const FieldKey (&keys)[Count]) {
        m_slots.fill({{}, -1});
        for (const FieldKey &key : keys) {
            FieldKey &slot = m_slots[hash(key.key)];
            if (slot.field != -1)
                return false;
            slot = key;
        }
        return true;
    }

    std::array<FieldKey, slotCount> m_slots{};
    uint32_t m_seed = 0;
};

} // namespace ludarium

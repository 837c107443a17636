#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>

namespace ludarium::demo {

/// Random numbers that are the same on every machine for the same seed (xorshift64*), so that the collection is, too.
class Dice {
  public:
    explicit Dice(const QString &seed) {
        for (const char byte : seed.toUtf8())
            m_state = (m_state ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
        for (int i = 0; i < 4; ++i)
            next();
    }

    std::uint64_t next() {
        m_state ^= m_state >> 12;
        m_state ^= m_state << 25;
        m_state ^= m_state >> 27;
        return m_state * 2685821657736338717ULL;
    }
    /// 0 up to, but not including, `limit`.
    int below(int limit) { return static_cast<int>((next() >> 33) % static_cast<std::uint64_t>(limit)); }
    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(next() >> 11) / 9007199254740992.0);
    }

  private:
    std::uint64_t m_state = 14695981039346656037ULL;
};

} // namespace ludarium::demo

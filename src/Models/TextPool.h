#pragma once

#include <QByteArray>
#include <QString>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ludarium {

/// Texts that repeat from game to game (platform, genre, developer, …), each held once with its search form. The texts
/// outlive the pool.
///
/// One pool belongs to one thread. Threads that fill one library give each of their pools the same `upstream`, which is
/// asked, under a lock, only for what a pool sees for the first time.
class TextPool {
  public:
    struct Entry {
        QString text;
        QByteArray search;
    };

    explicit TextPool(TextPool *upstream = nullptr) : m_upstream(upstream) {}
    TextPool(const TextPool &) = delete;
    TextPool &operator=(const TextPool &) = delete;

    /// Long texts are not held: they hardly repeat.
    static constexpr size_t maxPooledLength = 200;

    Entry shared(std::string_view utf8);

  private:
    struct Hash {
        using is_transparent = void;
        // Not noexcept: it makes libstdc++ keep each entry's hash beside it, where it would compute it again for every
        // entry that a search passes.
        size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    TextPool *m_upstream;
    std::mutex m_mutex; ///< only for the use as an upstream
    std::unordered_map<std::string, Entry, Hash, std::equal_to<>> m_entries;
};

} // namespace ludarium

#pragma once

#include "Host/AppLogger.h"

#include <QHash>
#include <QString>

namespace ludarium {

/// Lines of which a big collection would log thousands: the first few of a kind are logged, then how many more there
/// were. Writing a line takes longer than reading a small file.
class RepeatedLines {
  public:
    explicit RepeatedLines(LogLevel level) : m_level(level) {}
    RepeatedLines(const RepeatedLines &) = delete;
    RepeatedLines &operator=(const RepeatedLines &) = delete;
    ~RepeatedLines() {
        for (auto it = m_counts.cbegin(); it != m_counts.cend(); ++it)
            if (*it > limit)
                log(QStringLiteral("%1: %2 more").arg(it.key()).arg(*it - limit));
    }

    void add(const QString &kind, const QString &line) {
        if (++m_counts[kind] <= limit)
            log(line);
    }

  private:
    static constexpr qsizetype limit = 10;

    void log(const QString &line) const {
        if (m_level == LogLevel::Debug)
            Log::debug(line);
        else if (m_level == LogLevel::Info)
            Log::info(line);
        else
            Log::warning(line);
    }

    const LogLevel m_level;
    QHash<QString, qsizetype> m_counts;
};

} // namespace ludarium

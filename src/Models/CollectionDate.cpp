#include "Models/CollectionDate.h"

namespace ludarium {

namespace {

/// Reads numbers and separators off the front of a text; once one is missing, everything after it fails too.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : m_rest(text) {}

    int number(size_t minDigits, size_t maxDigits) {
        int value = 0;
        size_t digits = 0;
        while (digits < maxDigits && digits < m_rest.size() && m_rest[digits] >= '0' && m_rest[digits] <= '9')
            value = value * 10 + (m_rest[digits++] - '0');
        m_ok = m_ok && digits >= minDigits;
        m_rest.remove_prefix(digits);
        return value;
    }
    void separator(char c) {
        m_ok = m_ok && !m_rest.empty() && m_rest.front() == c;
        if (m_ok)
            m_rest.remove_prefix(1);
    }

    bool ok() const { return m_ok; }
    std::string_view rest() const { return m_rest; }

  private:
    std::string_view m_rest;
    bool m_ok = true;
};

std::optional<QDateTime> moment(const QDate &date, const QTime &time = QTime(0, 0)) {
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC);
}

std::optional<QDateTime> parseAmerican(std::string_view text) {
    Scanner scanner(text);
    const int month = scanner.number(1, 2);
    scanner.separator('/');
    const int day = scanner.number(1, 2);
    scanner.separator('/');
    const int year = scanner.number(4, 4);
    if (!scanner.ok() || !scanner.rest().empty())
        return std::nullopt;
    return moment(QDate(year, month, day));
}

/// The date at the front of the scanner's text.
QDate isoDay(Scanner &scanner, size_t minDigits) {
    const int year = scanner.number(4, 4);
    scanner.separator('-');
    const int month = scanner.number(minDigits, 2);
    scanner.separator('-');
    const int day = scanner.number(minDigits, 2);
    return scanner.ok() ? QDate(year, month, day) : QDate();
}

} // namespace

std::optional<QDateTime> parseCollectionDate(std::string_view text) {
    Scanner year(text);
    const int yearNumber = year.number(4, 4);
    if (!year.ok())
        return parseAmerican(text);
    if (year.rest().empty())
        return moment(QDate(yearNumber, 1, 1));

    Scanner scanner(text);
    const QDate day = isoDay(scanner, 1);
    if (!scanner.ok())
        return std::nullopt;
    if (scanner.rest().empty())
        return moment(day);

    scanner.separator('T');
    const int hour = scanner.number(1, 2);
    scanner.separator(':');
    const int minute = scanner.number(1, 2);
    scanner.separator(':');
    const int second = scanner.number(1, 2);
    if (!scanner.ok())
        return std::nullopt;

    Scanner fraction(scanner.rest());
    fraction.separator('.');
    const int milliseconds = fraction.number(3, 3);
    const bool hasMilliseconds = fraction.ok() && fraction.rest().empty();
    return moment(day, QTime(hour, minute, second, hasMilliseconds ? milliseconds : 0));
}

std::optional<QDate> parseLeadingIsoDay(std::string_view text) {
    Scanner scanner(text);
    const QDate day = isoDay(scanner, 2);
    return day.isValid() ? std::optional(day) : std::nullopt;
}

} // namespace ludarium

#pragma once

#include <QString>

namespace ludarium {

/// Keeps secrets out of the log, whoever logs them: the values of parameters, headers and fields whose name says that
/// they are secret, the user part of URLs, and every value that was announced with `addSecret`. Thread-safe.
class LogRedactor {
  public:
    static constexpr QLatin1StringView mark{"[REDACTED]"};

    /// A value that must not be logged in any form, such as a password read from the settings. Values shorter than
    /// four characters are not remembered: hiding them would garble every line.
    static void addSecret(const QString &value);

    static QString redacted(const QString &text);
};

} // namespace ludarium

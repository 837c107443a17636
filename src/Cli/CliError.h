#pragma once

#include "Cli/ExitStatus.h"

#include <QByteArray>
#include <QString>
#include <exception>

namespace ludarium {

/// Ends a command with one line on standard error, or an object on standard output, and an exit status.
class CliError : public std::exception {
  public:
    explicit CliError(const QString &text, ExitStatus status = exitFailed) : m_text(text.toUtf8()), m_status(status) {}
    const char *what() const noexcept override { return m_text.constData(); }
    ExitStatus status() const { return m_status; }

  private:
    QByteArray m_text;
    ExitStatus m_status;
};

} // namespace ludarium

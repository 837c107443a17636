#pragma once

#include <QByteArray>
#include <QString>
#include <exception>

namespace ludarium {

/// Why an outside program could not be installed or found, with the text that the user reads.
class EmulatorError : public std::exception {
  public:
    enum class Case { installationFailed, notFound, invalidPath };
    EmulatorError(Case kind, QString detail);

    Case kind() const { return m_case; }
    QString detail() const { return m_detail; }
    QString text() const;
    const char *what() const noexcept override { return m_what.constData(); }

  private:
    Case m_case;
    QString m_detail;
    QByteArray m_what;
};

} // namespace ludarium

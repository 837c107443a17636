#pragma once

#include <QByteArray>
#include <QString>
#include <exception>

namespace ludarium {

/// Why a game could not be started, with the text that the user reads.
class LaunchError : public std::exception {
  public:
    enum class Case {
        fileNotFound,
        emulatorNotFound,
        launchFailed,
        scriptError,
        unsupportedFileType,
        scriptExecutionFailed,
        custom,
        noCollectionPath,
        noApplicationPath,
        linuxPatchNotInstalled,
    };
    /// `detail` is the value in the text of the cases that have one.
    explicit LaunchError(Case kind, QString detail = {});

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

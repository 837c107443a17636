#pragma once

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QString>
#include <QStringList>
#include <stdexcept>

namespace ludarium {

class AppLogger;
class SettingsStore;
struct Host;

/// Why a log could not be uploaded, with the text that the user sees.
class LogUploadError : public std::runtime_error {
  public:
    enum class Kind { NoLogs, InvalidUrl, SerializationFailed, NoResponse, ServerError };
    explicit LogUploadError(Kind kind, int status = 0);
    const Kind kind;
    const int status; ///< of the server's answer, for ServerError
};

/// Sends the log to the support endpoint, cut to size and without the names of user and machine. Asking the user
/// first is the caller's affair.
class LogUploader {
  public:
    /// What is to be taken out of a log.
    struct Identity {
        QString home;
        QString hostName;
        QStringList userNames; ///< names of the user as folders anywhere are called by them
    };

    /// What the user agrees to once, before the first upload.
    static constexpr QStringView consentQuestion =
        u"Your logs will be uploaded to help diagnose issues. Personal information like usernames and hostnames will "
        "be redacted before upload.\n\nDo you want to continue?";

    LogUploader(Host &host, AppLogger &logger);

    /// Why nothing can be uploaded; empty when it can be tried. Without an address there is nowhere to send logs to.
    static QString unavailableReason(const SettingsStore &settings);

    /// The text to show when it is done. Throws LogUploadError, or HttpError when no connection came about.
    QCoro::Task<QString> uploadLogs();

    /// At most the last `maxSize` bytes of a UTF-8 text, from the beginning of a session or at least of a line on.
    static QByteArray truncateToLatestLogs(const QByteArray &text, qsizetype maxSize);
    /// `/Users/{name}`, `/home/{name}` and the home folder elsewhere lose the user's name, "Host: " lines the host's.
    /// So do paths with a folder of one of `userNames` anywhere (`/run/media/{name}/…`), also in another case, in URLs
    /// and with a decomposed or escaped spelling.
    static QString anonymizeLogs(const QString &text, const Identity &identity);
    /// What is sent of a log: cut, anonymised, and marked when it was cut.
    static QString preparedLogs(const QString &text, const Identity &identity);

  private:
    Host &m_host;
    AppLogger &m_logger;
};

} // namespace ludarium

#pragma once

#include <QCoro/QCoroTask>
#include <QString>
#include <memory>
#include <source_location>

namespace ludarium {

enum class LogLevel { Debug, Info, Warning, Error };

/// One rotating text log for the whole program. Logging from any thread formats a line, hands it to a background
/// queue and returns; it never fails its caller. A message is one line, whatever it holds. Secrets are taken out on the
/// way (see LogRedactor).
class AppLogger {
  public:
    /// The logger that the functions of `Log` write to. Lines logged before `setShared` are dropped.
    static AppLogger *shared();
    static void setShared(AppLogger *logger);

    static constexpr qint64 maxLogSize = 5'242'880;
    static constexpr qint64 maxUploadSize = 512'000;

    explicit AppLogger(QString logDirectory);
    ~AppLogger();
    AppLogger(const AppLogger &) = delete;
    AppLogger &operator=(const AppLogger &) = delete;

    void log(LogLevel level, const QString &message, const std::source_location &where);

    /// Also writes each line to standard error; what the command line program does.
    void setMirrorToStandardError(bool mirror);

    QString logFile() const;
    /// The whole current log as text, after everything logged so far is written. Blocks until then; not for the main
    /// thread of a program with a window: use `readAll` there.
    QString text();
    QCoro::Task<QString> readAll();
    void clearLogs();
    /// Waits until everything logged so far is in the file.
    void flush();

    /// What the functions of `Log` do: logs with the shared logger, or drops the line when there is none.
    static void writeShared(LogLevel level, const QString &message, const std::source_location &where);

  private:
    struct Shared;
    struct State;
    std::shared_ptr<State> m_state;
};

/// Logging calls, with the caller's file and line filled in by the call site.
namespace Log {
void debug(const QString &message, const std::source_location &where = std::source_location::current());
void info(const QString &message, const std::source_location &where = std::source_location::current());
void warning(const QString &message, const std::source_location &where = std::source_location::current());
void error(const QString &message, const std::source_location &where = std::source_location::current());
} // namespace Log

} // namespace ludarium

#pragma once

#include "Host/ProcessRunner.h"

#include <QFuture>
#include <QObject>
#include <QProcess>
#include <QPromise>
#include <QTimer>
#include <exception>

namespace ludarium {

/// One tool from its start to its end: both pipes are read as output comes, so that it can never block on a full one.
class ToolProcess : public QObject {
    Q_OBJECT
  public:
    /// `environment` is used when `spec` has none.
    ToolProcess(const ProcessSpec &spec, const QProcessEnvironment &environment, ProcessRunner::LineSink onLine);

    /// Finishes when the tool has ended or could not be started. Call once.
    QFuture<void> start();
    /// TERM now, KILL after 5 seconds. Nothing when it has ended.
    void cancel();
    /// What came of it, after the future has finished. Throws ProcessError when it did not start, or what the line
    /// sink threw.
    ProcessResult takeResult();

  private:
    struct Stream {
        QByteArray kept;
        QByteArray line; ///< begun, its end not yet read
        bool afterReturn = false;
    };
    void take(Stream &stream, const QByteArray &bytes);
    void deliver(const QByteArray &line);
    void signalGroup(int number);
    void finish();

    QProcess m_process;
    QByteArray m_input;
    ProcessRunner::LineSink m_onLine;
    QPromise<void> m_promise;
    QTimer m_killTimer;
    Stream m_output;
    Stream m_error;
    QString m_startFailure;
    std::exception_ptr m_sinkFailure;
    bool m_cancelled = false;
    bool m_finished = false;
};

/// The program that a QProcess did not start, or the folder that it could not start in, and the system's reason,
/// without the name of the call that QProcess puts before it.
QString startFailure(const QProcess &process);

} // namespace ludarium

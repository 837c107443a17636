#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <functional>

namespace ludarium::test {

/// Looks every 50 ms until `condition` holds; false when it does not within `milliseconds`.
bool eventually(const std::function<bool()> &condition, int milliseconds = 30'000);

/// The real desktop program with a home of its own. Ends it when it goes.
class WindowRun {
  public:
    /// `platform` is the QPA plugin; `variables` go into the program's environment.
    explicit WindowRun(const QString &platform = QStringLiteral("offscreen"),
                       const QList<std::pair<QString, QString>> &variables = {});
    ~WindowRun();

    static bool isBuilt();
    static QString program();
    QString home() const { return m_home.path(); }
    const QProcessEnvironment &environment() const { return m_environment; }
    /// Starts the program and waits for its log.
    void start(const QStringList &arguments = {});
    /// Starts it once more beside the first and returns its exit status; -1 when it does not leave.
    int startAgain(const QStringList &arguments);
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// By itself, and well.
    bool hasEnded() { return m_process.waitForFinished(10) && m_process.exitStatus() == QProcess::NormalExit; }
    bool end();
    QString log() const;

  private:
    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
    QProcess m_process;
};

} // namespace ludarium::test

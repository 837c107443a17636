#pragma once

#include "Host/AppLogger.h"
#include "Host/Clock.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/HttpClient.h"
#include "Host/NotificationCenter.h"
#include "Host/ProcessRunner.h"
#include "Host/SettingsStore.h"
#include "Host/Workspace.h"

#include <QCoro/QCoroTask>
#include <QEventLoop>
#include <QTemporaryDir>
#include <exception>
#include <optional>
#include <type_traits>

namespace ludarium::test {

/// Runs a task to its end on the test's event loop and returns its result, or throws what it threw.
/// (QCoro::waitFor never returns when the task throws.)
template<typename T>
T await(QCoro::Task<T> task) {
    std::conditional_t<std::is_void_v<T>, bool, std::optional<T>> value{};
    std::exception_ptr error;
    bool done = false;
    QEventLoop loop;
    const auto wait = [&]() -> QCoro::Task<> {
        try {
            if constexpr (std::is_void_v<T>)
                co_await task;
            else
                value.emplace(co_await task);
        } catch (...) {
            error = std::current_exception();
        }
        done = true;
        loop.quit();
    };
    const QCoro::Task<> waiting = wait();
    if (!done)
        loop.exec();
    if (error)
        std::rethrow_exception(error);
    if constexpr (!std::is_void_v<T>)
        return std::move(*value);
}

/// Settings in memory, with the semantics of the real store.
class MemorySettings : public SettingsStore {
  public:
    QVariant rawValue(const QString &key) const override;
    void setRawValue(const QString &key, const QVariant &value) override;
    void remove(const QString &key) override;
    QStringList keys() const override;
    QVariant rawEntry(const QString &key, const QString &entry) const override;
    void setRawEntry(const QString &key, const QString &entry, const QVariant &value) override;
    void transaction(const std::function<void()> &changes) override;
    using SettingsStore::remove;

  private:
    void notify(const QString &key);

    QVariantMap m_values;
    QStringList m_changed; ///< in the open transaction
    bool m_inTransaction = false;
};

/// Answers by button text, in the order given; records what was asked. A question without a scripted answer gets the
/// last button; an answer that the question does not offer is an error of the test and throws.
class ScriptedDialogs : public Dialogs {
  public:
    QStringList answers;
    QList<Alert> asked;
    std::optional<QString> folder;
    QCoro::Task<int> ask(Alert alert) override;
    QCoro::Task<std::optional<QString>> chooseFolder(QString prompt) override;
};

/// Records what would have been opened: "url …", "file …", "reveal …", "with APP …", "copy …".
class RecordingWorkspace : public Workspace {
  public:
    QStringList actions;
    bool answer = true;
    bool openUrl(const QUrl &url) override;
    bool openFile(const QString &path) override;
    bool openWith(const QString &application, const QStringList &paths) override;
    bool reveal(const QString &path) override;
    void copyToClipboard(const QString &text) override;
};

class RecordingTerminal : public Terminal {
  public:
    QStringList scripts;
    void run(const QString &script) override;
};

/// A clock that moves when told. `sleep` moves it and resumes at once.
class ManualClock : public Clock {
  public:
    QDateTime current{QDate(2026, 3, 14), QTime(15, 9, 26)};
    std::chrono::nanoseconds elapsed{0};
    void advance(std::chrono::milliseconds by);
    QDateTime now() const override { return current; }
    std::chrono::nanoseconds monotonic() const override { return elapsed; }
    QCoro::Task<> sleep(std::chrono::milliseconds duration) override;
};

/// A machine of its own for a test: temporary home under a temporary root, settings in memory, scripted dialogs,
/// recorded openings, a clock that moves when told; processes and HTTP are real.
class TestHost {
  public:
    explicit TestHost(HostLayout layout = HostLayout::Linux);
    ~TestHost();

    Host &host() { return *m_host; }
    operator Host &() { return *m_host; }

    /// The fake machine's root and the test's own scratch folder below it.
    QString root() const;
    QString home() const;
    QString scratch() const;
    /// Writes a file under the fake root (parents made) and returns its real path.
    QString put(const QString &path, const QByteArray &content = {}, bool executable = false);
    /// Puts a fake program, a `/bin/sh` script, at an absolute path of the fake machine.
    QString putProgram(const QString &path, const QByteArray &script);
    /// All log lines so far.
    QString log();

    MemorySettings settings;
    ScriptedDialogs dialogs;
    RecordingWorkspace workspace;
    RecordingTerminal terminal;
    ManualClock clock;
    NotificationCenter notifications;

  private:
    QTemporaryDir m_directory;
    std::unique_ptr<HostPaths> m_paths;
    std::unique_ptr<AppLogger> m_logger;
    AppLogger *m_formerLogger = nullptr;
    std::unique_ptr<ProcessRunner> m_processes;
    std::unique_ptr<HttpClient> m_http;
    std::unique_ptr<Host> m_host;
};

} // namespace ludarium::test

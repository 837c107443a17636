#pragma once

#include "Host/HostPaths.h"
#include "Host/ProcessRunner.h"

#include <QHash>
#include <QObject>
#include <memory>

namespace ludarium {

/// Child processes of this machine, on QProcess. All calls belong to the main thread.
class LocalProcessRunner : public QObject, public ProcessRunner {
    Q_OBJECT
  public:
    explicit LocalProcessRunner(const HostPaths &paths, QObject *parent = nullptr);
    /// Emulators that still run are left running.
    ~LocalProcessRunner() override;

    QCoro::Task<ProcessResult> run(ProcessSpec spec, std::stop_token stop = {}, LineSink onLine = {}) override;
    QCoro::Task<ProcessId> startEmulator(ProcessSpec spec) override;
    QCoro::Task<std::optional<int>> waitForEmulator(ProcessId id) override;
    bool isRunning(ProcessId id) const override;
    bool askToEnd(ProcessId id) const override;

    /// Starts a program of the desktop (a browser, a terminal) and forgets it. Throws ProcessError when it cannot be
    /// started.
    static void startDetached(const ProcessSpec &spec);

    /// Bytes of each output stream of a tool that are kept.
    static constexpr qsizetype keptOutput = 64 << 20;

  private:
    struct Emulator;

    const HostPaths &m_paths;
    QHash<qint64, std::shared_ptr<Emulator>> m_emulators; ///< by pid
};

} // namespace ludarium

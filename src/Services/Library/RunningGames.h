#pragma once

#include "Host/ProcessRunner.h"
#include "Services/Library/SessionJournal.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QTimer>
#include <memory>

namespace ludarium {

/// Which games run at this moment, whoever of our programs started them: the journals of their sessions name their
/// processes. Main thread only.
class RunningGames : public QObject {
    Q_OBJECT
  public:
    RunningGames(const ProcessRunner &processes, QString folder, QObject *parent = nullptr);

    /// As last seen; a change is noticed within a second.
    bool contains(const QString &gameId);
    /// Since the start of its process; 0 when the game does not run.
    double seconds(const QString &gameId);
    QStringList games();
    std::optional<ProcessId> process(const QString &gameId) const;
    /// Looks at the journals and the processes now.
    void look();

  Q_SIGNALS:
    void changed();

  private:
    void watch();

    const ProcessRunner &m_processes;
    const QString m_folder;
    QHash<QString, ProcessId> m_running;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
    QTimer m_timer;
};

} // namespace ludarium

#pragma once

#include "Host/ProcessRunner.h"

#include <QDateTime>
#include <QString>
#include <optional>

namespace ludarium {

/// The open play session on disk: one small JSON file, replaced as a whole.
class SessionJournal {
  public:
    struct Entry {
        QString gameId;
        QString title;
        QDateTime startedAt;
        double seconds = 0; ///< played so far
        std::optional<ProcessId> process;
        ProcessId owner; ///< the program that measures the session
    };

    explicit SessionJournal(QString file);

    /// None when there is no open session or its file cannot be read; a file that cannot be read is set aside.
    std::optional<Entry> read() const;
    /// A failure is logged: the session goes on unjournalled.
    void write(const Entry &entry) const;
    void clear() const;

  private:
    QString m_file;
};

} // namespace ludarium

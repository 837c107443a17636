#pragma once

#include "Host/ProcessRunner.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

namespace ludarium {

/// An open play session on disk: one small JSON file, replaced as a whole. Programs that measure sessions at one time
/// have a file each.
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

    /// The journals of a folder that hold a session.
    static QList<SessionJournal> inFolder(const QString &folder);
    /// One for the sessions of `owner`, which holds nothing that another program may still need.
    static SessionJournal of(const ProcessId &owner, const QString &folder);

    /// None when there is no open session or its file cannot be read; a file that cannot be read is set aside.
    std::optional<Entry> read() const;
    /// A failure is logged: the session goes on unjournalled.
    void write(const Entry &entry) const;
    void clear() const;

  private:
    QString m_file;
};

} // namespace ludarium

#pragma once

#include "Host/ProcessRunner.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

namespace ludarium {

/// An open play session on disk: one small JSON file, replaced as a whole. Programs that measure sessions at one time
/// have files of their own.
class SessionJournal {
  public:
    struct Entry {
        QString gameId;
        QString title;
        QDateTime startedAt;
        double seconds = 0; ///< played so far
        std::optional<ProcessId> process;
        ProcessId owner; ///< the program that measures the session; of no pid when none does
        /// When the session began, on the clock that counts from the machine's start; none in files of older versions.
        std::optional<double> startedSinceBoot = {};
        bool isKept = false;   ///< the owner is a program that does nothing else and hands the session over
        bool isClosed = false; ///< its time is stored; the file tells only that the game still runs

        /// How long a session has lasted whose process still runs: by the machine's own clock, as the one on the wall
        /// may have been set meanwhile.
        double secondsUntilNow() const;
    };

    SessionJournal() = default;
    explicit SessionJournal(QString file) : m_file(std::move(file)) {}

    /// The journals of a folder.
    static QList<SessionJournal> inFolder(const QString &folder);
    /// One that nobody has, for a session of `owner`.
    static SessionJournal create(const ProcessId &owner, const QString &folder);
    /// Held by whoever takes over a session or stores its time.
    static QString lockFile(const QString &folder);
    static double secondsSinceBoot();

    QString file() const { return m_file; }
    /// None when there is no open session or its file cannot be read; a file that makes no sense is set aside.
    std::optional<Entry> read() const;
    /// A failure is logged: the session goes on, journalled as it was.
    bool write(const Entry &entry) const;
    void clear() const;

  private:
    QString m_file;
};

} // namespace ludarium

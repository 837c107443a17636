#pragma once

#include <QString>

namespace ludarium {

/// Stays until the game of a session's journal has ended, then stores its time; for games that outlive the program that
/// started them. It is a process of its own that loads next to nothing and sleeps. A program that measures sessions
/// itself takes the session over by naming itself in the journal, and ends the keeper.
///
/// Blocks. Returns the exit status of the process.
int keepSession(const QString &journalFile, const QString &settingsFolder);

} // namespace ludarium

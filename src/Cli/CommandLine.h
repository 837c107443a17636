#pragma once

#include "Cli/Command.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

namespace CLI {
class App;
}

namespace ludarium {

/// The options that every command knows.
struct GlobalOptions {
    QString collection; ///< for this run only; empty: the remembered one
    QString home;       ///< everything that the program keeps goes below it; empty: the user's own
    bool json = false;
    bool verbose = false; ///< the log goes to standard error too
};

/// A command with the names of its options, for the man page, the completions and their tests.
struct CommandSummary {
    QString name;
    QString description;
    QStringList options; ///< "--limit", …
};

/// Reads the command line.
class CommandLine {
  public:
    /// The parser with its commands; the default ones are all that the program has.
    CommandLine();
    explicit CommandLine(std::vector<std::unique_ptr<Command>> commands);
    ~CommandLine();

    /// The command to run. Null when the outcome is text alone: help or version for standard output
    /// (`exitStatus` 0), or one line on what is wrong for standard error (`exitStatus` 2).
    Command *parse(int argumentCount, const char *const *arguments);
    const GlobalOptions &options() const { return m_options; }
    QString text() const { return m_text; }
    int exitStatus() const { return m_exitStatus; }

    QList<CommandSummary> summaries() const;
    QStringList globalOptions() const;

  private:
    std::unique_ptr<CLI::App> m_app;
    std::vector<std::unique_ptr<Command>> m_commands;
    GlobalOptions m_options;
    QString m_text;
    int m_exitStatus = 0;
};

} // namespace ludarium

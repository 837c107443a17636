#pragma once

#include "Cli/ExitStatus.h"

#include <QCoro/QCoroTask>

namespace ludarium {

class CommandContext;
class CommandOptions;

/// One command of the program. A new one is a file of its own in Commands/ that defines a function of Commands.h,
/// and a line in CommandRegistry.cpp; the man page and the completions in packaging/ name it too.
class Command {
  public:
    virtual ~Command() = default;
    virtual const char *name() const = 0;
    virtual const char *description() const = 0;
    /// Declares arguments and options, bound to members of the command.
    virtual void declare(CommandOptions &) {}
    /// Does the work and returns the exit status. A failure is thrown: CliError, or any exception whose `what()` is
    /// fit to be shown.
    virtual QCoro::Task<int> run(CommandContext &context) = 0;
};

} // namespace ludarium

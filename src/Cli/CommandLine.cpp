#include "Cli/CommandLine.h"

#include "Cli/CommandOptions.h"
#include "Cli/CommandRegistry.h"
#include "Cli/ExitStatus.h"
#include "Cli/TerminalText.h"

#include <CLI/CLI.hpp>

namespace ludarium {

namespace {

QStringList longOptions(const CLI::App &app) {
    QStringList names;
    for (const CLI::Option *option : app.get_options())
        for (const std::string &name : option->get_lnames())
            names << QStringLiteral("--") + QString::fromStdString(name);
    return names;
}

} // namespace

CommandLine::CommandLine() : CommandLine(makeCommands()) {}

CommandLine::CommandLine(std::vector<std::unique_ptr<Command>> commands)
    : m_app(std::make_unique<CLI::App>("Ludarium's game library on the command line.", "ludarium-cli")),
      m_commands(std::move(commands)) {
    m_app->require_subcommand(1);
    m_app->set_help_flag("-h,--help", "Print this help and end");
    m_app->set_version_flag("--version", "ludarium-cli " LUDARIUM_VERSION, "Print the version and end");
    m_app->get_formatter()->label("SUBCOMMAND", "COMMAND");
    CommandOptions options(*m_app);
    options.folder("--collection", "DIR", m_options.collection, "Use the collection in this folder, for this run only");
    options.folder("--home", "DIR", m_options.home, "Keep settings, caches and logs below this folder");
    options.flag("--json", m_options.json, "Print JSON");
    options.flag("-v,--verbose", m_options.verbose, "Print the log on standard error too");
    for (const auto &command : m_commands) {
        CLI::App *sub = m_app->add_subcommand(command->name(), command->description());
        sub->group("Commands");
        sub->fallthrough(); // The common options may also follow the command.
        CommandOptions commandOptions(*sub);
        command->declare(commandOptions);
    }
}

CommandLine::~CommandLine() = default;

Command *CommandLine::parse(int argumentCount, const char *const *arguments) {
    try {
        m_app->parse(argumentCount, arguments);
    } catch (const CLI::ParseError &error) {
        if (error.get_exit_code() == 0) { // help or version
            std::ostringstream text;
            std::ostringstream none;
            m_app->exit(error, text, none);
            m_text = QString::fromStdString(text.str()).trimmed() + u'\n';
            m_exitStatus = exitDone;
        } else {
            QString problem = QString::fromUtf8(error.what());
            const std::vector<std::string> unknown = m_app->remaining();
            if (m_app->get_subcommands().empty() && !unknown.empty())
                problem =
                    QStringLiteral("There is no command or option \"%1\"").arg(QString::fromStdString(unknown[0]));
            else if (dynamic_cast<const CLI::RequiredError *>(&error)) // our commands are the parser's subcommands
                problem.replace(QStringLiteral("subcommand"), QStringLiteral("command"));
            m_text = QStringLiteral("%1 (see ludarium-cli --help)").arg(oneLine(problem));
            m_exitStatus = exitWrongUsage;
        }
        return nullptr;
    }
    for (const auto &command : m_commands)
        if (m_app->got_subcommand(command->name()))
            return command.get();
    Q_UNREACHABLE();
}

QList<CommandSummary> CommandLine::summaries() const {
    QList<CommandSummary> result;
    for (const auto &command : m_commands)
        result.append({QString::fromUtf8(command->name()), QString::fromUtf8(command->description()),
                       longOptions(*m_app->get_subcommand(command->name()))});
    return result;
}

QStringList CommandLine::globalOptions() const {
    return longOptions(*m_app);
}

} // namespace ludarium

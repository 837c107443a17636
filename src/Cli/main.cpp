#include "App/AppState.h"
#include "App/Composition.h"
#include "Cli/CliDialogs.h"
#include "Cli/CliError.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandLine.h"
#include "Cli/ExitStatus.h"
#include "Cli/JsonText.h"
#include "Cli/Output.h"
#include "Cli/TerminalText.h"
#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/HostPaths.h"
#include "Services/Library/PlaySessionTracker.h"
#include "Services/Library/SessionKeeper.h"

#include <QCoreApplication>
#include <QFile>
#include <QTimer>
#include <csignal>
#include <nlohmann/json.hpp>
#include <optional>
#include <unistd.h>

namespace ludarium {
namespace {

/// Qt's own warnings belong in the log: standard error holds at most one line on what went wrong.
void logQtMessage(QtMsgType type, const QMessageLogContext &, const QString &message) {
    if (type == QtDebugMsg || type == QtInfoMsg)
        Log::debug(message);
    else
        Log::warning(message);
}

void printError(Output &errors, const QString &text) {
    errors.line(QStringLiteral("ludarium-cli: ") + oneLine(text));
}

/// What went wrong: a line for people, or an object where a script reads, unless that has got something else already.
void tellError(Output &output, Output &errors, bool json, const QString &text, int status,
               const Json &details = Json::object()) {
    if (!json || !output.isUntouched()) {
        printError(errors, text);
        return;
    }
    Json document = jsonDocument();
    document["error"] = {{"message", jsonText(text)}, {"exitStatus", status}};
    document["error"].update(details);
    printJson(output, document);
    try {
        output.finish();
    } catch (...) {
        printError(errors, text);
    }
}

/// Whether the words of the command line ask for JSON, also when they are no command.
bool asksForJson(int argc, char **argv) {
    for (int i = 1; i < argc; ++i) {
        const QByteArrayView word(argv[i]);
        if (word == "--")
            return false;
        if (word == "--json")
            return true;
    }
    return false;
}

/// Runs the command to its end; every failure becomes its line and its status.
QCoro::Task<> drive(Command &command, CommandContext &context) {
    int status = exitFailed;
    try {
        const int outcome = co_await command.run(context);
        context.output().finish(); // done is only what has arrived
        status = outcome;
    } catch (const CliError &error) {
        status = error.status();
        tellError(context.output(), context.errors(), context.json(), QString::fromUtf8(error.what()), status,
                  context.errorDetails());
    } catch (...) {
        tellError(context.output(), context.errors(), context.json(), currentExceptionText(), status);
    }
    QCoreApplication::exit(status);
}

/// "--keep-session JOURNAL HOME" is for the program itself, which starts itself so beside a game.
std::optional<int> keepSessionIfTold(int argc, char **argv) {
    if (argc != 4 || QByteArrayView(argv[1]) != "--keep-session")
        return std::nullopt;
    const HostPaths paths = HostPaths::native(QFile::decodeName(argv[3]));
    return keepSession(QFile::decodeName(argv[2]), paths.settingsFolder());
}

int runCommand(int argc, char **argv, const CommandLine &line, Command &command, Output &output, Output &errors) {
    QCoreApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("ludarium-cli"));
    auto dialogs = std::make_unique<CliDialogs>();
    CliDialogs &questions = *dialogs;
    Composition::Options options;
    options.home = line.options().home;
    options.mirrorLog = line.options().verbose;
    options.dialogs = std::move(dialogs);
    Composition composition(std::move(options));
    // A command ends at once: games that run are their keepers'.
    composition.appState().sessionTracker().setTakingOver(false);
    CommandContext context(composition, questions, line.options(), output, errors);
    const auto tellRepair = [&] {
        if (const QString repair = composition.settingsRepair(); !repair.isEmpty())
            printError(errors, repair);
    };
    tellRepair();
    composition.onSettingsRepaired(&application, tellRepair);
    QTimer::singleShot(0, &application, [&] { spawn(drive(command, context), command.name()); });
    return QCoreApplication::exec();
}

} // namespace

/// The program, but for the name that the linker looks for.
int runProgram(int argc, char **argv) {
    // A reader of our output that goes away is no reason to die in the middle of a launch.
    std::signal(SIGPIPE, SIG_IGN);
    qInstallMessageHandler(logQtMessage);
    if (const std::optional<int> kept = keepSessionIfTold(argc, argv))
        return *kept;
    Output output(STDOUT_FILENO);
    Output errors(STDERR_FILENO);
    const bool json = asksForJson(argc, argv);
    try {
        CommandLine line;
        Command *command = line.parse(argc, argv);
        if (command)
            return runCommand(argc, argv, line, *command, output, errors);
        if (line.exitStatus() == exitDone)
            output.write(line.text().toUtf8());
        else
            tellError(output, errors, json, line.text(), line.exitStatus());
        output.finish();
        return line.exitStatus();
    } catch (...) {
        tellError(output, errors, json, currentExceptionText(), exitFailed);
        return exitFailed;
    }
}

} // namespace ludarium

int main(int argc, char **argv) {
    return ludarium::runProgram(argc, argv);
}

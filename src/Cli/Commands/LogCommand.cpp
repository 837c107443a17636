#include "App/Composition.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/JsonText.h"
#include "Cli/Output.h"
#include "Cli/TerminalText.h"
#include "Host/AppLogger.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

class LogCommand : public Command {
  public:
    const char *name() const override { return "log"; }
    const char *description() const override { return "Print the log"; }

    void declare(CommandOptions &options) override { options.flag("--path", m_path, "Print only where the log is"); }

    QCoro::Task<int> run(CommandContext &context) override {
        AppLogger &logger = context.composition().logger();
        Output &output = context.output();
        if (context.json()) {
            Json document = jsonDocument();
            document["path"] = jsonText(logger.logFile());
            if (!m_path)
                document["text"] = jsonText(co_await logger.readAll());
            printJson(output, document);
        } else if (m_path) {
            output.line(escapedForTerminal(logger.logFile()));
        } else {
            const QString text = co_await logger.readAll();
            for (const QStringView line : QStringView(text).split(u'\n', Qt::SkipEmptyParts))
                output.line(escapedForTerminal(line));
        }
        co_return exitDone;
    }

  private:
    bool m_path = false;
};

} // namespace

std::unique_ptr<Command> makeLogCommand() {
    return std::make_unique<LogCommand>();
}

} // namespace ludarium

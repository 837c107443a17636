#include "App/Composition.h"
#include "Cli/CliError.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/JsonText.h"
#include "Cli/Output.h"
#include "Cli/Question.h"
#include "Cli/TerminalText.h"
#include "Host/AppLogger.h"
#include "Host/Host.h"
#include "Host/LogUploader.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

class LogCommand : public Command {
  public:
    const char *name() const override { return "log"; }
    const char *description() const override { return "Print the log, or send it for analysis"; }

    void declare(CommandOptions &options) override {
        options.flag("--path", m_path, "Print only where the log is");
        options.flag("--upload", m_upload, "Send the log for analysis, without the names of user and machine");
        options.flag("--yes", m_yes, "Send it without asking");
        options.exclusive("--path", "--upload");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        AppLogger &logger = context.composition().logger();
        Output &output = context.output();
        if (m_upload) {
            co_await upload(context);
            co_return exitDone;
        }
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
    QCoro::Task<> upload(CommandContext &context) {
        Host &host = context.host();
        if (const QString reason = LogUploader::unavailableReason(host.settings); !reason.isEmpty())
            throw CliError(reason);
        const bool agreed = m_yes || host.settings.value(Settings::logUploadConsent);
        if (!agreed && !co_await askYesNo(context, LogUploader::consentQuestion.toString()))
            throw CliError(QStringLiteral("Nothing was sent."));
        LogUploader uploader(host, context.composition().logger());
        const QString result = co_await uploader.uploadLogs();
        if (context.json()) {
            Json document = jsonDocument();
            addText(document, "message", result);
            printJson(context.output(), document);
        } else {
            context.output().line(escapedForTerminal(result));
        }
    }

    bool m_path = false;
    bool m_upload = false;
    bool m_yes = false;
};

} // namespace

std::unique_ptr<Command> makeLogCommand() {
    return std::make_unique<LogCommand>();
}

} // namespace ludarium

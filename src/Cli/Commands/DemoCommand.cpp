#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/JsonText.h"
#include "Cli/Output.h"
#include "Cli/TerminalText.h"
#include "Host/Async.h"

#include <algorithm>
#include <demo/DemoCollection.h>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

/// The path as one word of a shell's command line.
QString shellWord(const QString &path) {
    const bool plain = std::all_of(
        path.begin(), path.end(), [](QChar c) { return c.isLetterOrNumber() || QStringLiteral("/._-+,").contains(c); });
    return plain ? path : u'\'' + QString(path).replace(u'\'', QStringLiteral("'\\''")) + u'\'';
}

class DemoCommand : public Command {
  public:
    const char *name() const override { return "demo"; }
    const char *description() const override { return "Write the demo collection into a folder"; }

    void declare(CommandOptions &options) override {
        options.folderArgument("DIR", m_folder, "An empty folder, or one that is to be made");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        auto write = [folder = m_folder] { writeDemoCollection(folder); };
        co_await runOnPool(write);
        Output &output = context.output();
        if (context.json()) {
            Json document = jsonDocument();
            document["collection"] = jsonText(m_folder);
            printJson(output, document);
        } else {
            const QString folder = escapedForTerminal(shellWord(m_folder));
            output.line(QStringLiteral("The demo collection is in %1. Go on with:").arg(escapedForTerminal(m_folder)));
            output.line(QStringLiteral("  ludarium-cli --collection %1 games").arg(folder));
            output.line(QStringLiteral("  ludarium-cli --collection %1 play \"Orchard Breaker\"").arg(folder));
        }
        co_return exitDone;
    }

  private:
    QString m_folder;
};

} // namespace

std::unique_ptr<Command> makeDemoCommand() {
    return std::make_unique<DemoCommand>();
}

} // namespace ludarium

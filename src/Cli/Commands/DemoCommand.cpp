#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/JsonText.h"
#include "Cli/Output.h"
#include "Cli/TerminalText.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

class DemoCommand : public Command {
  public:
    const char *name() const override { return "demo"; }
    const char *description() const override { return "Write the demo collection into a folder"; }

    void declare(CommandOptions &options) override {
        options.folderArgument("DIR", m_folder, "The folder; made when it is missing");
    }

    QCoro::Task<int> run(CommandContext &) override { co_return exitDone; }

  private:
    QString m_folder;
};

} // namespace

std::unique_ptr<Command> makeDemoCommand() {
    return std::make_unique<DemoCommand>();
}

} // namespace ludarium

#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameFilter.h"

namespace ludarium {

namespace {

class GamesCommand : public Command {
  public:
    const char *name() const override { return "games"; }
    const char *description() const override { return "List the games"; }

    void declare(CommandOptions &options) override {
        m_filter.declareSearch(options);
        m_filter.declarePlatform(options);
        m_filter.declareLimit(options);
    }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        printGames(context, m_filter.select(context, *library));
        co_return exitDone;
    }

  private:
    GameFilter m_filter;
};

} // namespace

std::unique_ptr<Command> makeGamesCommand() {
    return std::make_unique<GamesCommand>();
}

} // namespace ludarium

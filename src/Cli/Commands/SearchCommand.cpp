#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameFilter.h"

namespace ludarium {

namespace {

class SearchCommand : public Command {
  public:
    const char *name() const override { return "search"; }
    const char *description() const override { return "Search the games"; }

    void declare(CommandOptions &options) override {
        options.optionalArgument("TEXT", m_filter.search, "In title, developer, publisher, genre or series");
        m_filter.declareFacets(options);
        m_filter.declarePlatform(options);
        m_filter.declareLists(options);
        m_filter.declareSort(options);
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

std::unique_ptr<Command> makeSearchCommand() {
    return std::make_unique<SearchCommand>();
}

} // namespace ludarium

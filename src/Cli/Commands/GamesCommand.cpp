#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/JsonText.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

class GamesCommand : public Command {
  public:
    const char *name() const override { return "games"; }
    const char *description() const override { return "List the games"; }

    void declare(CommandOptions &options) override {
        options.text("--search", "TEXT", m_filter.search,
                     "Only games with this text in title, developer, publisher, genre or series");
        options.text("--platform", "NAME", m_filter.platform, "Only games of this platform");
        options.number("--limit", "N", m_limit, "At most this many");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        GameList games = selectGames(library->games(), m_filter);
        if (m_limit && *m_limit < games.size())
            games.resize(*m_limit);
        if (context.json())
            printAsJson(context.output(), games);
        else
            printAsTable(context.output(), games);
        co_return exitDone;
    }

  private:
    static void printAsJson(Output &output, const GameList &games) {
        JsonList list(output, "games");
        for (const GamePtr &game : games) {
            if (output.readerGone())
                return;
            list.add(toJson(*game));
        }
        list.finish();
    }

    static void printAsTable(Output &output, const GameList &games) {
        Table table({QStringLiteral("TITLE"), QStringLiteral("PLATFORM"), QStringLiteral("YEAR"),
                     QStringLiteral("STATE"), QStringLiteral("ID")});
        for (const GamePtr &game : games) {
            const QStringList cells{game->title, game->platform,
                                    game->releaseYear ? QString::number(*game->releaseYear) : QString(),
                                    gameStateText(*game), game->id};
            if (game->isInstalled)
                table.add(cells);
            else
                table.addFaint(cells);
        }
        table.print(output);
    }

    GameFilter m_filter;
    std::optional<int> m_limit;
};

} // namespace

std::unique_ptr<Command> makeGamesCommand() {
    return std::make_unique<GamesCommand>();
}

} // namespace ludarium

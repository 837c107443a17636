#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameFilter.h"
#include "Cli/Table.h"
#include "Models/PlayTime.h"
#include "Services/Library/GameLibrary.h"

namespace ludarium {

namespace {

class RecentCommand : public Command {
  public:
    const char *name() const override { return "recent"; }
    const char *description() const override { return "List the games that were played last, newest first"; }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        if (context.json()) {
            printGames(context, library->recentlyPlayed());
            co_return exitDone;
        }
        Table table({QStringLiteral("TITLE"), QStringLiteral("PLATFORM"), QStringLiteral("LAST PLAYED"),
                     QStringLiteral("PLAYS"), QStringLiteral("TIME"), QStringLiteral("ID")});
        for (const GamePtr &game : library->recentlyPlayed())
            table.add({game->title, game->platform,
                       game->lastPlayed ? game->lastPlayed->toLocalTime().toString(u"yyyy-MM-dd HH:mm") : QString(),
                       QString::number(game->playCount), formatPlayTime(game->playTime), game->id});
        table.print(context.output());
        co_return exitDone;
    }
};

} // namespace

std::unique_ptr<Command> makeRecentCommand() {
    return std::make_unique<RecentCommand>();
}

} // namespace ludarium

#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/UserDataText.h"
#include "Services/Library/GameLibrary.h"

namespace ludarium {

namespace {

class RateCommand : public Command {
  public:
    const char *name() const override { return "rate"; }
    const char *description() const override { return "Rate a game, or print its rating"; }

    void declare(CommandOptions &options) override {
        options.argument("ID-OR-TITLE", m_game, "Id, title or a part of the title");
        options.numberArgument("RATING", m_rating, 0, 5, "1 to 5, or 0 for none; without it, prints the rating");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        GameLibrary *library = co_await context.loadLibraryAsSeen();
        const GamePtr game = chooseGame(context, *library, m_game);
        if (m_rating)
            requireStored(library->setRating(game->id, *m_rating));
        const int rating = library->userData().rating(game->id);
        printUserData(context, *library, *game,
                      rating > 0 ? QStringLiteral("%1: %2 of 5").arg(game->title).arg(rating)
                                 : QStringLiteral("%1 has no rating.").arg(game->title));
        co_return exitDone;
    }

  private:
    QString m_game;
    std::optional<int> m_rating;
};

} // namespace

std::unique_ptr<Command> makeRateCommand() {
    return std::make_unique<RateCommand>();
}

} // namespace ludarium

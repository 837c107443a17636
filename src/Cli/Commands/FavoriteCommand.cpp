#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/UserDataText.h"
#include "Services/Library/GameLibrary.h"

namespace ludarium {

namespace {

class FavoriteCommand : public Command {
  public:
    const char *name() const override { return "favorite"; }
    const char *description() const override { return "Make a game a favorite, or no longer"; }

    void declare(CommandOptions &options) override {
        options.argument("ID-OR-TITLE", m_game, "Id, title or a part of the title");
        options.flag("--off", m_off, "No longer a favorite");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        GameLibrary *library = co_await context.loadLibraryAsSeen();
        const GamePtr game = chooseGame(context, *library, m_game);
        requireStored(library->setFavorites({game->id}, !m_off));
        printUserData(
            context, *library, *game,
            (m_off ? QStringLiteral("%1 is no favorite.") : QStringLiteral("%1 is a favorite.")).arg(game->title));
        co_return exitDone;
    }

  private:
    QString m_game;
    bool m_off = false;
};

} // namespace

std::unique_ptr<Command> makeFavoriteCommand() {
    return std::make_unique<FavoriteCommand>();
}

} // namespace ludarium

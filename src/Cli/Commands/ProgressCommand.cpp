#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/UserDataText.h"
#include "Services/Library/GameLibrary.h"

namespace ludarium {

namespace {

class ProgressCommand : public Command {
  public:
    const char *name() const override { return "progress"; }
    const char *description() const override { return "Set how far a game has been played, or print it"; }

    void declare(CommandOptions &options) override {
        options.argument("ID-OR-TITLE", m_game, "Id, title or a part of the title");
        options.choiceArgument("PROGRESS", m_progress, progressWords(), "How far; without it, prints the progress");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        GameLibrary *library = co_await context.loadLibraryAsSeen();
        const GamePtr game = chooseGame(context, *library, m_game);
        if (!m_progress.isNull())
            requireStored(library->setProgress(game->id, GameProgress(progressWords().indexOf(m_progress))));
        printUserData(
            context, *library, *game,
            QStringLiteral("%1: %2").arg(game->title, gameProgressText(library->game(game->id)->gameProgress)));
        co_return exitDone;
    }

  private:
    QString m_game;
    QString m_progress;
};

} // namespace

std::unique_ptr<Command> makeProgressCommand() {
    return std::make_unique<ProgressCommand>();
}

} // namespace ludarium

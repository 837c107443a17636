#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/Output.h"
#include "Cli/TerminalText.h"
#include "Cli/UserDataText.h"
#include "Services/Library/GameLibrary.h"

namespace ludarium {

namespace {

void printNote(Output &output, const QString &note) {
    if (note.isEmpty())
        return;
    // A file or a program gets what the user wrote, to the byte.
    if (output.columns() == 0) {
        output.write(note.toUtf8());
        return;
    }
    for (const QString &line : note.split(u'\n'))
        output.line(escapedForTerminal(line));
}

class NoteCommand : public Command {
  public:
    const char *name() const override { return "note"; }
    const char *description() const override { return "Print, write or remove the note on a game"; }

    void declare(CommandOptions &options) override {
        options.argument("ID-OR-TITLE", m_game, "Id, title or a part of the title");
        options.optionalArgument("TEXT", m_text, "The new note; without it, prints the note");
        options.flag("--clear", m_clear, "Remove the note");
        options.exclusive("--clear", "TEXT");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        GameLibrary *library = co_await context.loadLibraryAsSeen();
        const GamePtr game = chooseGame(context, *library, m_game);
        if (m_clear || !m_text.isNull())
            requireStored(library->setNotes(game->id, m_text));
        if (context.json())
            printUserData(context, *library, *game, {});
        else if (m_clear)
            printUserData(context, *library, *game, QStringLiteral("%1 has no note.").arg(game->title));
        else
            printNote(context.output(), library->userData().notes(game->id));
        co_return exitDone;
    }

  private:
    QString m_game;
    QString m_text;
    bool m_clear = false;
};

} // namespace

std::unique_ptr<Command> makeNoteCommand() {
    return std::make_unique<NoteCommand>();
}

} // namespace ludarium

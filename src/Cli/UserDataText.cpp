#include "Cli/UserDataText.h"

#include "Cli/CliError.h"
#include "Cli/CommandContext.h"
#include "Cli/Output.h"
#include "Cli/TerminalText.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

const QStringList &progressWords() {
    static const QStringList words{QStringLiteral("notPlayed"), QStringLiteral("playing"), QStringLiteral("beaten"),
                                   QStringLiteral("completed"), QStringLiteral("mastered")};
    return words;
}

void requireStored(const QString &refusal) {
    if (!refusal.isEmpty())
        throw CliError(refusal);
}

void printUserData(CommandContext &context, const GameLibrary &library, const Game &game, const QString &line) {
    if (!context.json()) {
        context.output().line(escapedForTerminal(line));
        return;
    }
    const UserData &user = library.userData();
    Json document = jsonDocument();
    addText(document, "ID", game.id);
    addText(document, "Title", game.title);
    document["favorite"] = user.favoriteIds().contains(game.id);
    document["userRating"] = user.rating(game.id);
    document["userNotes"] = jsonText(user.notes(game.id));
    const GamePtr current = library.game(game.id);
    document["progress"] = jsonText(progressWords().at(int(current ? current->gameProgress : game.gameProgress)));
    printJson(context.output(), document);
}

} // namespace ludarium

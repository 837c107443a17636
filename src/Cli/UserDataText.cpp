#include "Cli/UserDataText.h"

#include "Cli/CliError.h"
#include "Cli/CommandContext.h"
#include "Cli/JsonRecords.h"
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
    Json document = jsonDocument();
    addName(document, game);
    const GamePtr current = library.game(game.id);
    addUserData(document, current ? *current : game, library.userData());
    printJson(context.output(), document);
}

} // namespace ludarium

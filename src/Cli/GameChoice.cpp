#include "Cli/GameChoice.h"

#include "Cli/CliError.h"
#include "Cli/CommandContext.h"
#include "Cli/JsonRecords.h"
#include "Cli/NamedChoice.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Services/Library/GameLibrary.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

constexpr qsizetype candidatesShown = 50;

} // namespace

GameList gamesNamed(const GameList &games, const QString &idOrTitle) {
    const QByteArray lowerCased = idOrTitle.toLower().toUtf8();
    GameList sameTitle;
    GameList containing;
    GameList beginning;
    for (const GamePtr &game : games) {
        if (game->id == idOrTitle)
            return {game};
        if (game->searchTitle == lowerCased)
            sameTitle << game;
        else if (game->searchTitle.contains(lowerCased))
            containing << game;
        else if (beginsId(idOrTitle, game->id))
            beginning << game;
    }
    if (!sameTitle.isEmpty())
        return sameTitle;
    return containing.isEmpty() ? beginning : containing;
}

GamePtr chooseGame(CommandContext &context, const GameLibrary &library, const QString &idOrTitle) {
    const GameList games = gamesNamed(library.games(), idOrTitle);
    if (games.size() == 1)
        return games.first();
    if (games.isEmpty())
        throw CliError(QStringLiteral("No game has the id or title \"%1\".").arg(idOrTitle));
    const CliError ambiguous(
        QStringLiteral("\"%1\" names %2 games. Use the id of one.").arg(idOrTitle).arg(games.size()));
    if (context.json()) {
        Json &candidates = context.errorDetails()["games"] = Json::array();
        for (const GamePtr &game : games) {
            Json candidate = Json::object();
            addName(candidate, *game);
            addText(candidate, "Platform", game->platform);
            if (game->releaseYear)
                candidate["releaseYear"] = *game->releaseYear;
            candidates.push_back(std::move(candidate));
        }
        throw ambiguous;
    }

    Table table({QStringLiteral("ID"), QStringLiteral("TITLE"), QStringLiteral("PLATFORM"), QStringLiteral("YEAR")}, 1);
    for (const GamePtr &game : games.first(std::min(games.size(), candidatesShown)))
        table.add({game->id, game->title, game->platform,
                   game->releaseYear ? QString::number(*game->releaseYear) : QString()});
    table.print(context.errors());
    if (games.size() > candidatesShown)
        context.errors().line(QStringLiteral("… and %1 more").arg(games.size() - candidatesShown));
    throw ambiguous;
}

QString gameStateText(const Game &game) {
    if (game.isInstalled)
        return QStringLiteral("installed");
    if (game.isCompressed)
        return QStringLiteral("compressed");
    return game.isDownloadable ? QStringLiteral("downloadable") : QStringLiteral("missing");
}

} // namespace ludarium

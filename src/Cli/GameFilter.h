#pragma once

#include "Models/Game.h"

#include <QString>
#include <optional>

namespace ludarium {

class CommandContext;
class CommandOptions;
class GameLibrary;

/// Which games a command lists and in which order. A null text is no filter.
struct GameFilter {
    QString search; ///< in title, sort title, developer, publisher, genre and series, ignoring case
    QString genre;
    QString developer;
    QString publisher;
    QString series;
    std::optional<int> year;
    QString platform;
    QString playlist;     ///< id or name
    QString collectionId; ///< id or name of a smart collection
    bool favorites = false;
    bool installed = false;
    QString sort; ///< a word of `declareSort`
    std::optional<int> limit;

    void declareSearch(CommandOptions &options);
    void declarePlatform(CommandOptions &options);
    void declareFacets(CommandOptions &options); ///< genre, developer, publisher, series, year
    void declareLists(CommandOptions &options);  ///< playlist, collection, favorites, installed
    void declareSort(CommandOptions &options);
    void declareLimit(CommandOptions &options);

    /// The games of a loaded library. Names are taken as they are written, else ignoring case. Throws CliError when
    /// one names nothing.
    GameList select(CommandContext &context, const GameLibrary &library) const;
};

/// Prints the games as a table or as the list "games".
void printGames(CommandContext &context, const GameList &games);

} // namespace ludarium

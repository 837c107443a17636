#include "Cli/GameFilter.h"

#include "App/AppState.h"
#include "Cli/CliError.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/GameChoice.h"
#include "Cli/JsonRecords.h"
#include "Cli/NamedChoice.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/LibraryBrowser.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

/// The words of `--sort`, in the order of SortOrder.
const QStringList &sortWords() {
    static const QStringList words{QStringLiteral("title"),  QStringLiteral("year"),   QStringLiteral("developer"),
                                   QStringLiteral("rating"), QStringLiteral("recent"), QStringLiteral("plays")};
    return words;
}

QString existing(const QStringList &values, const QString &text, const QString &facet, const QString &command) {
    if (text.isNull())
        return {};
    const QString value = text.isEmpty() ? QString() : spelledAs(values, text);
    if (value.isNull())
        throw CliError(QStringLiteral("No game has the %1 \"%2\". See: ludarium-cli %3").arg(facet, text, command));
    return value;
}

QStringList platformNames(const GameList &games) {
    QStringList names;
    for (const GamePtr &game : games)
        if (names.isEmpty() || game->platform != names.last()) // games come in runs of one platform
            names << game->platform;
    names.removeDuplicates();
    return names;
}

/// A genre is looked for inside the genres of a game, so a part of one will do.
QString existingGenre(const QStringList &genres, const QString &text) {
    const bool isPart = !text.isEmpty() && std::any_of(genres.begin(), genres.end(),
                                                       [&](const QString &genre) { return genre.contains(text); });
    if (isPart && !genres.contains(text, Qt::CaseInsensitive))
        return text;
    return existing(genres, text, QStringLiteral("genre"), QStringLiteral("facets genres"));
}

} // namespace

void GameFilter::declareSearch(CommandOptions &options) {
    options.text("--search", "TEXT", search,
                 "Only games with this text in title, developer, publisher, genre or series");
}

void GameFilter::declarePlatform(CommandOptions &options) {
    options.text("--platform", "NAME", platform, "Only games of this platform");
}

void GameFilter::declareFacets(CommandOptions &options) {
    options.text("--genre", "NAME", genre, "Only games of this genre");
    options.text("--developer", "NAME", developer, "Only games of this developer");
    options.text("--publisher", "NAME", publisher, "Only games of this publisher");
    options.text("--series", "NAME", series, "Only games of this series");
    options.number("--year", "YEAR", year, "Only games of this year");
}

void GameFilter::declareLists(CommandOptions &options) {
    options.text("--playlist", "ID-OR-NAME", playlist, "Only games of this playlist");
    options.text("--collection-id", "ID-OR-NAME", collectionId, "Only games of this smart collection");
    options.flag("--favorites", favorites, "Only favorites");
    options.flag("--installed", installed, "Only installed games");
}

void GameFilter::declareSort(CommandOptions &options) {
    options.choice("--sort", sort, sortWords(), "Order of the list");
}

void GameFilter::declareLimit(CommandOptions &options) {
    options.number("--limit", "N", limit, "At most this many");
}

GameList GameFilter::select(CommandContext &context, const GameLibrary &library) const {
    const MetadataIndexes &metadata = library.metadata();
    BrowseQuery query;
    query.search = search;
    query.genre = existingGenre(metadata.genres, genre);
    query.developer =
        existing(metadata.developers, developer, QStringLiteral("developer"), QStringLiteral("facets developers"));
    query.publisher =
        existing(metadata.publishers, publisher, QStringLiteral("publisher"), QStringLiteral("facets publishers"));
    const QString ofSeries =
        existing(metadata.series, series, QStringLiteral("series"), QStringLiteral("facets series"));
    query.year = year;
    if (!platform.isNull())
        query.platform =
            existing(platformNames(library.games()), platform, QStringLiteral("platform"), QStringLiteral("platforms"));
    if (!playlist.isNull())
        query.playlistId = library.playlists()[choosePlaylist(context, library, playlist)].id;
    if (!collectionId.isNull())
        query.smartCollectionId = chooseSmartCollection(context, collectionId).id;
    query.favoritesOnly = favorites;
    query.installedOnly = installed;
    query.sortOrder = SortOrder(std::max<qsizetype>(0, sortWords().indexOf(sort)));
    GameList games = context.appState().browser().filteredGames(query);
    if (!ofSeries.isNull())
        games.removeIf([&](const GamePtr &game) { return game->series != ofSeries; });
    if (limit && *limit < games.size())
        games.resize(*limit);
    return games;
}

void printGames(CommandContext &context, const GameList &games) {
    if (context.json()) {
        JsonList list(context.output(), "games");
        const UserData &user = context.appState().gameLibrary().userData();
        for (const GamePtr &game : games) {
            if (context.output().readerGone())
                return;
            list.add(toJson(*game, user));
        }
        list.finish();
        return;
    }
    Table table({QStringLiteral("TITLE"), QStringLiteral("PLATFORM"), QStringLiteral("YEAR"), QStringLiteral("STATE"),
                 QStringLiteral("ID")});
    for (const GamePtr &game : games) {
        const QStringList cells{game->title, game->platform,
                                game->releaseYear ? QString::number(*game->releaseYear) : QString(),
                                gameStateText(*game), game->id};
        if (game->isInstalled)
            table.add(cells);
        else
            table.addFaint(cells);
    }
    table.print(context.output());
}

} // namespace ludarium

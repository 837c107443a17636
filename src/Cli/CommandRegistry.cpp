#include "Cli/CommandRegistry.h"

#include "Cli/Command.h"
#include "Cli/Commands/Commands.h"

namespace ludarium {

std::vector<std::unique_ptr<Command>> makeCommands() {
    constexpr std::unique_ptr<Command> (*makers[])() = {
        makeDemoCommand,      makeLoadCommand,       makeRefreshCommand,   makeStatusCommand,
        makePlatformsCommand, makeGamesCommand,      makeSearchCommand,    makeShowCommand,
        makeImagesCommand,    makeThumbnailsCommand, makePlaylistsCommand, makeCollectionsCommand,
        makeFacetsCommand,    makeGroupsCommand,     makeRecentCommand,    makeStatsCommand,
        makeFavoriteCommand,  makeRateCommand,       makeNoteCommand,      makeProgressCommand,
        makeVersionsCommand,  makePlayCommand,       makeEmulatorsCommand, makeSetupStatusCommand,
        makeBatchCommand,     makeLogCommand,
    };
    std::vector<std::unique_ptr<Command>> commands;
    for (const auto &make : makers)
        commands.push_back(make());
    return commands;
}

} // namespace ludarium

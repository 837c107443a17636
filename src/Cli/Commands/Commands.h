#pragma once

#include <memory>

namespace ludarium {

class Command;

/// Each is defined in the file of its command.
std::unique_ptr<Command> makeDemoCommand();
std::unique_ptr<Command> makeLoadCommand();
std::unique_ptr<Command> makeRefreshCommand();
std::unique_ptr<Command> makeStatusCommand();
std::unique_ptr<Command> makePlatformsCommand();
std::unique_ptr<Command> makeGamesCommand();
std::unique_ptr<Command> makeSearchCommand();
std::unique_ptr<Command> makeShowCommand();
std::unique_ptr<Command> makeImagesCommand();
std::unique_ptr<Command> makeThumbnailsCommand();
std::unique_ptr<Command> makePlaylistsCommand();
std::unique_ptr<Command> makeCollectionsCommand();
std::unique_ptr<Command> makeFacetsCommand();
std::unique_ptr<Command> makeGroupsCommand();
std::unique_ptr<Command> makeRecentCommand();
std::unique_ptr<Command> makeStatsCommand();
std::unique_ptr<Command> makeFavoriteCommand();
std::unique_ptr<Command> makeRateCommand();
std::unique_ptr<Command> makeNoteCommand();
std::unique_ptr<Command> makeProgressCommand();
std::unique_ptr<Command> makeVersionsCommand();
std::unique_ptr<Command> makePlayCommand();
std::unique_ptr<Command> makeEmulatorsCommand();
std::unique_ptr<Command> makeSetupStatusCommand();
std::unique_ptr<Command> makeBatchCommand();
std::unique_ptr<Command> makeLogCommand();

} // namespace ludarium

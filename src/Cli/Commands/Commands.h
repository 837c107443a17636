#pragma once

#include <memory>

namespace ludarium {

class Command;

/// Each is defined in the file of its command.
std::unique_ptr<Command> makeDemoCommand();
std::unique_ptr<Command> makePlatformsCommand();
std::unique_ptr<Command> makeGamesCommand();
std::unique_ptr<Command> makeShowCommand();
std::unique_ptr<Command> makePlaylistsCommand();
std::unique_ptr<Command> makePlayCommand();
std::unique_ptr<Command> makeEmulatorsCommand();
std::unique_ptr<Command> makeLogCommand();

} // namespace ludarium

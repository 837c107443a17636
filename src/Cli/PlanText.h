#pragma once

namespace ludarium {

class Output;
struct Game;
struct LaunchPlan;

/// What a launch would do, for people: route, emulator, arguments, folder, decisions and the text of each file.
void printLaunchPlan(Output &output, const Game &game, const LaunchPlan &plan);

} // namespace ludarium

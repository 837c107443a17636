#pragma once

#include <memory>
#include <vector>

namespace ludarium {

class Command;

/// Every command, in the order of the help text.
std::vector<std::unique_ptr<Command>> makeCommands();

} // namespace ludarium

#pragma once

namespace ludarium {

/// What the command line program tells its caller.
enum ExitStatus { exitDone = 0, exitFailed = 1, exitWrongUsage = 2 };

} // namespace ludarium

#pragma once

#include <QStringList>

namespace ludarium {

/// What bench-window measures in a program of its own; prints a line for each figure, a name and a number.
///   empty                     shows an empty window and leaves
///   start HOME COLLECTION     first line when games are on screen, second with the milliseconds until the splash is
///   gone prepare HOME COLLECTION   loads the collection and leaves a cache use HOME COLLECTION       scrolls,
///   searches, switches views trace HOME COLLECTION     scrolls between two marks for strace
/// Returns the exit status.
int runWindowChild(int argc, char **argv);

} // namespace ludarium

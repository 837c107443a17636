#pragma once

namespace ludarium {

/// Makes the calling thread one that yields to whatever the user waits for, without ever standing still: it may hold a
/// lock that others want. For good, so only for threads that do nothing else.
void lowerThreadPriority();

} // namespace ludarium

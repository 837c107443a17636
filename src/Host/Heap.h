#pragma once

namespace ludarium {

/// Has blocks the size of a thumbnail and larger come from the system one by one and go back to it when they are
/// freed. Among small blocks they would leave holes that nothing fits into: after scrolling through a large library
/// some 20 MB. To be called before anything is allocated.
void keepLargeBlocksApart();

} // namespace ludarium

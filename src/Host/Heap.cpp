#include "Host/Heap.h"

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace ludarium {

void keepLargeBlocksApart() {
#ifdef __GLIBC__
    // A threshold that is set also stays: otherwise it grows to the largest block that was freed.
    constexpr int threshold = 65'536;
    ::mallopt(M_MMAP_THRESHOLD, threshold);
#endif
}

} // namespace ludarium

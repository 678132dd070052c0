#include "platform/linux/process/LargeBlocks.h"

#include <malloc.h>

namespace brimwick {

void returnLargeBlocksWhenFreed() {
    constexpr int largeBytes = 256 * 1024;
    // Setting it also keeps the allocator from raising it with every large block that is freed.
    mallopt(M_MMAP_THRESHOLD, largeBytes);
}

} // namespace brimwick

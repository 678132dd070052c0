#pragma once

namespace brimwick {

/// Has large blocks of memory go back to the system as soon as they are freed: without it the memory that an
/// index was built in stays with the program. To be called first of all.
void returnLargeBlocksWhenFreed();

} // namespace brimwick

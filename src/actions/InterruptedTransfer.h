#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <string>

namespace brimwick {

/// What the journal knows of a transfer by way of a hidden copy. All paths are absolute.
struct InterruptedTransfer {
    std::uint64_t number = 0;
    bool isMove = false;
    std::string source;
    /// Of the folder in which the source lies, and of the target folder: by these they are known again.
    ino_t sourceFolderInode = 0;
    ino_t targetFolderInode = 0;
    /// The hidden copy, as long as it has no name of its own.
    std::string staged;

    /// The name that the complete copy was about to get, the last one tried; empty when it was not complete.
    std::string destination;
    ino_t copyInode = 0;
    std::chrono::nanoseconds completed{}; ///< since the epoch

    /// The hidden name that the source of a move was about to get; empty when it did not come to that.
    std::string claimed;
};

} // namespace brimwick

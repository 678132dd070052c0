#pragma once

#include "actions/FolderMark.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace brimwick {

/// What the journal knows of a transfer by way of a hidden copy. All paths are absolute.
struct InterruptedTransfer {
    std::uint64_t number = 0;
    bool isMove = false;
    std::string source;
    ino_t sourceInode = 0;
    FolderMark sourceFolder;
    FolderMark targetFolder;
    /// The hidden copy, as long as it has no name of its own.
    std::string staged;

    /// The name that the complete copy was about to get, the last one tried; empty when it was not complete.
    std::string destination;
    ino_t copyInode = 0;
    /// A moment before the copy was begun, since the epoch. What has changed since may not be in the copy.
    std::chrono::nanoseconds begun{};

    /// The hidden name that the source of a move was about to get; empty when it did not come to that.
    std::string claimed;
    /// Whether its removal may have begun.
    bool removing = false;
};

} // namespace brimwick

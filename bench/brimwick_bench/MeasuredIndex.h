#pragma once

#include "model/FolderIndex.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace brimwick {

/// An index and what it cost to make it, ready for searching.
struct MeasuredIndex {
    /// Never null.
    std::shared_ptr<const FolderIndex> index;
    double seconds = 0;
    /// Of all threads, in the program and in the system.
    double processorSeconds = 0;
    /// The most memory that the process has ever held.
    std::uint64_t peakBytes = 0;
    /// By how much the heap grew for it.
    std::size_t heapBytes = 0;

    /// All display names together.
    std::size_t nameBytes() const;
    /// What the index holds for a folder besides its name, which is stored twice: as it is and folded.
    double bytesPerFolder() const;
};

/// Walks a folder and indexes all that lies below it.
MeasuredIndex measureIndexOf(const std::string& folder);

} // namespace brimwick

#include "MeasuredIndex.h"

#include "model/FolderIndexer.h"
#include "model/ScannedFolderName.h"

#include <malloc.h>
#include <sys/resource.h>

#include <chrono>
#include <fstream>
#include <string>
#include <string_view>

namespace brimwick {
namespace {

double inSeconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

rusage resourcesUsed() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return used;
}

double processorSeconds() {
    const rusage used = resourcesUsed();
    return inSeconds(used.ru_utime) + inSeconds(used.ru_stime);
}

/// What is allocated now, in the arenas of all threads and in mappings of their own.
std::size_t heapInUse() {
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

/// Of this program alone: what getrusage tells reaches back to the one that started it.
std::uint64_t peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        std::uint64_t kilobytes = 0;
        if (word == "VmHWM:" && status >> kilobytes) return kilobytes * 1024;
    }
    return 0;
}

} // namespace

std::size_t MeasuredIndex::nameBytes() const {
    std::size_t bytes = 0;
    for (FolderNumber folder = 0; folder < index->size(); ++folder)
        bytes += index->displayName(folder).size();
    return bytes;
}

double MeasuredIndex::bytesPerFolder() const {
    const double besideNames = static_cast<double>(heapBytes) - 2.0 * static_cast<double>(nameBytes());
    return besideNames / static_cast<double>(index->size());
}

MeasuredIndex measureIndexOf(const std::string& folder) {
    const std::size_t heapBefore = heapInUse();
    const double processorBefore = processorSeconds();
    const auto start = std::chrono::steady_clock::now();

    MeasuredIndex measured;
    ScannedFolderName scanned;
    measured.index = indexOfFolders({folder}, [&scanned](std::string_view name) { scanned.set(name); }, {});

    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    measured.seconds = taken.count();
    measured.processorSeconds = processorSeconds() - processorBefore;
    measured.heapBytes = heapInUse() - heapBefore;
    measured.peakBytes = peakMemory();
    return measured;
}

} // namespace brimwick

#include "model/FoldedNames.h"

#include "model/NameFolding.h"
#include "model/NameScan.h"
#include "model/Parallel.h"

#include <algorithm>
#include <utility>

namespace brimwick {
namespace {

std::string foldedInOrder(const FolderTree& folders, const FolderNumber* first, const FolderNumber* end) {
    std::string names;
    for (; first != end; ++first) {
        appendFoldedName(folders.displayName(*first), names);
        names += '\0';
    }
    return names;
}

} // namespace

FoldedNames::FoldedNames(const FolderTree& folders, std::vector<FolderNumber> order)
    : order_(std::move(order)) {
    const unsigned threads = threadsForNames(order_.size());
    std::vector<std::string> parts(threads);
    inParallel(threads, [&](unsigned number) {
        const FolderNumber* const first = order_.data();
        parts[number] = foldedInOrder(folders, first + order_.size() * number / threads,
                                      first + order_.size() * (number + 1) / threads);
    });
    for (const std::string& part : parts) size_ += part.size();
    names_.reserve(size_ + scanPaddingBytes);
    for (std::string& part : parts) {
        names_ += part;
        part = {};
    }
    names_.append(scanPaddingBytes, '\0');
    order_.reserve(order_.size() + scanPaddingFolders);
    order_.resize(order_.size() + scanPaddingFolders);
    countNamesByBlock();
}

void FoldedNames::countNamesByBlock() {
    namesBeforeBlock_.reserve(size_ / scanBlockBytes + 1);
    std::uint32_t names = 0;
    for (std::size_t block = 0; block < size_; block += scanBlockBytes) {
        namesBeforeBlock_.push_back(names);
        const auto start = names_.begin() + static_cast<std::ptrdiff_t>(block);
        const auto end = start + static_cast<std::ptrdiff_t>(std::min(scanBlockBytes, size_ - block));
        names += static_cast<std::uint32_t>(std::count(start, end, '\0'));
        // A block in sixteen tells enough.
        if (block / scanBlockBytes % 16 == 0)
            for (auto byte = start; byte != end; ++byte) ++frequencies_[static_cast<unsigned char>(*byte)];
    }
}

void FoldedNames::find(std::string_view folded, std::vector<FolderNumber>& found) const {
    if (folded.empty() || folded.find('\0') != std::string_view::npos) return;

    std::array<std::size_t, mostProbedBytes> places{};
    const std::size_t probed = std::min(folded.size(), mostProbedBytes);
    for (std::size_t place = 0; place < probed; ++place) places[place] = place;
    const auto rarer = [this, folded](std::size_t left, std::size_t right) {
        return frequencies_[static_cast<unsigned char>(folded[left])] <
               frequencies_[static_cast<unsigned char>(folded[right])];
    };
    ScanText text{folded};
    std::partial_sort(places.begin(),
                      places.begin() + static_cast<std::ptrdiff_t>(std::min(probed, text.probes.size())),
                      places.begin() + static_cast<std::ptrdiff_t>(probed), rarer);
    for (std::size_t i = 0; i < text.probes.size(); ++i) text.probes[i] = places[std::min(i, probed - 1)];

    const std::size_t middle = blockInTheMiddle();
    if (middle == 0) return scan(text, 0, size_, found);
    std::vector<FolderNumber> later;
    inParallel(2, [&](unsigned number) {
        if (number == 0)
            scan(text, 0, middle * scanBlockBytes, found);
        else
            scan(text, middle, size_, later);
    });
    found.insert(found.end(), later.begin(), later.end());
}

/// One that begins with a name, so that what lies before it can be scanned by itself; 0 for none, and where
/// another thread is not worth it.
std::size_t FoldedNames::blockInTheMiddle() const {
    constexpr std::size_t bytesWorthAThread = std::size_t{1} << 20U;
    if (size_ < bytesWorthAThread || usualThreads() == 1) return 0;
    const std::size_t blocks = size_ / scanBlockBytes;
    for (std::size_t block = blocks / 2; block < blocks; ++block)
        if (names_[block * scanBlockBytes - 1] == '\0') return block;
    return 0;
}

void FoldedNames::scan(const ScanText& text, std::size_t firstBlock, std::size_t end,
                       std::vector<FolderNumber>& found) const {
    const ScannedNames names{names_.data(), end, namesBeforeBlock_.data(), order_.data()};
    ScanPosition position{.block = firstBlock, .isInHit = false};
    std::array<FolderNumber, mostScannedAtOnce> some;
    while (const std::size_t count = scanNames(names, text, position, some))
        found.insert(found.end(), some.begin(), some.begin() + static_cast<std::ptrdiff_t>(count));
}

} // namespace brimwick

#include "model/NameOrder.h"

#include "model/Parallel.h"

#include <algorithm>
#include <array>
#include <span>

namespace brimwick {
namespace {

/// Longer than file names are. What is equal up to here is compared whole.
constexpr std::size_t mostBytesByPieces = 1024;

/// A folder with a piece of its name as a number that orders as the bytes do; NUL stands for those after the
/// end, which no name contains.
struct Named {
    std::uint64_t piece;
    FolderNumber folder;
};

bool isBefore(const Named& left, const Named& right) {
    return left.piece != right.piece ? left.piece < right.piece : left.folder < right.folder;
}

std::uint64_t pieceOf(std::string_view name, std::size_t start) {
    std::uint64_t piece = 0;
    for (std::size_t i = 0; i < sizeof piece; ++i)
        piece = piece << 8 | (start + i < name.size() ? static_cast<unsigned char>(name[start + i]) : 0U);
    return piece;
}

bool endsInside(std::uint64_t piece) {
    return (piece & 0xFF) == 0;
}

void sortWhole(const FolderTree& folders, std::span<Named> names) {
    std::ranges::sort(names, [&folders](const Named& left, const Named& right) {
        const int order = folders.displayName(left.folder).compare(folders.displayName(right.folder));
        return order != 0 ? order < 0 : left.folder < right.folder;
    });
}

/// Sorts by the piece that starts at a byte of the names, and what is equal by those behind it. Everything
/// before the piece is equal.
void sortFrom(const FolderTree& folders, std::span<Named> names, std::size_t start) {
    if (start >= mostBytesByPieces) return sortWhole(folders, names);
    std::ranges::sort(names, isBefore);
    for (std::size_t first = 0; first < names.size();) {
        std::size_t end = first + 1;
        while (end < names.size() && names[end].piece == names[first].piece) ++end;
        if (end - first > 1 && !endsInside(names[first].piece)) {
            const std::span equal = names.subspan(first, end - first);
            const std::size_t next = start + sizeof names[first].piece;
            for (Named& name : equal) name.piece = pieceOf(folders.displayName(name.folder), next);
            sortFrom(folders, equal, next);
        }
        first = end;
    }
}

/// Puts the names whose first piece is below one from the middle in front; yields how many these are.
std::size_t splitInTwo(std::span<Named> names) {
    std::array<std::uint64_t, 255> sample{};
    for (std::size_t i = 0; i < sample.size(); ++i) sample[i] = names[i * names.size() / sample.size()].piece;
    std::ranges::nth_element(sample, sample.begin() + sample.size() / 2);
    const std::uint64_t middle = sample[sample.size() / 2];
    const auto behind = std::ranges::partition(names, [middle](const Named& n) { return n.piece < middle; });
    return names.size() - behind.size();
}

void sortByName(const FolderTree& folders, std::span<Named> names, unsigned threads) {
    if (threads < 2 || threadsForNames(names.size()) < 2) return sortFrom(folders, names, 0);
    const std::size_t half = splitInTwo(names);
    inParallel(2, [&](unsigned number) {
        sortByName(folders, number == 0 ? names.first(half) : names.subspan(half), threads / 2);
    });
}

} // namespace

std::vector<FolderNumber> foldersByName(const FolderTree& folders) {
    std::vector<Named> names;
    names.reserve(folders.size());
    for (FolderNumber folder = 0; folder < folders.size(); ++folder)
        if (const std::string_view name = folders.displayName(folder); !name.empty())
            names.push_back({pieceOf(name, 0), folder});
    sortByName(folders, names, usualThreads());

    std::vector<FolderNumber> order;
    order.reserve(names.size());
    for (const Named& name : names) order.push_back(name.folder);
    return order;
}

} // namespace brimwick

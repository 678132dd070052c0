#pragma once

#include "platform/ports/FolderList.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brimwick {

/// Names lie in memory one after the other, each closed by a NUL. They are scanned in blocks of this many
/// bytes.
inline constexpr std::size_t scanBlockBytes = 64;
/// So many blocks are scanned for the probes before the whole text is looked for.
inline constexpr std::size_t blocksAtOnce = 64;
/// A block ends no more names than it has bytes.
inline constexpr std::size_t mostScannedAtOnce = blocksAtOnce * scanBlockBytes;
/// So many numbers must follow those of the folders: in the last block the padding looks like ends of names.
inline constexpr std::size_t scanPaddingFolders = scanBlockBytes;
/// A probe lies in these first bytes of the text.
inline constexpr std::size_t mostProbedBytes = 32;
/// So many NULs must follow the last name.
inline constexpr std::size_t scanPaddingBytes = scanBlockBytes + mostProbedBytes;

/// Names to be scanned.
struct ScannedNames {
    const char* bytes = nullptr;
    /// Without the padding.
    std::size_t size = 0;
    /// For every block, how many names end before it.
    const std::uint32_t* namesBeforeBlock = nullptr;
    /// The folders that the names are of, in the same order, with what must follow them.
    const FolderNumber* folders = nullptr;
};

/// A text without NULs, not empty, and the places in it that are looked at first.
struct ScanText {
    std::string_view text;
    std::array<std::size_t, 3> probes{};
};

/// How far a scan has come.
struct ScanPosition {
    std::size_t block = 0;
    /// The name that the block begins in holds the text before the block.
    bool isInHit = false;
};

/// Goes on with a scan for the folders whose names contain the text, in the order of the names, each once.
/// Yields how many it has put into `found`; the scan is over when there are none.
std::size_t scanNames(const ScannedNames& names, const ScanText& text, ScanPosition& position,
                      std::array<FolderNumber, mostScannedAtOnce>& found);

} // namespace brimwick

#pragma once

#include "platform/ports/FolderList.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brimwick {

/// Names lie in memory one after the other, each closed by a NUL. They are scanned in blocks of this many
/// bytes.
inline constexpr std::size_t scanBlockBytes = 64;
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
    /// The folders that the names are of, in the same order.
    const FolderNumber* folders = nullptr;
};

/// A text without NULs, not empty, and the two places in it that are looked at first.
struct ScanText {
    std::string_view text;
    std::size_t firstProbe = 0;
    std::size_t secondProbe = 0;
};

/// How far a scan has come.
struct ScanPosition {
    std::size_t block = 0;
    /// The name that the block begins in holds the text before the block.
    bool isInHit = false;
};

/// Goes on with a scan for the folders whose names contain the text, in the order of the names, each once.
/// Writes them to `found`, which has room for `room`, at least one block's; yields how many these are. The
/// scan is over when none are left for the position to come to: 0 was yielded.
std::size_t scanNames(const ScannedNames& names, const ScanText& text, ScanPosition& position,
                      FolderNumber* found, std::size_t room);

} // namespace brimwick

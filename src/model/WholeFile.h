#pragma once

#include <tl/expected.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace brimwick {

/// The content of a regular file of at most `maximumSize` bytes; never waits for anything else that may lie
/// at the path. The error is the reason.
tl::expected<std::string, std::string> readWholeFile(const std::string& path, std::size_t maximumSize);

/// Writes everything to an open descriptor, however many calls that takes; false, with errno set, when it
/// cannot.
bool writeAll(int descriptor, std::string_view content);

/// Replaces the file, or the one that a symbolic link there leads to, in one step that survives a crash: the
/// old content or the new lies there, never a part. Keeps the permissions of the old file; a new one is its
/// owner's alone. The error is the reason, and then nothing has changed.
tl::expected<void, std::string> writeWholeFile(const std::string& path, std::string_view content);

/// The path that a chain of symbolic links at `path` leads to, whether or not something lies there; `path`
/// itself when it is no link, or when the links go in a circle.
std::string endOfSymbolicLinks(const std::string& path);

} // namespace brimwick

#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace brimwick {

/// "1.2 GB of 3.4 GB, 56 MB/s, about 2 minutes left", as far as anything can be said: without a total (0) how
/// much was copied, nothing before the first byte, and in the end that the disk is waited for.
std::string progressText(std::int64_t bytes, std::int64_t totalBytes, std::chrono::milliseconds elapsed);

} // namespace brimwick

#pragma once

#include <string>

namespace brimwick {

/// Gives the content of the file a second name beside it, "NAME.corrupt-TIME.EXTENSION", so that replacing
/// the file loses nothing; never takes a name that exists. Does nothing for what is no file or is empty.
/// False when the content could not be kept.
bool keepCorruptFileAside(const std::string& path);

} // namespace brimwick

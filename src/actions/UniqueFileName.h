#pragma once

#include <string>

namespace brimwick {

/// An absolute path in the same folder at which nothing lies: "Report.pdf" becomes "Report(1).pdf".
///
/// The numbers count on through the whole life of the process, whatever is numbered: each candidate takes the
/// next one. One thread at a time.
std::string uniquePath(const std::string& takenPath);

/// Whether anything lies there, a dangling symbolic link included.
bool somethingLiesAt(const std::string& path);

} // namespace brimwick

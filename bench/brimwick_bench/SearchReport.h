#pragma once

#include "model/FolderIndex.h"

#include <string>
#include <vector>

namespace brimwick {

/// Searches for every query many times and prints a JSON line about each, then one with the time of a
/// counting pass over the folded names, which no search can be faster than.
void printSearchReport(const FolderIndex& index, const std::vector<std::string>& queries);

} // namespace brimwick

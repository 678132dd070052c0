#pragma once

#include "platform/ports/FolderRules.h"

#include <string>

namespace brimwick {

/// The folder that an absolute path lies in; "/" for "/".
std::string parentOf(const std::string& path);

/// Whether the path is that of the folder or lies below it.
bool isSameOrBelow(const std::string& path, const std::string& folder);

/// Whether a walk of the folder leads to the path: it is the folder, or lies below it under names that are
/// taken up.
bool leadsTo(const std::string& folder, const std::string& path, const FolderRules& rules);

} // namespace brimwick

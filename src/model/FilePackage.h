#pragma once

#include <string_view>

namespace brimwick {

/// Whether a folder of this name is shown as one document: by its extension, in capitals or not.
bool isFilePackageName(std::string_view name);

} // namespace brimwick

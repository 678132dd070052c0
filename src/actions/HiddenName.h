#pragma once

#include <string>
#include <string_view>

namespace brimwick {

/// A hexadecimal text of 16 digits that nobody has used before.
std::string randomText();

/// ".brimwick-<pid>-<random>.<ending>": a name that nobody else uses, for an item that is not yet, or no
/// longer, the user's.
std::string hiddenName(std::string_view ending);
/// Whether a name is such a one.
bool isHiddenName(std::string_view name, std::string_view ending);

} // namespace brimwick

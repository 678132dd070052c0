#pragma once

#include <optional>
#include <string>

namespace brimwick {

/// Why no window can be shown here, as one line for the user; nothing when one can, as far as that shows
/// before the application object is made, which ends the program where it finds no display.
std::optional<std::string> displayRefusal();

} // namespace brimwick

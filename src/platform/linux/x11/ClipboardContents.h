#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace brimwick {

/// One form in which the clipboard is offered.
struct ClipboardItem {
    /// The name that a reader asks for, such as "text/uri-list" or "UTF8_STRING".
    std::string target;
    /// What the answer says it is; mostly the same name.
    std::string type;
    /// Bits of one unit: 8, 16 or 32.
    std::uint8_t format = 8;
    std::string bytes;
};

/// Everything that the clipboard offered, in its owner's order.
using ClipboardContents = std::vector<ClipboardItem>;

} // namespace brimwick

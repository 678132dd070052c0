#include "hotkeys/BWHotKey.h"

#include <array>
#include <sstream>
#include <string_view>
#include <utility>

namespace brimwick {

namespace {

using NamedFlag = std::pair<std::uint64_t, std::string_view>;

constexpr std::array<NamedFlag, 4> namedFlags{{{ModifierFlag::control, "NSControlKeyMask"},
                                               {ModifierFlag::command, "NSCommandKeyMask"},
                                               {ModifierFlag::shift, "NSShiftKeyMask"},
                                               {ModifierFlag::option, "NSAlternateKeyMask"}}};

std::string flagText(std::uint64_t modifierFlags) {
    std::string names;
    for (const auto& [flag, name] : namedFlags) {
        if ((modifierFlags & flag) == 0) continue;
        if (!names.empty()) names += " | ";
        names += name;
    }
    return names.empty() ? "ERROR: No valid flags" : "(" + names + ")";
}

std::string invocationText(const BWHotKey& hotKey) {
    const auto target = hotKey.target();
    if (!target || hotKey.action().empty()) return "(block)";
    return "[" + target->description() + " " + hotKey.action() + "]";
}

} // namespace

std::string BWHotKey::description() const {
    std::ostringstream text;
    text << "<BWHotKey: " << static_cast<const void*>(this) << ">\n\t(key: " << keyCode()
         << "\n\tflags: " << flagText(modifierFlags()) << "\n\tinvokes: " << invocationText(*this) << ')';
    return text.str();
}

} // namespace brimwick

#include "platform/linux/DisplayAccess.h"

#include "platform/linux/x11/XcbConnection.h"

#include <cstdlib>

namespace brimwick {
namespace {

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

} // namespace

std::optional<std::string> displayRefusal() {
    const std::string platform = environment("QT_QPA_PLATFORM");
    const bool mayUseAnother = platform.empty() && !environment("WAYLAND_DISPLAY").empty();
    if (mayUseAnother || (!platform.empty() && platform != "xcb")) return std::nullopt;
    const std::string display = environment("DISPLAY");
    if (display.empty()) return "there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set";
    if (!XcbConnection::connect()) return "the display " + display + " cannot be opened";
    return std::nullopt;
}

} // namespace brimwick

#pragma once

#include "platform/linux/x11/XcbConnection.h"

namespace brimwick {

/// Types into other programs' windows in the user's place. Every function may be called from any thread that
/// uses the connection.
namespace KeySynthesis {

/// Whether the X server takes keys from programs.
bool isPossible(XcbConnection& connection);

/// Presses Ctrl+C in the window, whatever modifiers are held down. False, with no key sent, unless the window
/// is active, has the keyboard focus, and nobody holds the keyboard.
bool pressCopy(XcbConnection& connection, xcb_window_t window);

} // namespace KeySynthesis
} // namespace brimwick

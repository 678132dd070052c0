#pragma once

#include "platform/linux/x11/XcbConnection.h"

namespace brimwick {

/// Which keys do what on the keyboard as it is now.
namespace KeyboardKeys {

/// A key that acts as Control.
xcb_keycode_t controlKey(XcbConnection& connection);
/// The key that types "c" in the layout in use; where that has none, in another layout of the keyboard, else
/// by its usual place.
xcb_keycode_t keyOfLetterC(XcbConnection& connection);
/// The modifier keys that are held down, on whatever device.
std::vector<xcb_keycode_t> heldModifiers(XcbConnection& connection);

} // namespace KeyboardKeys
} // namespace brimwick

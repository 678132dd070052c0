#pragma once

#include "platform/linux/x11/XcbConnection.h"

namespace brimwick {

/// Whether keys go to this window: the window manager calls it active, and the focus is on it or inside it.
bool hasKeyboardFocus(XcbConnection& connection, xcb_window_t window);

} // namespace brimwick

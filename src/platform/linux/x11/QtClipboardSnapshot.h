#pragma once

#include "platform/linux/x11/ClipboardContents.h"

#include <optional>

namespace brimwick {

/// What the application's own clipboard offers: every format of its data, text under the names that X clients
/// ask for, an image as PNG. Nothing when another program owns the clipboard. Main thread, with an
/// application object.
std::optional<ClipboardContents> qtClipboardSnapshot();

} // namespace brimwick

#pragma once

#include "platform/ports/KeyboardLayout.h"

#include <QKeySequence>

namespace brimwick {

/// A hot key as a menu shows it, by what the layout prints on its key; empty for a key that types nothing.
QKeySequence menuShortcut(KeyboardLayout& layout, std::uint16_t keyCode, std::uint64_t modifierFlags);

} // namespace brimwick

#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace brimwick {

/// What a key types.
struct KeyTranslation {
    /// 0 for success; else the number of the error, and the two texts say what it is.
    int status = 0;
    std::string errorName;
    std::string errorComment;
    /// In UTF-16; empty for a key that types nothing, as a dead key does. Keys that move or delete yield the
    /// characters 0xF700 to 0xF747 and the control characters that stand for them.
    std::u16string text;
    /// What a dead key leaves behind for the next key; 0 for none.
    std::uint32_t deadKeyState = 0;
};

/// The keyboard layout in use. Main thread only.
class KeyboardLayout {
  public:
    virtual ~KeyboardLayout() = default;

    /// False where no layout can be read; nothing is translated then.
    virtual bool isAvailable() const = 0;
    /// A press of the virtual key code, with these `ModifierFlag` bits, of which only Shift need count, after
    /// the dead key that left this state.
    virtual KeyTranslation translate(std::uint16_t keyCode, std::uint64_t modifierFlags,
                                     std::uint32_t deadKeyState) = 0;
    /// Called after the user changed the layout.
    virtual void setChangedHandler(std::function<void()> handler) = 0;
};

} // namespace brimwick

#pragma once

#include "platform/ports/KeyboardLayout.h"

#include <map>
#include <tuple>

namespace brimwick {

/// A layout of the keys that the test puts on it.
class FakeKeyboardLayout : public KeyboardLayout {
  public:
    bool isAvailable() const override { return available; }
    KeyTranslation translate(std::uint16_t keyCode, std::uint64_t modifierFlags,
                             std::uint32_t deadKeyState) override {
        const auto key = keys.find({keyCode, modifierFlags, deadKeyState});
        return key == keys.end() ? KeyTranslation() : key->second;
    }
    void setChangedHandler(std::function<void()> handler) override { changed_ = std::move(handler); }

    void put(std::uint16_t keyCode, std::u16string text, std::uint64_t modifierFlags = 0,
             std::uint32_t deadKeyState = 0) {
        keys[{keyCode, modifierFlags, deadKeyState}].text = std::move(text);
    }
    void putDeadKey(std::uint16_t keyCode, std::uint32_t state) {
        keys[{keyCode, 0, 0}].deadKeyState = state;
    }
    /// As though the user changed the layout to what is on it now.
    void change() const {
        if (changed_) changed_();
    }

    bool available = true;
    std::map<std::tuple<std::uint16_t, std::uint64_t, std::uint32_t>, KeyTranslation> keys;

  private:
    std::function<void()> changed_;
};

} // namespace brimwick

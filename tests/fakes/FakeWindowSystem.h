#pragma once

#include "platform/ports/WindowSystem.h"

#include <string>
#include <vector>

namespace brimwick {

/// Keeps what was asked of the desktop about our windows, in order.
class FakeWindowSystem : public WindowSystem {
  public:
    std::optional<FrameMargins> frameMargins(WindowNumber /*window*/) override { return margins; }
    void prepareToShow(WindowNumber /*window*/) override { calls.emplace_back("prepareToShow"); }
    void makeKeyAndOrderFront(WindowNumber /*window*/) override {
        calls.emplace_back("makeKeyAndOrderFront");
    }
    bool hasKeyboardFocus(WindowNumber window) override { return window == focused; }
    void withholdHeldKeys() override { calls.emplace_back("withholdHeldKeys"); }

    std::optional<FrameMargins> margins;
    std::optional<WindowNumber> focused;
    std::vector<std::string> calls;
};

} // namespace brimwick

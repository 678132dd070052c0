#pragma once

#include "platform/ports/MainLoop.h"

#include <cstdint>
#include <string>

namespace brimwick {

/// The label below the field of one hot key.
class HotKeyErrorLabel {
  public:
    virtual ~HotKeyErrorLabel() = default;
    /// Unhides the label with this text, in whatever colour it has.
    virtual void showMessage(const std::string& message) = 0;
    virtual void setAlpha(double alpha) = 0;
    /// Hides the label, and makes it plain red again.
    virtual void hideMessage() = 0;
};

/// A message that fades away in about five seconds. Main thread only.
class HotKeyErrorMessage {
  public:
    /// Both outlive the message.
    HotKeyErrorMessage(MainLoop& mainLoop, HotKeyErrorLabel& label) : mainLoop_(mainLoop), label_(label) {}
    HotKeyErrorMessage(const HotKeyErrorMessage&) = delete;
    HotKeyErrorMessage& operator=(const HotKeyErrorMessage&) = delete;

    /// Shows a message; its fade starts anew.
    void show(const std::string& message);

  private:
    void fade();

    MainLoop& mainLoop_;
    HotKeyErrorLabel& label_;
    std::int32_t count_ = 0;
    std::unique_ptr<RepeatingTimer> timer_;
};

} // namespace brimwick

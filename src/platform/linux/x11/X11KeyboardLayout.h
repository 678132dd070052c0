#pragma once

#include "platform/linux/x11/XcbEventSource.h"
#include "platform/linux/x11/XkbKeymap.h"
#include "platform/ports/KeyboardLayout.h"

#include <QTimer>

#include <optional>

namespace brimwick {

/// The layout that the X server has on, over a connection of its own, and what becomes of it.
class X11KeyboardLayout : public KeyboardLayout {
  public:
    X11KeyboardLayout();

    bool isAvailable() const override { return keymap_ && keymap_->isAvailable(); }
    KeyTranslation translate(std::uint16_t keyCode, std::uint64_t modifierFlags,
                             std::uint32_t deadKeyState) override;
    void setChangedHandler(std::function<void()> handler) override { changed_ = std::move(handler); }

  private:
    void handle(const xcb_generic_event_t& event);
    void readAnew();

    std::unique_ptr<XcbConnection> connection_;
    std::optional<XkbKeymap> keymap_;
    std::uint8_t firstKeyboardEvent_ = 0;
    QTimer settled_;
    std::function<void()> changed_;
    std::unique_ptr<XcbEventSource> events_;
};

} // namespace brimwick

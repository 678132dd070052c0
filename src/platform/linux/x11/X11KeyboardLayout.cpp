#include "platform/linux/x11/X11KeyboardLayout.h"

#include "platform/linux/x11/FunctionCharacters.h"
#include "platform/linux/x11/KeyboardExtension.h"
#include "platform/linux/x11/XcbEvents.h"
#include "platform/ports/ModifierFlags.h"
#include "platform/ports/VirtualKeyCodes.h"

#include <QString>

#include <chrono>

namespace brimwick {

X11KeyboardLayout::X11KeyboardLayout() : connection_(XcbConnection::connect()) {
    if (!connection_) return;
    const auto extension = KeyboardExtension::use(*connection_);
    if (!extension) return;
    firstKeyboardEvent_ = extension->firstEvent();
    extension->selectLayoutEvents();
    keymap_.emplace(*connection_);
    settled_.setSingleShot(true);
    settled_.setInterval(mappingSettleTime);
    QObject::connect(&settled_, &QTimer::timeout, &settled_, [this] { readAnew(); });
    events_ = std::make_unique<XcbEventSource>(*connection_,
                                               [this](const xcb_generic_event_t& event) { handle(event); });
}

void X11KeyboardLayout::handle(const xcb_generic_event_t& event) {
    const std::uint8_t type = eventType(event);
    if (type == XCB_MAPPING_NOTIFY || type == firstKeyboardEvent_) settled_.start();
}

void X11KeyboardLayout::readAnew() {
    keymap_->readAnew(*connection_);
    if (changed_) changed_();
}

KeyTranslation X11KeyboardLayout::translate(std::uint16_t keyCode, std::uint64_t modifierFlags,
                                            std::uint32_t deadKeyState) {
    const auto key = scanCodeOfVirtualKeyCode(keyCode);
    if (!isAvailable() || !key) return {};
    const bool shift = (modifierFlags & ModifierFlag::shift) != 0;
    const xkb_keysym_t symbol = keymap_->symbol(*key, shift);
    KeyTranslation translation;
    if (const auto character = functionCharacter(symbol)) {
        translation.text = *character;
        return translation;
    }
    const XkbKeymap::Composed composed = keymap_->compose(deadKeyState, symbol);
    translation.text = QString::fromStdString(composed.text).toStdU16String();
    translation.deadKeyState = composed.waiting;
    return translation;
}

} // namespace brimwick

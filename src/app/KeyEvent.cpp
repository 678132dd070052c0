#include "app/KeyEvent.h"

#include "hotkeys/BWHotKeyCenter.h"
#include "platform/ports/VirtualKeyCodes.h"

#include <QKeyEvent>

#include <array>
#include <optional>
#include <utility>

namespace brimwick {

namespace {

/// Scan codes count from here on the desktops that give them.
constexpr std::uint32_t scanCodeOffset = 8;

using KeyOfQt = std::pair<int, std::uint16_t>;

constexpr std::array<KeyOfQt, 7> windowShortcuts{{{Qt::Key_A, KeyCode::a},
                                                  {Qt::Key_Z, KeyCode::z},
                                                  {Qt::Key_X, KeyCode::x},
                                                  {Qt::Key_C, KeyCode::c},
                                                  {Qt::Key_V, KeyCode::v},
                                                  {Qt::Key_W, KeyCode::w},
                                                  {Qt::Key_Comma, KeyCode::comma}}};

/// Keys that a virtual keyboard may send without a scan code.
constexpr std::array<KeyOfQt, 7> namedKeys{{{Qt::Key_Return, KeyCode::returnKey},
                                            {Qt::Key_Enter, KeyCode::keypadEnter},
                                            {Qt::Key_Escape, KeyCode::escape},
                                            {Qt::Key_PageUp, KeyCode::pageUp},
                                            {Qt::Key_PageDown, KeyCode::pageDown},
                                            {Qt::Key_Down, KeyCode::downArrow},
                                            {Qt::Key_Up, KeyCode::upArrow}}};

template<std::size_t size>
std::optional<std::uint16_t> lookUp(const std::array<KeyOfQt, size>& keys, int key) {
    for (const auto& [qtKey, keyCode] : keys)
        if (qtKey == key) return keyCode;
    return std::nullopt;
}

std::uint16_t keyCodeByPlace(const QKeyEvent& event) {
    const std::uint32_t scanCode = event.nativeScanCode();
    if (scanCode < scanCodeOffset) return lookUp(namedKeys, event.key()).value_or(KeyCode::unknown);
    return virtualKeyCodeOfEvdevCode(scanCode - scanCodeOffset).value_or(KeyCode::unknown);
}

} // namespace

KeyEvent keyEvent(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers();
    KeyEvent translated{keyCodeByPlace(event), 0};
    if (held.testFlag(Qt::ShiftModifier)) translated.modifierFlags |= ModifierFlag::shift;
    if (held.testFlag(Qt::ControlModifier)) translated.modifierFlags |= ModifierFlag::control;
    if (held.testFlag(Qt::AltModifier)) translated.modifierFlags |= ModifierFlag::option;
    if (held.testFlag(Qt::MetaModifier)) translated.modifierFlags |= ModifierFlag::command;

    if ((held & ~Qt::KeypadModifier) == Qt::ControlModifier) {
        if (const auto letter = lookUp(windowShortcuts, event.key())) {
            translated.keyCode = *letter;
            translated.modifierFlags = ModifierFlag::command;
        }
    }
    return translated;
}

} // namespace brimwick

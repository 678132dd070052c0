#include "app/KeyEventReader.h"

#include "hotkeys/HotKeyText.h"
#include "platform/ports/VirtualKeyCodes.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace brimwick {

namespace {

/// The bit of caps lock in the modifiers that the desktop gives.
constexpr quint32 nativeLock = 1U << 1U;
/// Set wherever a modifier is.
constexpr std::uint64_t withModifiers = 0x100;
constexpr std::uint64_t capsLock = 0x10000;

using KeyOfQt = std::pair<int, std::uint16_t>;

constexpr std::array<KeyOfQt, 7> windowShortcuts{{{Qt::Key_A, KeyCode::a},
                                                  {Qt::Key_Z, KeyCode::z},
                                                  {Qt::Key_X, KeyCode::x},
                                                  {Qt::Key_C, KeyCode::c},
                                                  {Qt::Key_V, KeyCode::v},
                                                  {Qt::Key_W, KeyCode::w},
                                                  {Qt::Key_Comma, KeyCode::comma}}};

/// Keys that have their meaning wherever they are; a virtual keyboard may send them without a scan code.
constexpr std::array<KeyOfQt, 10> namedKeys{{{Qt::Key_Return, KeyCode::returnKey},
                                             {Qt::Key_Enter, KeyCode::keypadEnter},
                                             {Qt::Key_Escape, KeyCode::escape},
                                             {Qt::Key_PageUp, KeyCode::pageUp},
                                             {Qt::Key_PageDown, KeyCode::pageDown},
                                             {Qt::Key_Down, KeyCode::downArrow},
                                             {Qt::Key_Up, KeyCode::upArrow},
                                             {Qt::Key_Tab, KeyCode::tab},
                                             {Qt::Key_Backtab, KeyCode::tab},
                                             {Qt::Key_Space, KeyCode::space}}};

/// A modifier, and the bits that tell which of its two keys is held.
struct Modifier {
    Qt::KeyboardModifier qtModifier;
    std::uint64_t flag;
    std::uint64_t left;
    std::uint64_t right;
    std::uint16_t rightKey;
};

constexpr std::array<Modifier, 4> modifiers{{{Qt::ShiftModifier, ModifierFlag::shift, 0x2, 0x4, 60},
                                             {Qt::ControlModifier, ModifierFlag::control, 0x1, 0x2000, 62},
                                             {Qt::AltModifier, ModifierFlag::option, 0x20, 0x40, 61},
                                             {Qt::MetaModifier, ModifierFlag::command, 0x8, 0x10, 54}}};

template<std::size_t size>
std::optional<std::uint16_t> lookUp(const std::array<KeyOfQt, size>& keys, int key) {
    for (const auto& [qtKey, keyCode] : keys)
        if (qtKey == key) return keyCode;
    return std::nullopt;
}

bool hasName(std::uint16_t keyCode) {
    return std::ranges::find(namedKeys, keyCode, &KeyOfQt::second) != namedKeys.end();
}

/// By its place, but for the keys that a user may have moved, such as Escape to where caps lock was: what
/// these are called is what they are. None of them can become a hot key, which goes by its place.
std::uint16_t keyCodeOf(const QKeyEvent& event) {
    if (const auto byName = lookUp(namedKeys, event.key())) return *byName;
    const std::uint16_t byPlace = virtualKeyCodeOfScanCode(event.nativeScanCode()).value_or(KeyCode::unknown);
    return hasName(byPlace) ? KeyCode::unknown : byPlace;
}

} // namespace

bool KeyEventReader::isModifierKey(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
        return true;
    default:
        return false;
    }
}

std::uint64_t KeyEventReader::modifierFlags(const QKeyEvent& event) const {
    std::uint64_t flags = 0;
    for (const Modifier& modifier : modifiers) {
        if (!event.modifiers().testFlag(modifier.qtModifier)) continue;
        // One that went down before the window had the keyboard counts as the left one.
        const bool isRight = (rightModifiers_ & modifier.right) != 0;
        flags |= withModifiers | modifier.flag | (isRight ? modifier.right : modifier.left);
    }
    if ((event.nativeModifiers() & nativeLock) != 0) flags |= withModifiers | capsLock;
    return flags;
}

KeyEvent KeyEventReader::read(const QKeyEvent& event) {
    KeyEvent key;
    key.type = event.type() == QEvent::KeyRelease ? KeyEventType::keyUp : KeyEventType::keyDown;
    key.keyCode = keyCodeOf(event);
    const auto right = std::ranges::find(modifiers, key.keyCode, &Modifier::rightKey);
    if (right != modifiers.end()) {
        if (key.type == KeyEventType::keyUp)
            rightModifiers_ &= ~right->right;
        else
            rightModifiers_ |= right->right;
    }
    // One that went up while another program had the keyboard is not held any more.
    for (const Modifier& modifier : modifiers)
        if (right == modifiers.end() && !event.modifiers().testFlag(modifier.qtModifier))
            rightModifiers_ &= ~modifier.right;
    key.modifierFlags = modifierFlags(event);
    key.isARepeat = event.isAutoRepeat();
    key.timestamp = static_cast<std::uint32_t>(event.timestamp());
    key.charactersIgnoringModifiers =
        charactersOfKey(layout_, key.keyCode, key.modifierFlags & ModifierFlag::shift);
    if (!layout_.isAvailable() && event.key() < Qt::Key_Escape)
        key.charactersIgnoringModifiers = static_cast<char16_t>(event.key());
    if ((event.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier)
        key.windowShortcut = lookUp(windowShortcuts, event.key()).value_or(KeyCode::unknown);
    return key;
}

} // namespace brimwick

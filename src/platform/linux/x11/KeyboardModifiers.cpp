#include "platform/linux/x11/KeyboardModifiers.h"

#include "platform/ports/HotKeyService.h"

#include <initializer_list>
#include <span>

namespace brimwick {

namespace {

constexpr xcb_keysym_t altLeft = 0xffe9;
constexpr xcb_keysym_t altRight = 0xffea;
constexpr xcb_keysym_t superLeft = 0xffeb;
constexpr xcb_keysym_t superRight = 0xffec;
constexpr xcb_keysym_t numLock = 0xff7f;
constexpr xcb_keysym_t scrollLock = 0xff14;

constexpr std::size_t modifierCount = 8;
constexpr std::uint16_t allModifiers = 0xff;
constexpr std::uint16_t shiftAndControl = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL;

/// The keys of each modifier and the symbols of each key, as the server maps them.
class ModifierMapping {
  public:
    explicit ModifierMapping(const XcbConnection& connection) {
        xcb_connection_t* server = connection.get();
        const xcb_setup_t& setup = *xcb_get_setup(server);
        firstKey_ = setup.min_keycode;
        const auto keyCount = static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1);
        const auto keysCookie = xcb_get_modifier_mapping(server);
        const auto symbolsCookie = xcb_get_keyboard_mapping(server, setup.min_keycode, keyCount);
        keys_.reset(xcb_get_modifier_mapping_reply(server, keysCookie, nullptr));
        symbols_.reset(xcb_get_keyboard_mapping_reply(server, symbolsCookie, nullptr));
    }

    /// The first modifier that has a key with the first of these symbols that any has; 0 when none has one.
    std::uint16_t maskOf(std::initializer_list<xcb_keysym_t> wanted) const {
        for (const xcb_keysym_t symbol : wanted)
            for (std::size_t modifier = 0; modifier < modifierCount; ++modifier)
                for (const xcb_keycode_t key : keysOf(modifier))
                    if (hasSymbol(key, symbol)) return static_cast<std::uint16_t>(1U << modifier);
        return 0;
    }
    std::span<const xcb_keycode_t> keysOf(std::size_t modifier) const {
        if (!keys_) return {};
        const std::size_t perModifier = keys_->keycodes_per_modifier;
        return {xcb_get_modifier_mapping_keycodes(keys_.get()) + modifier * perModifier, perModifier};
    }

  private:
    bool hasSymbol(xcb_keycode_t key, xcb_keysym_t symbol) const {
        if (!symbols_ || key < firstKey_) return false;
        const std::size_t perKey = symbols_->keysyms_per_keycode;
        const auto symbols =
            std::span(xcb_get_keyboard_mapping_keysyms(symbols_.get()),
                      static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(symbols_.get())));
        const std::size_t first = static_cast<std::size_t>(key - firstKey_) * perKey;
        for (std::size_t i = first; i < first + perKey && i < symbols.size(); ++i)
            if (symbols[i] == symbol) return true;
        return false;
    }

    xcb_keycode_t firstKey_ = 0;
    XcbOwned<xcb_get_modifier_mapping_reply_t> keys_;
    XcbOwned<xcb_get_keyboard_mapping_reply_t> symbols_;
};

} // namespace

KeyboardModifiers KeyboardModifiers::read(const XcbConnection& connection) {
    const ModifierMapping mapping(connection);
    KeyboardModifiers modifiers;
    if (const std::uint16_t option = mapping.maskOf({altLeft, altRight})) modifiers.option_ = option;
    if (const std::uint16_t command = mapping.maskOf({superLeft, superRight})) modifiers.command_ = command;
    const auto locks = static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | mapping.maskOf({numLock}) |
                                                  mapping.maskOf({scrollLock}));
    const auto used = static_cast<std::uint16_t>(shiftAndControl | modifiers.option_ | modifiers.command_);
    modifiers.locks_ = static_cast<std::uint16_t>(locks & ~used);
    return modifiers;
}

KeySet KeyboardModifiers::modifierKeys(const XcbConnection& connection) {
    const ModifierMapping mapping(connection);
    KeySet keys;
    for (std::size_t modifier = 0; modifier < modifierCount; ++modifier)
        for (const xcb_keycode_t key : mapping.keysOf(modifier)) keys.set(key);
    return keys;
}

std::uint16_t KeyboardModifiers::mask(std::uint32_t hotKeyModifiers) const {
    unsigned mask = 0;
    if ((hotKeyModifiers & HotKeyModifier::shift) != 0) mask |= XCB_MOD_MASK_SHIFT;
    if ((hotKeyModifiers & HotKeyModifier::control) != 0) mask |= XCB_MOD_MASK_CONTROL;
    if ((hotKeyModifiers & HotKeyModifier::option) != 0) mask |= option_;
    if ((hotKeyModifiers & HotKeyModifier::command) != 0) mask |= command_;
    return static_cast<std::uint16_t>(mask);
}

std::uint64_t KeyboardModifiers::eventFlags(std::uint16_t state) const {
    std::uint64_t flags = 0;
    if ((state & XCB_MOD_MASK_SHIFT) != 0) flags |= ModifierFlag::shift;
    if ((state & XCB_MOD_MASK_CONTROL) != 0) flags |= ModifierFlag::control;
    if ((state & option_) != 0) flags |= ModifierFlag::option;
    if ((state & command_) != 0) flags |= ModifierFlag::command;
    return flags;
}

std::uint16_t KeyboardModifiers::withoutLocks(std::uint16_t state) const {
    return static_cast<std::uint16_t>(state & allModifiers & ~locks_);
}

std::vector<std::uint16_t> KeyboardModifiers::lockCombinations() const {
    std::vector<std::uint16_t> combinations;
    for (std::uint16_t combination = 0; combination <= allModifiers; ++combination)
        if ((combination & ~locks_) == 0) combinations.push_back(combination);
    return combinations;
}

} // namespace brimwick

#include "platform/linux/x11/XkbKeymap.h"

#include <xkbcommon/xkbcommon-x11.h>

#include <array>
#include <clocale>
#include <string_view>

namespace brimwick {

namespace {

/// Of the user's language; the plainest one has none.
const char* composeLocale() {
    const char* locale = std::setlocale(LC_CTYPE, nullptr);
    const bool isPlain =
        locale == nullptr || std::string_view(locale) == "C" || std::string_view(locale) == "POSIX";
    return isPlain ? "en_US.UTF-8" : locale;
}

std::string textOf(xkb_keysym_t symbol) {
    std::array<char, 8> text{};
    // The length counts the closing zero, and is none for a symbol that types nothing.
    const int length = xkb_keysym_to_utf8(symbol, text.data(), text.size());
    return length > 1 ? std::string(text.data(), static_cast<std::size_t>(length) - 1) : std::string();
}

} // namespace

XkbKeymap::XkbKeymap(const XcbConnection& connection) : context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    if (!context_) return;
    // A locale without compose sequences is no reason to complain to the user.
    xkb_context_set_log_level(context_.get(), XKB_LOG_LEVEL_CRITICAL);
    for (const char* locale : {composeLocale(), "en_US.UTF-8"}) {
        compositions_.reset(
            xkb_compose_table_new_from_locale(context_.get(), locale, XKB_COMPOSE_COMPILE_NO_FLAGS));
        if (compositions_) break;
    }
    readAnew(connection);
}

void XkbKeymap::readAnew(const XcbConnection& connection) {
    if (!context_) return;
    xcb_connection_t* server = connection.get();
    const int keyboard = xkb_x11_get_core_keyboard_device_id(server);
    if (keyboard < 0) return;
    Owned<xkb_keymap, xkb_keymap_unref> keymap(
        xkb_x11_keymap_new_from_device(context_.get(), server, keyboard, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap) return;
    keymap_ = std::move(keymap);
    const Owned<xkb_state, xkb_state_unref> state(
        xkb_x11_state_new_from_device(keymap_.get(), server, keyboard));
    if (state) layout_ = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
}

xkb_mod_mask_t XkbKeymap::modifier(const char* name) const {
    const xkb_mod_index_t index = xkb_keymap_mod_get_index(keymap_.get(), name);
    return index == XKB_MOD_INVALID ? 0 : xkb_mod_mask_t{1} << index;
}

xkb_keysym_t XkbKeymap::symbol(xkb_keycode_t key, bool shift) const {
    const Owned<xkb_state, xkb_state_unref> state(xkb_state_new(keymap_.get()));
    if (!state) return XKB_KEY_NoSymbol;
    const xkb_mod_mask_t shifted = shift ? modifier(XKB_MOD_NAME_SHIFT) : 0;
    xkb_state_update_mask(state.get(), shifted, 0, modifier(XKB_MOD_NAME_NUM), 0, 0, layout_);
    return xkb_state_key_get_one_sym(state.get(), key);
}

XkbKeymap::Composed XkbKeymap::compose(xkb_keysym_t waiting, xkb_keysym_t symbol) const {
    const Owned<xkb_compose_state, xkb_compose_state_unref> state(
        compositions_ ? xkb_compose_state_new(compositions_.get(), XKB_COMPOSE_STATE_NO_FLAGS) : nullptr);
    if (!state) return {textOf(symbol), 0};
    if (waiting != 0) xkb_compose_state_feed(state.get(), waiting);
    xkb_compose_state_feed(state.get(), symbol);
    switch (xkb_compose_state_get_status(state.get())) {
    case XKB_COMPOSE_COMPOSING:
        return {{}, symbol};
    case XKB_COMPOSE_COMPOSED: {
        std::array<char, 64> text{};
        xkb_compose_state_get_utf8(state.get(), text.data(), text.size());
        return {text.data(), 0};
    }
    default:
        return {textOf(symbol), 0};
    }
}

} // namespace brimwick

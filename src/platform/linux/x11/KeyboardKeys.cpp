#include "platform/linux/x11/KeyboardKeys.h"

#include <algorithm>
#include <optional>

// The header has a member of this name.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace brimwick {

namespace {

constexpr xcb_keycode_t usualControlKey = 37;
constexpr xcb_keycode_t usualPlaceOfC = 46 + 8;
constexpr xcb_keysym_t letterC = 'c';

/// The keys of each modifier, one row a modifier.
std::vector<xcb_keycode_t> modifierKeys(xcb_connection_t* connection, std::size_t& rowLength) {
    const XcbOwned<xcb_get_modifier_mapping_reply_t> reply(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    if (!reply) return {};
    rowLength = reply->keycodes_per_modifier;
    const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(reply.get());
    return {keys, keys + xcb_get_modifier_mapping_keycodes_length(reply.get())};
}

bool useXkb(xcb_connection_t* connection) {
    const xcb_query_extension_reply_t* xkb = xcb_get_extension_data(connection, &xcb_xkb_id);
    if (xkb == nullptr || xkb->present == 0) return false;
    const XcbOwned<xcb_xkb_use_extension_reply_t> reply(
        xcb_xkb_use_extension_reply(connection, xcb_xkb_use_extension(connection, 1, 0), nullptr));
    return reply && reply->supported != 0;
}

std::uint8_t layoutInUse(xcb_connection_t* connection) {
    const XcbOwned<xcb_xkb_get_state_reply_t> reply(
        xcb_xkb_get_state_reply(connection, xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return reply ? reply->group : std::uint8_t{0};
}

/// The key that types the symbol without modifiers, in the given layout or, without one, in any.
std::optional<xcb_keycode_t> keyOf(const xcb_xkb_get_map_reply_t& reply, const xcb_xkb_get_map_map_t& map,
                                   xcb_keysym_t symbol, std::optional<unsigned> layout) {
    constexpr unsigned layoutCountBits = 0x0f;
    xcb_keycode_t key = reply.firstKeySym;
    auto keys = xcb_xkb_get_map_map_syms_rtrn_iterator(&reply, &map);
    for (; keys.rem > 0; xcb_xkb_key_sym_map_next(&keys), ++key) {
        const unsigned layouts = keys.data->groupInfo & layoutCountBits;
        const xcb_keysym_t* symbols = xcb_xkb_key_sym_map_syms(keys.data);
        for (unsigned candidate = 0; candidate < layouts; ++candidate) {
            const bool wanted = !layout || *layout % layouts == candidate;
            if (wanted && symbols[candidate * keys.data->width] == symbol) return key;
        }
    }
    return std::nullopt;
}

} // namespace

xcb_keycode_t KeyboardKeys::controlKey(XcbConnection& connection) {
    std::size_t rowLength = 0;
    const auto keys = modifierKeys(connection.get(), rowLength);
    for (std::size_t at = XCB_MAP_INDEX_CONTROL * rowLength; at < (XCB_MAP_INDEX_CONTROL + 1) * rowLength;
         ++at)
        if (at < keys.size() && keys[at] != 0) return keys[at];
    return usualControlKey;
}

xcb_keycode_t KeyboardKeys::keyOfLetterC(XcbConnection& connection) {
    xcb_connection_t* raw = connection.get();
    if (!useXkb(raw)) return usualPlaceOfC;
    const auto cookie = xcb_xkb_get_map(raw, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0, 0, 0,
                                        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const XcbOwned<xcb_xkb_get_map_reply_t> reply(xcb_xkb_get_map_reply(raw, cookie, nullptr));
    if (!reply) return usualPlaceOfC;
    xcb_xkb_get_map_map_t map{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply.get()), reply->nTypes, reply->nKeySyms,
                               reply->nKeyActions, reply->totalActions, reply->totalKeyBehaviors,
                               reply->virtualMods, reply->totalKeyExplicit, reply->totalModMapKeys,
                               reply->totalVModMapKeys, reply->present, &map);
    if (const auto key = keyOf(*reply, map, letterC, layoutInUse(raw))) return *key;
    return keyOf(*reply, map, letterC, std::nullopt).value_or(usualPlaceOfC);
}

std::vector<xcb_keycode_t> KeyboardKeys::heldModifiers(XcbConnection& connection) {
    std::size_t rowLength = 0;
    auto keys = modifierKeys(connection.get(), rowLength);
    std::ranges::sort(keys);
    const auto repeats = std::ranges::unique(keys);
    keys.erase(repeats.begin(), repeats.end());
    const XcbOwned<xcb_query_keymap_reply_t> down(
        xcb_query_keymap_reply(connection.get(), xcb_query_keymap(connection.get()), nullptr));
    std::erase_if(keys, [&](xcb_keycode_t key) {
        return key == 0 || !down || (down->keys[key / 8] & (1U << (key % 8U))) == 0;
    });
    return keys;
}

} // namespace brimwick

#include "platform/linux/x11/KeyboardExtension.h"

// The header names a member with a word of the language.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace brimwick {

namespace {

constexpr std::uint16_t coreKeyboard = XCB_XKB_ID_USE_CORE_KBD;

} // namespace

std::optional<KeyboardExtension> KeyboardExtension::use(const XcbConnection& connection) {
    xcb_connection_t* server = connection.get();
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(server, &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0) return std::nullopt;
    const auto useCookie = xcb_xkb_use_extension(server, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    const XcbOwned<xcb_xkb_use_extension_reply_t> use(
        xcb_xkb_use_extension_reply(server, useCookie, nullptr));
    if (!use || use->supported == 0) return std::nullopt;
    constexpr std::uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto flagsCookie = xcb_xkb_per_client_flags(server, coreKeyboard, flag, flag, 0, 0, 0);
    const XcbOwned<xcb_xkb_per_client_flags_reply_t> flags(
        xcb_xkb_per_client_flags_reply(server, flagsCookie, nullptr));
    if (!flags || (flags->value & flag) == 0) return std::nullopt;
    return KeyboardExtension(server, extension->first_event);
}

void KeyboardExtension::selectMappingEvents() const {
    select(0);
}

void KeyboardExtension::selectLayoutEvents() const {
    select(XCB_XKB_EVENT_TYPE_STATE_NOTIFY);
}

void KeyboardExtension::select(std::uint16_t moreEvents) const {
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.affectState = XCB_XKB_STATE_PART_GROUP_STATE;
    details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    xcb_xkb_select_events_aux(connection_, coreKeyboard, static_cast<std::uint16_t>(events | moreEvents), 0,
                              0, mapParts, mapParts, &details);
    xcb_flush(connection_);
}

} // namespace brimwick

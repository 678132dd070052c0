#include "platform/linux/x11/UserTimeFilter.h"

#include <QCoreApplication>

#include <cstring>
#include <string_view>

namespace brimwick {

namespace {

constexpr std::uint8_t sentBit = 0x80;
constexpr std::uint16_t extendedButtonPress = 4;
constexpr std::uint16_t extendedTouchBegin = 18;
/// Where every event of the input extension has its time.
constexpr std::size_t extendedTimeOffset = 12;
constexpr std::string_view inputExtensionName = "XInputExtension";

} // namespace

UserTimeFilter::UserTimeFilter(UserTime& userTime, const XcbConnection& connection) : userTime_(userTime) {
    const auto cookie = xcb_query_extension(
        connection.get(), static_cast<std::uint16_t>(inputExtensionName.size()), inputExtensionName.data());
    const XcbOwned<xcb_query_extension_reply_t> reply(
        xcb_query_extension_reply(connection.get(), cookie, nullptr));
    if (reply && reply->present != 0) inputExtension_ = reply->major_opcode;
    QCoreApplication::instance()->installNativeEventFilter(this);
}

bool UserTimeFilter::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (eventType != "xcb_generic_event_t") return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const auto type = static_cast<std::uint8_t>(event->response_type & ~sentBit);
    if (type == XCB_KEY_PRESS || type == XCB_BUTTON_PRESS) {
        // Key and button events have the same layout.
        userTime_.note(static_cast<const xcb_key_press_event_t*>(message)->time);
    } else if (type == XCB_GE_GENERIC && inputExtension_ != 0) {
        const auto* extended = static_cast<const xcb_ge_generic_event_t*>(message);
        const bool pressed =
            extended->event_type == extendedButtonPress || extended->event_type == extendedTouchBegin;
        if (extended->extension != inputExtension_ || !pressed) return false;
        xcb_timestamp_t time = XCB_CURRENT_TIME;
        std::memcpy(&time, static_cast<const std::byte*>(message) + extendedTimeOffset, sizeof time);
        userTime_.note(time);
    }
    return false;
}

} // namespace brimwick

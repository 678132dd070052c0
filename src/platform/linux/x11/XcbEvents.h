#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace brimwick {

/// The number of an event, whether the server or another client sent it.
inline std::uint8_t eventType(const xcb_generic_event_t& event) {
    constexpr std::uint8_t withoutSentFlag = 0x7f;
    return event.response_type & withoutSentFlag;
}

/// The event as what its number says it is; null when it is another one.
template<typename Event>
const Event* eventAs(const xcb_generic_event_t& event, std::uint8_t type) {
    return eventType(event) == type ? reinterpret_cast<const Event*>(&event) : nullptr;
}

} // namespace brimwick

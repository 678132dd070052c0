#pragma once

#include "platform/linux/x11/XcbConnection.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace brimwick {

/// A change of the keyboard's map comes as a burst of events, the first of them before the map is complete.
inline constexpr std::chrono::milliseconds mappingSettleTime{50};

/// The X server's keyboard extension on one connection, switched to detectable auto-repeat: a key held down
/// gives many presses and one release.
class KeyboardExtension {
  public:
    /// Nothing where the server lacks it. The connection must outlive the result.
    static std::optional<KeyboardExtension> use(const XcbConnection& connection);

    /// The number of every event of the extension.
    std::uint8_t firstEvent() const { return firstEvent_; }
    /// Asks for an event whenever keys or modifiers are mapped anew, by a change of layout for one.
    void selectMappingEvents() const;
    /// The same, and whenever another of the keyboard's layouts is switched on.
    void selectLayoutEvents() const;

  private:
    KeyboardExtension(xcb_connection_t* connection, std::uint8_t firstEvent)
        : connection_(connection), firstEvent_(firstEvent) {}

    void select(std::uint16_t moreEvents) const;

    xcb_connection_t* connection_;
    std::uint8_t firstEvent_;
};

} // namespace brimwick

#pragma once

#include <cstdint>

namespace brimwick {

/// The tabs of the preferences window, by their identifiers.
enum class PreferencesTab : std::uint8_t { General = 0, Notifications = 1 };

/// Where the user is in the preferences window.
struct PreferencesPlace {
    PreferencesTab selectedTab = PreferencesTab::General;
    /// The position of the focused control in the tab order of that tab.
    std::int32_t preferencesWindowFocusedControlIndex = 0;
    /// The list of folders has the focus, whatever the position says.
    bool listHasFocus = false;
};

/// Positions in the tab orders that have a meaning of their own.
namespace PreferencesControl {
inline constexpr std::int32_t lastHotKeyField = 2;
inline constexpr std::int32_t generalCloseButton = 4;
inline constexpr std::int32_t notificationsCloseButton = 13;
} // namespace PreferencesControl

} // namespace brimwick

#pragma once

#include <cstdint>
#include <string>

namespace brimwick {

/// Whoever shows the user what becomes of a rebuild of the index. Main thread only.
class RebuildObserver {
  public:
    virtual ~RebuildObserver() = default;

    virtual void showRebuildIndexProgressIndicator() = 0;
    virtual void hideRebuildIndexProgressIndicator() = 0;
    /// Animates the menu-bar icon, or the example in the preferences: method 0 pulses, any other rotates.
    virtual void animateIconUsingMethodWithToolTip(bool example, std::int64_t method,
                                                   const std::string& toolTip) = 0;
    virtual void sendUserNotification(const std::string& text) = 0;
    virtual void playDingSound() = 0;

    virtual bool pickerWindowIsVisible() const = 0;
    /// Searches anew for what stands in the picker's search field.
    virtual void search() = 0;
    /// Gives up results that nobody sees, and the index that they are of.
    virtual void forgetSearchResults() = 0;
    virtual void enableWickWindow() = 0;
    /// Has the picker's controls follow its results; does nothing during a rebuild.
    virtual void enableDisableWickWindowControls() = 0;

    virtual bool actionsEnabled() const = 0;
    virtual void enableActions() = 0;
};

} // namespace brimwick

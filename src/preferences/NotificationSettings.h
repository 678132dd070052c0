#pragma once

#include "model/PreferencesStore.h"

#include <cstdint>
#include <functional>

class QWidget;

namespace brimwick {

struct PreferencesPlace;
class PreferencesFocus;
class NotificationsTab;

/// What the settings use of the rest of the program. All of it outlives them.
struct NotificationSettingsSurroundings {
    PreferencesStore& preferences;
    /// Starts the example, in the style of that number.
    std::function<void(std::int64_t)> animateExampleIcon;
};

/// The notifications tab at work: every change is written to the preferences and saved at once. Main thread
/// only.
class NotificationSettings {
  public:
    /// Everything outlives the settings.
    NotificationSettings(NotificationSettingsSurroundings surroundings, NotificationsTab& tab,
                         PreferencesFocus& focus);
    NotificationSettings(const NotificationSettings&) = delete;
    NotificationSettings& operator=(const NotificationSettings&) = delete;

    /// Shows what the preferences hold.
    void populate();
    void populateAnimationStyleRadioButtons();
    /// Writes and saves the whole tab and gives the control that changed the focus.
    void readNotificationPreferencesFromPreferencesWindow(QWidget* sender);
    /// The check box at that place of the tab's order, as by a click.
    void toggleCheckBox(std::int32_t place);
    /// Changes the style, which is saved with the next change.
    void toggleAnimationStyle();

  private:
    NotificationSettingsSurroundings surroundings_;
    NotificationsTab& tab_;
    PreferencesFocus& focus_;
};

} // namespace brimwick

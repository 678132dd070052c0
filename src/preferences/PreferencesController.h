#pragma once

#include "preferences/BWPreferencesWindow.h"
#include "preferences/IndexedFoldersController.h"
#include "preferences/NotificationSettings.h"
#include "preferences/PreferencesControls.h"
#include "preferences/PreferencesFocus.h"

namespace brimwick {

/// What the preferences use of the rest of the program. All of it outlives them.
struct PreferencesSurroundings {
    IndexedFoldersSurroundings indexedFolders;
    HotKeyApplication& hotKeys;
    KeyboardLayout& keyboardLayout;
    MainLoop& mainLoop;
    WindowSystem& windowSystem;
    std::function<void()> closePickerUnlessPhantom;
    std::function<void()> setMenuItemKeyEquivalents;
    std::function<void()> showRebuildIndexProgressIndicator;
    std::function<void()> terminate;
    /// Starts the example of the icon's animation, in the style of that number.
    std::function<void(std::int64_t)> animateExampleIcon;
};

/// The preferences window: shown, hidden, and what keys do in it. Main thread only.
class PreferencesController {
  public:
    explicit PreferencesController(PreferencesSurroundings surroundings);
    PreferencesController(const PreferencesController&) = delete;
    PreferencesController& operator=(const PreferencesController&) = delete;

    void showPreferences();
    void hidePreferences();
    void preferencesWindowCloseButtonWasPressed() { hidePreferences(); }
    bool isInPhantomMode() const { return preferencesWindow_.isInPhantomMode(); }
    /// Whether key presses are for this window.
    bool takesKeys() const { return !isInPhantomMode() && preferencesWindow_.isKeyWindow(); }

    /// Whether a hot key that went up was pressed here.
    bool takesHotKeys() const { return !isInPhantomMode() && preferencesWindow_.isKeyWindowForHotKeys(); }

    const PreferencesPlace& place() const { return place_; }
    HotKeyFields& hotKeyFields() { return hotKeyFields_; }
    BWPreferencesWindow& preferencesWindow() { return preferencesWindow_; }
    const PreferencesControls& controls() const { return controls_; }
    void moveFocus(bool forward) { focus_.moveFocus(forward); }

    IndexedFoldersController& indexedFolders() { return indexedFolders_; }
    NotificationSettings& notificationSettings() { return notificationSettings_; }
    void enableDisablePreferencesWindowControls() {
        indexedFolders_.enableDisablePreferencesWindowControls();
    }

  private:
    void populatePreferencesWindow();
    void tabWasSelected(int tab);
    /// Starts the rebuild that changes of the list ask for.
    void windowWasHidden(bool wasShown);

    PreferencesSurroundings surroundings_;
    PreferencesPlace place_;
    BWPreferencesWindow preferencesWindow_;
    PreferencesControls controls_;
    PreferencesFocus focus_;
    HotKeyFields hotKeyFields_;
    IndexedFoldersController indexedFolders_;
    NotificationSettings notificationSettings_;
};

} // namespace brimwick

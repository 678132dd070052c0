#pragma once

#include "preferences/BWPreferencesWindow.h"
#include "preferences/PreferencesControls.h"
#include "preferences/PreferencesFocus.h"

namespace brimwick {

/// What the preferences use of the rest of the program. All of it outlives them.
struct PreferencesSurroundings {
    PreferencesStore& preferences;
    HotKeyApplication& hotKeys;
    const std::vector<BWSelectedFileOrFolder>& indexedFolders;
    KeyboardLayout& keyboardLayout;
    MainLoop& mainLoop;
    WindowSystem& windowSystem;
    std::function<void()> closePickerUnlessPhantom;
    std::function<void()> setMenuItemKeyEquivalents;
    std::function<void()> terminate;
};

/// The preferences window: shown, hidden, and what keys do in it. Of its settings only the hot keys can be
/// changed yet. Main thread only.
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

    // The list of folders cannot be changed yet.
    void selectIndexedFolder() {}
    void removeIndexedFolder() {}
    void hideIndexedFoldersCurtain() {}
    void enableDisablePreferencesWindowControls() {}

  private:
    void populatePreferencesWindow();

    PreferencesSurroundings surroundings_;
    PreferencesPlace place_;
    BWPreferencesWindow preferencesWindow_;
    PreferencesControls controls_;
    PreferencesFocus focus_;
    HotKeyFields hotKeyFields_;
};

} // namespace brimwick

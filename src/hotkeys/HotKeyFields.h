#pragma once

#include "hotkeys/HotKeyApplication.h"
#include "hotkeys/HotKeyErrorMessage.h"
#include "hotkeys/PreferencesPlace.h"
#include "platform/ports/KeyboardLayout.h"

namespace brimwick {

/// What is seen of the hot keys in the preferences window.
class HotKeyFieldsFace {
  public:
    virtual ~HotKeyFieldsFace() = default;
    /// Replaces the whole text of the mode's field, in the middle of it.
    virtual void showHotKey(Mode mode, const std::string& text) = 0;
    /// Says why the mode's hot key does not work; empty when it does.
    virtual void showRefusal(Mode mode, const std::string& refusal) = 0;
    virtual HotKeyErrorLabel& errorLabel(Mode mode) = 0;
};

/// What the fields use of the rest of the program. All of it outlives them.
struct HotKeyFieldsSurroundings {
    HotKeyApplication& hotKeys;
    PreferencesStore& preferences;
    KeyboardLayout& keyboardLayout;
    MainLoop& mainLoop;
    PreferencesPlace& place;
    HotKeyFieldsFace& face;
    std::function<void()> terminate;
    std::function<void()> setMenuItemKeyEquivalents;
};

/// The three fields in which hot keys are shown and recorded. Main thread only.
class HotKeyFields {
  public:
    explicit HotKeyFields(HotKeyFieldsSurroundings surroundings);
    HotKeyFields(const HotKeyFields&) = delete;
    HotKeyFields& operator=(const HotKeyFields&) = delete;

    /// Records a key press as the hot key of the focused field, or says why not. False when it was not meant
    /// for a field, and is to be passed on.
    bool recordKeyDown(const KeyEvent& event);
    /// Whether recordKeyDown() would keep the press. Does nothing else.
    bool wouldRecordKeyDown(const KeyEvent& event) const;
    /// Below the focused field, for about five seconds.
    void showHotKeyErrorMessage(const std::string& message);
    /// In the focused field.
    void displayHotKeyRepresentationWithKeyCodeModifierFlags(std::uint16_t keyCode,
                                                             std::uint64_t modifierFlags);
    /// Shows the stored combinations, Open, Copy, Move, which leaves the focus at the field of Move.
    void populate();
    /// The same where the focus is to stay: to be called after a change of the keyboard layout.
    void refresh();

  private:
    Mode focusedMode() const;
    void storeHotKey(const KeyEvent& event);
    void showRefusals();

    HotKeyFieldsSurroundings surroundings_;
    std::array<HotKeyErrorMessage, 3> errorMessages_;
};

} // namespace brimwick

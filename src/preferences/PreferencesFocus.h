#pragma once

#include "hotkeys/PreferencesPlace.h"

#include <array>
#include <memory>
#include <vector>

class QObject;
class QWidget;

namespace brimwick {

class PreferencesControls;

/// The keyboard focus of the preferences window, by a tab order of its own. Main thread only.
class PreferencesFocus {
  public:
    /// Both outlive the focus.
    PreferencesFocus(PreferencesControls& controls, PreferencesPlace& place);
    PreferencesFocus(const PreferencesFocus&) = delete;
    PreferencesFocus& operator=(const PreferencesFocus&) = delete;
    ~PreferencesFocus();

    /// One control on or back, round and round.
    void moveFocus(bool forward);
    /// Draws the focus for a control.
    void showFocus(QWidget* control);
    /// Puts the focus on the first control of the selected tab.
    void handleTabViewChange();

  private:
    PreferencesControls& controls_;
    PreferencesPlace& place_;
    std::array<QWidget*, 5> preferencesWindowTabOrder_;
    /// One for each control, for as long as there is somebody to tell.
    std::vector<std::unique_ptr<QObject>> observers_;
};

} // namespace brimwick

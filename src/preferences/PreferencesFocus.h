#pragma once

#include "hotkeys/PreferencesPlace.h"

#include <array>
#include <memory>
#include <span>
#include <vector>

class QObject;
class QWidget;

namespace brimwick {

class PreferencesControls;

/// The keyboard focus of the preferences window, by a tab order of its own in each of its tabs. Main thread
/// only.
class PreferencesFocus {
  public:
    /// Both outlive the focus.
    PreferencesFocus(PreferencesControls& controls, PreferencesPlace& place);
    PreferencesFocus(const PreferencesFocus&) = delete;
    PreferencesFocus& operator=(const PreferencesFocus&) = delete;
    ~PreferencesFocus();

    /// One control on or back in the selected tab, round and round.
    void moveFocus(bool forward);
    /// Draws the focus for a control.
    void showFocus(QWidget* control);
    /// Puts the focus on the first control of the selected tab.
    void handleTabViewChange();
    /// Gives a control of the selected tab the focus, as a click on it does.
    void focusControl(QWidget* control);
    /// The control at that place of the notifications tab, or null.
    QWidget* notificationsControl(std::int32_t index) const;

  private:
    std::span<QWidget* const> selectedTabOrder() const;
    void focusPlace(std::size_t index);
    void wasFocused(QWidget* control);

    PreferencesControls& controls_;
    PreferencesPlace& place_;
    std::array<QWidget*, 5> preferencesWindowTabOrder_;
    std::array<QWidget*, 14> preferencesWindowNotificationsTabOrder_;
    /// The control that had the keyboard when the focus was drawn last.
    const QWidget* withKeyboard_ = nullptr;
    /// One for each control, for as long as there is somebody to tell.
    std::vector<std::unique_ptr<QObject>> observers_;
};

} // namespace brimwick

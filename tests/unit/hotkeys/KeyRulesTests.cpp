#include "hotkeys/KeyRules.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace brimwick {

namespace {

constexpr std::uint64_t none = 0;
constexpr std::uint64_t shift = ModifierFlag::shift;
constexpr std::uint64_t control = ModifierFlag::control;
constexpr std::uint64_t command = ModifierFlag::command;
constexpr std::uint64_t option = ModifierFlag::option;
constexpr auto General = PreferencesTab::General;
constexpr auto Notifications = PreferencesTab::Notifications;

KeyEvent press(std::uint16_t keyCode, std::uint64_t modifierFlags = none) {
    KeyEvent event;
    event.keyCode = keyCode;
    event.modifierFlags = modifierFlags;
    return event;
}

/// A letter of a window shortcut with Ctrl, wherever on the keyboard it lies.
KeyEvent pressCtrl(std::uint16_t place, std::uint16_t letter) {
    KeyEvent event = press(place, control);
    event.windowShortcut = letter;
    return event;
}

struct PickerCase {
    std::uint16_t keyCode;
    std::uint64_t modifierFlags;
    bool canUndo;
    PickerKey expected;
};

constexpr std::array pickerCases = std::to_array<PickerCase>({
    {121, none, false, PickerKey::PageDown},
    {121, shift, false, PickerKey::PageDown},
    {116, none, false, PickerKey::PageUp},
    {125, none, false, PickerKey::Down},
    {125, command, false, PickerKey::Down},
    {125, shift, false, PickerKey::PassOn},
    {126, none, false, PickerKey::Up},
    {126, shift, false, PickerKey::PassOn},
    {53, none, false, PickerKey::Close},
    {53, command, false, PickerKey::Close},
    {43, command, false, PickerKey::ShowPreferences},
    {43, none, false, PickerKey::Other},
    {36, none, false, PickerKey::Confirm},
    {36, ModifierFlag::any, false, PickerKey::Confirm},
    {76, none, false, PickerKey::Confirm},
    {0, command, false, PickerKey::SelectAll},
    {0, none, false, PickerKey::Other},
    {6, command, true, PickerKey::Undo},
    {6, command, false, PickerKey::Other},
    {6, none, true, PickerKey::Other},
    {7, command, false, PickerKey::Cut},
    {7, option, false, PickerKey::Other},
    {8, command, false, PickerKey::Copy},
    {8, none, false, PickerKey::Other},
    {9, command, false, PickerKey::Paste},
    {9, none, false, PickerKey::Other},
    {13, command, false, PickerKey::Close},
    {13, none, false, PickerKey::Other},
    {13, control, false, PickerKey::Other},
    {48, none, false, PickerKey::Other},
    {49, none, false, PickerKey::Other},
    {KeyCode::unknown, command, false, PickerKey::Other},
});

struct PreferencesCase {
    std::uint16_t keyCode;
    std::uint64_t modifierFlags;
    PreferencesTab tab;
    std::int32_t focusedIndex;
    PreferencesKey expected;
};

constexpr std::array preferencesCases = std::to_array<PreferencesCase>({
    {13, command, General, 0, PreferencesKey::Close},
    {13, command | shift, Notifications, 5, PreferencesKey::Close},
    {13, none, General, 0, PreferencesKey::Record},
    {13, control, General, 0, PreferencesKey::Record},
    {0, command, General, 3, PreferencesKey::Record},
    {23, none, General, 0, PreferencesKey::Record},
    {24, none, General, 0, PreferencesKey::SelectIndexedFolder},
    {24, command, Notifications, 3, PreferencesKey::SelectIndexedFolder},
    {27, none, General, 1, PreferencesKey::RemoveIndexedFolder},
    {27, shift, Notifications, 0, PreferencesKey::RemoveIndexedFolder},
    {25, none, General, 0, PreferencesKey::Record},
    {28, none, General, 0, PreferencesKey::Record},
    {36, none, General, 4, PreferencesKey::Close},
    {36, none, General, 0, PreferencesKey::Nothing},
    {36, command, General, 2, PreferencesKey::Nothing},
    {36, none, Notifications, 13, PreferencesKey::Close},
    {36, none, Notifications, 4, PreferencesKey::Nothing},
    {76, none, General, 4, PreferencesKey::Close},
    {76, none, General, 0, PreferencesKey::Record},
    {48, none, General, 0, PreferencesKey::FocusNext},
    {48, shift, General, 0, PreferencesKey::FocusPrevious},
    {48, none, Notifications, 7, PreferencesKey::FocusNext},
    {48, shift, Notifications, 7, PreferencesKey::FocusPrevious},
    {49, none, General, 4, PreferencesKey::Close},
    {49, none, General, 3, PreferencesKey::Nothing},
    {49, command, General, 0, PreferencesKey::Nothing},
    {49, none, Notifications, 13, PreferencesKey::Close},
    {49, none, Notifications, 12, PreferencesKey::ToggleAnimationStyle},
    {49, none, Notifications, 11, PreferencesKey::ToggleNotification},
    {49, none, Notifications, 0, PreferencesKey::ToggleNotification},
    {49, none, Notifications, 14, PreferencesKey::Nothing},
    {53, none, General, 0, PreferencesKey::Close},
    {53, none, Notifications, 12, PreferencesKey::Close},
    {125, none, General, 3, PreferencesKey::Record},
    {96, shift, General, 0, PreferencesKey::Record},
    {KeyCode::unknown, none, General, 0, PreferencesKey::Record},
});

} // namespace

TEST(KeyRules, OfThePickerAreThese) {
    for (const PickerCase& one : pickerCases)
        EXPECT_EQ(pickerKey(press(one.keyCode, one.modifierFlags), one.canUndo), one.expected)
            << one.keyCode << " with " << one.modifierFlags;
}

TEST(KeyRules, OfThePreferencesWindowAreThese) {
    for (const PreferencesCase& one : preferencesCases)
        EXPECT_EQ(preferencesKey(press(one.keyCode, one.modifierFlags), {one.tab, one.focusedIndex}),
                  one.expected)
            << one.keyCode << " with " << one.modifierFlags << " at " << one.focusedIndex;
}

TEST(KeyRules, CloseThePreferencesByTheLetterWInTheListThoughItsPlaceIsAFieldOfAHotKey) {
    const PreferencesPlace field{General, 2};
    const PreferencesPlace list{General, 2, true};
    // On a French keyboard W is printed where Z is elsewhere.
    const KeyEvent event = pressCtrl(KeyCode::z, KeyCode::w);
    EXPECT_EQ(preferencesKey(event, list), PreferencesKey::Close);
    EXPECT_EQ(preferencesKey(event, field), PreferencesKey::Record);
}

TEST(KeyRules, SwallowTheReleasesOfTheKeysThatThePickerActsOn) {
    for (std::uint16_t keyCode = 0; keyCode < 200; ++keyCode) {
        bool swallowed = false;
        for (const int one : {36, 76, 53, 116, 121, 125, 126}) swallowed = swallowed || keyCode == one;
        EXPECT_EQ(pickerSwallowsKeyUp(press(keyCode)), swallowed) << keyCode;
        EXPECT_EQ(pickerSwallowsKeyUp(press(keyCode, shift)), swallowed) << keyCode;
    }
}

TEST(KeyRules, TakeCtrlForCommandByTheLetterInThePicker) {
    // On a French keyboard W is printed where Z is elsewhere.
    EXPECT_EQ(pickerKey(pressCtrl(KeyCode::z, KeyCode::w), true), PickerKey::Close);
    EXPECT_EQ(pickerKey(pressCtrl(KeyCode::w, KeyCode::z), true), PickerKey::Undo);
    EXPECT_EQ(pickerKey(pressCtrl(KeyCode::w, KeyCode::z), false), PickerKey::Other);
    EXPECT_EQ(pickerKey(press(KeyCode::w, command), true), PickerKey::Close) << "Command goes by the place";
}

TEST(KeyRules, TakeCtrlForWhatItIsInAFieldOfAHotKey) {
    for (std::int32_t index = 0; index < 3; ++index)
        EXPECT_EQ(preferencesKey(pressCtrl(KeyCode::w, KeyCode::w), {General, index}),
                  PreferencesKey::Record);
    EXPECT_EQ(preferencesKey(pressCtrl(KeyCode::w, KeyCode::w), {General, 3}), PreferencesKey::Close);
    EXPECT_EQ(preferencesKey(pressCtrl(KeyCode::w, KeyCode::w), {Notifications, 1}), PreferencesKey::Close);
}

} // namespace brimwick

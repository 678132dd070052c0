#include "hotkeys/HotKeyFields.h"

#include "hotkeys/HotKeyText.h"
#include "hotkeys/KeyRules.h"
#include "hotkeys/RefusedKeys.h"
#include "hotkeys/StoredHotKey.h"
#include "hotkeys/Utf16.h"

namespace brimwick {

namespace {

constexpr std::array modesAsPopulated = {BWModeOpen, BWModeCopy, BWModeMove};

} // namespace

HotKeyFields::HotKeyFields(HotKeyFieldsSurroundings surroundings)
    : surroundings_(std::move(surroundings)),
      errorMessages_{{{surroundings_.mainLoop, surroundings_.face.errorLabel(BWModeMove)},
                      {surroundings_.mainLoop, surroundings_.face.errorLabel(BWModeCopy)},
                      {surroundings_.mainLoop, surroundings_.face.errorLabel(BWModeOpen)}}} {}

Mode HotKeyFields::focusedMode() const {
    const std::int32_t index = surroundings_.place.preferencesWindowFocusedControlIndex;
    return index == BWModeMove || index == BWModeCopy ? index : BWModeOpen;
}

bool HotKeyFields::wouldRecordKeyDown(const KeyEvent& event) const {
    return hotKeyFieldIsFocused(surroundings_.place) && !event.charactersIgnoringModifiers.empty();
}

bool HotKeyFields::recordKeyDown(const KeyEvent& event) {
    if (!wouldRecordKeyDown(event)) return false;
    const char16_t character = upperCased(event.charactersIgnoringModifiers).front();
    if (lowByte(character) == 'Q' && event.has(ModifierFlag::command)) surroundings_.terminate();
    if (isRefusedForHotKeys(character)) {
        showHotKeyErrorMessage("Not allowed");
        return true;
    }
    if (!event.has(ModifierFlag::any)) {
        showHotKeyErrorMessage("Needs ⇧, ^, ⌥ and/or ⌘");
        return true;
    }
    const bool registered =
        surroundings_.hotKeys.applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
            event.keyCode, event.modifierFlags, true, focusedMode());
    if (registered)
        storeHotKey(event);
    else
        showHotKeyErrorMessage("Can't register");
    showRefusals();
    return true;
}

void HotKeyFields::storeHotKey(const KeyEvent& event) {
    displayHotKeyRepresentationWithKeyCodeModifierFlags(event.keyCode, event.modifierFlags);
    saveHotKey(surroundings_.preferences, focusedMode(), event.keyCode, event.modifierFlags);
    surroundings_.setMenuItemKeyEquivalents();
}

void HotKeyFields::showHotKeyErrorMessage(const std::string& message) {
    errorMessages_[static_cast<std::size_t>(focusedMode())].show(message);
}

void HotKeyFields::displayHotKeyRepresentationWithKeyCodeModifierFlags(std::uint16_t keyCode,
                                                                       std::uint64_t modifierFlags) {
    surroundings_.face.showHotKey(focusedMode(),
                                  hotKeyText(surroundings_.keyboardLayout, keyCode, modifierFlags));
}

void HotKeyFields::populate() {
    for (const Mode mode : modesAsPopulated) {
        surroundings_.place.preferencesWindowFocusedControlIndex = mode;
        const StoredHotKey stored = storedHotKey(surroundings_.preferences, mode);
        displayHotKeyRepresentationWithKeyCodeModifierFlags(stored.keyCode, stored.modifierFlags);
    }
    showRefusals();
}

void HotKeyFields::refresh() {
    const std::int32_t focused = surroundings_.place.preferencesWindowFocusedControlIndex;
    populate();
    surroundings_.place.preferencesWindowFocusedControlIndex = focused;
}

void HotKeyFields::showRefusals() {
    for (const Mode mode : modesAsPopulated)
        surroundings_.face.showRefusal(mode, surroundings_.hotKeys.refusal(mode));
}

} // namespace brimwick

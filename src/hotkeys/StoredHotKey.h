#pragma once

#include "model/Mode.h"
#include "model/PreferencesStore.h"

namespace brimwick {

/// A mode's hot key as the preferences have it.
struct StoredHotKey {
    std::uint16_t keyCode = 0;
    std::uint64_t modifierFlags = 0;
    /// False for a code that is no key, and without any modifier: that would take a key away from everybody
    /// who types.
    bool isUsable = false;
};

/// A mode other than Move and Copy counts as Open.
StoredHotKey storedHotKey(const PreferencesStore& preferences, Mode mode);

/// Writes it to the disk and reads the preferences back; where they cannot be written, all stays as it was.
void saveHotKey(PreferencesStore& preferences, Mode mode, std::uint16_t keyCode, std::uint64_t modifierFlags);

} // namespace brimwick

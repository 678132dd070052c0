#pragma once

namespace brimwick {

/// The preferences window. There is none yet: what the rest of the program asks of it does nothing, and it
/// counts as hidden. Main thread only.
class PreferencesController {
  public:
    void showPreferences() {}
    void hidePreferences() {}
    bool isInPhantomMode() const { return true; }
    void hideIndexedFoldersCurtain() {}
    void enableDisablePreferencesWindowControls() {}
};

} // namespace brimwick

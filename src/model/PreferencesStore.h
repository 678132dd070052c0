#pragma once

#include "model/BWSelectedFileOrFolder.h"
#include "model/PropertyList.h"
#include "model/Resources.h"

#include <tl/expected.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// Every setting of the user, in one dictionary, kept in one XML property-list file. Main thread only.
class PreferencesStore {
  public:
    /// `indexedFolders` is the model's list, read at every save; it must outlive the store.
    PreferencesStore(std::string appSupportRootPath, Resources resources,
                     const std::vector<BWSelectedFileOrFolder>& indexedFolders);

    /// The 22 built-in defaults, in their order.
    static PropertyListDictionary defaultPreferencesDictionary();

    /// What the file holds, or, when there is none, the shipped defaults; touches neither. The error is the
    /// reason.
    tl::expected<PropertyListDictionary, std::string> readStoredPreferences() const;
    /// Fills the dictionary from the file, the shipped defaults or the built-in ones, and upgrades older
    /// files. A corrupt file is first copied beside itself.
    void loadPreferences();
    /// Writes the whole dictionary, with the paths of the indexed folders. Failures are silent.
    void savePreferences();

    PropertyListDictionary& preferences() { return preferences_; }
    const PropertyListDictionary& preferences() const { return preferences_; }
    void setPreferences(PropertyListDictionary preferences) { preferences_ = std::move(preferences); }

    bool boolPreferenceWithKey(std::string_view key) const;
    /// Narrowed to eight bits: 200 reads as -56.
    std::int8_t intPreferenceWithKey(std::string_view key) const;
    /// The full integer reading: leading decimal digits of a text, 0 for none and for a missing key.
    std::int64_t integerPreferenceWithKey(std::string_view key) const;
    /// The paths stored under "IndexedFolders", in stored order; anything that is no path is left out.
    std::vector<std::string> indexedFolderPaths() const;

    std::int64_t animationStyle() const { return integerPreferenceWithKey("NotificationAnimationStyle"); }
    void setAnimationStyle(int style);
    std::int64_t hotKeyCode() const { return integerPreferenceWithKey("HotKeyCode"); }
    std::int64_t hotKeyModifierFlags() const { return integerPreferenceWithKey("HotKeyModifierFlags"); }
    std::int64_t bwCopyModeHotKeyCode() const { return integerPreferenceWithKey("CopyModeHotKeyCode"); }
    std::int64_t bwCopyModeHotKeyModifierFlags() const {
        return integerPreferenceWithKey("CopyModeHotKeyModifierFlags");
    }
    std::int64_t openModeHotKeyCode() const { return integerPreferenceWithKey("OpenModeHotKeyCode"); }
    std::int64_t openModeHotKeyModifierFlags() const {
        return integerPreferenceWithKey("OpenModeHotKeyModifierFlags");
    }

    /// The path of "BrimwickPreferences.plist".
    std::string filePath() const;

  private:
    bool hasOwnFile() const;

    std::string appSupportRootPath_;
    Resources resources_;
    const std::vector<BWSelectedFileOrFolder>& indexedFolders_;
    PropertyListDictionary preferences_;
};

} // namespace brimwick

#include "model/PreferencesStore.h"

#include "model/CorruptFile.h"
#include "model/PathText.h"
#include "model/PreferenceReading.h"
#include "model/PropertyListFile.h"
#include "model/WholeFile.h"
#include "model/XmlText.h"

#include <filesystem>

namespace brimwick {

namespace {

constexpr const char* indexedFoldersKey = "IndexedFolders";

PropertyListValue storedPath(const std::string& path) {
    if (survivesXml(path)) return {path};
    return {PropertyListData{path}};
}

bool addIfAbsent(PropertyListDictionary& preferences, const std::string& key, PropertyListValue value) {
    if (preferences.contains(key)) return false;
    preferences.set(key, std::move(value));
    return true;
}

} // namespace

PreferencesStore::PreferencesStore(std::string appSupportRootPath, Resources resources,
                                   const std::vector<BWSelectedFileOrFolder>& indexedFolders)
    : appSupportRootPath_(std::move(appSupportRootPath)), resources_(std::move(resources)),
      indexedFolders_(indexedFolders) {}

PropertyListDictionary PreferencesStore::defaultPreferencesDictionary() {
    using std::string;
    return PropertyListDictionary({
        {"HotKeyCode", {string("46")}},
        {"HotKeyModifierFlags", {string("1310985")}},
        {"CopyModeHotKeyCode", {string("35")}},
        {"CopyModeHotKeyModifierFlags", {string("1310985")}},
        {"OpenModeHotKeyCode", {string("31")}},
        {"OpenModeHotKeyModifierFlags", {string("1310985")}},
        {"NotificationSoundOnLaunch", {true}},
        {"NotificationSoundOnMove", {true}},
        {"NotificationSoundOnCopy", {true}},
        {"NotificationSoundOnOpen", {true}},
        {"NotificationSoundOnInitializeIndex", {true}},
        {"NotificationSoundOnRebuildIndexForPreference", {true}},
        {"NotificationSoundOnRebuildIndexForSubfolder", {false}},
        {"NotificationAnimateOnInitializeIndex", {true}},
        {"NotificationAnimateOnRebuildIndexForPreference", {true}},
        {"NotificationAnimateOnRebuildIndexForSubfolder", {true}},
        {"NotificationPopupOnInitializeIndex", {true}},
        {"NotificationPopupOnRebuildIndexForPreference", {true}},
        {"NotificationPopupOnRebuildIndexForSubfolder", {false}},
        {"NotificationAnimationStyle", {std::int64_t{0}}},
        {"WickWindowHeight", {string("572")}},
        {"WickWindowWidth", {string("520")}},
    });
}

std::string PreferencesStore::filePath() const {
    return joinPath(appSupportRootPath_, "BrimwickPreferences.plist");
}

bool PreferencesStore::hasOwnFile() const {
    std::error_code ignored;
    return std::filesystem::exists(filePath(), ignored);
}

tl::expected<PropertyListDictionary, std::string> PreferencesStore::readStoredPreferences() const {
    const std::optional<std::string> chosen =
        hasOwnFile() ? filePath() : resources_.pathForResource("DefaultPreferences", "plist");
    return readPropertyListFile(chosen.value_or(std::string()));
}

void PreferencesStore::loadPreferences() {
    auto loaded = readStoredPreferences();
    if (loaded) {
        preferences_ = *std::move(loaded);
    } else {
        if (hasOwnFile()) keepCorruptFileAside(filePath());
        preferences_ = defaultPreferencesDictionary();
        savePreferences();
    }

    bool upgraded = addIfAbsent(preferences_, "NotificationSoundOnLaunch", {true});
    upgraded |= addIfAbsent(preferences_, "WickWindowHeight", {std::string("572")});
    upgraded |= addIfAbsent(preferences_, "WickWindowWidth", {std::string("520")});
    if (upgraded) savePreferences();
}

void PreferencesStore::savePreferences() {
    PropertyListArray paths;
    paths.reserve(indexedFolders_.size());
    for (const BWSelectedFileOrFolder& folder : indexedFolders_) paths.push_back(storedPath(folder.path()));
    preferences_.set(indexedFoldersKey, {std::move(paths)});

    if (const auto bytes = serialisePropertyList(preferences_)) writeWholeFile(filePath(), *bytes);
}

bool PreferencesStore::boolPreferenceWithKey(std::string_view key) const {
    const PropertyListValue* value = preferences_.find(key);
    return value != nullptr && boolReading(*value);
}

std::int8_t PreferencesStore::intPreferenceWithKey(std::string_view key) const {
    return static_cast<std::int8_t>(integerPreferenceWithKey(key));
}

std::int64_t PreferencesStore::integerPreferenceWithKey(std::string_view key) const {
    const PropertyListValue* value = preferences_.find(key);
    return value == nullptr ? 0 : integerReading(*value);
}

std::vector<std::string> PreferencesStore::indexedFolderPaths() const {
    const PropertyListValue* stored = preferences_.find(indexedFoldersKey);
    const auto* values = stored == nullptr ? nullptr : std::get_if<PropertyListArray>(&stored->value);
    if (values == nullptr) return {};

    std::vector<std::string> paths;
    for (const PropertyListValue& value : *values) {
        const auto* text = std::get_if<std::string>(&value.value);
        const auto* data = std::get_if<PropertyListData>(&value.value);
        const std::string path = text != nullptr ? *text : data != nullptr ? data->bytes : std::string();
        if (path.starts_with('/') && path.find('\0') == std::string::npos) paths.push_back(path);
    }
    return paths;
}

void PreferencesStore::setAnimationStyle(int style) {
    preferences_.set("NotificationAnimationStyle", {std::int64_t{style}});
}

} // namespace brimwick

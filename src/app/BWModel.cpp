#include "app/BWModel.h"

#include "model/RealHomeDirectory.h"
#include "model/SupportFolder.h"

#include <filesystem>

namespace brimwick {

BWModel::BWModel(const Ports& ports, UserNotifications& notifications, Resources resources,
                 std::string homeDirectory, std::function<std::uint32_t()> random)
    : homeDirectory_(std::move(homeDirectory)), appSupportRootPath_(supportFolder(homeDirectory_)),
      downloadPath_(homeDirectory_ + "/Downloads"),
      preferences_(appSupportRootPath_, std::move(resources), folderIndexer_.indexedFolders()),
      folderSearch_(folderIndexer_),
      indexRebuilder_(folderIndexer_, preferences_, ports.mainLoop, ports.folderEvents),
      sounds_(ports.sounds, std::move(random)), hotKeyRegistry_(ports.hotKeys),
      hotKeys_(hotKeyRegistry_, preferences_) {
    if (!makeBrimwickFolder())
        notifications.sendUserNotification(
            "ERROR: Could not create Brimwick folder in you Application Support folder.");
    preferences_.loadPreferences();
    applyPreferencesAndUnregisterOldHotKeysAndRebuildIndex(false, false);
    initializeSounds();
}

std::string BWModel::realHomeDirectory() {
    return brimwick::realHomeDirectory();
}

bool BWModel::makeBrimwickFolder() const {
    std::error_code failure;
    std::filesystem::create_directories(appSupportRootPath_, failure);
    return std::filesystem::is_directory(appSupportRootPath_, failure);
}

void BWModel::applyPreferencesAndUnregisterOldHotKeysAndRebuildIndex(bool unregisterOldHotKeys,
                                                                     bool rebuildIndex) {
    hotKeys_.applyAllHotKeys(unregisterOldHotKeys);
    std::vector<BWSelectedFileOrFolder>& indexedFolders = folderIndexer_.indexedFolders();
    indexedFolders.clear();
    for (const std::string& path : preferences_.indexedFolderPaths())
        indexedFolders.push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(path));
    if (rebuildIndex)
        indexRebuilder_.rebuildIndexOnSeparateThreadWithRecursionCountForReason(
            BWInteger(), rebuildReasonPreferencesChanged);
}

void BWModel::initializeSounds() {
    const PropertyListValue* launch = preferences_.preferences().find("NotificationSoundOnLaunch");
    const auto isZero = [](const PropertyListValue& preference) {
        return preference == PropertyListValue{false} || preference == PropertyListValue{std::int64_t{0}} ||
               preference == PropertyListValue{0.0};
    };
    if (launch == nullptr || !isZero(*launch)) sounds_.playRandomSound(false);
}

} // namespace brimwick

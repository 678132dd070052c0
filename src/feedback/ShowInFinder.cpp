#include "feedback/ShowInFinder.h"

namespace brimwick {

void showInFinder(const BWSelectedFileOrFolder& folder, FileManager& fileManager,
                  const PreferencesStore& preferences, SoundBox& sounds) {
    if (const auto url = folder.url()) fileManager.openFolder(*url);
    if (preferences.boolPreferenceWithKey("NotificationSoundOnOpen")) sounds.playRandomSound(true);
}

} // namespace brimwick

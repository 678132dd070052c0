#include "feedback/ShowInFinder.h"

namespace brimwick {

void showInFinder(const BWSelectedFileOrFolder& folder, FileManager& fileManager,
                  const PreferencesStore& preferences, SoundBox& sounds) {
    if (folder.url()) fileManager.openFolder(*folder.url());
    if (preferences.boolPreferenceWithKey("NotificationSoundOnOpen")) sounds.playRandomSound(true);
}

} // namespace brimwick

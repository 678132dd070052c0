#pragma once

#include "feedback/SoundBox.h"
#include "model/BWSelectedFileOrFolder.h"
#include "model/PreferencesStore.h"
#include "platform/ports/FileManager.h"

namespace brimwick {

/// Shows a folder in the file manager, with a sound if the user wants one. Main thread only.
void showInFinder(const BWSelectedFileOrFolder& folder, FileManager& fileManager,
                  const PreferencesStore& preferences, SoundBox& sounds);

} // namespace brimwick

#pragma once

#include "platform/linux/filemanagers/FileManagerAdapter.h"

namespace brimwick {

// One function a file manager, each in a file of its own.
FileManagerAdapter pcmanfmQt();

const std::vector<FileManagerAdapter>& knownFileManagers();

/// The file manager whose window or desktop this is; null for every other program.
const FileManagerAdapter* fileManagerOf(const WindowTraits& window);

} // namespace brimwick

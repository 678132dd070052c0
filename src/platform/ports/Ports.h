#pragma once

namespace brimwick {

class FileManager;
class FolderEventStream;
class HotKeyService;
class InstanceService;
class KeyboardLayout;
class MainLoop;
class NotificationService;
class SoundPlayer;
class WindowSystem;

/// The desktop, as the program is handed it. Everything outlives the program.
struct Ports {
    HotKeyService& hotKeys;
    KeyboardLayout& keyboardLayout;
    FileManager& fileManager;
    NotificationService& notifications;
    SoundPlayer& sounds;
    WindowSystem& windowSystem;
    FolderEventStream& folderEvents;
    MainLoop& mainLoop;
    InstanceService& instance;
};

} // namespace brimwick

#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/audio/SilentSoundPlayer.h"
#include "platform/linux/dbus/DBusNotificationService.h"
#include "platform/linux/dbus/FolderOpener.h"
#include "platform/linux/filemanagers/X11FileManager.h"
#include "platform/linux/inotify/InotifyFolderEventStream.h"
#include "platform/linux/plain/PlainDesktop.h"
#include "platform/linux/x11/QtClipboardSnapshot.h"
#include "platform/linux/x11/X11HotKeyService.h"
#include "platform/linux/x11/X11KeyboardLayout.h"
#include "platform/linux/x11/X11WindowSystem.h"

#include <QGuiApplication>

namespace brimwick {

struct LinuxPlatform::Services {
    explicit Services(MainLoop& mainLoop) : folderEvents(mainLoop) {}

    std::function<void(const DesktopNotification&)> notificationFallback;
    DBusNotificationService notifications{QDBusConnection::sessionBus(),
                                          [this](const DesktopNotification& notification) {
                                              if (notificationFallback) notificationFallback(notification);
                                          }};
    SilentSoundPlayer sounds;
    FolderOpener folderOpener{QDBusConnection::sessionBus()};
    InotifyFolderEventStream folderEvents;
    UserTime userTime;
    std::unique_ptr<HotKeyService> hotKeys;
    std::unique_ptr<KeyboardLayout> keyboardLayout;
    std::unique_ptr<FileManager> fileManager;
    std::unique_ptr<WindowSystem> windowSystem;

    bool connectToXServer();
    void useWhatIsLeft();
};

bool LinuxPlatform::Services::connectToXServer() {
    if (QGuiApplication::platformName() != "xcb") return false;
    const auto openFolder = [this](const std::string& fileUrl,
                                   const std::optional<FileManagerProgram>& inUse) {
        folderOpener.openFolder(fileUrl, inUse);
    };
    auto windows = X11WindowSystem::create(userTime);
    auto files = X11FileManager::create(openFolder, qtClipboardSnapshot);
    if (!windows || !files) return false;
    auto keys = std::make_unique<X11HotKeyService>(userTime);
    // What is in front may be another window by the time the key goes up.
    keys->setPressHandler([front = files.get()] { front->captureFront(); });
    keys->setDoneHandler([front = files.get()] { front->forgetFront(); });
    windows->setChordMissedHandler([keys = keys.get()](const xcb_key_press_event_t& press) {
        QMetaObject::invokeMethod(qGuiApp, [keys, press] { keys->chordWasMissed(press); });
    });
    windowSystem = std::move(windows);
    fileManager = std::move(files);
    hotKeys = std::move(keys);
    keyboardLayout = std::make_unique<X11KeyboardLayout>();
    return true;
}

void LinuxPlatform::Services::useWhatIsLeft() {
    windowSystem = std::make_unique<PlainWindowSystem>();
    fileManager = std::make_unique<PlainFileManager>(
        [this](const std::string& fileUrl) { folderOpener.openFolder(fileUrl); });
    hotKeys = std::make_unique<PlainHotKeyService>();
    keyboardLayout = std::make_unique<PlainKeyboardLayout>();
}

LinuxPlatform::LinuxPlatform(MainLoop& mainLoop, InstanceService& instance)
    : mainLoop_(mainLoop), instance_(instance), services_(std::make_unique<Services>(mainLoop)) {
    if (!services_->connectToXServer()) services_->useWhatIsLeft();
}

LinuxPlatform::~LinuxPlatform() = default;

Ports LinuxPlatform::ports() {
    return {*services_->hotKeys,
            *services_->keyboardLayout,
            *services_->fileManager,
            services_->notifications,
            services_->sounds,
            *services_->windowSystem,
            services_->folderEvents,
            mainLoop_,
            instance_};
}

void LinuxPlatform::setNotificationFallback(std::function<void(const DesktopNotification&)> fallback) {
    services_->notificationFallback = std::move(fallback);
}

} // namespace brimwick

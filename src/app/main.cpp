#include "app/BWApplication.h"
#include "app/Brimwick.h"
#include "app/QtMainLoop.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/dbus/SingleInstance.h"
#include "platform/linux/process/QuitSignals.h"
#include "platform/ports/HotKeyService.h"

#include <cstdio>
#include <exception>
#include <filesystem>

namespace {

/// What ships lies beside the program, wherever both were installed.
std::string resourceDirectory() {
    std::error_code failure;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failure);
    const std::filesystem::path beside = program.parent_path().parent_path() / BRIMWICK_RESOURCES_BESIDE;
    return std::filesystem::is_directory(beside, failure) ? beside.string() : BRIMWICK_RESOURCES_INSTALLED;
}

int run(int argc, char** argv) {
    using namespace brimwick;
    BWApplication application(argc, argv);
    const SingleInstance instance;
    if (instance.anotherIsRunning()) {
        std::fputs("brimwick: already running\n", stderr);
        return 0;
    }
    QtMainLoop mainLoop;
    LinuxPlatform platform(mainLoop);
    const Capability hotKeys = platform.ports().hotKeys.capability();
    if (!hotKeys.available) std::fprintf(stderr, "brimwick: %s\n", hotKeys.reason.c_str());

    Brimwick brimwick(platform.ports(), BWApplication::realHomeDirectory(), Resources(resourceDirectory()));
    platform.setNotificationFallback([&brimwick](const DesktopNotification& notification) {
        brimwick.view().statusMenu().showMessage(notification.summary, notification.body);
    });
    application.setKeyDispatcher(&brimwick.view().keyDispatcher());
    const QuitSignals quitSignals(BWApplication::terminate);
    const int result = BWApplication::exec();
    application.setKeyDispatcher(nullptr);
    platform.setNotificationFallback(nullptr);
    return result;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "brimwick: %s\n", failure.what());
        return 1;
    }
}

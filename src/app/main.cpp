#include "app/BWApplication.h"
#include "app/Brimwick.h"
#include "app/QtMainLoop.h"
#include "app/RequestDispatcher.h"
#include "app/RestrictedLoop.h"
#include "app/commands/CommandLine.h"
#include "model/RealHomeDirectory.h"
#include "model/WholeFile.h"
#include "platform/linux/DisplayAccess.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/dbus/DBusRunningInstance.h"
#include "platform/linux/dbus/SingleInstance.h"
#include "platform/linux/process/LargeBlocks.h"
#include "platform/linux/process/QuitSignals.h"
#include "platform/ports/HotKeyService.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <vector>

using namespace brimwick;

namespace {

/// What ships lies beside the program, wherever both were installed.
std::string resourceDirectory() {
    std::error_code failure;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failure);
    const std::filesystem::path beside = program.parent_path().parent_path() / BRIMWICK_RESOURCES_BESIDE;
    return std::filesystem::is_directory(beside, failure) ? beside.string() : BRIMWICK_RESOURCES_INSTALLED;
}

void complain(const std::string& line) {
    std::fprintf(stderr, "%s\n", line.c_str());
}

int runCommand(const CommandArguments& arguments, int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    DBusRunningInstance running;
    int outputError = 0;
    const auto output = [&outputError](std::string_view bytes) {
        if (outputError == 0 && !writeAll(STDOUT_FILENO, bytes)) outputError = errno;
        return outputError == 0;
    };
    const int result = runCommandLine(arguments, {
                                                     .running = running,
                                                     .output = output,
                                                     .complain = complain,
                                                     .outputIsTerminal = isatty(STDOUT_FILENO) == 1,
                                                     .homeDirectory = realHomeDirectory,
                                                     .resourceDirectory = resourceDirectory(),
                                                     .version = BRIMWICK_VERSION,
                                                 });
    if (outputError == 0) return result;
    complain(std::string("brimwick: the output cannot be written: ") + std::strerror(outputError));
    return ExitCode::failed;
}

int showPreferencesOfRunning() {
    DBusRunningInstance running;
    const auto result = running.request({.verb = verbToShowPreferences, .arguments = {}},
                                        [](std::string_view) { return true; });
    if (result && result->exitCode == ExitCode::done) {
        complain("brimwick: already running; its preferences are shown");
        return ExitCode::done;
    }
    complain("brimwick: " + (result ? result->message : "the running Brimwick has just ended"));
    return ExitCode::failed;
}

int runProgram(int argc, char** argv) {
    if (const auto refusal = displayRefusal()) {
        complain("brimwick: " + *refusal);
        return ExitCode::failed;
    }
    BWApplication application(argc, argv);
    SingleInstance instance;
    if (instance.anotherIsRunning()) return showPreferencesOfRunning();
    QtMainLoop mainLoop;
    LinuxPlatform platform(mainLoop, instance);
    const Capability hotKeys = platform.ports().hotKeys.capability();
    if (!hotKeys.available) complain("brimwick: " + hotKeys.reason);

    RestrictedLoop workRunner(mainLoop);
    Brimwick brimwick(platform.ports(), workRunner, BWApplication::realHomeDirectory(),
                      Resources(resourceDirectory()));
    platform.setNotificationFallback([&brimwick](const DesktopNotification& notification) {
        brimwick.view().statusMenu().showMessage(notification.summary, notification.body);
    });
    application.setKeyDispatcher(&brimwick.view().keyDispatcher(), &brimwick.view().keyEvents());
    const QuitSignals quitSignals(BWApplication::terminate);
    const int result = BWApplication::exec();
    application.setKeyDispatcher(nullptr, nullptr);
    platform.setNotificationFallback(nullptr);
    return result;
}

/// In the same process, so that whoever watches over the program sees no end of it.
int startAgain(const std::string& program, std::vector<char*> arguments) {
    arguments.push_back(nullptr);
    execv(program.c_str(), arguments.data());
    complain("brimwick: it cannot be started again: " + std::string(std::strerror(errno)));
    return ExitCode::failed;
}

} // namespace

int main(int argc, char** argv) {
    try {
        std::error_code failure;
        const std::string program = std::filesystem::read_symlink("/proc/self/exe", failure);
        returnLargeBlocksWhenFreed();
        const CommandArguments arguments(argv + std::min(argc, 1), argv + argc);
        if (!startsTheProgram(arguments)) return runCommand(arguments, argc, argv);
        // As they are now: the toolkit takes out those that are its own.
        const std::vector<char*> given(argv, argv + argc);
        const int result = runProgram(argc, argv);
        return result == BWApplication::exitCodeForRestart ? startAgain(program, given) : result;
    } catch (const std::exception& failure) {
        complain(std::string("brimwick: ") + failure.what());
        return ExitCode::failed;
    }
}

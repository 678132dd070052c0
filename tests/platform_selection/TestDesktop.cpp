#include "TestDesktop.h"

#include "platform/linux/x11/XcbConnection.h"

#include <QCoreApplication>

#include <sys/stat.h>

#include <stdexcept>
#include <thread>

namespace brimwick {

using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {

constexpr seconds startTime{15};

template<typename T>
T orThrow(std::optional<T> value, const char* what) {
    if (!value) throw std::runtime_error(std::string(what) + " did not start");
    return *value;
}

bool windowManagerIsReady() {
    const auto connection = XcbConnection::connect();
    return connection &&
           !connection->propertyItems(connection->root(), connection->atom("_NET_SUPPORTED")).empty();
}

} // namespace

TestDesktop::TestDesktop() : home_(folder_.makeFolder("home")) {
    const std::string runtime = folder_.makeFolder("runtime");
    chmod(runtime.c_str(), S_IRWXU);
    for (const char* variable : {"WAYLAND_DISPLAY", "XAUTHORITY", "QT_QPA_PLATFORMTHEME", "SESSION_MANAGER"})
        unsetenv(variable);
    setenv("HOME", home_.c_str(), 1);
    setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home_ + "/.config").c_str(), 1);
    setenv("XDG_CACHE_HOME", (home_ + "/.cache").c_str(), 1);
    setenv("XDG_DATA_HOME", (home_ + "/.local/share").c_str(), 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    setenv("NO_AT_BRIDGE", "1", 1);

    display_ = std::make_unique<TestProcess>(std::vector<std::string>{
        "Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"});
    setenv("DISPLAY", (":" + orThrow(display_->readLine(startTime), "Xvfb")).c_str(), 1);
    bus_ = std::make_unique<TestProcess>(
        std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--print-address"});
    setenv("DBUS_SESSION_BUS_ADDRESS", orThrow(bus_->readLine(startTime), "dbus-daemon").c_str(), 1);
    windowManager_ = std::make_unique<TestProcess>(std::vector<std::string>{"openbox", "--sm-disable"});
    if (!eventually(windowManagerIsReady)) throw std::runtime_error("openbox did not start");
}

bool eventually(const std::function<bool()>& condition, milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        if (QCoreApplication::instance() != nullptr) QCoreApplication::processEvents();
        if (condition()) return true;
        if (std::chrono::steady_clock::now() >= end) return false;
        std::this_thread::sleep_for(milliseconds(10));
    }
}

} // namespace brimwick

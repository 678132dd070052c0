#include "SelectionTest.h"

#include "model/FileUrl.h"
#include "platform/linux/filemanagers/UriList.h"
#include "platform/linux/x11/KeyboardFocus.h"
#include "platform/linux/x11/QtClipboardSnapshot.h"
#include "platform/linux/x11/WindowPing.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <algorithm>
#include <csignal>

namespace brimwick {

void SelectionTest::SetUp() {
    observer = XcbConnection::connect();
    ASSERT_TRUE(observer);
    xcb_set_selection_owner(observer->get(), XCB_NONE, observer->atom("CLIPBOARD"), XCB_CURRENT_TIME);
    observer->synchronise();
    fileManager = X11FileManager::create(
        [this](const std::string& url, const auto& /*inUse*/) { openedFolders.push_back(url); },
        qtClipboardSnapshot);
    ASSERT_TRUE(fileManager);
}

void SelectionTest::TearDown() {
    programs_.clear();
    fileManager.reset();
    EXPECT_TRUE(eventually([this] {
        return observer->propertyItems(observer->root(), observer->atom("_NET_CLIENT_LIST")).empty();
    }));
    // As long as the bus believes in the file manager that was ended, the next one hands its work over to it.
    EXPECT_TRUE(eventually([] {
        return !QDBusConnection::sessionBus().interface()->isServiceRegistered(
            QStringLiteral("org.pcmanfm.PCManFM"));
    }));
}

void SelectionTest::openFileManager(const std::string& path, std::size_t items) {
    const auto before = windowsOf("pcmanfm-qt", WindowType::normal);
    xcb_window_t window = XCB_NONE;
    const auto hasOpened = [&] {
        for (const xcb_window_t candidate : windowsOf("pcmanfm-qt", WindowType::normal))
            if (std::ranges::find(before, candidate) == before.end()) window = candidate;
        return window != XCB_NONE;
    };
    // Now and then it hangs while it starts.
    for (int attempt = 0; attempt < 3 && window == XCB_NONE; ++attempt) {
        if (attempt > 0) openedFileManager->signal(SIGKILL);
        openedFileManager = &start({"pcmanfm-qt", "--profile=test", path});
        eventually(hasOpened, std::chrono::seconds(5));
    }
    ASSERT_NE(window, xcb_window_t{XCB_NONE});
    bringToFront(window);
    // The folder is read when the file manager itself copies as many items as there are.
    ASSERT_TRUE(eventually([&] {
        press("ctrl+a");
        press("ctrl+c");
        return parseUriList(clipboard("text/uri-list")).size() == items;
    }));
}

void SelectionTest::offerClipboard(const std::string& target, const std::string& bytes) {
    const std::string file = folder.makeFile("clipboard-" + std::to_string(programs_.size()), bytes);
    waitForFileManager();
    const xcb_window_t before = clipboardOwner();
    start({"xclip", "-quiet", "-selection", "clipboard", "-t", target, "-i", file});
    ASSERT_TRUE(eventually([&] {
        return clipboardOwner() != before &&
               ("\n" + clipboardTargets()).find("\n" + target + "\n") != std::string::npos;
    }));
    waitForFileManager();
}

void SelectionTest::offerClipboardSilently() {
    const xcb_window_t window = xcb_generate_id(observer->get());
    xcb_create_window(observer->get(), XCB_COPY_FROM_PARENT, window, observer->root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(observer->get(), window, observer->atom("CLIPBOARD"), XCB_CURRENT_TIME);
    observer->synchronise();
    ASSERT_EQ(clipboardOwner(), window);
}

/// A file manager looks at what is new on the clipboard, and does nothing else until it was told.
void SelectionTest::waitForFileManager() {
    const auto connection = XcbConnection::connect();
    WindowPing ping(*connection);
    EventPump pump(*connection, [&](const xcb_generic_event_t& event) { ping.handle(event); });
    for (const WindowTarget& target : fileManager->windowTargets())
        // The first answer comes with the keys taken in, the second when they have been acted on.
        for (int time = 0; time < 2; ++time) {
            ping.send(static_cast<xcb_window_t>(target.window), pump.serverTime());
            ASSERT_TRUE(
                pump.until([&] { return ping.answered().has_value(); }, in(std::chrono::seconds(15))));
        }
}

xcb_window_t SelectionTest::clipboardOwner() {
    const XcbOwned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        observer->get(), xcb_get_selection_owner(observer->get(), observer->atom("CLIPBOARD")), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

std::string SelectionTest::clipboard(const std::string& target) {
    return outputOf({"sh", "-c", "exec xclip -selection clipboard -o -t \"$0\" 2>/dev/null", target});
}

std::string SelectionTest::clipboardTargets() {
    return clipboard("TARGETS");
}

bool SelectionTest::isActive(xcb_window_t window) {
    return hasKeyboardFocus(*observer, window);
}

std::vector<xcb_window_t> SelectionTest::windowsOf(const std::string& windowClass, WindowType type) {
    std::vector<xcb_window_t> windows =
        observer->propertyItems(observer->root(), observer->atom("_NET_CLIENT_LIST_STACKING"));
    std::erase_if(windows, [&](xcb_window_t window) {
        const WindowTraits traits = traitsOf(*observer, window);
        return traits.windowClass != windowClass || traits.type != type || !isShown(*observer, window);
    });
    return windows;
}

xcb_window_t SelectionTest::waitForWindow(const std::string& windowClass, WindowType type) {
    std::vector<xcb_window_t> windows;
    eventually([&] {
        windows = windowsOf(windowClass, type);
        return !windows.empty();
    });
    return windows.empty() ? xcb_window_t{XCB_NONE} : windows.back();
}

void SelectionTest::bringToFront(xcb_window_t window) {
    ASSERT_TRUE(eventually([&] {
        if (isActive(window)) return true;
        outputOf({"wmctrl", "-i", "-a", std::to_string(window)});
        return false;
    }));
}

std::vector<std::string> SelectionTest::selectedPaths() {
    std::vector<std::string> paths;
    for (const std::string& url : fileManager->selection()) {
        EXPECT_THAT(url, testing::StartsWith("file:///"));
        paths.push_back(pathOfFileUrl(url).value_or("no path: " + url));
    }
    return paths;
}

} // namespace brimwick

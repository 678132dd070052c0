#include "SelectionTest.h"

#include "model/FileUrl.h"
#include "platform/linux/filemanagers/UriList.h"
#include "platform/linux/x11/KeyboardFocus.h"
#include "platform/linux/x11/QtClipboardSnapshot.h"
#include "platform/linux/x11/WindowPing.h"

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
}

void SelectionTest::openFileManager(const std::string& path, std::size_t items) {
    openedFileManager = &start({"pcmanfm-qt", "--profile=test", path});
    const xcb_window_t window = waitForWindow("pcmanfm-qt", WindowType::normal);
    ASSERT_NE(window, xcb_window_t{XCB_NONE});
    ASSERT_TRUE(eventually([&] { return isActive(window); }));
    // The folder is read when the file manager itself copies as many items as there are.
    ASSERT_TRUE(eventually([&] {
        press("ctrl+a");
        press("ctrl+c");
        return parseUriList(clipboard("text/uri-list")).size() == items;
    }));
}

void SelectionTest::offerClipboard(const std::string& target, const std::string& bytes) {
    const std::string file = folder.makeFile("clipboard-" + std::to_string(programs_.size()), bytes);
    start({"xclip", "-quiet", "-selection", "clipboard", "-t", target, "-i", file});
    ASSERT_TRUE(eventually(
        [&] { return ("\n" + clipboardTargets()).find("\n" + target + "\n") != std::string::npos; }));
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
    for (const WindowTarget& target : fileManager->windowTargets()) {
        ping.send(static_cast<xcb_window_t>(target.window), pump.serverTime());
        ASSERT_TRUE(pump.until([&] { return ping.answered().has_value(); }, in(std::chrono::seconds(15))));
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

xcb_window_t SelectionTest::waitForWindow(const std::string& windowClass, WindowType type) {
    xcb_window_t found = XCB_NONE;
    eventually([&] {
        for (const xcb_window_t window :
             observer->propertyItems(observer->root(), observer->atom("_NET_CLIENT_LIST_STACKING"))) {
            const WindowTraits traits = traitsOf(*observer, window);
            if (traits.windowClass == windowClass && traits.type == type && isShown(*observer, window))
                found = window;
        }
        return found != XCB_NONE;
    });
    return found;
}

void SelectionTest::bringToFront(xcb_window_t window) {
    outputOf({"wmctrl", "-i", "-a", std::to_string(window)});
    ASSERT_TRUE(eventually([&] { return isActive(window); }));
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

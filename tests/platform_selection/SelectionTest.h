#pragma once

#include "platform/linux/filemanagers/X11FileManager.h"

#include <gmock/gmock.h>

#include "TestDesktop.h"

namespace brimwick {

/// A test with the file manager's port on the tests' desktop, and a clipboard that nobody owns at first.
class SelectionTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// Starts pcmanfm-qt on a folder; its window is in front, with all of the folder's items selected.
    void openFileManager(const std::string& folder, std::size_t items);
    TestProcess& start(const std::vector<std::string>& command) {
        return *programs_.emplace_back(std::make_unique<TestProcess>(command));
    }
    /// Offers the bytes on the clipboard, by another program.
    void offerClipboard(const std::string& target, const std::string& bytes);
    void waitForFileManager();
    /// Owns the clipboard and never answers.
    void offerClipboardSilently();
    xcb_window_t clipboardOwner();
    static std::string clipboard(const std::string& target);
    static std::string clipboardTargets();
    static void press(const std::string& keys) { outputOf({"xdotool", "key", "--clearmodifiers", keys}); }

    /// The window manager says that it is active, and it has the keyboard focus.
    bool isActive(xcb_window_t window);
    /// The windows of this class and type that can be seen, topmost last.
    std::vector<xcb_window_t> windowsOf(const std::string& windowClass, WindowType type);
    /// The topmost window of this class and type, once there is one.
    xcb_window_t waitForWindow(const std::string& windowClass, WindowType type);
    /// Puts another window in front, as a pager does.
    void bringToFront(xcb_window_t window);
    /// The paths of the selection, in its order.
    std::vector<std::string> selectedPaths();

    TemporaryFolder folder;
    std::unique_ptr<XcbConnection> observer;
    std::unique_ptr<X11FileManager> fileManager;
    std::vector<std::string> openedFolders;
    TestProcess* openedFileManager = nullptr;

  private:
    std::vector<std::unique_ptr<TestProcess>> programs_;
};

} // namespace brimwick

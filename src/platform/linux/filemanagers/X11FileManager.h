#pragma once

#include "platform/linux/dbus/FolderOpener.h"
#include "platform/linux/x11/ClipboardKeeper.h"
#include "platform/linux/x11/FrontWindow.h"
#include "platform/ports/FileManager.h"

namespace brimwick {

/// The file managers of an X11 desktop, known by their windows.
class X11FileManager : public FileManager {
  public:
    /// Shows a folder, where it is known in the program that the user works in.
    using OpenFolder =
        std::function<void(const std::string& fileUrl, const std::optional<FileManagerProgram>& inUse)>;

    /// Nothing when there is no X server. To be called, and the result used, on the main thread, with an
    /// application object.
    static std::unique_ptr<X11FileManager> create(OpenFolder openFolder, ClipboardKeeper::Snapshot snapshot);
    X11FileManager(std::unique_ptr<XcbConnection> connection, std::unique_ptr<ClipboardKeeper> clipboard,
                   OpenFolder openFolder);

    /// To be called when a hot key goes down: the window in front at that moment is what the request is
    /// about.
    void captureFront() { front_.capture(); }
    /// To be called when the hot key's request is done.
    void forgetFront() { front_.forgetCapture(); }

    Capability capability() const override;
    std::optional<std::string> frontmostProcessName() override;
    std::vector<WindowTarget> windowTargets() override;
    void raise(const WindowTarget& target) override;
    void activate() override;
    std::vector<std::string> selection() override;
    void selectDesktop() override;
    void openFolder(const std::string& fileUrl) override;
    void setFolderShownHandler(std::function<void()> handler) override { folderShown_ = std::move(handler); }

  private:
    /// A folder was asked for, and its window is appearing.
    struct OpeningFolder {
        /// The window that the user was in.
        std::optional<xcb_window_t> from;
        /// The file manager's window that was there already.
        std::optional<xcb_window_t> known;
        /// Until then the file manager counts as in front.
        Deadline countsAsFrontUntil;
        /// Later, a window that comes to the front is the user's doing.
        Deadline until;
        bool appeared = false;
    };

    bool isOpeningFolder();
    void foreignActivated(const WindowTraits& window);
    void bringForward(xcb_window_t window);
    std::optional<WindowTraits> fileManagerWindow();
    std::vector<std::string> readSelection(const WindowTraits& window);
    void leaveDesktop();

    std::unique_ptr<ClipboardKeeper> clipboard_;
    OpenFolder openFolder_;
    /// The file manager's window, or desktop, that the user or we activated last.
    std::optional<xcb_window_t> lastFileManager_;
    /// The window that had the focus before the desktop was selected in its place.
    std::optional<xcb_window_t> beforeDesktop_;
    /// The window of any other program that was active last, file managers included.
    std::optional<xcb_window_t> lastFront_;
    std::optional<OpeningFolder> opening_;
    std::function<void()> folderShown_;
    /// Asking it takes round trips, which change nothing for the caller.
    mutable FrontWindow front_;
};

} // namespace brimwick

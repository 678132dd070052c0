#include "platform/linux/filemanagers/X11FileManager.h"

#include "platform/linux/filemanagers/KnownFileManagers.h"
#include "platform/linux/filemanagers/UriList.h"
#include "platform/linux/x11/KeySynthesis.h"
#include "platform/linux/x11/KeyboardFocus.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <thread>

namespace brimwick {

namespace {

/// A file manager that has to start first takes its time.
constexpr std::chrono::milliseconds openingTime{10'000};
/// What is asked in one breath with the opening is asked of the file manager.
constexpr std::chrono::milliseconds frontTime{2'000};
/// Some ask for the focus once more after their window has been given it.
constexpr std::chrono::milliseconds appearanceTime{1'000};

} // namespace

std::unique_ptr<X11FileManager> X11FileManager::create(OpenFolder openFolder,
                                                       ClipboardKeeper::Snapshot snapshot) {
    auto connection = XcbConnection::connect();
    auto clipboard = ClipboardKeeper::start(std::move(snapshot));
    if (!connection || !clipboard) return nullptr;
    return std::make_unique<X11FileManager>(std::move(connection), std::move(clipboard),
                                            std::move(openFolder));
}

X11FileManager::X11FileManager(std::unique_ptr<XcbConnection> connection,
                               std::unique_ptr<ClipboardKeeper> clipboard, OpenFolder openFolder)
    : clipboard_(std::move(clipboard)), openFolder_(std::move(openFolder)),
      front_(std::move(connection), [this](const WindowTraits& window) { foreignActivated(window); }) {}

Capability X11FileManager::capability() const {
    if (!front_.canTell()) return {false, "The window manager does not say which window is in front."};
    if (!KeySynthesis::isPossible(front_.connection()))
        return {false, "The X server lets no program press keys, so the selection cannot be read."};
    return {true, {}};
}

void X11FileManager::foreignActivated(const WindowTraits& window) {
    if (fileManagerOf(window) != nullptr) {
        lastFileManager_ = window.window;
        if (isOpeningFolder() && opening_->known != window.window) {
            if (!opening_->appeared) opening_->until = in(appearanceTime);
            opening_->appeared = true;
            if (folderShown_) folderShown_();
        }
    } else {
        // Focus that merely falls back to where the user was says nothing; any other window is the user's
        // choice.
        if (isOpeningFolder() && opening_->from != window.window) opening_.reset();
    }
    lastFront_ = window.window;
}

bool X11FileManager::isOpeningFolder() {
    if (opening_ && std::chrono::steady_clock::now() >= opening_->until) opening_.reset();
    return opening_.has_value();
}

std::optional<std::string> X11FileManager::frontmostProcessName() {
    if (!front_.canTell()) return std::nullopt;
    const auto window = front_.inFront();
    const bool openedJustNow = isOpeningFolder() && !opening_->appeared &&
                               std::chrono::steady_clock::now() < opening_->countsAsFrontUntil;
    if (openedJustNow || !window || fileManagerOf(*window) != nullptr) return finderProcessName;
    return window->windowClass;
}

std::vector<WindowTarget> X11FileManager::windowTargets() {
    front_.settle();
    std::vector<WindowTarget> targets;
    for (const WindowTraits& window : front_.stacking()) {
        const bool counts = window.type == WindowType::normal && fileManagerOf(window) != nullptr;
        if (counts && isShown(front_.connection(), window.window)) targets.push_back({window.window});
    }
    std::ranges::stable_partition(
        targets, [this](const WindowTarget& target) { return target.window == lastFileManager_; });
    return targets;
}

void X11FileManager::raise(const WindowTarget& target) {
    bringForward(static_cast<xcb_window_t>(target.window));
}

void X11FileManager::activate() {
    if (const auto window = fileManagerWindow()) bringForward(window->window);
}

void X11FileManager::bringForward(xcb_window_t window) {
    front_.requestActivation(window);
    lastFileManager_ = window;
}

/// The file manager's window that the user was in last, as far as it can be seen; else the topmost, else the
/// desktop, which lies below all.
std::optional<WindowTraits> X11FileManager::fileManagerWindow() {
    front_.drain();
    XcbConnection& connection = front_.connection();
    if (lastFileManager_) {
        const WindowTraits last = traitsOf(connection, *lastFileManager_);
        if (fileManagerOf(last) != nullptr && isShown(connection, last.window)) return last;
    }
    for (const WindowTraits& window : front_.stacking())
        if (fileManagerOf(window) != nullptr && isShown(connection, window.window)) return window;
    return std::nullopt;
}

std::vector<std::string> X11FileManager::selection() {
    const auto window = fileManagerWindow();
    if (!window) return {};
    bringForward(window->window);
    front_.settle();
    std::vector<std::string> urls;
    if (hasKeyboardFocus(front_.connection(), window->window)) urls = readSelection(*window);
    if (urls.empty()) leaveDesktop();
    beforeDesktop_.reset();
    return urls;
}

std::vector<std::string> X11FileManager::readSelection(const WindowTraits& window) {
    const auto copy = [asked = window.window](XcbConnection& connection) {
        const FileManagerAdapter* adapter = fileManagerOf(traitsOf(connection, asked));
        return adapter != nullptr && adapter->copySelection(connection, asked);
    };
    auto list = clipboard_->readCopied({window.window, copy}, "text/uri-list");
    const FileManagerAdapter* adapter = fileManagerOf(window);
    if (!list && list.error() == CopyFailure::otherKind && adapter != nullptr &&
        adapter->selectionDelay > adapter->selectionDelay.zero()) {
        std::this_thread::sleep_for(adapter->selectionDelay);
        list = clipboard_->readCopied({window.window, copy}, "text/uri-list");
    }
    return list ? parseUriList(*list) : std::vector<std::string>();
}

void X11FileManager::selectDesktop() {
    front_.settle();
    const auto before = fileManagerWindow();
    for (const WindowTraits& window : front_.stacking()) {
        const bool counts = window.type == WindowType::desktop && fileManagerOf(window) != nullptr;
        if (!counts || !isShown(front_.connection(), window.window)) continue;
        if (before && before->type == WindowType::normal) beforeDesktop_ = before->window;
        bringForward(window.window);
        return;
    }
}

/// A desktop that was tried in vain does not keep the focus of the window that the user was in.
void X11FileManager::leaveDesktop() {
    if (beforeDesktop_) bringForward(*beforeDesktop_);
}

void X11FileManager::openFolder(const std::string& fileUrl) {
    front_.drain();
    opening_ = OpeningFolder{lastFront_, lastFileManager_, in(frontTime), in(openingTime)};
    std::optional<FileManagerProgram> inUse;
    if (lastFileManager_)
        if (const FileManagerAdapter* adapter =
                fileManagerOf(traitsOf(front_.connection(), *lastFileManager_)))
            inUse = adapter->program;
    openFolder_(fileUrl, inUse);
}

} // namespace brimwick

#pragma once

#include "platform/linux/x11/ClipboardReader.h"
#include "platform/linux/x11/ClipboardServer.h"
#include "platform/linux/x11/WindowPing.h"

#include <tl/expected.hpp>

#include <functional>

namespace brimwick {

/// Why there is nothing to read after a program was made to copy.
enum class CopyFailure {
    /// The program was not asked, or the clipboard cannot be used.
    notAsked,
    /// The program left the clipboard alone.
    nothingCopied,
    /// What it copied is of another kind.
    otherKind,
};

/// What the keeper's thread does: watches who owns the clipboard, borrows it, gives it back, and serves it.
class ClipboardLoop {
  public:
    /// How another program is made to copy. Runs on the keeper's thread.
    struct Copy {
        /// The window of that program.
        xcb_window_t window = XCB_NONE;
        /// False when the program was not asked to.
        std::function<bool(XcbConnection&)> perform;
    };

    /// The program has this long to take the clipboard once it was made to copy.
    static constexpr std::chrono::milliseconds copyTime{400};
    /// A program that did not even live in that time may copy when it wakes: in this time after its sign of
    /// life.
    static constexpr std::chrono::milliseconds wakingTime{300};

    /// The wake-up ends a sleep in `serveUntil`; it must outlive the loop.
    ClipboardLoop(std::unique_ptr<XcbConnection> connection, const WakeUp& wakeUp);

    /// Serves whoever asks. False when the connection broke before the condition held.
    bool serveUntil(const std::function<bool()>& condition);
    /// What the copy put on the clipboard under this target; nothing when nothing was copied, or not under
    /// it. The clipboard offers what it did before when this returns. `known` are its contents where the
    /// caller had them already.
    tl::expected<std::string, CopyFailure> readCopied(const Copy& copy, const std::string& target,
                                                      std::shared_ptr<const ClipboardContents> known);
    /// Leaves what we offer to the desktop's clipboard manager, if there is one.
    void handOver();

  private:
    void handle(const xcb_generic_event_t& event);
    void ownerChanged(xcb_window_t owner);
    void giveBackAfterLateCopy();
    xcb_window_t owner() const;
    std::shared_ptr<const ClipboardContents> contents();
    tl::expected<std::string, CopyFailure> readFromNewOwner(const std::string& target);

    std::unique_ptr<XcbConnection> connection_;
    EventPump pump_;
    ClipboardReader reader_;
    ClipboardServer server_;
    WindowPing ping_;
    std::uint8_t firstFixesEvent_ = 0;
    /// The window of the program that is to copy, and whether it has taken the clipboard.
    xcb_window_t copier_ = XCB_NONE;
    bool copied_ = false;
    /// What to give back when the program copies after all.
    std::optional<std::shared_ptr<const ClipboardContents>> beforeLateCopy_;
    bool handedOver_ = false;
};

} // namespace brimwick

#pragma once

#include "platform/linux/x11/ClipboardReader.h"
#include "platform/linux/x11/ClipboardServer.h"

#include <functional>

namespace brimwick {

/// What the keeper's thread does: watches who owns the clipboard, borrows it, gives it back, and serves it.
class ClipboardLoop {
  public:
    /// Makes another program copy; false when it was not asked to. Runs on the keeper's thread.
    using Copy = std::function<bool(XcbConnection&)>;

    /// Another client has this long to take the clipboard once it was made to copy.
    static constexpr std::chrono::milliseconds copyTime{400};

    /// The descriptor is an eventfd that ends a sleep in `serveUntil`.
    ClipboardLoop(std::unique_ptr<XcbConnection> connection, int wakeDescriptor);

    /// Serves whoever asks. False when the connection broke before the condition held.
    bool serveUntil(const std::function<bool()>& condition);
    /// What the copy put on the clipboard under this target; nothing when nothing was copied, or not under
    /// it. The clipboard offers what it did before when this returns. `known` are its contents where the
    /// caller had them already.
    std::optional<std::string> readCopied(const Copy& copy, const std::string& target,
                                          std::shared_ptr<const ClipboardContents> known);
    /// Leaves what we offer to the desktop's clipboard manager, if there is one.
    void handOver();

  private:
    void handle(const xcb_generic_event_t& event);
    xcb_window_t owner() const;
    std::shared_ptr<const ClipboardContents> contents();
    std::optional<std::string> readFromNewOwner(const std::string& target);

    std::unique_ptr<XcbConnection> connection_;
    EventPump pump_;
    ClipboardReader reader_;
    ClipboardServer server_;
    std::uint8_t firstFixesEvent_ = 0;
    bool takenByAnother_ = false;
    bool handedOver_ = false;
};

} // namespace brimwick

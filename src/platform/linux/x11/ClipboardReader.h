#pragma once

#include "platform/linux/x11/ClipboardContents.h"
#include "platform/linux/x11/EventPump.h"

#include <optional>

namespace brimwick {

/// Reads the clipboard from the client that owns it, large answers piece by piece. An owner that keeps silent
/// costs a bounded time. On the keeper's thread.
class ClipboardReader {
  public:
    static constexpr std::chrono::milliseconds silence{300};
    static constexpr std::chrono::milliseconds wholeTime{1000};
    static constexpr std::size_t wholeSize = std::size_t{256} << 20U;

    /// Both must outlive the reader, and the pump must hand its events to `handle`.
    ClipboardReader(XcbConnection& connection, EventPump& pump);

    void handle(const xcb_generic_event_t& event);
    /// The names that the owner offers; nothing when it did not answer.
    std::optional<std::vector<std::string>> targets(Deadline deadline);
    /// Nothing when the owner refuses, is silent, or has more to say than the limit.
    std::optional<ClipboardItem> read(const std::string& target, Deadline deadline,
                                      std::size_t sizeLimit = wholeSize);

    struct Everything {
        ClipboardContents contents;
        /// False when something that was offered could not be had.
        bool complete = true;
    };
    /// All that the owner offers, within the whole time and size.
    Everything readEverything();

  private:
    struct Piece {
        xcb_atom_t type = XCB_ATOM_NONE;
        std::uint8_t format = 8;
        std::string bytes;
    };
    std::optional<Piece> request(xcb_atom_t target, Deadline deadline, std::size_t sizeLimit);
    std::optional<Piece> readPieces(Deadline deadline, std::size_t sizeLimit);
    std::optional<Piece> takeProperty(std::size_t sizeLimit);

    XcbConnection& connection_;
    EventPump& pump_;
    xcb_atom_t clipboard_;
    xcb_atom_t incremental_;
    unsigned requests_ = 0;

    // The request that is under way.
    xcb_atom_t target_ = XCB_ATOM_NONE;
    xcb_atom_t property_ = XCB_ATOM_NONE;
    std::optional<xcb_atom_t> answer_;
    bool pieceArrived_ = false;
};

} // namespace brimwick

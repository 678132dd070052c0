#pragma once

#include "platform/linux/x11/ClipboardContents.h"
#include "platform/linux/x11/XcbConnection.h"

#include <memory>

namespace brimwick {

/// Owns the clipboard and answers whoever asks for it, large contents piece by piece. On the keeper's thread.
class ClipboardServer {
  public:
    /// The connection must outlive the server; the window is the one that owns.
    ClipboardServer(XcbConnection& connection, xcb_window_t window);

    xcb_atom_t clipboard() const { return clipboard_; }
    void handle(const xcb_generic_event_t& event);
    /// Takes the clipboard with these contents; nothing to offer leaves it without an owner.
    void offer(std::shared_ptr<const ClipboardContents> contents, xcb_timestamp_t time);
    /// What is offered; null when another client owns the clipboard, or none.
    const std::shared_ptr<const ClipboardContents>& contents() const { return contents_; }

  private:
    struct Transfer {
        xcb_window_t requestor = XCB_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;
        xcb_atom_t type = XCB_ATOM_NONE;
        /// Keeps the contents alive when another client takes the clipboard meanwhile.
        std::shared_ptr<const ClipboardItem> item;
        std::size_t sent = 0;
    };

    void answer(const xcb_selection_request_event_t& request);
    bool convertAll(xcb_window_t requestor, xcb_atom_t property);
    bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    void putAtoms(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                  const std::vector<xcb_atom_t>& atoms);
    void startTransfer(Transfer transfer);
    void sendNextPiece(xcb_window_t requestor, xcb_atom_t property);
    void forgetTransfersTo(xcb_window_t requestor);

    XcbConnection& connection_;
    xcb_window_t window_;
    xcb_atom_t clipboard_;
    xcb_timestamp_t since_ = XCB_CURRENT_TIME;
    std::shared_ptr<const ClipboardContents> contents_;
    std::vector<Transfer> transfers_;
};

} // namespace brimwick

#include "platform/linux/x11/ClipboardServer.h"

#include "platform/linux/x11/XcbEvents.h"

#include <algorithm>

namespace brimwick {

namespace {

/// Larger contents go piece by piece: what every X server takes in one request, with room for its head.
constexpr std::size_t pieceSize = std::size_t{128} << 10U;

} // namespace

ClipboardServer::ClipboardServer(XcbConnection& connection, xcb_window_t window)
    : connection_(connection), window_(window), clipboard_(connection.atom("CLIPBOARD")) {}

void ClipboardServer::offer(std::shared_ptr<const ClipboardContents> contents, xcb_timestamp_t time) {
    const bool any = contents && !contents->empty();
    contents_ = any ? std::move(contents) : nullptr;
    since_ = time;
    xcb_set_selection_owner(connection_.get(), any ? window_ : xcb_window_t{XCB_NONE}, clipboard_, time);
    xcb_flush(connection_.get());
}

void ClipboardServer::handle(const xcb_generic_event_t& event) {
    if (const auto* request = eventAs<xcb_selection_request_event_t>(event, XCB_SELECTION_REQUEST)) {
        answer(*request);
    } else if (const auto* clear = eventAs<xcb_selection_clear_event_t>(event, XCB_SELECTION_CLEAR)) {
        // A clear that is older than our ownership speaks of an earlier one.
        if (clear->selection == clipboard_ && static_cast<std::int32_t>(clear->time - since_) >= 0)
            contents_.reset();
    } else if (const auto* change = eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY)) {
        if (change->state == XCB_PROPERTY_DELETE) sendNextPiece(change->window, change->atom);
    } else if (const auto* gone = eventAs<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY)) {
        forgetTransfersTo(gone->window);
    }
}

void ClipboardServer::answer(const xcb_selection_request_event_t& request) {
    // Requestors of old leave the property to the owner: then it has the target's name.
    const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    const bool inTime =
        request.time == XCB_CURRENT_TIME || static_cast<std::int32_t>(request.time - since_) >= 0;
    bool answered = false;
    if (contents_ && request.selection == clipboard_ && inTime)
        answered = request.target == connection_.atom("MULTIPLE")
                       ? convertAll(request.requestor, property)
                       : convert(request.requestor, request.target, property);
    // An event on the wire has 32 bytes, whatever the size of its structure.
    union {
        xcb_selection_notify_event_t notify;
        char bytes[32];
    } wire{};
    wire.notify.response_type = XCB_SELECTION_NOTIFY;
    wire.notify.time = request.time;
    wire.notify.requestor = request.requestor;
    wire.notify.selection = request.selection;
    wire.notify.target = request.target;
    wire.notify.property = answered ? property : xcb_atom_t{XCB_ATOM_NONE};
    xcb_send_event(connection_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire.bytes);
    xcb_flush(connection_.get());
}

bool ClipboardServer::convertAll(xcb_window_t requestor, xcb_atom_t property) {
    std::vector<xcb_atom_t> pairs = connection_.propertyItems(requestor, property);
    if (pairs.empty() || pairs.size() % 2 != 0) return false;
    for (std::size_t at = 0; at < pairs.size(); at += 2)
        if (!convert(requestor, pairs[at], pairs[at + 1])) pairs[at + 1] = XCB_ATOM_NONE;
    putAtoms(requestor, property, connection_.atom("ATOM_PAIR"), pairs);
    return true;
}

bool ClipboardServer::convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
    if (property == XCB_ATOM_NONE) return false;
    if (target == connection_.atom("TARGETS")) {
        std::vector<xcb_atom_t> targets;
        for (const ClipboardItem& item : *contents_) targets.push_back(connection_.atom(item.target));
        for (const char* own : {"TARGETS", "TIMESTAMP", "MULTIPLE"}) targets.push_back(connection_.atom(own));
        putAtoms(requestor, property, XCB_ATOM_ATOM, targets);
        return true;
    }
    if (target == connection_.atom("TIMESTAMP")) {
        putAtoms(requestor, property, XCB_ATOM_INTEGER, {since_});
        return true;
    }
    for (const ClipboardItem& item : *contents_) {
        if (connection_.atom(item.target) != target) continue;
        Transfer transfer{requestor, property, connection_.atom(item.type), {contents_, &item}};
        if (item.bytes.size() > pieceSize) {
            startTransfer(std::move(transfer));
        } else {
            const auto units = static_cast<std::uint32_t>(item.bytes.size() / (item.format / 8U));
            xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, requestor, property, transfer.type,
                                item.format, units, item.bytes.data());
        }
        return true;
    }
    return false;
}

void ClipboardServer::putAtoms(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                               const std::vector<xcb_atom_t>& atoms) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, requestor, property, type, 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

void ClipboardServer::startTransfer(Transfer transfer) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), transfer.requestor, XCB_CW_EVENT_MASK, &events);
    const auto size = static_cast<std::uint32_t>(transfer.item->bytes.size());
    putAtoms(transfer.requestor, transfer.property, connection_.atom("INCR"), {size});
    std::erase_if(transfers_, [&](const Transfer& other) {
        return other.requestor == transfer.requestor && other.property == transfer.property;
    });
    transfers_.push_back(std::move(transfer));
}

void ClipboardServer::sendNextPiece(xcb_window_t requestor, xcb_atom_t property) {
    const auto transfer = std::ranges::find_if(transfers_, [&](const Transfer& candidate) {
        return candidate.requestor == requestor && candidate.property == property;
    });
    if (transfer == transfers_.end()) return;
    const ClipboardItem& item = *transfer->item;
    const std::size_t size = std::min(pieceSize, item.bytes.size() - transfer->sent);
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, requestor, property, transfer->type,
                        item.format, static_cast<std::uint32_t>(size / (item.format / 8U)),
                        item.bytes.data() + transfer->sent);
    transfer->sent += size;
    // The piece of no length ends the transfer.
    if (size == 0) {
        transfers_.erase(transfer);
        if (std::ranges::none_of(transfers_,
                                 [&](const Transfer& other) { return other.requestor == requestor; })) {
            const std::uint32_t events = XCB_EVENT_MASK_NO_EVENT;
            xcb_change_window_attributes(connection_.get(), requestor, XCB_CW_EVENT_MASK, &events);
        }
    }
    xcb_flush(connection_.get());
}

void ClipboardServer::forgetTransfersTo(xcb_window_t requestor) {
    std::erase_if(transfers_, [&](const Transfer& transfer) { return transfer.requestor == requestor; });
}

} // namespace brimwick

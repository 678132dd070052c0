#include "platform/linux/x11/ClipboardReader.h"

#include "platform/linux/x11/XcbEvents.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace brimwick {

namespace {

/// Targets that ask the owner to do something, or that every owner answers for itself.
constexpr std::array<std::string_view, 7> notContents{
    "TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "DELETE", "INSERT_SELECTION", "INSERT_PROPERTY"};
constexpr std::string_view portalPrefix = "application/vnd.portal.";

bool isContents(const std::string& target) {
    return std::ranges::find(notContents, target) == notContents.end() && !target.starts_with(portalPrefix);
}

} // namespace

ClipboardReader::ClipboardReader(XcbConnection& connection, EventPump& pump)
    : connection_(connection), pump_(pump), clipboard_(connection.atom("CLIPBOARD")),
      incremental_(connection.atom("INCR")) {}

void ClipboardReader::handle(const xcb_generic_event_t& event) {
    if (const auto* notify = eventAs<xcb_selection_notify_event_t>(event, XCB_SELECTION_NOTIFY)) {
        const bool ours = notify->selection == clipboard_ && notify->target == target_ &&
                          (notify->property == property_ || notify->property == XCB_ATOM_NONE);
        if (ours) answer_ = notify->property;
    } else if (const auto* change = eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY)) {
        if (change->window == pump_.window() && change->atom == property_ &&
            change->state == XCB_PROPERTY_NEW_VALUE)
            pieceArrived_ = true;
    }
}

std::optional<std::vector<std::string>> ClipboardReader::targets(Deadline deadline) {
    const auto piece = request(connection_.atom("TARGETS"), deadline, wholeSize);
    if (!piece || piece->format != 32) return std::nullopt;
    std::vector<std::string> names;
    for (std::size_t at = 0; at + sizeof(xcb_atom_t) <= piece->bytes.size(); at += sizeof(xcb_atom_t)) {
        xcb_atom_t atom = XCB_ATOM_NONE;
        std::memcpy(&atom, piece->bytes.data() + at, sizeof atom);
        std::string name = connection_.atomName(atom);
        if (!name.empty() && std::ranges::find(names, name) == names.end()) names.push_back(std::move(name));
    }
    return names;
}

std::optional<ClipboardItem> ClipboardReader::read(const std::string& target, Deadline deadline,
                                                   std::size_t sizeLimit) {
    auto piece = request(connection_.atom(target), deadline, sizeLimit);
    if (!piece) return std::nullopt;
    std::string type = piece->type == connection_.atom(target) ? target : connection_.atomName(piece->type);
    return ClipboardItem{target, std::move(type), piece->format, std::move(piece->bytes)};
}

ClipboardReader::Everything ClipboardReader::readEverything() {
    const Deadline deadline = in(wholeTime);
    const auto offered = targets(deadline);
    Everything everything;
    everything.complete = offered.has_value();
    std::size_t size = 0;
    for (const std::string& target : offered.value_or(std::vector<std::string>{})) {
        if (!isContents(target)) continue;
        auto item = read(target, deadline, wholeSize - size);
        // An owner may offer what it then refuses; only what did not arrive at all is a loss.
        if (!item) {
            everything.complete = everything.complete && answer_ == XCB_ATOM_NONE;
            continue;
        }
        size += item->bytes.size();
        everything.contents.push_back(std::move(*item));
    }
    return everything;
}

std::optional<ClipboardReader::Piece> ClipboardReader::request(xcb_atom_t target, Deadline deadline,
                                                               std::size_t sizeLimit) {
    // Another property each time, so that a late answer to an earlier request is not taken for this one's.
    constexpr unsigned properties = 64;
    property_ = connection_.atom("BRIMWICK_CLIPBOARD_" + std::to_string(requests_++ % properties));
    target_ = target;
    answer_.reset();
    xcb_delete_property(connection_.get(), pump_.window(), property_);
    const xcb_timestamp_t time = pump_.serverTime();
    xcb_convert_selection(connection_.get(), pump_.window(), clipboard_, target, property_, time);
    if (!pump_.until([this] { return answer_.has_value(); }, std::min(deadline, in(silence))))
        return std::nullopt;
    if (answer_ == XCB_ATOM_NONE) return std::nullopt;
    pieceArrived_ = false;
    auto piece = takeProperty(sizeLimit);
    if (!piece || piece->type != incremental_) return piece;
    return readPieces(deadline, sizeLimit);
}

std::optional<ClipboardReader::Piece> ClipboardReader::readPieces(Deadline deadline, std::size_t sizeLimit) {
    Piece whole;
    for (;;) {
        if (!pump_.until([this] { return pieceArrived_; }, std::min(deadline, in(silence))))
            return std::nullopt;
        pieceArrived_ = false;
        const auto piece = takeProperty(sizeLimit - whole.bytes.size());
        if (!piece) return std::nullopt;
        if (piece->type == XCB_ATOM_NONE) continue;
        whole.type = piece->type;
        if (piece->bytes.empty()) return whole;
        whole.format = piece->format;
        whole.bytes += piece->bytes;
    }
}

std::optional<ClipboardReader::Piece> ClipboardReader::takeProperty(std::size_t sizeLimit) {
    constexpr std::size_t unit = 4;
    const auto cookie =
        xcb_get_property(connection_.get(), 1, pump_.window(), property_, XCB_GET_PROPERTY_TYPE_ANY, 0,
                         static_cast<std::uint32_t>(sizeLimit / unit + 1));
    const XcbOwned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_.get(), cookie, nullptr));
    if (!reply) return std::nullopt;
    if (reply->bytes_after > 0) {
        xcb_delete_property(connection_.get(), pump_.window(), property_);
        return std::nullopt;
    }
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    return Piece{reply->type,
                 reply->format == 0 ? std::uint8_t{8} : reply->format,
                 {static_cast<const char*>(xcb_get_property_value(reply.get())), length}};
}

} // namespace brimwick

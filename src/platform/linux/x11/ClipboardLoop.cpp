#include "platform/linux/x11/ClipboardLoop.h"

#include "platform/linux/x11/XcbEvents.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <cstdio>

namespace brimwick {

ClipboardLoop::ClipboardLoop(std::unique_ptr<XcbConnection> connection, const WakeUp& wakeUp)
    : connection_(std::move(connection)),
      pump_(
          *connection_, [this](const xcb_generic_event_t& event) { handle(event); }, &wakeUp),
      reader_(*connection_, pump_), server_(*connection_, pump_.window()), ping_(*connection_) {
    xcb_connection_t* raw = connection_->get();
    const xcb_query_extension_reply_t* fixes = xcb_get_extension_data(raw, &xcb_xfixes_id);
    if (fixes == nullptr || fixes->present == 0) return;
    firstFixesEvent_ = fixes->first_event;
    const XcbOwned<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(raw, xcb_xfixes_query_version(raw, 1, 0), nullptr));
    xcb_xfixes_select_selection_input(raw, pump_.window(), connection_->atom("CLIPBOARD"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
}

void ClipboardLoop::handle(const xcb_generic_event_t& event) {
    if (firstFixesEvent_ != 0) {
        const auto* change = eventAs<xcb_xfixes_selection_notify_event_t>(
            event, static_cast<std::uint8_t>(firstFixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY));
        if (change != nullptr) {
            ownerChanged(change->owner);
            return;
        }
    }
    if (const auto* notify = eventAs<xcb_selection_notify_event_t>(event, XCB_SELECTION_NOTIFY);
        notify != nullptr && notify->selection == connection_->atom("CLIPBOARD_MANAGER"))
        handedOver_ = true;
    reader_.handle(event);
    server_.handle(event);
    ping_.handle(event);
}

void ClipboardLoop::ownerChanged(xcb_window_t owner) {
    // The windows of one client share the upper bits of their numbers.
    const std::uint32_t clientBits = ~xcb_get_setup(connection_->get())->resource_id_mask;
    if (owner != XCB_NONE && (owner & clientBits) == (copier_ & clientBits))
        copied_ = true;
    else if (owner != pump_.window())
        beforeLateCopy_.reset();
}

bool ClipboardLoop::serveUntil(const std::function<bool()>& condition) {
    const auto alsoGiveBack = [&] {
        giveBackAfterLateCopy();
        return condition();
    };
    return pump_.until(alsoGiveBack, Deadline::max());
}

tl::expected<std::string, CopyFailure>
ClipboardLoop::readCopied(const Copy& copy, const std::string& target,
                          std::shared_ptr<const ClipboardContents> known) {
    if (firstFixesEvent_ == 0) return tl::unexpected(CopyFailure::notAsked);
    // Who owned it cannot answer while its thread waits for this one.
    if (known) server_.offer(std::move(known), pump_.serverTime());
    const auto before = contents();
    connection_->synchronise();
    pump_.drain();
    copier_ = copy.window;
    copied_ = false;
    beforeLateCopy_.reset();
    if (!copy.perform(*connection_)) return tl::unexpected(CopyFailure::notAsked);
    ping_.send(copy.window, pump_.serverTime());
    if (!pump_.until([this] { return copied_; }, in(copyTime))) {
        beforeLateCopy_ = before;
        return tl::unexpected(CopyFailure::nothingCopied);
    }
    auto copied = readFromNewOwner(target);
    server_.offer(before, pump_.serverTime());
    connection_->synchronise();
    return copied;
}

void ClipboardLoop::giveBackAfterLateCopy() {
    if (!beforeLateCopy_) return;
    const bool awake = ping_.answered() && std::chrono::steady_clock::now() > *ping_.answered() + wakingTime;
    // What a program copies that is long awake, its user copied.
    if (copied_ && !awake) server_.offer(*beforeLateCopy_, pump_.serverTime());
    if (copied_ || awake) beforeLateCopy_.reset();
}

xcb_window_t ClipboardLoop::owner() const {
    const auto cookie = xcb_get_selection_owner(connection_->get(), server_.clipboard());
    const XcbOwned<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection_->get(), cookie, nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

std::shared_ptr<const ClipboardContents> ClipboardLoop::contents() {
    const xcb_window_t owner = this->owner();
    if (owner == XCB_NONE) return nullptr;
    if (owner == pump_.window()) return server_.contents();
    auto everything = reader_.readEverything();
    if (!everything.complete)
        std::fputs(
            "brimwick: the program that owns the clipboard does not answer; not all of it can be kept\n",
            stderr);
    return std::make_shared<const ClipboardContents>(std::move(everything.contents));
}

tl::expected<std::string, CopyFailure> ClipboardLoop::readFromNewOwner(const std::string& target) {
    const Deadline deadline = in(ClipboardReader::wholeTime);
    const auto offered = reader_.targets(deadline);
    if (!offered || std::ranges::find(*offered, target) == offered->end())
        return tl::unexpected(CopyFailure::otherKind);
    auto item = reader_.read(target, deadline);
    if (!item) return tl::unexpected(CopyFailure::otherKind);
    return std::move(item->bytes);
}

void ClipboardLoop::handOver() {
    if (!server_.contents()) return;
    const xcb_atom_t manager = connection_->atom("CLIPBOARD_MANAGER");
    const XcbOwned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_->get(), xcb_get_selection_owner(connection_->get(), manager), nullptr));
    if (!reply || reply->owner == XCB_NONE) return;
    constexpr std::chrono::milliseconds patience{1000};
    xcb_convert_selection(connection_->get(), pump_.window(), manager, connection_->atom("SAVE_TARGETS"),
                          connection_->atom("BRIMWICK_HAND_OVER"), pump_.serverTime());
    pump_.until([this] { return handedOver_; }, in(patience));
}

} // namespace brimwick

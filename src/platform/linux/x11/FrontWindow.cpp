#include "platform/linux/x11/FrontWindow.h"

#include "platform/linux/x11/KeyboardFocus.h"
#include "platform/linux/x11/XcbEvents.h"

#include <unistd.h>

#include <algorithm>

namespace brimwick {

FrontWindow::FrontWindow(std::unique_ptr<XcbConnection> connection, ForeignActivated foreignActivated)
    : connection_(std::move(connection)), foreignActivated_(std::move(foreignActivated)),
      pump_(*connection_, [this](const xcb_generic_event_t& event) { handle(event); }),
      events_(*connection_, [this](const xcb_generic_event_t& event) { handle(event); }) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_->get(), connection_->root(), XCB_CW_EVENT_MASK, &events);
    noteActive();
}

bool FrontWindow::canTell() {
    const xcb_window_t root = connection_->root();
    const xcb_atom_t check = connection_->atom("_NET_SUPPORTING_WM_CHECK");
    // A window manager that ended can leave its properties on the root; its own window it cannot.
    const auto manager = connection_->propertyItems(root, check);
    if (manager.empty() || connection_->propertyItems(manager.front(), check) != manager) return false;
    const auto supported = connection_->propertyItems(root, connection_->atom("_NET_SUPPORTED"));
    return std::ranges::find(supported, connection_->atom("_NET_ACTIVE_WINDOW")) != supported.end();
}

void FrontWindow::handle(const xcb_generic_event_t& event) {
    const auto* change = eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY);
    if (change == nullptr || change->window != connection_->root()) return;
    if (change->atom == connection_->atom("_NET_ACTIVE_WINDOW")) noteActive();
}

void FrontWindow::noteActive() {
    const auto window = active();
    // Two changes handled late read as one: what was active in between is not known.
    const bool missedOne = window == lastActive_;
    lastActive_ = window;
    if (!window) return;
    const WindowTraits traits = traitsOf(*connection_, *window);
    if (!isForeign(traits)) {
        if (missedOne) lastForeign_.reset();
        return;
    }
    lastForeign_ = traits;
    foreignActivated_(traits);
}

bool FrontWindow::isForeign(const WindowTraits& traits) const {
    if (traits.type == WindowType::other) return false;
    return traits.processId != static_cast<std::uint32_t>(getpid());
}

std::optional<xcb_window_t> FrontWindow::active() {
    const auto active =
        connection_->propertyItems(connection_->root(), connection_->atom("_NET_ACTIVE_WINDOW"));
    if (active.empty() || active.front() == XCB_NONE || active.front() == connection_->root())
        return std::nullopt;
    return active.front();
}

std::vector<WindowTraits> FrontWindow::stacking() {
    const auto bottomFirst =
        connection_->propertyItems(connection_->root(), connection_->atom("_NET_CLIENT_LIST_STACKING"));
    std::vector<WindowTraits> windows;
    for (auto window = bottomFirst.rbegin(); window != bottomFirst.rend(); ++window)
        windows.push_back(traitsOf(*connection_, *window));
    return windows;
}

void FrontWindow::capture() {
    settle();
    captured_ = presentFront();
}

std::optional<WindowTraits> FrontWindow::inFront() {
    settle();
    if (!captured_) return presentFront();
    auto front = std::move(*captured_);
    captured_.reset();
    return front;
}

std::optional<WindowTraits> FrontWindow::presentFront() {
    const auto window = active();
    if (!window) return std::nullopt;
    const WindowTraits traits = traitsOf(*connection_, *window);
    if (isForeign(traits)) return traits;
    const bool isOurs = traits.processId == static_cast<std::uint32_t>(getpid());
    // A dialog stands for a window of its program, and for no other. A window that is gone stands for
    // nothing.
    const bool standsForItsOwn = !isOurs && isShown(*connection_, *window);
    const auto represents = [&](const WindowTraits& candidate) {
        return isForeign(candidate) && isShown(*connection_, candidate.window) &&
               (!standsForItsOwn || (traits.processId != 0 && candidate.processId == traits.processId));
    };
    if (lastForeign_ && represents(*lastForeign_)) return lastForeign_;
    for (const WindowTraits& candidate : stacking())
        if (represents(candidate)) return candidate;
    return standsForItsOwn ? std::optional(traits) : std::nullopt;
}

void FrontWindow::requestActivation(xcb_window_t window) {
    pump_.drain();
    if (pending_ && pending_->window == window) return;
    pending_.reset();
    // A window manager can call a window active whose focus got lost as it appeared.
    if (hasKeyboardFocus(*connection_, window)) return;
    pending_ = PendingActivation{window, in(activationTime)};
    constexpr std::uint32_t onBehalfOfTheUser = 2;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = connection_->atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = onBehalfOfTheUser;
    message.data.data32[1] = pump_.serverTime();
    message.data.data32[2] = active().value_or(XCB_NONE);
    xcb_send_event(connection_->get(), 0, connection_->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_->get());
}

void FrontWindow::settle() {
    pump_.drain();
    if (!pending_) return;
    pump_.until([this] { return hasKeyboardFocus(*connection_, pending_->window); }, pending_->deadline);
    pending_.reset();
}

} // namespace brimwick

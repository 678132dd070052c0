#include "platform/linux/x11/X11HotKeyService.h"

#include "platform/linux/x11/KeyboardExtension.h"
#include "platform/linux/x11/XcbEvents.h"
#include "platform/ports/VirtualKeyCodes.h"

#include <algorithm>
#include <iostream>

namespace brimwick {

namespace {

constexpr std::chrono::milliseconds heldKeysPollTime{20};

} // namespace

class X11HotKeyService::Grab : public HotKeyGrab {
  public:
    Grab(X11HotKeyService& service, HotKeys::iterator hotKey) : service_(service), hotKey_(hotKey) {}
    Grab(const Grab&) = delete;
    Grab& operator=(const Grab&) = delete;
    ~Grab() override { service_.release(hotKey_); }

  private:
    X11HotKeyService& service_;
    HotKeys::iterator hotKey_;
};

X11HotKeyService::X11HotKeyService(UserTime& userTime) : userTime_(userTime) {
    connection_ = XcbConnection::connect();
    if (!connection_) {
        unavailable_ = "Hot keys do not work because the X server cannot be reached.";
        return;
    }
    const auto extension = KeyboardExtension::use(*connection_);
    if (!extension) {
        unavailable_ = "Hot keys do not work because the X server has no keyboard extension.";
        return;
    }
    firstKeyboardEvent_ = extension->firstEvent();
    extension->selectMappingEvents();
    modifiers_ = KeyboardModifiers::read(*connection_);
    mappingSettled_.setSingleShot(true);
    mappingSettled_.setInterval(mappingSettleTime);
    QObject::connect(&mappingSettled_, &QTimer::timeout, &mappingSettled_,
                     [this] { followModifierMapping(); });
    heldKeysPoll_.setInterval(heldKeysPollTime);
    QObject::connect(&heldKeysPoll_, &QTimer::timeout, &heldKeysPoll_, [this] { noticeReleases(); });
    events_ = std::make_unique<XcbEventSource>(
        *connection_, [this](const xcb_generic_event_t& event) { handle(event); },
        [this] {
            unavailable_ = "Hot keys stopped working because the connection to the X server broke.";
            std::cerr << "Brimwick: " << unavailable_ << std::endl;
        });
}

X11HotKeyService::~X11HotKeyService() = default;

Capability X11HotKeyService::capability() const {
    return {.available = unavailable_.empty(), .reason = unavailable_};
}

void X11HotKeyService::setReleaseHandler(std::function<void(const HotKeyRelease&)> handler) {
    releaseHandler_ = std::move(handler);
}

void X11HotKeyService::setPressHandler(std::function<void()> handler) {
    pressHandler_ = std::move(handler);
}

HotKeyGrant X11HotKeyService::grab(std::uint16_t keyCode, std::uint32_t modifiers, std::uint32_t identifier) {
    if (!unavailable_.empty()) return {.grab = nullptr, .refusal = unavailable_};
    const std::uint32_t key = scanCodeOfVirtualKeyCode(keyCode).value_or(0);
    if (key > 0xff || !hasKey(static_cast<xcb_keycode_t>(key)))
        return {.grab = nullptr, .refusal = "There is no such key on this keyboard."};
    HotKey hotKey{.key = static_cast<xcb_keycode_t>(key), .modifiers = modifiers, .identifier = identifier};
    // The X server would not refuse a second grab of the same client.
    if (std::ranges::any_of(hotKeys_, [&](const HotKey& other) {
            return other.key == hotKey.key && modifiers_.mask(other.modifiers) == modifiers_.mask(modifiers);
        }))
        return {.grab = nullptr, .refusal = refusalOfSecondGrab};
    if (auto refusal = takeCombinations(hotKey)) return {.grab = nullptr, .refusal = std::move(*refusal)};
    hotKey.downWhenGrabbed = isDown(hotKey.key);
    if (hotKey.downWhenGrabbed) heldKeysPoll_.start();
    hotKeys_.push_back(hotKey);
    return {.grab = std::make_unique<Grab>(*this, std::prev(hotKeys_.end())), .refusal = {}};
}

bool X11HotKeyService::hasKey(xcb_keycode_t key) const {
    xcb_connection_t* server = connection_->get();
    const xcb_setup_t& setup = *xcb_get_setup(server);
    if (key < setup.min_keycode || key > setup.max_keycode) return false;
    const XcbOwned<xcb_get_keyboard_mapping_reply_t> symbols(
        xcb_get_keyboard_mapping_reply(server, xcb_get_keyboard_mapping(server, key, 1), nullptr));
    if (!symbols) return false;
    const xcb_keysym_t* first = xcb_get_keyboard_mapping_keysyms(symbols.get());
    return std::any_of(first, first + symbols->keysyms_per_keycode,
                       [](xcb_keysym_t symbol) { return symbol != XCB_NO_SYMBOL; });
}

bool X11HotKeyService::isDown(xcb_keycode_t key) const {
    constexpr unsigned bits = 8;
    const XcbOwned<xcb_query_keymap_reply_t> down(
        xcb_query_keymap_reply(connection_->get(), xcb_query_keymap(connection_->get()), nullptr));
    return down && (down->keys[key / bits] & (1U << (key % bits))) != 0;
}

void X11HotKeyService::noticeReleases() {
    bool any = false;
    for (HotKey& hotKey : hotKeys_) {
        hotKey.downWhenGrabbed = hotKey.downWhenGrabbed && isDown(hotKey.key);
        hotKey.heldSinceBefore = hotKey.downWhenGrabbed;
        any = any || hotKey.downWhenGrabbed;
    }
    if (!any) heldKeysPoll_.stop();
}

std::optional<std::string> X11HotKeyService::takeCombinations(const HotKey& hotKey) {
    xcb_connection_t* server = connection_->get();
    std::vector<xcb_void_cookie_t> cookies;
    for (const std::uint16_t locks : modifiers_.lockCombinations())
        cookies.push_back(xcb_grab_key_checked(server, 1, connection_->root(),
                                               modifiers_.mask(hotKey.modifiers) | locks, hotKey.key,
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    std::uint8_t error = 0;
    for (const xcb_void_cookie_t cookie : cookies)
        if (const XcbOwned<xcb_generic_error_t> failure{xcb_request_check(server, cookie)})
            error = failure->error_code;
    if (connection_->isBroken()) return "The connection to the X server broke.";
    if (error == 0) return std::nullopt;
    giveBackCombinations(hotKey);
    if (error == XCB_ACCESS) return "Another program already uses this hot key.";
    return "The X server refused this hot key with error " + std::to_string(error) + ".";
}

void X11HotKeyService::giveBackCombinations(const HotKey& hotKey) {
    for (const std::uint16_t locks : modifiers_.lockCombinations())
        xcb_ungrab_key(connection_->get(), hotKey.key, connection_->root(),
                       modifiers_.mask(hotKey.modifiers) | locks);
    xcb_flush(connection_->get());
}

void X11HotKeyService::release(HotKeys::iterator hotKey) {
    giveBackCombinations(*hotKey);
    hotKeys_.erase(hotKey);
}

void X11HotKeyService::handle(const xcb_generic_event_t& event) {
    const std::uint8_t type = eventType(event);
    if (type == XCB_KEY_PRESS)
        keyWentDown(reinterpret_cast<const xcb_key_press_event_t&>(event));
    else if (type == XCB_KEY_RELEASE)
        keyWentUp(reinterpret_cast<const xcb_key_release_event_t&>(event));
    else if (type == XCB_MAPPING_NOTIFY || type == firstKeyboardEvent_)
        // One change of layout comes as a burst of events, the first of them before the new mapping is
        // complete.
        mappingSettled_.start();
}

void X11HotKeyService::chordWasMissed(const xcb_key_press_event_t& press) {
    keyWentDown(press);
    keyWentUp(press);
}

void X11HotKeyService::keyWentDown(const xcb_key_press_event_t& event) {
    const auto sameKey = [&](const HotKey& hotKey) { return hotKey.key == event.detail; };
    const bool repeats = std::ranges::any_of(
        hotKeys_, [&](const HotKey& hotKey) { return sameKey(hotKey) && hotKey.pressed; });
    if (repeats) return;
    const auto hotKey = std::ranges::find_if(hotKeys_, [&](const HotKey& candidate) {
        return sameKey(candidate) &&
               modifiers_.mask(candidate.modifiers) == modifiers_.withoutLocks(event.state);
    });
    if (hotKey == hotKeys_.end() || hotKey->heldSinceBefore) return;
    hotKey->downWhenGrabbed = false;
    hotKey->pressed = true;
    if (pressHandler_) pressHandler_();
}

void X11HotKeyService::keyWentUp(const xcb_key_release_event_t& event) {
    for (HotKey& candidate : hotKeys_)
        if (candidate.key == event.detail) candidate.downWhenGrabbed = candidate.heldSinceBefore = false;
    // The modifiers often go up first, so the key alone decides.
    const auto hotKey = std::ranges::find_if(hotKeys_, [&](const HotKey& candidate) {
        return candidate.pressed && candidate.key == event.detail;
    });
    if (hotKey == hotKeys_.end()) return;
    const HotKeyRelease notice{.identifier = hotKey->identifier,
                               .modifierFlags = modifiers_.eventFlags(event.state),
                               .timestamp = event.time,
                               .x = double(event.root_x),
                               .y = double(event.root_y)};
    // The grab has ended, and with it the delivery of other hot keys that went down meanwhile.
    for (HotKey& other : hotKeys_) other.pressed = false;
    xcb_ungrab_keyboard(connection_->get(), XCB_CURRENT_TIME);
    connection_->synchronise();
    userTime_.note(event.time);
    if (releaseHandler_) releaseHandler_(notice);
    if (doneHandler_) doneHandler_();
}

void X11HotKeyService::followModifierMapping() {
    const KeyboardModifiers now = KeyboardModifiers::read(*connection_);
    if (now == modifiers_ || connection_->isBroken()) return;
    for (const HotKey& hotKey : hotKeys_) giveBackCombinations(hotKey);
    modifiers_ = now;
    for (const HotKey& hotKey : hotKeys_)
        if (const auto refusal = takeCombinations(hotKey))
            std::cerr << "Brimwick: a hot key was lost when the keyboard changed. " << *refusal << std::endl;
}

} // namespace brimwick

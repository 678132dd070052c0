#include "platform/linux/x11/XcbConnection.h"

namespace brimwick {

std::unique_ptr<XcbConnection> XcbConnection::connect() {
    int screen = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &screen);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<XcbConnection>(new XcbConnection(connection, screen));
}

XcbConnection::XcbConnection(xcb_connection_t* connection, int screen) : connection_(connection) {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen > 0 && screens.rem > 1; --screen) xcb_screen_next(&screens);
    root_ = screens.data->root;
}

XcbConnection::~XcbConnection() {
    xcb_disconnect(connection_);
}

xcb_atom_t XcbConnection::atom(std::string_view name) {
    const auto known = atoms_.find(std::string(name));
    if (known != atoms_.end()) return known->second;
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XcbOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    if (!reply) return XCB_ATOM_NONE;
    atoms_.emplace(name, reply->atom);
    return reply->atom;
}

std::string XcbConnection::atomName(xcb_atom_t atom) const {
    const XcbOwned<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr));
    if (!reply) return {};
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

namespace {

constexpr std::uint32_t wholeProperty = 1U << 20U;

XcbOwned<xcb_get_property_reply_t> property(xcb_connection_t* connection, xcb_window_t window,
                                            xcb_atom_t name) {
    const auto cookie =
        xcb_get_property(connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, wholeProperty);
    return XcbOwned<xcb_get_property_reply_t>(xcb_get_property_reply(connection, cookie, nullptr));
}

} // namespace

std::vector<std::uint32_t> XcbConnection::propertyItems(xcb_window_t window, xcb_atom_t name) const {
    const auto reply = property(connection_, window, name);
    if (!reply || reply->format != 32) return {};
    const auto* items = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {items, items + reply->value_len};
}

std::string XcbConnection::propertyBytes(xcb_window_t window, xcb_atom_t name) const {
    const auto reply = property(connection_, window, name);
    if (!reply || reply->format != 8) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

void XcbConnection::synchronise() const {
    const XcbOwned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

} // namespace brimwick

#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brimwick {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
/// What xcb hands out and the receiver frees: replies, errors, events.
template<typename T>
using XcbOwned = std::unique_ptr<T, FreeReply>;

/// A connection of our own to the X server, with the few requests that every user of it makes. To be used
/// from one thread at a time.
class XcbConnection {
  public:
    /// Nothing when there is no X server.
    static std::unique_ptr<XcbConnection> connect();
    XcbConnection(const XcbConnection&) = delete;
    XcbConnection& operator=(const XcbConnection&) = delete;
    ~XcbConnection();

    xcb_connection_t* get() const { return connection_; }
    xcb_window_t root() const { return root_; }
    bool isBroken() const { return xcb_connection_has_error(connection_) != 0; }
    xcb_atom_t atom(std::string_view name);
    std::string atomName(xcb_atom_t atom) const;

    /// The 32-bit items of a property; empty when it is absent or of another format.
    std::vector<std::uint32_t> propertyItems(xcb_window_t window, xcb_atom_t property) const;
    /// The bytes of a property; empty when it is absent or not of bytes.
    std::string propertyBytes(xcb_window_t window, xcb_atom_t property) const;
    /// Waits until the server has handled every request made so far.
    void synchronise() const;

  private:
    explicit XcbConnection(xcb_connection_t* connection, int screen);

    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_NONE;
    std::unordered_map<std::string, xcb_atom_t> atoms_;
};

} // namespace brimwick

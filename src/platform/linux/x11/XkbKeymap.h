#pragma once

#include "platform/linux/x11/XcbConnection.h"

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <string>

namespace brimwick {

/// The keyboard's map as the X server has it, with the layout that is on and the compose sequences of the
/// user's language.
class XkbKeymap {
  public:
    /// Where the server has no map, isAvailable() says so.
    explicit XkbKeymap(const XcbConnection& connection);
    /// Takes over what the server has now; where that cannot be read, what was there stays.
    void readAnew(const XcbConnection& connection);

    bool isAvailable() const { return keymap_ != nullptr; }
    /// The symbol of an X key with Shift or without; the keypad gives its digits.
    xkb_keysym_t symbol(xkb_keycode_t key, bool shift) const;

    struct Composed {
        /// UTF-8.
        std::string text;
        /// The symbol that waits for another key; 0 when none does.
        xkb_keysym_t waiting = 0;
    };
    /// What a symbol types after one that waits, 0 for none.
    Composed compose(xkb_keysym_t waiting, xkb_keysym_t symbol) const;

  private:
    template<auto unreference>
    struct Unreference {
        void operator()(auto* object) const { unreference(object); }
    };
    template<typename T, auto unreference>
    using Owned = std::unique_ptr<T, Unreference<unreference>>;

    xkb_mod_mask_t modifier(const char* name) const;

    Owned<xkb_context, xkb_context_unref> context_;
    Owned<xkb_keymap, xkb_keymap_unref> keymap_;
    Owned<xkb_compose_table, xkb_compose_table_unref> compositions_;
    xkb_layout_index_t layout_ = 0;
};

} // namespace brimwick

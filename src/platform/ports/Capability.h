#pragma once

#include <string>

namespace brimwick {

/// What a port can do on this desktop. A value, asked before anything is shown.
struct Capability {
    bool available = false;
    /// Why not, as one sentence for the user; empty when available.
    std::string reason;
};

} // namespace brimwick

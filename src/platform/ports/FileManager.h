#pragma once

#include "platform/ports/Capability.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace brimwick {

/// The name under which any file manager that is in front answers.
inline constexpr const char* finderProcessName = "Finder";

/// What a window of the file manager shows, by the window that shows it.
struct WindowTarget {
    std::uint64_t window = 0;
};

/// The file manager that the user works in. Main thread only; each call is answered within a second.
class FileManager {
  public:
    virtual ~FileManager() = default;

    virtual Capability capability() const = 0;
    /// The process in front when the request was made, this program left out of account: "Finder" for every
    /// file manager and for a desktop with nothing in front. Empty where the question cannot be asked.
    virtual std::optional<std::string> frontmostProcessName() = 0;
    /// The file manager's windows, the front one first; the desktop is not among them.
    virtual std::vector<WindowTarget> windowTargets() = 0;
    /// Brings the very window to the front; never opens another.
    virtual void raise(const WindowTarget& target) = 0;
    /// Gives the file manager that was last in front the keyboard focus again.
    virtual void activate() = 0;
    /// The selected items of the window in front, as URLs, in the file manager's order; not all need be
    /// files. The user's clipboard is as it was when this returns.
    virtual std::vector<std::string> selection() = 0;
    /// Makes the icons on the desktop what `selection` reads next; does nothing where there are none.
    virtual void selectDesktop() = 0;
    /// Shows a folder in the file manager. Returns at once; a failure goes to stderr.
    virtual void openFolder(const std::string& fileUrl) = 0;
    /// Called each time that the window of an opened folder takes the keyboard focus while it appears.
    virtual void setFolderShownHandler(std::function<void()> handler) = 0;
};

} // namespace brimwick

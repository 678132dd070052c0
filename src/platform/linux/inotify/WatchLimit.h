#pragma once

#include <cstddef>
#include <optional>

namespace brimwick {

/// How many watches the program allows itself: what the system gives a user, less a reserve for the user's
/// other programs.
class WatchLimit {
  public:
    /// The system's limit when none is given.
    explicit WatchLimit(std::optional<std::size_t> limit);

    /// Forgets what was reached, and asks the system again: its limit may have been raised, and others may
    /// have given watches back.
    void startAnew();

    std::size_t allowed() const { return allowed_; }
    /// The system refused a further watch when there were so many: others hold the rest.
    void wasReachedAt(std::size_t watches);

  private:
    std::optional<std::size_t> given_;
    std::size_t reserve_ = 0;
    std::size_t allowed_ = 0;
};

} // namespace brimwick

#pragma once

#include "hotkeys/RegisteredHotKey.h"

#include <vector>

namespace brimwick {

/// The hot keys of the whole program, which every `BWHotKeyCenter` sees. Main thread only.
class HotKeyRegistry {
  public:
    /// The service must outlive the registry, which takes its releases.
    explicit HotKeyRegistry(HotKeyService& service);
    HotKeyRegistry(const HotKeyRegistry&) = delete;
    HotKeyRegistry& operator=(const HotKeyRegistry&) = delete;
    ~HotKeyRegistry();

  private:
    friend class BWHotKeyCenter;

    /// Invokes the hot key with a release of its key. One that is registered no more invokes nothing.
    void hotKeyWasReleased(const HotKeyRelease& release) const;

    HotKeyService& service_;
    std::vector<std::shared_ptr<RegisteredHotKey>> hotKeys_;
    /// Counted up with each registration, and so never used again.
    std::uint32_t identifierCounter_ = 1;
};

} // namespace brimwick

#pragma once

#include <chrono>
#include <functional>

namespace brimwick {

/// Interrupts long work every few milliseconds, so that what happens meanwhile is not left waiting.
class Pace {
  public:
    /// `carryOn` does what waits and tells whether the work still makes sense.
    explicit Pace(std::function<bool()> carryOn) : carryOn_(std::move(carryOn)) {}

    /// To be called after each step. False: give the work up.
    bool keepsOn() {
        if (++steps_ % stepsBetweenLooks != 0) return true;
        return looksUp();
    }
    /// The same after a step that takes long by itself.
    bool looksUp() {
        const auto now = std::chrono::steady_clock::now();
        if (now - lastPause_ < workBetweenPauses) return true;
        const bool carriesOn = carryOn_();
        lastPause_ = std::chrono::steady_clock::now();
        return carriesOn;
    }

  private:
    static constexpr int stepsBetweenLooks = 32;
    static constexpr std::chrono::milliseconds workBetweenPauses{3};

    std::function<bool()> carryOn_;
    unsigned steps_ = 0;
    std::chrono::steady_clock::time_point lastPause_ = std::chrono::steady_clock::now();
};

} // namespace brimwick

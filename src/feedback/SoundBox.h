#pragma once

#include "platform/ports/SoundPlayer.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace brimwick {

/// Which sound stands for what. No preference is read here: the callers do. Main thread only.
class SoundBox {
  public:
    /// `random` yields a fresh 32-bit number at every call.
    SoundBox(SoundPlayer& player, std::function<std::uint32_t()> random);

    /// One of the open set for true, of the move set for false, drawn independently each time.
    void playRandomSound(bool openSet);
    void playTrashSound() { player_.play("CrumplingPaper.mp3"); }
    void playDingSound() { player_.play("Ding.mp3"); }
    void playCopySound() { player_.play("Camera.mp3"); }
    /// The refusal.
    void beep() { player_.play("Basso.aiff"); }

  private:
    SoundPlayer& player_;
    std::function<std::uint32_t()> random_;
};

} // namespace brimwick

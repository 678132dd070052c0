#pragma once

#include <string>

namespace brimwick {

/// One-shot sounds. Main thread only; never blocks.
class SoundPlayer {
  public:
    virtual ~SoundPlayer() = default;
    /// Starts the clip of this file name, such as "Ding.mp3". No device or no clip is silence.
    virtual void play(const std::string& clip) = 0;
};

} // namespace brimwick

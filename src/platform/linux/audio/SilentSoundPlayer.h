#pragma once

#include "platform/ports/SoundPlayer.h"

namespace brimwick {

/// Plays nothing: what a desktop without a sound device has.
class SilentSoundPlayer : public SoundPlayer {
  public:
    void play(const std::string& clip) override;
};

} // namespace brimwick

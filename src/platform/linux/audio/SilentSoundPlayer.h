#pragma once

#include "platform/ports/SoundPlayer.h"

namespace brimwick {

/// Plays nothing. There are no clips yet.
class SilentSoundPlayer : public SoundPlayer {
  public:
    void play(const std::string& clip) override;
};

} // namespace brimwick

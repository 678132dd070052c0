#pragma once

#include "platform/ports/SoundPlayer.h"

#include <vector>

namespace brimwick {

/// Keeps the names of the clips that were played.
class FakeSoundPlayer : public SoundPlayer {
  public:
    void play(const std::string& clip) override { played.push_back(clip); }

    std::vector<std::string> played;
};

} // namespace brimwick

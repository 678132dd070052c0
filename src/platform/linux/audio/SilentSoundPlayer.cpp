#include "platform/linux/audio/SilentSoundPlayer.h"

namespace brimwick {

void SilentSoundPlayer::play(const std::string& /*clip*/) {}

} // namespace brimwick

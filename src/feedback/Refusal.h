#pragma once

#include "feedback/SoundBox.h"
#include "feedback/UserNotifications.h"

#include <string>

namespace brimwick {

/// Tells that a command or an input is refused: the refusal sound, and why. Main thread only.
void refuse(SoundBox& sounds, UserNotifications& notifications, const std::string& why);

} // namespace brimwick

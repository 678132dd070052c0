#include "feedback/Refusal.h"

namespace brimwick {

void refuse(SoundBox& sounds, UserNotifications& notifications, const std::string& why) {
    sounds.beep();
    notifications.sendUserNotification(why);
}

} // namespace brimwick

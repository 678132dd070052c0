#include "feedback/UserNotifications.h"

#include <array>
#include <ctime>

namespace brimwick {

std::string notificationTime(std::chrono::system_clock::time_point moment) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
    std::tm local{};
    localtime_r(&seconds, &local);
    const auto formatted = [&local](const char* format) {
        std::array<char, 64> text{};
        return std::string(text.data(), std::strftime(text.data(), text.size(), format, &local));
    };
    std::string marker = formatted("%p");
    if (marker.empty()) marker = local.tm_hour < 12 ? "AM" : "PM";
    return formatted("%-I:%M:%S ") + marker;
}

void UserNotifications::sendUserNotification(const std::string& text) {
    const bool aboutIndex = text.starts_with("Index ");
    // Of thousands of files most are told of in the same second.
    const auto second = std::chrono::floor<std::chrono::seconds>(clock_.now());
    if (second != timedSecond_) {
        timedSecond_ = second;
        time_ = notificationTime(second);
    }
    service_.deliver({"Brimwick", time_ + "\n" + text, aboutIndex});
}

} // namespace brimwick

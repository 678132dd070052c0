#include "platform/linux/inotify/WatchingTexts.h"

#include <cerrno>
#include <cstring>

namespace brimwick {
namespace {

constexpr std::size_t comfortableLimit = 1048576;

} // namespace

std::string watchLimitReached(std::size_t unwatched, std::size_t all) {
    std::size_t enough = comfortableLimit;
    while (enough < 2 * all) enough *= 2;
    return "Changes in " + std::to_string(unwatched) + " of " + std::to_string(all) +
           " folders will be noticed late, because the system lets a user watch no more of them; "
           "to raise its limit, run \"sudo sysctl fs.inotify.max_user_watches=" +
           std::to_string(enough) + "\".";
}

std::string watchingIsUnavailable(int error) {
    std::string text = "Changes of folders will be noticed late, because the system cannot watch them: ";
    if (error == EMFILE)
        return text + "other programs have used all that it allows; to raise its limit, run "
                      "\"sudo sysctl fs.inotify.max_user_instances=1024\".";
    return text + std::strerror(error) + ".";
}

std::string watchingCannotStart(const std::string& reason) {
    return "Changes of folders will not be noticed: " + reason + ".";
}

std::string watchingHasEnded(const std::string& reason) {
    return "Changes of folders are noticed no longer: " + reason + ".";
}

} // namespace brimwick

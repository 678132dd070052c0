#include "platform/linux/inotify/FolderChanges.h"

#include "platform/ports/FolderEventStream.h"

#include <unordered_map>

namespace brimwick {
namespace {

std::uint32_t flagOf(std::uint32_t mask) {
    return (mask & (IN_CREATE | IN_MOVED_TO)) != 0 ? FolderEventFlag::created : FolderEventFlag::removed;
}

} // namespace

FolderChanges folderChanges(const std::vector<InotifyEvent>& events, const FolderRules& rules) {
    FolderChanges result;
    std::unordered_map<std::uint32_t, std::size_t> movedAway;
    for (const InotifyEvent& event : events) {
        result.overflowed |= (event.mask & IN_Q_OVERFLOW) != 0;
        result.rootTouched |= (event.mask & (IN_DELETE_SELF | IN_MOVE_SELF)) != 0;
        result.unmounted |= (event.mask & IN_UNMOUNT) != 0;
        if ((event.mask & IN_IGNORED) != 0) result.ended.push_back(event.watch);
        if ((event.mask & namesComeAndGo) == 0 || (event.mask & IN_ISDIR) == 0) continue;
        if (!rules.isIndexedName(event.name)) continue;

        const bool movedIn = (event.mask & IN_MOVED_TO) != 0;
        result.places.push_back({event.watch, movedIn ? std::string(event.name) : std::string()});
        if (const auto other = movedAway.find(event.cookie); movedIn && other != movedAway.end()) {
            result.flags[other->second] = FolderEventFlag::isFolder | FolderEventFlag::renamed;
            continue;
        }
        if ((event.mask & IN_MOVED_FROM) != 0) movedAway[event.cookie] = result.flags.size();
        result.flags.push_back(FolderEventFlag::isFolder | flagOf(event.mask));
    }
    if (result.overflowed) result.flags.push_back(FolderEventFlag::isFolder);
    return result;
}

} // namespace brimwick

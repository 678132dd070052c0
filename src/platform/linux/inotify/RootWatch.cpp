#include "platform/linux/inotify/RootWatch.h"

#include "platform/linux/inotify/Paths.h"
#include "platform/ports/FolderEventStream.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <deque>
#include <string_view>
#include <utility>

namespace brimwick {
namespace {

constexpr std::uint32_t watchedFor = namesComeAndGo | IN_ONLYDIR | IN_EXCL_UNLINK;
constexpr int mostLinks = 40;

/// Puts the components of a path before what is to be followed yet.
void putFirst(std::deque<std::string>& components, std::string_view path) {
    std::deque<std::string> first;
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        if (end > start && path.substr(start, end - start) != ".")
            first.emplace_back(path.substr(start, end - start));
        start = end + 1;
    }
    components.insert(components.begin(), first.begin(), first.end());
}

std::string joined(const std::string& folder, const std::string& name) {
    return folder == "/" ? "/" + name : folder + "/" + name;
}

} // namespace

RootWatch::RootWatch(std::vector<std::string> roots, Inotify inotify)
    : roots_(std::move(roots)), inotify_(std::move(inotify)) {
    changes();
}

bool RootWatch::wasTouched() {
    bool touched = false;
    for (inotify_.read(events_); !events_.empty(); inotify_.read(events_)) {
        for (const InotifyEvent& event : events_) {
            if ((event.mask & (IN_Q_OVERFLOW | IN_IGNORED | IN_UNMOUNT)) != 0) touched = true;
            const auto names = names_.find(event.watch);
            if (names != names_.end() && names->second.contains(std::string(event.name))) touched = true;
        }
    }
    return touched;
}

std::vector<std::uint32_t> RootWatch::changes() {
    const bool first = identities_.empty();
    identities_.resize(roots_.size());
    const auto before = std::move(names_);
    names_.clear();
    paths_ = {roots_.begin(), roots_.end()};
    lacksRoom_ = lacksPermission_ = false;
    std::vector<std::uint32_t> flags;
    for (std::size_t i = 0; i < roots_.size(); ++i) {
        const Identity now = follow(roots_[i]);
        const Identity then = std::exchange(identities_[i], now);
        if (first || now == then) continue;
        std::uint32_t flag = FolderEventFlag::renamed;
        if (!then.exists) flag = FolderEventFlag::created;
        if (!now.exists) flag = FolderEventFlag::removed;
        flags.push_back(FolderEventFlag::isFolder | flag);
    }
    for (const auto& [watch, names] : before)
        if (!names_.contains(watch)) inotify_.remove(watch);
    return flags;
}

RootWatch::Identity RootWatch::follow(const std::string& root) {
    if (!root.starts_with('/')) return {};
    std::deque<std::string> components;
    putFirst(components, root);
    std::string folder = "/";
    struct stat status {};
    int links = 0;
    while (!components.empty()) {
        const std::string name = std::move(components.front());
        components.pop_front();
        if (name == "..") {
            folder = parentOf(folder);
            continue;
        }
        watchName(folder, name);
        const std::string path = joined(folder, name);
        if (lstat(path.c_str(), &status) != 0) return {};
        if (!S_ISLNK(status.st_mode)) {
            folder = path;
            continue;
        }
        std::array<char, PATH_MAX> target;
        const ssize_t size = readlink(path.c_str(), target.data(), target.size());
        if (size <= 0 || ++links > mostLinks) return {};
        if (target[0] == '/') folder = "/";
        putFirst(components, {target.data(), static_cast<std::size_t>(size)});
    }
    paths_.insert(folder);
    if (stat(folder.c_str(), &status) != 0) return {};
    return {true, status.st_dev, status.st_ino};
}

void RootWatch::watchName(const std::string& folder, const std::string& name) {
    const WatchNumber watch = inotify_.add(folder.c_str(), watchedFor);
    if (watch >= 0)
        names_[watch].insert(name);
    else if (inotify_.lacksRoom())
        lacksRoom_ = true;
    else if (errno == EACCES)
        lacksPermission_ = true;
}

} // namespace brimwick

#pragma once

#include "platform/linux/inotify/Inotify.h"

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace brimwick {

/// Notices that a root comes, goes or becomes another folder: watches every name on the way to it, links
/// followed, whether there is something of that name yet or not. One thread.
class RootWatch {
  public:
    RootWatch(std::vector<std::string> roots, Inotify inotify);

    /// 0, or why no name can be watched (an errno value).
    int error() const { return inotify_.error(); }
    /// Readable when something happened on the way to a root, or close to it.
    int descriptor() const { return inotify_.descriptor(); }
    /// Takes what happened; whether a root may be another one since.
    bool wasTouched();
    /// Looks at every root; one event for each that is not what it was.
    std::vector<std::uint32_t> changes();
    /// Whether a name on the way cannot be watched: then changes() must be asked now and then.
    bool isBlind() const { return lacksRoom_ || lacksPermission_; }
    /// Whether that is for want of room for watches.
    bool lacksRoom() const { return lacksRoom_; }
    /// The roots' paths, as given and with links followed.
    const std::set<std::string>& paths() const { return paths_; }

  private:
    struct Identity {
        bool exists = false;
        dev_t device = 0;
        ino_t inode = 0;
        bool operator==(const Identity&) const = default;
    };

    Identity follow(const std::string& root);
    void watchName(const std::string& folder, const std::string& name);

    std::vector<std::string> roots_;
    Inotify inotify_;
    std::vector<Identity> identities_;
    std::map<WatchNumber, std::set<std::string>> names_;
    std::set<std::string> paths_;
    bool lacksRoom_ = false;
    bool lacksPermission_ = false;
    std::vector<InotifyEvent> events_;
};

} // namespace brimwick

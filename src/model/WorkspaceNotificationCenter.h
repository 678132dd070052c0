#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace brimwick {

/// The process-wide channel between objects that do not know each other. Main thread only.
class WorkspaceNotificationCenter {
  public:
    /// Receives the object that posted the notification; null when it posted none.
    using Observer = std::function<void(void* object)>;

    void addObserver(const std::string& name, Observer observer) {
        observers_[name].push_back(std::move(observer));
    }
    /// Calls the observers of the name, in the order in which they were added, before it returns.
    void postNotification(const std::string& name, void* object) {
        for (const Observer& observer : observers_[name]) observer(object);
    }

  private:
    std::map<std::string, std::vector<Observer>> observers_;
};

} // namespace brimwick

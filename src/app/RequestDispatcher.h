#pragma once

#include "model/IndexRebuilder.h"
#include "platform/ports/InstanceService.h"
#include "platform/ports/MainLoop.h"

#include <functional>
#include <vector>

namespace brimwick {

/// What a start of the program asks of the one that runs already, so that its user finds a way in.
inline constexpr const char* verbToShowPreferences = "preferences";

/// Does what other starts of the program ask of this one. Main thread only.
class RequestDispatcher {
  public:
    /// All outlive the dispatcher.
    RequestDispatcher(InstanceService& service, const FolderIndexer& folders, const IndexRebuilder& rebuilder,
                      MainLoop& mainLoop, std::function<void()> showPreferences);
    RequestDispatcher(const RequestDispatcher&) = delete;
    RequestDispatcher& operator=(const RequestDispatcher&) = delete;
    ~RequestDispatcher();

    /// To be called when the first index was published, or given up: until then searches wait.
    void noteFirstIndex();

  private:
    void handle(const InstanceRequest& request, InstanceService::Answer answer);
    void showPreferences(const InstanceService::Answer& answer);
    void search(const InstanceRequest& request, const InstanceService::Answer& answer) const;
    void afterFirstIndex(std::function<void()> task);

    InstanceService& service_;
    const FolderIndexer& folders_;
    const IndexRebuilder& rebuilder_;
    MainLoop& mainLoop_;
    std::function<void()> showPreferences_;
    bool firstIndexIsDone_ = false;
    std::vector<std::function<void()>> waiting_;
};

} // namespace brimwick

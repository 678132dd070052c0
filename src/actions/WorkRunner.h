#pragma once

#include "actions/TransferProgress.h"

#include <functional>
#include <string>

namespace brimwick {

/// Work on files that may last, and its face to the user.
struct FileWork {
    /// What is done: "Moving files to folder Letters".
    std::string title;
    /// Runs to its end, or to that of the item in work once the progress is cancelled; on any thread, and in
    /// that case while the caller of the runner waits.
    std::function<void()> perform;
    /// Tells what was done since the last time; on the thread of the runner's caller.
    std::function<void()> report;
    TransferProgress& progress;
};

/// Has work done and returns when it is. What the work throws, this throws.
class WorkRunner {
  public:
    virtual ~WorkRunner() = default;
    virtual void run(const FileWork& work) = 0;
};

/// Does the work itself.
class InPlaceWorkRunner : public WorkRunner {
  public:
    void run(const FileWork& work) override {
        work.perform();
        work.report();
    }
};

} // namespace brimwick

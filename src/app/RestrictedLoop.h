#pragma once

#include "actions/WorkRunner.h"
#include "app/QtMainLoop.h"

#include <QElapsedTimer>

#include <functional>

namespace brimwick {

/// Has work done on a thread of its own and waits for it. Soon the windows are painted meanwhile, later the
/// user sees how far it is and can cancel it. Before the work is done no key or click reaches another window,
/// and no hot key, task or timer the program. Main thread only; throws when it is asked in the midst of work.
class RestrictedLoop : public WorkRunner {
  public:
    explicit RestrictedLoop(QtMainLoop& mainLoop) : mainLoop_(mainLoop) {}

    void run(const FileWork& work) override;

  private:
    void serveWindows(const FileWork& work, QElapsedTimer begun, const std::function<bool()>& isDone);

    QtMainLoop& mainLoop_;
    bool isAtWork_ = false;
};

} // namespace brimwick

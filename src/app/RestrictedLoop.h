#pragma once

#include "actions/WorkRunner.h"
#include "app/QtMainLoop.h"

#include <QElapsedTimer>

#include <functional>

namespace brimwick {

/// Has work done on a thread of its own and waits for it. Soon the windows are painted meanwhile, later the
/// user sees how far it is and can cancel it. Nothing else reaches the program before the work is done: no
/// key or click for another window, no hot key, task or timer. Main thread only; one at a time.
class RestrictedLoop : public WorkRunner {
  public:
    explicit RestrictedLoop(QtMainLoop& mainLoop) : mainLoop_(mainLoop) {}

    void run(const FileWork& work) override;

  private:
    void serveWindows(const FileWork& work, QElapsedTimer begun, const std::function<bool()>& isDone);

    QtMainLoop& mainLoop_;
};

} // namespace brimwick

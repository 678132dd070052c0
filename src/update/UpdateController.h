#pragma once

namespace brimwick {

/// The check for a newer version. There is none yet. Main thread only.
class UpdateController {
  public:
    void checkForUpdate() {}
};

} // namespace brimwick

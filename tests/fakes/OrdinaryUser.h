#pragma once

#include <unistd.h>

#include <stdexcept>

namespace brimwick {

/// While it lives, files are reached with the rights of an ordinary user, also when the tests run as root.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        if (privileged_ && seteuid(nobody) != 0) throw std::runtime_error("cannot become an ordinary user");
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (privileged_ && seteuid(0) != 0) std::terminate();
    }

  private:
    static constexpr uid_t nobody = 65534;
    const bool privileged_ = geteuid() == 0;
};

} // namespace brimwick

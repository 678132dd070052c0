#include "platform/linux/process/WakeUp.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>

namespace brimwick {

WakeUp::WakeUp() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

WakeUp::~WakeUp() {
    close(descriptor_);
}

void WakeUp::wake() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(descriptor_, &one, sizeof one);
}

} // namespace brimwick

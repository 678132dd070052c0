#include "platform/linux/process/WakeUp.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace brimwick {

WakeUp::WakeUp() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!descriptor_) throw std::system_error(errno, std::generic_category());
}

void WakeUp::wake() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(descriptor_.get(), &one, sizeof one);
}

void WakeUp::clear() const {
    std::uint64_t wakes = 0;
    [[maybe_unused]] const auto taken = read(descriptor_.get(), &wakes, sizeof wakes);
}

} // namespace brimwick

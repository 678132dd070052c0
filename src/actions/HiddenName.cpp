#include "actions/HiddenName.h"

#include <unistd.h>

#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <random>

namespace brimwick {

namespace {

const std::string prefix = ".brimwick-";

} // namespace

std::string randomText() {
    // Asking the system for each is slow.
    thread_local std::mt19937_64 random{(std::uint64_t{std::random_device()()} << 32U) |
                                        std::random_device()()};
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016" PRIx64, static_cast<std::uint64_t>(random()));
    return digits.data();
}

std::string hiddenName(std::string_view ending) {
    return prefix + std::to_string(getpid()) + "-" + randomText() + "." + std::string(ending);
}

bool isHiddenName(std::string_view name, std::string_view ending) {
    return name.starts_with(prefix) && name.ends_with("." + std::string(ending));
}

} // namespace brimwick

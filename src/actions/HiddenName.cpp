#include "actions/HiddenName.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <random>

namespace brimwick {

namespace {

const std::string prefix = ".brimwick-";

} // namespace

std::string randomText() {
    std::random_device random;
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%08x%08x", random(), random());
    return digits.data();
}

std::string hiddenName(std::string_view ending) {
    return prefix + std::to_string(getpid()) + "-" + randomText() + "." + std::string(ending);
}

bool isHiddenName(std::string_view name, std::string_view ending) {
    return name.starts_with(prefix) && name.ends_with("." + std::string(ending));
}

} // namespace brimwick

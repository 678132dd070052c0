#pragma once

#include <cstdint>

namespace brimwick {

/// A whole number that is handed along a chain of calls.
class BWInteger {
  public:
    BWInteger() = default;
    static BWInteger initWithInt(std::int32_t value) {
        BWInteger integer;
        integer.intValue_ = value;
        return integer;
    }

    /// A new number, one higher; this one keeps its value. After the highest comes the lowest.
    BWInteger increment() const {
        return initWithInt(static_cast<std::int32_t>(static_cast<std::uint32_t>(intValue_) + 1U));
    }
    std::int32_t intValue() const { return intValue_; }
    void setIntValue(std::int32_t value) { intValue_ = value; }

  private:
    std::int32_t intValue_ = 0;
};

} // namespace brimwick

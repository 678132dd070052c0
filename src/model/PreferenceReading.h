#pragma once

#include "model/PropertyList.h"

#include <cstdint>

namespace brimwick {

/// What a stored value says as a boolean. A number: whether it is not zero. A text: whether, after white
/// space, a sign and zeros, it begins with Y, y, T, t or a digit from 1 to 9. Anything else: no.
bool boolReading(const PropertyListValue& value);

/// What a stored value says as an integer. A text: its leading decimal digits, after white space and a sign,
/// kept within the range of the type; 0 when there are none. A real number: its whole part. Anything else: 0.
std::int64_t integerReading(const PropertyListValue& value);

} // namespace brimwick

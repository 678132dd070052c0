#include "model/PreferenceReading.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

namespace brimwick {

namespace {

using Limits = std::numeric_limits<std::int64_t>;

void removeLeading(std::string_view& text, std::string_view characters) {
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
}

/// Takes white space and one sign off the text; whether the sign was a minus.
bool removeSpaceAndSign(std::string_view& text) {
    removeLeading(text, " \t\n\v\f\r");
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    return negative;
}

bool boolReadingOfText(std::string_view text) {
    removeSpaceAndSign(text);
    removeLeading(text, "0");
    return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

std::int64_t integerReadingOfText(std::string_view text) {
    const bool negative = removeSpaceAndSign(text);
    std::int64_t number = 0;
    for (const char character : text) {
        if (character < '0' || character > '9') break;
        const int digit = negative ? '0' - character : character - '0';
        if (__builtin_mul_overflow(number, 10, &number) || __builtin_add_overflow(number, digit, &number))
            return negative ? Limits::min() : Limits::max();
    }
    return number;
}

std::int64_t integerReadingOfReal(double real) {
    if (std::isnan(real)) return 0;
    if (real >= 0x1p63) return Limits::max();
    if (real < -0x1p63) return Limits::min();
    return static_cast<std::int64_t>(real);
}

} // namespace

bool boolReading(const PropertyListValue& value) {
    if (const auto* boolean = std::get_if<bool>(&value.value)) return *boolean;
    if (const auto* integer = std::get_if<std::int64_t>(&value.value)) return *integer != 0;
    if (const auto* real = std::get_if<double>(&value.value)) return *real != 0;
    if (const auto* text = std::get_if<std::string>(&value.value)) return boolReadingOfText(*text);
    return false;
}

std::int64_t integerReading(const PropertyListValue& value) {
    if (const auto* boolean = std::get_if<bool>(&value.value)) return *boolean ? 1 : 0;
    if (const auto* integer = std::get_if<std::int64_t>(&value.value)) return *integer;
    if (const auto* real = std::get_if<double>(&value.value)) return integerReadingOfReal(*real);
    if (const auto* text = std::get_if<std::string>(&value.value)) return integerReadingOfText(*text);
    return 0;
}

} // namespace brimwick

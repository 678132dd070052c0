#include "hotkeys/Utf16.h"

#include <utf8proc.h>

#include <array>

namespace brimwick {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isLeading(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isTrailing(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Takes the first code point off.
char32_t takeCodePoint(std::u16string_view& text) {
    const char16_t first = text.front();
    text.remove_prefix(1);
    if (!isLeading(first)) return isTrailing(first) ? replacement : first;
    if (text.empty() || !isTrailing(text.front())) return replacement;
    const char16_t second = text.front();
    text.remove_prefix(1);
    return 0x10000 + ((first - 0xD800U) << 10U) + (second - 0xDC00U);
}

void append(char32_t codePoint, std::u16string& text) {
    if (codePoint < 0x10000) {
        text += static_cast<char16_t>(codePoint);
        return;
    }
    text += static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10U));
    text += static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FFU));
}

} // namespace

std::string utf8FromUtf16(std::u16string_view text) {
    std::string bytes;
    while (!text.empty()) {
        std::array<utf8proc_uint8_t, 4> encoded{};
        const auto codePoint = static_cast<utf8proc_int32_t>(takeCodePoint(text));
        bytes.append(encoded.begin(), encoded.begin() + utf8proc_encode_char(codePoint, encoded.data()));
    }
    return bytes;
}

std::u16string upperCased(std::u16string_view text) {
    // The letters that keyboards have and whose capital form takes two.
    constexpr char32_t sharpS = 0xDF;
    constexpr char32_t armenianEchYiwn = 0x587;
    std::u16string upper;
    while (!text.empty()) {
        const char32_t codePoint = takeCodePoint(text);
        if (codePoint == sharpS)
            upper += u"SS";
        else if (codePoint == armenianEchYiwn)
            upper += u"\u0535\u0552";
        else
            append(static_cast<char32_t>(utf8proc_toupper(static_cast<utf8proc_int32_t>(codePoint))), upper);
    }
    return upper;
}

} // namespace brimwick

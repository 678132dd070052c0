#include "model/NameFolding.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>

namespace brimwick {
namespace {

bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

char foldedAscii(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

void appendFoldedCodePoint(utf8proc_int32_t codePoint, std::string& folded) {
    constexpr auto options =
        static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_CASEFOLD | UTF8PROC_STRIPMARK);
    std::array<utf8proc_int32_t, 32> parts{};
    int unusedBoundary = 0;
    const utf8proc_ssize_t count =
        utf8proc_decompose_char(codePoint, parts.data(), parts.size(), options, &unusedBoundary);
    for (utf8proc_ssize_t i = 0; i < count; ++i) {
        std::array<utf8proc_uint8_t, 4> bytes{};
        const utf8proc_ssize_t length =
            utf8proc_encode_char(parts[static_cast<std::size_t>(i)], bytes.data());
        folded.append(bytes.begin(), bytes.begin() + length);
    }
}

} // namespace

void appendFoldedName(std::string_view name, std::string& folded) {
    while (!name.empty()) {
        const auto ascii = std::find_if_not(name.begin(), name.end(), isAscii);
        std::transform(name.begin(), ascii, std::back_inserter(folded), foldedAscii);
        name.remove_prefix(static_cast<std::size_t>(ascii - name.begin()));
        if (name.empty()) return;

        utf8proc_int32_t codePoint = -1;
        const utf8proc_ssize_t length =
            utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(name.data()),
                             static_cast<utf8proc_ssize_t>(name.size()), &codePoint);
        if (length > 0)
            appendFoldedCodePoint(codePoint, folded);
        else
            folded += name.front();
        name.remove_prefix(length > 0 ? static_cast<std::size_t>(length) : 1);
    }
}

std::string foldedName(std::string_view name) {
    std::string folded;
    appendFoldedName(name, folded);
    return folded;
}

} // namespace brimwick

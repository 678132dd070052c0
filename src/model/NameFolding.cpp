#include "model/NameFolding.h"

#include "model/AsciiCase.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>

namespace brimwick {
namespace {

bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

/// What a code point stands for, marks left out.
class Letters {
  public:
    Letters(utf8proc_int32_t codePoint, int options) {
        int unusedBoundary = 0;
        const auto found = utf8proc_decompose_char(
            codePoint, letters_.data(), letters_.size(),
            static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_STRIPMARK | options),
            &unusedBoundary);
        count_ = std::max<utf8proc_ssize_t>(found, 0);
    }
    auto begin() const { return letters_.begin(); }
    auto end() const { return letters_.begin() + count_; }

  private:
    std::array<utf8proc_int32_t, 32> letters_{};
    std::ptrdiff_t count_ = 0;
};

void appendFoldedCodePoint(utf8proc_int32_t codePoint, std::string& folded) {
    // The marks go before the case: the iota below a Greek letter, a mark, would become a letter otherwise,
    // but only where it is written as one code point with that letter.
    for (const utf8proc_int32_t letter : Letters(codePoint, 0)) {
        for (const utf8proc_int32_t small : Letters(letter, UTF8PROC_CASEFOLD)) {
            std::array<utf8proc_uint8_t, 4> bytes{};
            const utf8proc_ssize_t length = utf8proc_encode_char(small, bytes.data());
            folded.append(bytes.begin(), bytes.begin() + length);
        }
    }
}

} // namespace

void appendFoldedName(std::string_view name, std::string& folded) {
    while (!name.empty()) {
        const auto ascii = std::find_if_not(name.begin(), name.end(), isAscii);
        std::transform(name.begin(), ascii, std::back_inserter(folded), asciiLowerCase);
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

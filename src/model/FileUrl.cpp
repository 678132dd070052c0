#include "model/FileUrl.h"

#include "model/AsciiCase.h"
#include "model/PathText.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace brimwick {

namespace {

constexpr std::string_view kept = "/ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
constexpr auto isKept = [] {
    std::array<bool, 256> table{};
    for (const char character : kept) table[static_cast<unsigned char>(character)] = true;
    return table;
}();
constexpr std::string_view hexDigits = "0123456789ABCDEF";

bool removePrefixIgnoringCase(std::string_view& text, std::string_view prefix) {
    if (!isSameIgnoringAsciiCase(text.substr(0, prefix.size()), prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes += text[i];
            continue;
        }
        const std::string_view escape = text.substr(i + 1, 2);
        unsigned char byte = 0;
        const auto [end, error] = std::from_chars(escape.data(), escape.data() + escape.size(), byte, 16);
        if (escape.size() != 2 || error != std::errc() || end != escape.data() + 2) return std::nullopt;
        bytes += static_cast<char>(byte);
        i += 2;
    }
    return bytes;
}

void appendEncoded(std::string& encoded, std::string_view path) {
    const auto isPlain = [](char character) { return isKept[static_cast<unsigned char>(character)]; };
    const auto escapes = path.size() - static_cast<std::size_t>(std::ranges::count_if(path, isPlain));
    encoded.reserve(encoded.size() + path.size() + 2 * escapes + 1);
    for (const char character : path) {
        if (isPlain(character)) {
            encoded += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        encoded += '%';
        encoded += hexDigits[byte >> 4];
        encoded += hexDigits[byte & 15];
    }
}

} // namespace

std::string percentEncodedPath(std::string_view path) {
    std::string encoded;
    appendEncoded(encoded, path);
    return encoded;
}

std::string fileUrlWithPath(std::string_view path, bool isDirectory) {
    std::string url = "file://";
    appendEncoded(url, path);
    if (isDirectory && !url.ends_with('/')) url += '/';
    return url;
}

std::optional<std::string> pathOfFileUrl(std::string_view url) {
    if (!removePrefixIgnoringCase(url, "file://")) return std::nullopt;
    removePrefixIgnoringCase(url, "localhost");
    if (!url.starts_with('/') || url.find_first_of("?#") != std::string_view::npos) return std::nullopt;
    const std::optional<std::string> path = percentDecoded(url);
    if (!path || path->find('\0') != std::string::npos) return std::nullopt;
    return std::string(withoutTrailingSlashes(*path));
}

} // namespace brimwick

#include "app/commands/JsonText.h"

#include "model/XmlText.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace brimwick {

namespace {

constexpr std::string_view base64Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

void appendJsonCharacter(char character, std::string& json) {
    if (character == '"' || character == '\\') {
        json.append(1, '\\').append(1, character);
    } else if (static_cast<unsigned char>(character) < 0x20) {
        std::array<char, 8> escape = {};
        std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(character));
        json += escape.data();
    } else {
        json += character;
    }
}

} // namespace

void appendJsonString(std::string_view bytes, std::string& json) {
    json += '"';
    for (const char character : withReplacementCharacters(bytes)) appendJsonCharacter(character, json);
    json += '"';
}

void appendBase64(std::string_view bytes, std::string& text) {
    for (std::size_t start = 0; start < bytes.size(); start += 3) {
        const std::string_view group = bytes.substr(start, 3);
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 3; ++i)
            bits = bits << 8 | (i < group.size() ? static_cast<unsigned char>(group[i]) : 0U);
        for (std::size_t digit = 0; digit < 4; ++digit)
            text += digit <= group.size() ? base64Digits[bits >> (18 - 6 * digit) & 63] : '=';
    }
}

} // namespace brimwick

#include "model/XmlText.h"

#include <utf8proc.h>

namespace brimwick {

namespace {

struct Character {
    utf8proc_int32_t code = -1; // -1 for a byte that begins no character
    std::size_t length = 1;
};

Character firstCharacter(std::string_view bytes) {
    Character character;
    const utf8proc_ssize_t length =
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(bytes.data()),
                         static_cast<utf8proc_ssize_t>(bytes.size()), &character.code);
    if (length <= 0) return {};
    character.length = static_cast<std::size_t>(length);
    return character;
}

bool isXmlCharacter(utf8proc_int32_t code) {
    if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
    return code != 0xFFFE && code != 0xFFFF;
}

template<class Visitor>
void forEachCharacter(std::string_view bytes, Visitor visit) {
    while (!bytes.empty()) {
        const Character character = firstCharacter(bytes);
        if (!visit(character.code, bytes.substr(0, character.length))) return;
        bytes.remove_prefix(character.length);
    }
}

} // namespace

bool isUtf8(std::string_view bytes) {
    bool valid = true;
    forEachCharacter(bytes, [&](utf8proc_int32_t code, std::string_view) { return valid = code >= 0; });
    return valid;
}

bool survivesXml(std::string_view bytes) {
    bool survives = true;
    forEachCharacter(bytes, [&](utf8proc_int32_t code, std::string_view) {
        return survives = isXmlCharacter(code) && code != '\r';
    });
    return survives;
}

std::string withoutWhatXmlCannotHold(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    forEachCharacter(bytes, [&](utf8proc_int32_t code, std::string_view character) {
        if (isXmlCharacter(code)) text += character;
        return true;
    });
    return text;
}

std::string withReplacementCharacters(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    forEachCharacter(bytes, [&](utf8proc_int32_t code, std::string_view character) {
        text += code >= 0 ? character : "\xEF\xBF\xBD";
        return true;
    });
    return text;
}

} // namespace brimwick

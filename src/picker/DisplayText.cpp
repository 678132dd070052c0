#include "picker/DisplayText.h"

namespace brimwick {

QString displayText(std::string_view bytes) {
    QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    constexpr char16_t controlPictures = 0x2400;
    constexpr char16_t deletePicture = 0x2421;
    for (QChar& character : text) {
        if (character < QChar(u' '))
            character = QChar(static_cast<char16_t>(controlPictures + character.unicode()));
        if (character == QChar(u'\x7f')) character = QChar(deletePicture);
    }
    return text;
}

} // namespace brimwick

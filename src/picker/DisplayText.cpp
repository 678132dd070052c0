#include "picker/DisplayText.h"

namespace brimwick {

QString displayText(std::string_view bytes) {
    QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    for (QChar& character : text) {
        if (character == u'\n') character = QChar(u'\u21b5');
        if (character == u'\t') character = QChar(u'\u21e5');
        if (character.category() == QChar::Other_Control) character = QChar(QChar::ReplacementCharacter);
    }
    return text;
}

} // namespace brimwick

#include "app/commands/SearchOutput.h"

#include "app/commands/JsonText.h"
#include "model/XmlText.h"

#include <string>

namespace brimwick {

namespace {

/// What is gathered before it is handed on.
constexpr std::size_t portion = 65536;

void appendForTerminal(std::string_view path, std::string& text) {
    for (std::size_t i = 0; i < path.size(); ++i) {
        const auto byte = static_cast<unsigned char>(path[i]);
        // U+0080 to U+009F are control characters too, two bytes each.
        const bool isWideControl = byte == 0xC2 && i + 1 < path.size() &&
                                   static_cast<unsigned char>(path[i + 1]) >= 0x80 &&
                                   static_cast<unsigned char>(path[i + 1]) < 0xA0;
        if (isWideControl) ++i;
        text += isWideControl || byte < 0x20 || byte == 0x7F ? '?' : path[i];
    }
}

void appendObject(const FolderIndex& index, FolderNumber folder, std::string& text) {
    const std::string path = index.path(folder);
    text += R"({"name": )";
    appendJsonString(index.displayName(folder), text);
    text += R"(, "path": )";
    appendJsonString(path, text);
    if (!isUtf8(path)) {
        text += R"(, "path_bytes": ")";
        appendBase64(path, text);
        text += '"';
    }
    text += '}';
}

void appendEntry(const FolderIndex& index, FolderNumber folder, SearchFormat format, std::string& text) {
    switch (format) {
    case SearchFormat::lines:
        text.append(index.path(folder)).append(1, '\n');
        break;
    case SearchFormat::terminal:
        appendForTerminal(index.path(folder), text);
        text += '\n';
        break;
    case SearchFormat::nulSeparated:
        text.append(index.path(folder)).append(1, '\0');
        break;
    case SearchFormat::json:
        appendObject(index, folder, text);
        break;
    }
}

} // namespace

bool writeSearchResults(const FolderIndex& index, const std::vector<FolderNumber>& folders,
                        SearchFormat format, const ByteSink& output) {
    const bool isJson = format == SearchFormat::json;
    std::string text = isJson ? "[" : "";
    bool isFirst = true;
    for (const FolderNumber folder : folders) {
        if (isJson) text += isFirst ? "\n" : ",\n";
        isFirst = false;
        appendEntry(index, folder, format, text);
        if (text.size() < portion) continue;
        if (!output(text)) return false;
        text.clear();
    }
    if (isJson) text += isFirst ? "]\n" : "\n]\n";
    return text.empty() || output(text);
}

} // namespace brimwick

#include "preferences/ChosenFolder.h"

#include "model/PathText.h"

#include <QFile>
#include <QStringList>

#include <sys/stat.h>

#include <filesystem>
#include <optional>

namespace brimwick {

namespace {

bool liesThere(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

/// The path of the entry of a folder that looks like that.
std::optional<std::string> entryThatLooksLike(const std::string& folder, const QString& shownName) {
    std::string exact = joinPath(folder, QFile::encodeName(shownName).toStdString());
    if (liesThere(exact)) return exact;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (QFile::decodeName(QByteArray::fromStdString(name)) == shownName) return joinPath(folder, name);
    }
    return std::nullopt;
}

} // namespace

std::string exactPathOfShown(const QString& shownPath) {
    const std::string encoded = QFile::encodeName(shownPath).toStdString();
    if (liesThere(encoded)) return encoded;
    std::string path = "/";
    for (const QString& component : shownPath.split('/', Qt::SkipEmptyParts)) {
        const auto found = entryThatLooksLike(path, component);
        if (!found) return encoded;
        path = *found;
    }
    return path;
}

} // namespace brimwick

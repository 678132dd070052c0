#include "model/BWSelectedFileOrFolder.h"

#include "model/FileUrl.h"
#include "model/PathText.h"

#include <sys/stat.h>

#include <filesystem>

namespace brimwick {

namespace {

constexpr std::string_view trashRawName = ".Trash";
constexpr std::string_view trashDisplayName = "Trash";

std::optional<std::string> nameOnDisk(const std::string& path) {
    struct stat attributes;
    if (!path.starts_with('/') || path.find('\0') != std::string::npos ||
        lstat(path.c_str(), &attributes) != 0)
        return std::nullopt;
    return lastPathComponent(path);
}

bool holdsAnything(const std::string& folder) {
    std::error_code error;
    const std::filesystem::directory_iterator first(folder, error);
    return !error && first != std::filesystem::directory_iterator();
}

} // namespace

BWSelectedFileOrFolder::BWSelectedFileOrFolder()
    : name_(std::string()), trashIcon_(Icon{Icon::Source::Resource, "TrashIcon"}),
      fullTrashIcon_(Icon{Icon::Source::Resource, "FullTrashIcon"}) {}

BWSelectedFileOrFolder BWSelectedFileOrFolder::entry(std::string path, std::optional<std::string> url,
                                                     std::optional<std::string> name) {
    BWSelectedFileOrFolder entry;
    entry.setPath(std::move(path));
    entry.setUrl(std::move(url));
    // The icon goes in before the name, so that the Trash, too, takes it.
    entry.setIcon(Icon{Icon::Source::File, entry.path_});
    entry.setName(std::move(name));
    return entry;
}

BWSelectedFileOrFolder BWSelectedFileOrFolder::fileOrFolderWithURL(const std::string& url) {
    std::string path = pathOfFileUrl(url).value_or(std::string());
    std::optional<std::string> name = nameOnDisk(path);
    return entry(std::move(path), url, std::move(name));
}

BWSelectedFileOrFolder BWSelectedFileOrFolder::fileOrFolderWithPath(const std::string& path) {
    if (!path.starts_with('/')) return entry(path, std::nullopt, std::nullopt);
    std::string normal(withoutTrailingSlashes(path));
    std::optional<std::string> name = nameOnDisk(normal);
    return entry(std::move(normal), fileUrlWithPath(path, true), std::move(name));
}

BWSelectedFileOrFolder BWSelectedFileOrFolder::fileOrFolderJustPutAtPath(const std::string& path) {
    return entry(path, fileUrlWithPath(path, true), lastPathComponent(path));
}

BWSelectedFileOrFolder BWSelectedFileOrFolder::clone() const {
    return fileOrFolderWithPath(path_);
}

BWSelectedFileOrFolder BWSelectedFileOrFolder::parentFolder() const {
    return fileOrFolderWithPath(directoryPath());
}

std::string BWSelectedFileOrFolder::directoryPath() const {
    return parentPath(path_);
}

std::optional<std::string> BWSelectedFileOrFolder::name() const {
    if (isTrashFolder()) return std::string(trashDisplayName);
    return name_;
}

void BWSelectedFileOrFolder::setName(std::optional<std::string> name) {
    if (name && name == this->name()) return;
    name_ = std::move(name);
}

bool BWSelectedFileOrFolder::validateNameError(const std::optional<std::string>& name, std::string* error) {
    if (name) return true;
    if (error != nullptr) *error = "name may not be null";
    return false;
}

std::optional<Icon> BWSelectedFileOrFolder::icon() const {
    if (isTrashFolder()) icon_ = currentTrashIcon();
    return icon_;
}

void BWSelectedFileOrFolder::setIcon(std::optional<Icon> icon) {
    if (isTrashFolder())
        setTrashIcon();
    else
        icon_ = std::move(icon);
}

void BWSelectedFileOrFolder::setTrashIcon() {
    icon_ = currentTrashIcon();
}

const std::optional<Icon>& BWSelectedFileOrFolder::currentTrashIcon() const {
    return holdsAnything(path_) ? fullTrashIcon_ : trashIcon_;
}

bool BWSelectedFileOrFolder::isTrashFolder() const {
    return name_ == trashRawName;
}

} // namespace brimwick

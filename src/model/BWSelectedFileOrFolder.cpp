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

BWSelectedFileOrFolder::BWSelectedFileOrFolder() : name_(std::string()), trashIcons_(usualTrashIcons()) {}

const std::shared_ptr<const BWSelectedFileOrFolder::TrashIcons>& BWSelectedFileOrFolder::usualTrashIcons() {
    static const auto icons = std::make_shared<const TrashIcons>(
        TrashIcons{Icon{Icon::Source::Resource, "TrashIcon"}, Icon{Icon::Source::Resource, "FullTrashIcon"}});
    return icons;
}

BWSelectedFileOrFolder BWSelectedFileOrFolder::entry(std::string path, std::optional<std::string> url,
                                                     std::optional<std::string> name) {
    BWSelectedFileOrFolder entry;
    entry.path_ = std::move(path);
    entry.url_ = std::move(url);
    // The icon goes in before the name, so that the Trash, too, takes it.
    entry.hasIconOfFile_ = true;
    entry.setName(std::move(name));
    return entry;
}

BWSelectedFileOrFolder BWSelectedFileOrFolder::folderEntry(std::string path,
                                                           std::optional<std::string> name) {
    BWSelectedFileOrFolder folder = entry(std::move(path), std::nullopt, std::move(name));
    folder.hasUrlOfFolder_ = true;
    return folder;
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
    return folderEntry(std::move(normal), std::move(name));
}

BWSelectedFileOrFolder BWSelectedFileOrFolder::fileOrFolderJustPutAtPath(const std::string& path) {
    return folderEntry(path, lastPathComponent(path));
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

void BWSelectedFileOrFolder::setPath(std::string path) {
    if (hasUrlOfFolder_) setUrl(url());
    if (hasIconOfFile_) setIcon(icon());
    path_ = std::move(path);
}

std::optional<std::string> BWSelectedFileOrFolder::url() const {
    return hasUrlOfFolder_ ? fileUrlWithPath(path_, true) : url_;
}

void BWSelectedFileOrFolder::setUrl(std::optional<std::string> url) {
    hasUrlOfFolder_ = false;
    url_ = std::move(url);
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
    if (isTrashFolder()) {
        icon_ = currentTrashIcon();
        hasIconOfFile_ = false;
    }
    return hasIconOfFile_ ? Icon{Icon::Source::File, path_} : icon_;
}

void BWSelectedFileOrFolder::setIcon(std::optional<Icon> icon) {
    hasIconOfFile_ = false;
    if (isTrashFolder())
        icon_ = currentTrashIcon();
    else
        icon_ = std::move(icon);
}

void BWSelectedFileOrFolder::setTrashIcon() {
    hasIconOfFile_ = false;
    icon_ = currentTrashIcon();
}

const std::optional<Icon>& BWSelectedFileOrFolder::currentTrashIcon() const {
    return holdsAnything(path_) ? fullTrashIcon() : trashIcon();
}

void BWSelectedFileOrFolder::setTrashIcon(std::optional<Icon> icon) {
    trashIcons_ = std::make_shared<const TrashIcons>(TrashIcons{std::move(icon), fullTrashIcon()});
}

void BWSelectedFileOrFolder::setFullTrashIcon(std::optional<Icon> icon) {
    trashIcons_ = std::make_shared<const TrashIcons>(TrashIcons{trashIcon(), std::move(icon)});
}

bool BWSelectedFileOrFolder::isTrashFolder() const {
    return name_ == trashRawName;
}

} // namespace brimwick

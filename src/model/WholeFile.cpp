#include "model/WholeFile.h"

#include "model/PathText.h"
#include "platform/ports/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

namespace brimwick {

namespace {

constexpr int maximumLinks = 40;

tl::unexpected<std::string> systemError() {
    return tl::unexpected(std::generic_category().message(errno));
}

/// A new file beside its destination, removed again unless it is put in place.
class StagedFile {
  public:
    explicit StagedFile(const std::string& destination)
        : path_(joinPath(parentPath(destination), ".") + lastPathComponent(destination) + ".XXXXXX"),
          descriptor_(mkostemp(path_.data(), O_CLOEXEC)), exists_(static_cast<bool>(descriptor_)) {}
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;
    ~StagedFile() {
        if (exists_) unlink(path_.c_str());
    }

    bool fill(std::string_view content, std::optional<mode_t> permissions) {
        return exists_ && (!permissions || fchmod(descriptor_.get(), *permissions) == 0) &&
               writeAll(descriptor_.get(), content) && fsync(descriptor_.get()) == 0;
    }
    bool putInPlaceOf(const std::string& destination) {
        if (rename(path_.c_str(), destination.c_str()) != 0) return false;
        exists_ = false;
        return true;
    }

  private:
    std::string path_;
    FileDescriptor descriptor_;
    bool exists_;
};

std::optional<mode_t> permissionsOf(const std::string& path) {
    struct stat attributes;
    if (stat(path.c_str(), &attributes) != 0) return std::nullopt;
    return attributes.st_mode & 0777;
}

void makeNamesDurable(const std::string& folder) {
    const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor) fsync(descriptor.get());
}

} // namespace

tl::expected<std::string, std::string> readWholeFile(const std::string& path, std::size_t maximumSize) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat attributes;
    if (!file || fstat(file.get(), &attributes) != 0) return systemError();
    if (!S_ISREG(attributes.st_mode)) return tl::unexpected<std::string>("not a regular file");

    std::string content;
    std::array<char, 65536> block;
    while (content.size() <= maximumSize && static_cast<std::size_t>(attributes.st_size) <= maximumSize) {
        const ssize_t count = read(file.get(), block.data(), block.size());
        if (count == 0) return content;
        if (count < 0 && errno != EINTR) return systemError();
        if (count > 0) content.append(block.data(), static_cast<std::size_t>(count));
    }
    return tl::unexpected<std::string>("too large");
}

bool writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(descriptor, content.data(), content.size());
        if (written < 0 && errno != EINTR) return false;
        if (written > 0) content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

tl::expected<void, std::string> writeWholeFile(const std::string& path, std::string_view content) {
    const std::string destination = endOfSymbolicLinks(path);
    StagedFile staged(destination);
    if (!staged.fill(content, permissionsOf(destination)) || !staged.putInPlaceOf(destination))
        return systemError();
    makeNamesDurable(parentPath(destination));
    return {};
}

std::string endOfSymbolicLinks(const std::string& path) {
    std::filesystem::path end(path);
    for (int links = 0; links < maximumLinks; ++links) {
        std::error_code noLink;
        const std::filesystem::path target = std::filesystem::read_symlink(end, noLink);
        if (noLink) return end.string();
        end = end.parent_path() / target;
    }
    return path;
}

} // namespace brimwick

#include "model/FolderListing.h"

#include "model/FilePackage.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <limits>
#include <string_view>
#include <system_error>

namespace brimwick {

FileDescriptor openForListing(int parent, const char* path, int moreFlags) {
    FileDescriptor folder(openat(parent, path, O_RDONLY | O_DIRECTORY | O_CLOEXEC | moreFlags));
    if (!folder && (errno == EMFILE || errno == ENFILE || errno == ENOMEM))
        throw std::system_error(errno, std::generic_category());
    return folder;
}

bool isFolder(int directory, const char* name, unsigned char type) {
    if (type != DT_UNKNOWN) return type == DT_DIR;
    struct stat status {};
    return fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

bool isIndexedName(std::string_view name) {
    return !name.starts_with('.') && !isFilePackageName(name);
}

void appendSubfolderNames(int directory, std::string& names) {
    appendSubfolderNames(directory, names, std::numeric_limits<std::size_t>::max());
}

void appendSubfolderNames(int directory, std::string& names, std::size_t mostSubfolders) {
    alignas(dirent64) std::array<char, 32768> entries;
    while (mostSubfolders > 0) {
        const ssize_t filled = getdents64(directory, entries.data(), entries.size());
        if (filled <= 0) return;
        for (const char* next = entries.data(); next < entries.data() + filled && mostSubfolders > 0;) {
            const auto* entry = reinterpret_cast<const dirent64*>(next);
            next += entry->d_reclen;
            const std::string_view name = entry->d_name;
            if (name == "." || name == ".." || !isFolder(directory, entry->d_name, entry->d_type)) continue;
            --mostSubfolders;
            if (isIndexedName(name)) names.append(name).append(1, '\0');
        }
    }
}

} // namespace brimwick

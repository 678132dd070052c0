#include "model/FolderListing.h"

#include "model/FilePackage.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <string_view>

namespace brimwick {

bool isFolder(int directory, const char* name, unsigned char type) {
    if (type != DT_UNKNOWN) return type == DT_DIR;
    struct stat status {};
    return fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

void appendSubfolderNames(int directory, std::string& names) {
    alignas(dirent64) std::array<char, 32768> entries;
    for (;;) {
        const ssize_t filled = getdents64(directory, entries.data(), entries.size());
        if (filled <= 0) return;
        for (const char* next = entries.data(); next < entries.data() + filled;) {
            const auto* entry = reinterpret_cast<const dirent64*>(next);
            next += entry->d_reclen;
            const std::string_view name = entry->d_name;
            if (name.starts_with('.') || !isFolder(directory, entry->d_name, entry->d_type)) continue;
            if (isFilePackageName(name)) continue;
            names += name;
            names += '\0';
        }
    }
}

} // namespace brimwick

#include "model/CorruptFile.h"

#include "model/WholeFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>

namespace brimwick {

namespace {

namespace fs = std::filesystem;

std::string localTimeStamp() {
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    localtime_r(&now, &local);
    std::array<char, 32> text = {};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y%m%d-%H%M%S", &local);
    return std::string(text.data(), length);
}

/// 0, or the system's error number; EEXIST when the name is taken.
int keepUnderName(const fs::path& file, const fs::path& name) {
    // A second link costs nothing for a huge file and needs no right to read it.
    if (link(file.c_str(), name.c_str()) == 0) return 0;
    // File systems without links, and files that somebody else owns.
    if (errno != EEXIST && renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno == EEXIST) return EEXIST;
    std::error_code error;
    std::error_code ignored;
    if (!fs::copy_file(file, name, fs::copy_options::none, error) && error != std::errc::file_exists)
        fs::remove(name, ignored);
    return error.value();
}

} // namespace

bool keepCorruptFileAside(const std::string& path) {
    const fs::path file(endOfSymbolicLinks(path));
    std::error_code ignored;
    if (!fs::is_regular_file(file, ignored) || fs::file_size(file, ignored) == 0) return true;

    const std::string base = file.stem().string() + ".corrupt-" + localTimeStamp();
    const std::string extension = file.extension().string();
    int error = EEXIST;
    for (int attempt = 1; error == EEXIST; ++attempt) {
        const std::string number = attempt == 1 ? "" : "-" + std::to_string(attempt);
        error = keepUnderName(file, file.parent_path() / (base + number + extension));
    }
    return error == 0;
}

} // namespace brimwick

#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace brimwick {

/// A folder that disappears with its test.
class TemporaryFolder {
  public:
    TemporaryFolder() : TemporaryFolder(std::filesystem::temp_directory_path().string()) {}
    explicit TemporaryFolder(const std::string& parent) {
        std::string pattern = parent + "/brimwick-test-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path_ = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

    std::string makeFolder(const std::string& name) const {
        std::filesystem::create_directories(path_ + "/" + name);
        return path_ + "/" + name;
    }
    std::string makeFile(const std::string& name, const std::string& content = "content") const {
        std::ofstream(path_ + "/" + name, std::ios::binary) << content;
        return path_ + "/" + name;
    }
    static std::string read(const std::string& path) {
        std::ostringstream content;
        content << std::ifstream(path, std::ios::binary).rdbuf();
        return content.str();
    }
    static bool exists(const std::string& path) {
        return std::filesystem::exists(std::filesystem::symlink_status(path));
    }

  private:
    std::string path_;
};

} // namespace brimwick

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brimwick {

/// The files that ship with the program, looked up by name and type below one folder.
class Resources {
  public:
    explicit Resources(std::string directory) : directory_(std::move(directory)) {}
    /// The path of "NAME.TYPE", or nothing when no such file ships.
    std::optional<std::string> pathForResource(std::string_view name, std::string_view type) const;

  private:
    std::string directory_;
};

} // namespace brimwick

#pragma once

#include <tl/expected.hpp>

#include <string>

namespace brimwick {

/// The path of a folder given on the command line, made absolute and free of "." and ".."; a link that leads
/// to a folder keeps its path. The error says what hinders, with the path as it was given.
tl::expected<std::string, std::string> absoluteFolder(const std::string& given);

} // namespace brimwick

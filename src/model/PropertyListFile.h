#pragma once

#include "model/PropertyList.h"

#include <tl/expected.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace brimwick {

/// How deep containers may lie in each other in a property list, the root counted.
inline constexpr int maximumPropertyListDepth = 64;
/// In bytes.
inline constexpr std::size_t maximumPropertyListSize = std::size_t{64} << 20;

/// Reads an XML property list whose root is a dictionary. Safe for any bytes. The error says what is wrong
/// with them: too many, no XML property list (a binary one is none), another root, containers nested too
/// deep, text that is not UTF-8.
tl::expected<PropertyListDictionary, std::string> parsePropertyList(std::string_view bytes);

/// Reads the property list of a file; the error may also be the reason why the file cannot be read.
tl::expected<PropertyListDictionary, std::string> readPropertyListFile(const std::string& path);

/// Writes an XML property list, version 1.0. Characters that XML cannot hold and bytes that are not UTF-8 are
/// left out of texts and keys. The error tells of containers nested too deep.
tl::expected<std::string, std::string> serialisePropertyList(const PropertyListDictionary& dictionary);

} // namespace brimwick

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// The entries of a text/uri-list, in order. Lines may end in CR LF or LF; comments and empty lines are left
/// out.
std::vector<std::string> parseUriList(std::string_view list);

} // namespace brimwick

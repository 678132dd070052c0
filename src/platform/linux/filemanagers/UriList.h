#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// The entries of a text/uri-list, in order. Lines may end in CR LF or LF; comments and empty lines are left
/// out.
std::vector<std::string> parseUriList(std::string_view list);

/// The path, in bytes, that a file URL of this machine stands for; nothing for any other URL.
std::optional<std::string> pathOfFileUrl(std::string_view url);

/// The URL without the machine's name, when it is a file URL of an item that exists and that somebody could
/// mean to move: not the root folder, and not the home folder given. Nothing otherwise.
std::optional<std::string> usableItem(std::string_view url, std::string_view home);

} // namespace brimwick

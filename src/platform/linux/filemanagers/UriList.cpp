#include "platform/linux/filemanagers/UriList.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace brimwick {

namespace {

constexpr std::string_view fileScheme = "file:";

bool isThisMachine(std::string_view host) {
    constexpr std::size_t longestHostName = 256;
    if (host.empty() || host == "localhost") return true;
    std::array<char, longestHostName> name{};
    return gethostname(name.data(), name.size() - 1) == 0 && host == name.data();
}

/// The path of a file URL as it is written there.
std::optional<std::string_view> writtenPath(std::string_view url) {
    if (!url.starts_with(fileScheme)) return std::nullopt;
    url.remove_prefix(fileScheme.size());
    if (url.starts_with("//")) {
        url.remove_prefix(2);
        const std::size_t slash = url.find('/');
        if (slash == std::string_view::npos || !isThisMachine(url.substr(0, slash))) return std::nullopt;
        url.remove_prefix(slash);
    }
    if (!url.starts_with('/')) return std::nullopt;
    return url;
}

std::optional<unsigned> hexDigit(char digit) {
    constexpr unsigned ten = 10;
    if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
    if (digit >= 'a' && digit <= 'f') return static_cast<unsigned>(digit - 'a') + ten;
    if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A') + ten;
    return std::nullopt;
}

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    return path;
}

} // namespace

std::vector<std::string> parseUriList(std::string_view list) {
    std::vector<std::string> entries;
    while (!list.empty()) {
        std::string_view line = list.substr(0, list.find('\n'));
        list.remove_prefix(std::min(list.size(), line.size() + 1));
        // Some programs end the list with a null character.
        while (line.ends_with('\r') || line.ends_with('\0')) line.remove_suffix(1);
        if (!line.empty() && !line.starts_with('#')) entries.emplace_back(line);
    }
    return entries;
}

std::optional<std::string> pathOfFileUrl(std::string_view url) {
    const auto written = writtenPath(url);
    if (!written) return std::nullopt;
    std::string path;
    for (std::size_t at = 0; at < written->size(); ++at) {
        char byte = (*written)[at];
        if (byte == '%') {
            if (at + 2 >= written->size()) return std::nullopt;
            const auto high = hexDigit((*written)[at + 1]);
            const auto low = hexDigit((*written)[at + 2]);
            if (!high || !low) return std::nullopt;
            byte = static_cast<char>(*high * 16 + *low);
            at += 2;
        }
        if (byte == '\0') return std::nullopt;
        path += byte;
    }
    return path;
}

std::optional<std::string> usableItem(std::string_view url, std::string_view home) {
    const auto path = pathOfFileUrl(url);
    if (!path) return std::nullopt;
    const std::string_view item = withoutTrailingSlashes(*path);
    if (item == "/" || item == withoutTrailingSlashes(home)) return std::nullopt;
    struct stat status {};
    if (lstat(path->c_str(), &status) != 0) return std::nullopt;
    return "file://" + std::string(*writtenPath(url));
}

} // namespace brimwick

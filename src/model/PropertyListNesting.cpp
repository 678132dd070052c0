#include "model/PropertyListNesting.h"

#include <algorithm>

namespace brimwick {

namespace {

constexpr std::string_view commentStart = "<!--";
constexpr std::string_view characterDataStart = "<![CDATA[";

bool hasAmbiguousEnd(std::string_view tag) {
    const auto doubleQuotes = std::ranges::count(tag, '"');
    const auto singleQuotes = std::ranges::count(tag, '\'');
    if (doubleQuotes % 2 != 0 || singleQuotes % 2 != 0 || (doubleQuotes != 0 && singleQuotes != 0))
        return true;
    if (tag.starts_with('?')) return !tag.ends_with('?');
    return tag.starts_with('!') && tag.find('[') != std::string_view::npos;
}

int depthChange(std::string_view tag) {
    if (tag.ends_with('/')) return 0;
    const bool closes = tag.starts_with('/');
    if (closes) tag.remove_prefix(1);
    const std::string_view name = tag.substr(0, tag.find_first_of(" \t\r\n/"));
    if (name != "array" && name != "dict") return 0;
    return closes ? -1 : 1;
}

/// The position behind the next occurrence of `end`, or npos.
std::size_t behind(std::string_view end, std::string_view xml, std::size_t from) {
    const std::size_t found = xml.find(end, from);
    return found == std::string_view::npos ? found : found + end.size();
}

} // namespace

bool isNestedAtMost(std::string_view xml, int maximum) {
    int depth = 0;
    for (std::size_t at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at)) {
        const std::string_view markup = xml.substr(at);
        if (markup.starts_with(commentStart)) {
            at = behind("-->", xml, at + commentStart.size());
        } else if (markup.starts_with(characterDataStart)) {
            at = behind("]]>", xml, at + characterDataStart.size());
        } else {
            const std::size_t end = xml.find_first_of("<>", at + 1);
            if (end == std::string_view::npos || xml[end] == '<') return false;
            const std::string_view tag = xml.substr(at + 1, end - at - 1);
            depth += depthChange(tag);
            if (hasAmbiguousEnd(tag) || depth < 0 || depth > maximum) return false;
            at = end + 1;
        }
        if (at == std::string_view::npos) return false;
    }
    return true;
}

} // namespace brimwick

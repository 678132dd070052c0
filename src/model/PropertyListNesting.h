#pragma once

#include <string_view>

namespace brimwick {

/// Whether the arrays and dictionaries of an XML document lie at most `maximum` deep in each other. Also
/// false for markup that different parsers could delimit differently: an embedded document type, loose
/// quotes.
bool isNestedAtMost(std::string_view xml, int maximum);

} // namespace brimwick

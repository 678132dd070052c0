#pragma once

#include <QString>

#include <string_view>

namespace brimwick {

/// A name or path as one line of text: bytes that are no UTF-8 are replaced, control characters made visible.
QString displayText(std::string_view bytes);

} // namespace brimwick

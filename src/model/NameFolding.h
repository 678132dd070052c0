#pragma once

#include <string>
#include <string_view>

namespace brimwick {

/// Appends the name without its case and its marks: two names that differ in nothing else yield the same
/// bytes, and a folded part of a name is a part of the folded name. Bytes that are no UTF-8 are kept as they
/// are. May append nothing: a text of marks alone folds to nothing. Any thread.
void appendFoldedName(std::string_view name, std::string& folded);

std::string foldedName(std::string_view name);

} // namespace brimwick

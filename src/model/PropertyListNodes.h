#pragma once

#include "model/PropertyList.h"

#include <plist/plist.h>
#include <tl/expected.hpp>

#include <memory>
#include <string>

namespace brimwick {

struct PropertyListNodeDeleter {
    void operator()(plist_t node) const { plist_free(node); }
};

/// Owns a tree of the property-list library.
using PropertyListNode = std::unique_ptr<void, PropertyListNodeDeleter>;

/// Reads a dictionary node whose containers lie at most `depth` deep, itself counted; the error says what is
/// wrong with the tree.
tl::expected<PropertyListDictionary, std::string> dictionaryOfNode(plist_t node, int depth);

/// The tree of the dictionary; null when its containers lie deeper than `depth`, itself counted.
PropertyListNode nodeOfDictionary(const PropertyListDictionary& dictionary, int depth);

} // namespace brimwick

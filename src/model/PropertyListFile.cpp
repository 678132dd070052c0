#include "model/PropertyListFile.h"

#include "model/PropertyListNesting.h"
#include "model/PropertyListNodes.h"
#include "model/WholeFile.h"

namespace brimwick {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

} // namespace

tl::expected<PropertyListDictionary, std::string> parsePropertyList(std::string_view bytes) {
    if (bytes.size() > maximumPropertyListSize) return tl::unexpected<std::string>("too large");
    if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
    // The library frees and writes its trees recursively, so what lies too deep must not reach it.
    if (!isNestedAtMost(bytes, maximumPropertyListDepth))
        return tl::unexpected<std::string>("malformed markup, or containers nested too deep");

    plist_t root = nullptr;
    plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    const PropertyListNode node(root);
    if (!node) return tl::unexpected<std::string>("no XML property list");
    if (plist_get_node_type(node.get()) != PLIST_DICT)
        return tl::unexpected<std::string>("the root is not a dictionary");
    return dictionaryOfNode(node.get(), maximumPropertyListDepth);
}

tl::expected<PropertyListDictionary, std::string> readPropertyListFile(const std::string& path) {
    return readWholeFile(path, maximumPropertyListSize).and_then(parsePropertyList);
}

tl::expected<std::string, std::string> serialisePropertyList(const PropertyListDictionary& dictionary) {
    const PropertyListNode node = nodeOfDictionary(dictionary, maximumPropertyListDepth);
    if (!node) return tl::unexpected<std::string>("containers nested too deep");
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node.get(), &text, &length);
    const std::unique_ptr<char, decltype(&plist_to_xml_free)> owned(text, &plist_to_xml_free);
    if (text == nullptr) return tl::unexpected<std::string>("no memory");
    return std::string(text, length);
}

} // namespace brimwick

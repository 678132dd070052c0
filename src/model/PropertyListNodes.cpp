#include "model/PropertyListNodes.h"

#include "model/XmlText.h"

#include <cmath>
#include <cstdlib>

namespace brimwick {

namespace {

struct Freer {
    void operator()(void* memory) const { std::free(memory); }
};
using OwnedText = std::unique_ptr<char, Freer>;
using OwnedIterator = std::unique_ptr<void, Freer>;

using ValueResult = tl::expected<PropertyListValue, std::string>;

ValueResult valueOfNode(plist_t node, int depth);

tl::expected<std::string, std::string> checkedText(std::string text) {
    if (!isUtf8(text)) return tl::unexpected<std::string>("text that is not UTF-8");
    return text;
}

ValueResult arrayOfNode(plist_t node, int depth) {
    if (depth < 1) return tl::unexpected<std::string>("containers nested too deep");
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(node, &iterator);
    const OwnedIterator owned(iterator);
    PropertyListArray array;
    array.reserve(plist_array_get_size(node));
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(node, iterator, &item);
        if (item == nullptr) return PropertyListValue{std::move(array)};
        ValueResult value = valueOfNode(item, depth - 1);
        if (!value) return value;
        array.push_back(*std::move(value));
    }
}

PropertyListDate dateOfNode(plist_t node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return {seconds + microseconds / 1e6};
}

ValueResult valueOfNode(plist_t node, int depth) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t boolean = 0;
        plist_get_bool_val(node, &boolean);
        return PropertyListValue{boolean != 0};
    }
    case PLIST_UINT: {
        std::uint64_t integer = 0;
        plist_get_uint_val(node, &integer);
        return PropertyListValue{static_cast<std::int64_t>(integer)};
    }
    case PLIST_REAL: {
        double real = 0;
        plist_get_real_val(node, &real);
        return PropertyListValue{real};
    }
    case PLIST_STRING: {
        std::uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        return checkedText(std::string(text, length)).map([](std::string checked) {
            return PropertyListValue{std::move(checked)};
        });
    }
    case PLIST_DATA: {
        std::uint64_t length = 0;
        const char* bytes = plist_get_data_ptr(node, &length);
        return PropertyListValue{PropertyListData{std::string(bytes, length)}};
    }
    case PLIST_DATE:
        return PropertyListValue{dateOfNode(node)};
    case PLIST_ARRAY:
        return arrayOfNode(node, depth);
    case PLIST_DICT:
        return dictionaryOfNode(node, depth).map([](PropertyListDictionary dictionary) {
            return PropertyListValue{std::move(dictionary)};
        });
    default:
        return tl::unexpected<std::string>("a value of an unknown kind");
    }
}

PropertyListNode nodeOfText(const std::string& text) {
    return PropertyListNode(plist_new_string(withoutWhatXmlCannotHold(text).c_str()));
}

PropertyListNode nodeOfDate(const PropertyListDate& date) {
    const double whole = std::floor(date.seconds);
    return PropertyListNode(plist_new_date(static_cast<std::int32_t>(whole),
                                           static_cast<std::int32_t>((date.seconds - whole) * 1e6)));
}

PropertyListNode nodeOfArray(const PropertyListArray& array, int depth);

struct NodeMaker {
    int depth;

    PropertyListNode operator()(const std::string& text) const { return nodeOfText(text); }
    PropertyListNode operator()(bool boolean) const { return PropertyListNode(plist_new_bool(boolean)); }
    PropertyListNode operator()(std::int64_t integer) const {
        return PropertyListNode(plist_new_uint(static_cast<std::uint64_t>(integer)));
    }
    PropertyListNode operator()(double real) const { return PropertyListNode(plist_new_real(real)); }
    PropertyListNode operator()(const PropertyListData& data) const {
        return PropertyListNode(plist_new_data(data.bytes.data(), data.bytes.size()));
    }
    PropertyListNode operator()(const PropertyListDate& date) const { return nodeOfDate(date); }
    PropertyListNode operator()(const PropertyListArray& array) const { return nodeOfArray(array, depth); }
    PropertyListNode operator()(const PropertyListDictionary& dictionary) const {
        return nodeOfDictionary(dictionary, depth);
    }
};

PropertyListNode nodeOfArray(const PropertyListArray& array, int depth) {
    if (depth < 1) return nullptr;
    PropertyListNode node(plist_new_array());
    for (const PropertyListValue& value : array) {
        PropertyListNode item = std::visit(NodeMaker{depth - 1}, value.value);
        if (!item) return nullptr;
        plist_array_append_item(node.get(), item.release());
    }
    return node;
}

} // namespace

tl::expected<PropertyListDictionary, std::string> dictionaryOfNode(plist_t node, int depth) {
    if (depth < 1) return tl::unexpected<std::string>("containers nested too deep");
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const OwnedIterator owned(iterator);
    std::vector<PropertyListDictionary::Entry> entries;
    entries.reserve(plist_dict_get_size(node));
    for (;;) {
        char* keyText = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator, &keyText, &item);
        const OwnedText ownedKey(keyText);
        if (item == nullptr || keyText == nullptr) return PropertyListDictionary(std::move(entries));
        auto key = checkedText(keyText);
        if (!key) return tl::unexpected(key.error());
        ValueResult value = valueOfNode(item, depth - 1);
        if (!value) return tl::unexpected(value.error());
        entries.emplace_back(*std::move(key), *std::move(value));
    }
}

PropertyListNode nodeOfDictionary(const PropertyListDictionary& dictionary, int depth) {
    if (depth < 1) return nullptr;
    PropertyListNode node(plist_new_dict());
    for (const auto& [key, value] : dictionary.entries()) {
        PropertyListNode item = std::visit(NodeMaker{depth - 1}, value.value);
        if (!item) return nullptr;
        plist_dict_set_item(node.get(), withoutWhatXmlCannotHold(key).c_str(), item.release());
    }
    return node;
}

} // namespace brimwick

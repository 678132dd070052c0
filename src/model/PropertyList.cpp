#include "model/PropertyList.h"

#include <algorithm>

namespace brimwick {

PropertyListDictionary::PropertyListDictionary() = default;
PropertyListDictionary::PropertyListDictionary(const PropertyListDictionary&) = default;
PropertyListDictionary::PropertyListDictionary(PropertyListDictionary&&) noexcept = default;
PropertyListDictionary& PropertyListDictionary::operator=(const PropertyListDictionary&) = default;
PropertyListDictionary& PropertyListDictionary::operator=(PropertyListDictionary&&) noexcept = default;
PropertyListDictionary::~PropertyListDictionary() = default;

PropertyListDictionary::PropertyListDictionary(std::vector<Entry> entries) : entries_(std::move(entries)) {}

const PropertyListValue* PropertyListDictionary::find(std::string_view key) const {
    const auto entry = std::ranges::find(entries_, key, &Entry::first);
    return entry == entries_.end() ? nullptr : &entry->second;
}

void PropertyListDictionary::set(std::string key, PropertyListValue value) {
    const auto entry = std::ranges::find(entries_, key, &Entry::first);
    if (entry == entries_.end())
        entries_.emplace_back(std::move(key), std::move(value));
    else
        entry->second = std::move(value);
}

void PropertyListDictionary::remove(std::string_view key) {
    std::erase_if(entries_, [key](const Entry& entry) { return entry.first == key; });
}

bool PropertyListDictionary::operator==(const PropertyListDictionary& other) const {
    return entries_ == other.entries_;
}

} // namespace brimwick

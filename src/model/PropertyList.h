#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace brimwick {

struct PropertyListValue;
using PropertyListArray = std::vector<PropertyListValue>;

/// String keys to values, in the order in which they were added.
class PropertyListDictionary {
  public:
    using Entry = std::pair<std::string, PropertyListValue>;

    // Defined where a value is complete: a pair of it cannot be made or destroyed before.
    PropertyListDictionary();
    PropertyListDictionary(const PropertyListDictionary&);
    PropertyListDictionary(PropertyListDictionary&&) noexcept;
    PropertyListDictionary& operator=(const PropertyListDictionary&);
    PropertyListDictionary& operator=(PropertyListDictionary&&) noexcept;
    ~PropertyListDictionary();
    /// No two entries may have the same key.
    explicit PropertyListDictionary(std::vector<Entry> entries);

    /// Nothing when the key is absent. Valid until the dictionary changes.
    const PropertyListValue* find(std::string_view key) const;
    bool contains(std::string_view key) const { return find(key) != nullptr; }
    /// Replaces the value in its place, or appends it.
    void set(std::string key, PropertyListValue value);
    void remove(std::string_view key);
    const std::vector<Entry>& entries() const { return entries_; }
    bool operator==(const PropertyListDictionary&) const;

  private:
    std::vector<Entry> entries_;
};

/// Bytes that are no text.
struct PropertyListData {
    std::string bytes;
    bool operator==(const PropertyListData&) const = default;
};

/// A moment, in seconds since 2001-01-01 00:00 UTC.
struct PropertyListDate {
    double seconds = 0;
    bool operator==(const PropertyListDate&) const = default;
};

/// One value of a property list.
struct PropertyListValue {
    std::variant<std::string, bool, std::int64_t, double, PropertyListData, PropertyListDate,
                 PropertyListArray, PropertyListDictionary>
        value;
    bool operator==(const PropertyListValue&) const = default;
};

} // namespace brimwick

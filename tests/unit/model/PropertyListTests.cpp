#include "model/PropertyList.h"

#include <gtest/gtest.h>

namespace brimwick {
namespace {

PropertyListValue number(std::int64_t value) {
    return {value};
}

TEST(PropertyListDictionary, KeepsTheOrderInWhichKeysWereAdded) {
    PropertyListDictionary dictionary;
    dictionary.set("b", number(1));
    dictionary.set("a", number(2));
    dictionary.set("b", number(3));
    ASSERT_EQ(dictionary.entries().size(), 2u);
    EXPECT_EQ(dictionary.entries()[0].first, "b");
    EXPECT_EQ(dictionary.entries()[0].second, number(3));
    EXPECT_EQ(dictionary.entries()[1].first, "a");
}

TEST(PropertyListDictionary, FindsNothingUnderAnAbsentOrRemovedKey) {
    PropertyListDictionary dictionary;
    dictionary.set("a", number(1));
    EXPECT_EQ(dictionary.find("b"), nullptr);
    EXPECT_TRUE(dictionary.contains("a"));
    dictionary.remove("b");
    dictionary.remove("a");
    EXPECT_FALSE(dictionary.contains("a"));
    EXPECT_EQ(dictionary, PropertyListDictionary());
}

TEST(PropertyListDictionary, TellsValuesOfDifferentKindsApart) {
    PropertyListDictionary truth;
    truth.set("a", {true});
    PropertyListDictionary one;
    one.set("a", number(1));
    EXPECT_FALSE(truth == one);
}

} // namespace
} // namespace brimwick

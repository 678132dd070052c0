#include "model/PreferencesStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

PropertyListValue text(std::string bytes) {
    return {std::move(bytes)};
}
PropertyListValue number(std::int64_t value) {
    return {value};
}

class PreferenceReading : public testing::Test {
  protected:
    void store(PropertyListValue value) { store_.preferences().set("key", std::move(value)); }
    bool boolReadingOf(PropertyListValue value) {
        store(std::move(value));
        return store_.boolPreferenceWithKey("key");
    }
    std::int64_t integerReadingOf(PropertyListValue value) {
        store(std::move(value));
        return store_.integerPreferenceWithKey("key");
    }
    int narrowReadingOf(PropertyListValue value) {
        store(std::move(value));
        return store_.intPreferenceWithKey("key");
    }
    std::vector<std::string> pathsOf(PropertyListValue value) {
        store_.preferences().set("IndexedFolders", std::move(value));
        return store_.indexedFolderPaths();
    }

    const std::vector<BWSelectedFileOrFolder> noFolders_;
    PreferencesStore store_{"/nowhere", Resources("/nowhere"), noFolders_};
};

TEST_F(PreferenceReading, TakesNumbersOtherThanZeroForYes) {
    EXPECT_TRUE(boolReadingOf({true}));
    EXPECT_FALSE(boolReadingOf({false}));
    EXPECT_TRUE(boolReadingOf(number(1)));
    EXPECT_TRUE(boolReadingOf(number(-256)));
    EXPECT_FALSE(boolReadingOf(number(0)));
    EXPECT_TRUE(boolReadingOf({0.25}));
    EXPECT_FALSE(boolReadingOf({0.0}));
}

TEST_F(PreferenceReading, TakesTextsThatBeginLikeYesForYes) {
    for (const char* yes : {"YES", "yes", "Y", "true", "T", "1", "9", " \t\n1", "+1", "-1", "007", "-00Yes"})
        EXPECT_TRUE(boolReadingOf(text(yes))) << yes;
    for (const char* no : {"NO", "0", "false", "", " ", "+", "000", "--1", "+ 1", "x1", "on"})
        EXPECT_FALSE(boolReadingOf(text(no))) << no;
}

TEST_F(PreferenceReading, TakesAnythingElseForNoAndZero) {
    EXPECT_FALSE(store_.boolPreferenceWithKey("missing"));
    EXPECT_EQ(store_.integerPreferenceWithKey("missing"), 0);
    EXPECT_EQ(store_.intPreferenceWithKey("missing"), 0);
    PropertyListDictionary dictionary;
    dictionary.set("key", {true});
    for (const PropertyListValue& value :
         {PropertyListValue{PropertyListArray{{true}}}, PropertyListValue{dictionary},
          PropertyListValue{PropertyListData{"1"}}, PropertyListValue{PropertyListDate{1}}}) {
        EXPECT_FALSE(boolReadingOf(value));
        EXPECT_EQ(integerReadingOf(value), 0);
    }
}

TEST_F(PreferenceReading, ReadsTheLeadingDigitsOfAText) {
    EXPECT_EQ(integerReadingOf(text("1310985")), 1310985);
    EXPECT_EQ(integerReadingOf(text("12px")), 12);
    EXPECT_EQ(integerReadingOf(text("12.9")), 12);
    EXPECT_EQ(integerReadingOf(text(" -12")), -12);
    EXPECT_EQ(integerReadingOf(text("+12")), 12);
    EXPECT_EQ(integerReadingOf(text("0x10")), 0);
    EXPECT_EQ(integerReadingOf(text("none")), 0);
    EXPECT_EQ(integerReadingOf(text("")), 0);
}

TEST_F(PreferenceReading, StaysWithinTheRangeOfItsType) {
    EXPECT_EQ(integerReadingOf(text("9223372036854775807")), INT64_MAX);
    EXPECT_EQ(integerReadingOf(text("99999999999999999999")), INT64_MAX);
    EXPECT_EQ(integerReadingOf(text("-9223372036854775808")), INT64_MIN);
    EXPECT_EQ(integerReadingOf(text("-99999999999999999999")), INT64_MIN);
    EXPECT_EQ(integerReadingOf({1e300}), INT64_MAX);
    EXPECT_EQ(integerReadingOf({-1e300}), INT64_MIN);
    EXPECT_EQ(integerReadingOf({std::numeric_limits<double>::quiet_NaN()}), 0);
}

TEST_F(PreferenceReading, ReadsNumbersAsIntegers) {
    EXPECT_EQ(integerReadingOf(number(1310985)), 1310985);
    EXPECT_EQ(integerReadingOf({2.9}), 2);
    EXPECT_EQ(integerReadingOf({-2.9}), -2);
    EXPECT_EQ(integerReadingOf({true}), 1);
}

TEST_F(PreferenceReading, NarrowsTheShortReadingToEightBits) {
    EXPECT_EQ(narrowReadingOf(number(200)), -56);
    EXPECT_EQ(narrowReadingOf(text("200")), -56);
    EXPECT_EQ(narrowReadingOf(number(127)), 127);
    EXPECT_EQ(narrowReadingOf(number(256)), 0);
}

TEST_F(PreferenceReading, LeavesOutIndexedFoldersThatAreNoPaths) {
    EXPECT_THAT(pathsOf({PropertyListArray{number(1),
                                           text("/a"),
                                           {PropertyListArray{text("/b")}},
                                           {true},
                                           text("relative"),
                                           text(""),
                                           {PropertyListData{"/c\xFF"}},
                                           {PropertyListData{std::string("/d\0", 3)}},
                                           {PropertyListData{"relative"}},
                                           {PropertyListDictionary()},
                                           text("/a")}}),
                ElementsAre("/a", "/c\xFF", "/a"));
}

TEST_F(PreferenceReading, HasNoIndexedFoldersInAnythingButAList) {
    EXPECT_THAT(store_.indexedFolderPaths(), IsEmpty());
    EXPECT_THAT(pathsOf(text("/a")), IsEmpty());
    EXPECT_THAT(pathsOf({PropertyListDictionary()}), IsEmpty());
    EXPECT_THAT(pathsOf({PropertyListArray{}}), IsEmpty());
}

} // namespace
} // namespace brimwick

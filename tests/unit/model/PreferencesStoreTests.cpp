#include "fakes/TemporaryFolder.h"
#include "model/PreferencesStore.h"
#include "model/PropertyListFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

PropertyListValue text(std::string bytes) {
    return {std::move(bytes)};
}

class PreferencesStoreTest : public testing::Test {
  protected:
    PropertyListDictionary onDisk() const {
        return readPropertyListFile(store_.filePath()).value_or(PropertyListDictionary());
    }
    bool hasFile() const { return TemporaryFolder::exists(store_.filePath()); }
    void writeFile(const PropertyListDictionary& dictionary) const {
        folder_.makeFile("BrimwickPreferences.plist", serialisePropertyList(dictionary).value());
    }
    void index(const std::string& path) {
        indexedFolders_.push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(path));
    }
    PreferencesStore anotherStore() const {
        return PreferencesStore(folder_.path(), Resources(BRIMWICK_RESOURCES), indexedFolders_);
    }

    const TemporaryFolder folder_;
    std::vector<BWSelectedFileOrFolder> indexedFolders_;
    PreferencesStore store_ = anotherStore();
};

TEST_F(PreferencesStoreTest, KeepsItsFileInTheSupportFolder) {
    EXPECT_EQ(store_.filePath(), folder_ / "BrimwickPreferences.plist");
}

TEST_F(PreferencesStoreTest, ShipsAFileThatEqualsTheBuiltInDefaults) {
    const auto shipped = readPropertyListFile(BRIMWICK_RESOURCES "/DefaultPreferences.plist");
    ASSERT_TRUE(shipped.has_value()) << shipped.error();
    EXPECT_EQ(*shipped, PreferencesStore::defaultPreferencesDictionary());
}

TEST_F(PreferencesStoreTest, HasTwentyTwoDefaultsInTheirOrder) {
    const PropertyListDictionary defaults = PreferencesStore::defaultPreferencesDictionary();
    ASSERT_EQ(defaults.entries().size(), 22u);
    EXPECT_EQ(defaults.entries().front().first, "HotKeyCode");
    EXPECT_EQ(defaults.entries().back().first, "WickWindowWidth");
    EXPECT_EQ(*defaults.find("CopyModeHotKeyCode"), text("35"));
    EXPECT_EQ(*defaults.find("NotificationSoundOnRebuildIndexForSubfolder"), (PropertyListValue{false}));
    EXPECT_EQ(*defaults.find("NotificationAnimationStyle"), (PropertyListValue{std::int64_t{0}}));
    EXPECT_FALSE(defaults.contains("IndexedFolders"));
}

TEST_F(PreferencesStoreTest, TakesTheShippedDefaultsAtTheFirstStartAndWritesNothing) {
    store_.loadPreferences();
    EXPECT_EQ(store_.preferences(), PreferencesStore::defaultPreferencesDictionary());
    EXPECT_FALSE(hasFile());
}

TEST_F(PreferencesStoreTest, WritesTheBuiltInDefaultsWhenNoneAreShipped) {
    PreferencesStore store(folder_.path(), Resources(folder_ / "nowhere"), indexedFolders_);
    store.loadPreferences();
    PropertyListDictionary expected = PreferencesStore::defaultPreferencesDictionary();
    expected.set("IndexedFolders", {PropertyListArray{}});
    EXPECT_EQ(store.preferences(), expected);
    EXPECT_EQ(onDisk(), expected);
}

TEST_F(PreferencesStoreTest, UpgradesShippedDefaultsThatLackAKey) {
    const TemporaryFolder resources;
    resources.makeFile("DefaultPreferences.plist", serialisePropertyList({}).value());
    PreferencesStore store(folder_.path(), Resources(resources.path()), indexedFolders_);
    store.loadPreferences();
    EXPECT_EQ(onDisk().entries().size(), 4u);
}

TEST_F(PreferencesStoreTest, UpgradesAnOlderFileAndForgetsItsIndexedFolders) {
    PropertyListDictionary older = PreferencesStore::defaultPreferencesDictionary();
    older.remove("NotificationSoundOnLaunch");
    older.set("HotKeyCode", text("12"));
    older.set("IndexedFolders", {PropertyListArray{text("/a")}});
    writeFile(older);

    store_.loadPreferences();

    EXPECT_TRUE(store_.boolPreferenceWithKey("NotificationSoundOnLaunch"));
    EXPECT_EQ(store_.hotKeyCode(), 12);
    EXPECT_THAT(store_.indexedFolderPaths(), IsEmpty());
    EXPECT_EQ(onDisk(), store_.preferences());
    EXPECT_EQ(*onDisk().find("IndexedFolders"), (PropertyListValue{PropertyListArray{}}));
}

TEST_F(PreferencesStoreTest, AddsEachUpgradeKeyThatIsAbsentInOrder) {
    writeFile({});
    store_.loadPreferences();
    PropertyListDictionary expected;
    expected.set("NotificationSoundOnLaunch", {true});
    expected.set("WickWindowHeight", text("572"));
    expected.set("WickWindowWidth", text("520"));
    expected.set("IndexedFolders", {PropertyListArray{}});
    EXPECT_EQ(onDisk(), expected);
}

TEST_F(PreferencesStoreTest, LeavesACompleteFileAloneWhateverItsUpgradeKeysHold) {
    PropertyListDictionary complete;
    complete.set("NotificationSoundOnLaunch", {false});
    complete.set("WickWindowHeight", {std::int64_t{700}});
    complete.set("WickWindowWidth", {PropertyListArray{}});
    complete.set("IndexedFolders", {PropertyListArray{text("/a"), text("/b")}});
    writeFile(complete);
    const auto before = std::filesystem::last_write_time(store_.filePath());
    const std::string bytes = TemporaryFolder::read(store_.filePath());

    store_.loadPreferences();

    EXPECT_EQ(store_.preferences(), complete);
    EXPECT_THAT(store_.indexedFolderPaths(), ElementsAre("/a", "/b"));
    EXPECT_EQ(TemporaryFolder::read(store_.filePath()), bytes);
    EXPECT_EQ(std::filesystem::last_write_time(store_.filePath()), before);
}

TEST_F(PreferencesStoreTest, SavesThePathsOfTheIndexedFoldersInTheirOrder) {
    store_.loadPreferences();
    index("/usr");
    index("/missing/folder");
    index("/usr");
    store_.savePreferences();
    EXPECT_THAT(store_.indexedFolderPaths(), ElementsAre("/usr", "/missing/folder", "/usr"));

    PreferencesStore next = anotherStore();
    next.loadPreferences();
    EXPECT_THAT(next.indexedFolderPaths(), ElementsAre("/usr", "/missing/folder", "/usr"));
    EXPECT_EQ(*onDisk().find("IndexedFolders"),
              (PropertyListValue{PropertyListArray{text("/usr"), text("/missing/folder"), text("/usr")}}));
}

TEST_F(PreferencesStoreTest, KeepsPathsThatXmlCannotCarryByteForByte) {
    const std::vector<std::string> paths = {"/new\nline",          "/tab\t",        "/return\r", "/bell\x07",
                                            "/not utf-8 \xFF\xC3", "/\xEF\xBF\xBE", "/ white ",  "/<&>\"'"};
    for (const std::string& path : paths) index(path);
    store_.savePreferences();
    PreferencesStore next = anotherStore();
    next.loadPreferences();
    EXPECT_EQ(next.indexedFolderPaths(), paths);
}

TEST_F(PreferencesStoreTest, KeepsHotKeysAsTheTextsThatWereSet) {
    store_.loadPreferences();
    store_.preferences().set("HotKeyCode", text("122"));
    store_.preferences().set("HotKeyModifierFlags", text("1048840"));
    store_.savePreferences();
    PreferencesStore next = anotherStore();
    next.loadPreferences();
    EXPECT_EQ(*next.preferences().find("HotKeyCode"), text("122"));
    EXPECT_EQ(*next.preferences().find("HotKeyModifierFlags"), text("1048840"));
    EXPECT_EQ(next.hotKeyCode(), 122);
    EXPECT_EQ(next.hotKeyModifierFlags(), 1048840);
}

TEST_F(PreferencesStoreTest, KeepsKeysThatItDoesNotKnow) {
    PropertyListDictionary nested;
    nested.set("inner", {PropertyListArray{{1.5}, {PropertyListData{"bytes"}}, {PropertyListDate{86400}}}});
    PropertyListDictionary preferences = PreferencesStore::defaultPreferencesDictionary();
    preferences.set("FromTheFuture", {nested});
    preferences.set("IndexedFolders", {PropertyListArray{}});
    writeFile(preferences);
    store_.loadPreferences();
    store_.savePreferences();
    EXPECT_EQ(onDisk(), preferences);
}

TEST_F(PreferencesStoreTest, ReplacesItsDictionaryWhole) {
    store_.loadPreferences();
    PropertyListDictionary other;
    other.set("HotKeyCode", text("1"));
    store_.setPreferences(other);
    EXPECT_EQ(store_.preferences(), other);
    EXPECT_EQ(store_.openModeHotKeyCode(), 0);
}

TEST_F(PreferencesStoreTest, ReadsTheDefaultHotKeysAsNumbers) {
    store_.loadPreferences();
    EXPECT_EQ(store_.hotKeyCode(), 46);
    EXPECT_EQ(store_.bwCopyModeHotKeyCode(), 35);
    EXPECT_EQ(store_.openModeHotKeyCode(), 31);
    EXPECT_EQ(store_.hotKeyModifierFlags(), 0x140109);
    EXPECT_EQ(store_.bwCopyModeHotKeyModifierFlags(), 0x140109);
    EXPECT_EQ(store_.openModeHotKeyModifierFlags(), 0x140109);
}

TEST_F(PreferencesStoreTest, SetsTheAnimationStyleWithoutSaving) {
    store_.loadPreferences();
    store_.setAnimationStyle(300);
    EXPECT_EQ(store_.animationStyle(), 300);
    EXPECT_EQ(*store_.preferences().find("NotificationAnimationStyle"),
              (PropertyListValue{std::int64_t{300}}));
    EXPECT_FALSE(hasFile());
}

} // namespace
} // namespace brimwick

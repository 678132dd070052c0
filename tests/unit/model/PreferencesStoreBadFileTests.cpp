#include "fakes/OrdinaryUser.h"
#include "fakes/TemporaryFolder.h"
#include "model/PreferencesStore.h"
#include "model/PropertyListFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <set>

namespace brimwick {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::UnorderedElementsAre;

constexpr const char* fileName = "BrimwickPreferences.plist";
constexpr const char* head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\">";

PropertyListDictionary savedDefaults() {
    PropertyListDictionary expected = PreferencesStore::defaultPreferencesDictionary();
    expected.set("IndexedFolders", {PropertyListArray{}});
    return expected;
}

class PreferencesStoreBadFile : public testing::Test {
  protected:
    void load() { store_.loadPreferences(); }
    PropertyListDictionary onDisk() const {
        return readPropertyListFile(store_.filePath()).value_or(PropertyListDictionary());
    }
    /// The paths of the files beside the preferences.
    static std::set<std::string> besides(const std::string& folder) {
        std::set<std::string> paths;
        for (const auto& item : fs::directory_iterator(folder))
            if (item.path().filename() != fileName) paths.insert(item.path().string());
        return paths;
    }
    std::vector<std::string> contentsKeptAside() const {
        std::vector<std::string> contents;
        for (const std::string& path : besides(folder_.path()))
            contents.push_back(TemporaryFolder::read(path));
        return contents;
    }
    void expectDefaultsAfterKeepingAside(const std::string& content) {
        folder_.makeFile(fileName, content);
        load();
        EXPECT_EQ(store_.preferences(), savedDefaults());
        EXPECT_EQ(onDisk(), savedDefaults());
        EXPECT_THAT(contentsKeptAside(), ElementsAre(content));
    }

    // Read before the change of user, who need not be able to enter the folder that the project lies in.
    const std::string shippedDefaults_ =
        TemporaryFolder::read(BRIMWICK_RESOURCES "/DefaultPreferences.plist");
    const OrdinaryUser user_;
    const TemporaryFolder folder_;
    const TemporaryFolder resources_;
    const std::string defaultsFile_ = resources_.makeFile("DefaultPreferences.plist", shippedDefaults_);
    const std::vector<BWSelectedFileOrFolder> noFolders_;
    PreferencesStore store_{folder_.path(), Resources(resources_.path()), noFolders_};
};

TEST_F(PreferencesStoreBadFile, IsReplacedByTheDefaultsAndKeptAsideWhenCorrupt) {
    expectDefaultsAfterKeepingAside("no property list at all");
    EXPECT_THAT(besides(folder_.path()),
                ElementsAre(MatchesRegex(".*/BrimwickPreferences\\.corrupt-[0-9]{8}-[0-9]{6}\\.plist")));
}

TEST_F(PreferencesStoreBadFile, IsReplacedAndKeptAsideWhenCutShort) {
    const std::string whole = serialisePropertyList(PreferencesStore::defaultPreferencesDictionary()).value();
    expectDefaultsAfterKeepingAside(whole.substr(0, whole.size() / 2));
}

TEST_F(PreferencesStoreBadFile, IsReplacedAndKeptAsideWhenBinary) {
    expectDefaultsAfterKeepingAside(
        std::string("bplist00\xD0\x08\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x01\0\0\0\0\0"
                    "\0\0\0\0\0\0\0\0\0\0\x09",
                    42));
}

TEST_F(PreferencesStoreBadFile, IsReplacedAndKeptAsideWhenTheRootIsAnArray) {
    expectDefaultsAfterKeepingAside(std::string(head) + "<array/></plist>");
}

TEST_F(PreferencesStoreBadFile, IsReplacedAndKeptAsideWhenTheRootIsAText) {
    expectDefaultsAfterKeepingAside(std::string(head) + "<string>text</string></plist>");
}

TEST_F(PreferencesStoreBadFile, IsReplacedAndKeptAsideWhenNestedWithoutEnd) {
    std::string content = head;
    for (int i = 0; i < 1000000; ++i) content += "<array>";
    for (int i = 0; i < 1000000; ++i) content += "</array>";
    expectDefaultsAfterKeepingAside(content + "</plist>");
}

TEST_F(PreferencesStoreBadFile, IsReplacedAndKeptAsideWhenNotUtf8) {
    expectDefaultsAfterKeepingAside(std::string(head) +
                                    "<dict><key>HotKeyCode</key><string>\xFF</string></dict></plist>");
}

TEST_F(PreferencesStoreBadFile, IsReplacedAndKeptAsideWhenHuge) {
    fs::resize_file(folder_.makeFile(fileName, "huge"), std::uintmax_t{1} << 40);
    load();
    EXPECT_EQ(onDisk(), savedDefaults());
    const std::set<std::string> kept = besides(folder_.path());
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(fs::file_size(*kept.begin()), std::uintmax_t{1} << 40);
}

TEST_F(PreferencesStoreBadFile, IsReplacedByTheDefaultsWhenEmpty) {
    folder_.makeFile(fileName, "");
    load();
    EXPECT_EQ(onDisk(), savedDefaults());
    EXPECT_THAT(besides(folder_.path()), IsEmpty());
}

TEST_F(PreferencesStoreBadFile, NeverTakesThePlaceOfAnEarlierOne) {
    for (const char* content : {"first", "second", "third"}) {
        folder_.makeFile(fileName, content);
        load();
    }
    EXPECT_THAT(contentsKeptAside(), UnorderedElementsAre("first", "second", "third"));
}

TEST_F(PreferencesStoreBadFile, LosesNothingWhenItCannotBeRead) {
    fs::permissions(folder_.makeFile(fileName, "unreadable"), fs::perms(0));
    load();
    EXPECT_EQ(store_.preferences(), savedDefaults());
    const std::set<std::string> kept = besides(folder_.path());
    ASSERT_EQ(kept.size(), 1u);
    fs::permissions(*kept.begin(), fs::perms(0600));
    EXPECT_EQ(TemporaryFolder::read(*kept.begin()), "unreadable");
}

TEST_F(PreferencesStoreBadFile, StaysWhenItIsAFolder) {
    folder_.makeFolder(fileName);
    folder_.makeFile(std::string(fileName) + "/inside", "kept");
    load();
    EXPECT_EQ(store_.preferences(), savedDefaults());
    EXPECT_EQ(TemporaryFolder::read(folder_ / (std::string(fileName) + "/inside")), "kept");
    EXPECT_THAT(besides(folder_.path()), IsEmpty());
}

TEST_F(PreferencesStoreBadFile, StaysInASupportFolderThatCannotBeWritten) {
    folder_.makeFile(fileName, "corrupt");
    ASSERT_EQ(chmod(folder_.path().c_str(), 0500), 0);
    load();
    ASSERT_EQ(chmod(folder_.path().c_str(), 0700), 0);
    EXPECT_EQ(store_.preferences(), savedDefaults());
    EXPECT_EQ(TemporaryFolder::read(store_.filePath()), "corrupt");
    EXPECT_THAT(besides(folder_.path()), IsEmpty());
}

TEST_F(PreferencesStoreBadFile, IsKeptAsideWhereALinkToItLeads) {
    const TemporaryFolder elsewhere;
    elsewhere.makeFile(fileName, "corrupt");
    fs::create_symlink(elsewhere / fileName, store_.filePath());
    load();
    EXPECT_TRUE(fs::is_symlink(store_.filePath()));
    EXPECT_EQ(onDisk(), savedDefaults());
    ASSERT_EQ(besides(elsewhere.path()).size(), 1u);
    EXPECT_EQ(TemporaryFolder::read(*besides(elsewhere.path()).begin()), "corrupt");
}

TEST_F(PreferencesStoreBadFile, CountsAsMissingWhenItIsADanglingLink) {
    fs::create_symlink(folder_ / "nowhere", store_.filePath());
    load();
    EXPECT_EQ(store_.preferences(), PreferencesStore::defaultPreferencesDictionary());
    EXPECT_FALSE(TemporaryFolder::exists(folder_ / "nowhere"));
}

TEST(PreferencesStoreWithoutAFolder, TakesTheDefaultsAndSavesNothing) {
    const std::vector<BWSelectedFileOrFolder> noFolders;
    PreferencesStore store("/missing/folder", Resources(BRIMWICK_RESOURCES), noFolders);
    store.loadPreferences();
    EXPECT_EQ(store.preferences(), PreferencesStore::defaultPreferencesDictionary());
    store.savePreferences();
    EXPECT_FALSE(TemporaryFolder::exists("/missing"));
}

TEST(PreferencesStoreBehindALinkedFolder, SavesIntoIt) {
    const TemporaryFolder real;
    const TemporaryFolder home;
    fs::create_directory_symlink(real.path(), home / "Brimwick");
    const std::vector<BWSelectedFileOrFolder> noFolders;
    PreferencesStore store(home / "Brimwick", Resources(BRIMWICK_RESOURCES), noFolders);
    store.loadPreferences();
    store.savePreferences();
    EXPECT_EQ(readPropertyListFile(real / fileName).value(), savedDefaults());
}

} // namespace
} // namespace brimwick

#include "fakes/OrdinaryUser.h"
#include "platform/ports/FileDescriptor.h"

#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>

#include <csignal>
#include <thread>

#include "unit/actions/FileFacts.h"
#include "unit/actions/Transfers.h"

namespace brimwick {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Destination at(const std::string& path) {
    return {path, {}, {}, {}};
}

/// Lowers a limit of the process while it lives.
class Limit {
  public:
    Limit(__rlimit_resource resource, rlim_t value) : resource_(resource) {
        require(getrlimit(resource_, &before_) == 0, "getrlimit");
        const rlimit lower{value, before_.rlim_max};
        require(setrlimit(resource_, &lower) == 0, "setrlimit");
    }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;
    ~Limit() { setrlimit(resource_, &before_); }

  private:
    __rlimit_resource resource_;
    rlimit before_{};
};

class CopyItem : public testing::TestWithParam<bool> {
  protected:
    TemporaryFolder source;
    TemporaryFolder target = GetParam() ? TemporaryFolder(otherFileSystem()) : TemporaryFolder();
};

INSTANTIATE_TEST_SUITE_P(FileSystems, CopyItem, testing::Bool(),
                         [](const auto& info) { return info.param ? "Between" : "Within"; });

TEST_P(CopyItem, LeavesTheSourceAsItWas) {
    source.makeFile("a", "x");
    setTimes(source / "a", {1, 2}, {3, 4});
    const auto path = copyItem(source / "a", at(target / "b"));
    ASSERT_TRUE(path) << path.error().description;
    EXPECT_EQ(*path, target / "b");
    EXPECT_EQ(TemporaryFolder::read(source / "a"), "x");
    EXPECT_EQ(TemporaryFolder::read(target / "b"), "x");
    EXPECT_EQ(statusOf(target / "b").st_mtim.tv_nsec, 4);
    EXPECT_NE(statusOf(target / "b").st_ino, statusOf(source / "a").st_ino);
    EXPECT_THAT(namesIn(target.path()), ElementsAre("b"));
}

TEST_P(CopyItem, CopiesATreeWithLinks) {
    source.makeFolder("tree/b/c");
    source.makeFile("tree/b/c/file", "deep");
    std::filesystem::create_hard_link(source / "tree/b/c/file", source / "tree/z");
    std::filesystem::create_symlink("/nowhere", source / "tree/link");
    ASSERT_TRUE(copyItem(source / "tree", at(target / "tree")));
    EXPECT_THAT(namesIn(target / "tree"), ElementsAre("b", "link", "z"));
    EXPECT_EQ(statusOf(target / "tree/z").st_ino, statusOf(target / "tree/b/c/file").st_ino);
    EXPECT_EQ(std::filesystem::read_symlink(target / "tree/link"), "/nowhere");
    EXPECT_EQ(TemporaryFolder::read(source / "tree/b/c/file"), "deep");
}

TEST_P(CopyItem, NeverOverwritesANameTakenAtTheLastMoment) {
    source.makeFolder("d");
    source.makeFile("d/x", "ours");
    target.makeFile("d", "old");
    int asked = 0;
    const auto path = copyItem(source / "d", {target / "d",
                                              [&] {
                                                  const std::string name = "d" + std::to_string(++asked);
                                                  if (asked == 1) target.makeFolder(name);
                                                  return target / name;
                                              },
                                              {},
                                              {}});
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, target / "d2");
    EXPECT_THAT(namesIn(target / "d1"), IsEmpty());
    EXPECT_EQ(TemporaryFolder::read(target / "d"), "old");
    EXPECT_THAT(namesIn(target.path()), ElementsAre("d", "d1", "d2"));
}

TEST_P(CopyItem, RefusesATakenNameAndLeavesNothing) {
    source.makeFile("a", "new");
    target.makeFile("a", "old");
    const auto path = copyItem(source / "a", at(target / "a"));
    ASSERT_FALSE(path);
    EXPECT_EQ(path.error().description,
              "Could not copy \"" + (source / "a") + "\" to \"" + (target / "a") + "\": File exists");
    EXPECT_THAT(namesIn(target.path()), ElementsAre("a"));
    EXPECT_EQ(TemporaryFolder::read(target / "a"), "old");
}

TEST_P(CopyItem, RefusesAFolderIntoItself) {
    source.makeFolder("d/sub");
    EXPECT_FALSE(copyItem(source / "d", at(source / "d/sub/d")));
    EXPECT_FALSE(copyItem(source / "d", at(source / "d/d")));
    EXPECT_THAT(namesIn(source / "d"), ElementsAre("sub"));
    EXPECT_THAT(namesIn(source / "d/sub"), IsEmpty());
}

TEST_P(CopyItem, RefusesAPipeWithoutWaitingForIt) {
    require(mkfifo((source / "pipe").c_str(), 0600) == 0, "mkfifo");
    const auto path = copyItem(source / "pipe", at(target / "pipe"));
    ASSERT_FALSE(path);
    EXPECT_EQ(path.error().description, "Could not copy the special file \"" + (source / "pipe") +
                                            "\" to \"" + target.path() + "\": Operation not supported");
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
}

TEST_P(CopyItem, LeavesNothingOfAFolderWithAFileThatCannotBeRead) {
    source.makeFolder("d/locked");
    source.makeFile("d/a");
    source.makeFile("d/z");
    setMode(source / "d/z", 0);
    setMode(source / "d/locked", 0555);
    setMode(source.path(), 0755);
    setMode(target.path(), 0777);
    {
        const OrdinaryUser user;
        const auto path = copyItem(source / "d", at(target / "d"));
        ASSERT_FALSE(path);
        EXPECT_EQ(path.error().description, "Could not copy \"" + (source / "d/z") + "\" to \"" +
                                                target.path() + "\": Permission denied");
    }
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
    EXPECT_THAT(namesIn(source / "d"), ElementsAre("a", "locked", "z"));
    setMode(source / "d/locked", 0755);
}

TEST_P(CopyItem, LeavesNothingWhenAWriteFails) {
    source.makeFolder("d");
    source.makeFile("d/small", "x");
    source.makeFile("d/zlarge", std::string(2'000'000, 'y'));
    std::signal(SIGXFSZ, SIG_IGN);
    for (const char* name : {"d", "d/zlarge"}) {
        const Limit limit(RLIMIT_FSIZE, 1'000'000);
        const auto copied = copyItem(source / name, at(target / "copy"));
        ASSERT_FALSE(copied);
        EXPECT_EQ(copied.error().description, "Could not copy \"" + (source / "d/zlarge") + "\" to \"" +
                                                  target.path() + "\": File too large");
        EXPECT_THAT(namesIn(target.path()), IsEmpty());
    }
    std::signal(SIGXFSZ, SIG_DFL);
    EXPECT_EQ(statusOf(source / "d/zlarge").st_size, 2'000'000);
}

TEST_P(CopyItem, GoesDeeperThanPathsAndDescriptorsReach) {
    constexpr int levels = 150;
    const std::string name(100, 'f');
    const auto descend = [&](const std::string& top, bool make) {
        FileDescriptor folder(open(top.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        for (int level = 0; level < levels; ++level) {
            if (make) require(mkdirat(folder.get(), name.c_str(), 0755) == 0, "mkdirat");
            folder = FileDescriptor(openat(folder.get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        }
        return folder;
    };
    source.makeFolder("top");
    source.makeFolder("top/zz");
    source.makeFile("top/zz/sibling", "s");
    {
        const FileDescriptor bottom = descend(source / "top", true);
        const FileDescriptor file(openat(bottom.get(), "bottom", O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        require(write(file.get(), "deep", 4) == 4, "write");
        require(linkat(bottom.get(), "bottom", bottom.get(), "second", 0) == 0, "linkat");
    }
    {
        const Limit limit(RLIMIT_NOFILE, 120);
        const auto copied = copyItem(source / "top", at(target / "copy"));
        ASSERT_TRUE(copied) << copied.error().description.substr(0, 100);
        const auto moved = moveItem(source / "top", at(target / "moved"));
        ASSERT_TRUE(moved) << moved.error().description.substr(0, 100);
    }
    for (const char* result : {"copy", "moved"}) {
        const FileDescriptor bottom = descend(target / result, false);
        char content[4] = {};
        const FileDescriptor file(openat(bottom.get(), "second", O_RDONLY | O_CLOEXEC));
        ASSERT_EQ(read(file.get(), content, 4), 4);
        EXPECT_EQ(std::string(content, 4), "deep");
        struct stat status {};
        ASSERT_EQ(fstat(file.get(), &status), 0);
        EXPECT_EQ(status.st_nlink, 2U);
        EXPECT_EQ(TemporaryFolder::read(target / (std::string(result) + "/zz/sibling")), "s");
    }
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
}

TEST(CopyItemMetadata, CopiesExtendedAttributesOfFilesAndFolders) {
    const TemporaryFolder folder;
    folder.makeFolder("d");
    folder.makeFile("d/f");
    setAttribute(folder / "d", "user.tag", "blue");
    setAttribute(folder / "d/f", "user.empty", "");
    setAttribute(folder / "d/f", "user.tag", std::string("a\0b", 3));
    setMode(folder / "d/f", 0400);
    ASSERT_TRUE(copyItem(folder / "d", at(folder / "copy")));
    EXPECT_EQ(attributeOf(folder / "copy", "user.tag"), "blue");
    EXPECT_EQ(attributeOf(folder / "copy/f", "user.tag"), std::string("a\0b", 3));
    EXPECT_EQ(lgetxattr((folder / "copy/f").c_str(), "user.empty", nullptr, 0), 0);
    EXPECT_EQ(statusOf(folder / "copy/f").st_mode & 07777U, 0400U);
}

/// rwx for the owner, `user` and the mask, nothing for others; as the kernel stores it.
std::string accessList(std::uint32_t user) {
    std::string list("\2\0\0\0", 4);
    const auto add = [&list](std::uint16_t tag, std::uint16_t permissions, std::uint32_t id) {
        for (const std::uint32_t half : {std::uint32_t{tag}, std::uint32_t{permissions}}) {
            list += static_cast<char>(half & 255U);
            list += static_cast<char>(half >> 8U);
        }
        for (unsigned shift = 0; shift < 32; shift += 8) list += static_cast<char>((id >> shift) & 255U);
    };
    constexpr std::uint32_t none = 0xFFFFFFFF;
    add(0x01, 7, none);
    add(0x02, 7, user);
    add(0x04, 0, none);
    add(0x10, 7, none);
    add(0x20, 0, none);
    return list;
}

TEST(CopyItemMetadata, CopiesAccessLists) {
    const TemporaryFolder folder;
    folder.makeFile("f");
    setAttribute(folder / "f", "system.posix_acl_access", accessList(1234));
    ASSERT_TRUE(copyItem(folder / "f", at(folder / "copy")));
    EXPECT_EQ(attributeOf(folder / "copy", "system.posix_acl_access"), accessList(1234));
    EXPECT_EQ(statusOf(folder / "copy").st_mode, statusOf(folder / "f").st_mode);
}

TEST(CopyItemMetadata, GrantsNobodyWhatTheTargetFolderGrants) {
    const TemporaryFolder folder;
    folder.makeFolder("open");
    setAttribute(folder / "open", "system.posix_acl_default", accessList(1234));
    folder.makeFolder("d");
    folder.makeFile("d/f");
    setMode(folder / "d/f", 0660);
    ASSERT_TRUE(copyItem(folder / "d", at(folder / "open/d")));
    EXPECT_EQ(attributeOf(folder / "open/d/f", "system.posix_acl_access"), "");
    EXPECT_EQ(attributeOf(folder / "open/d", "system.posix_acl_default"), "");
    EXPECT_EQ(statusOf(folder / "open/d/f").st_mode & 07777U, 0660U);
}

TEST(CopyItemMetadata, AForeignOwnersFileLosesItsSetIdBits) {
    const TemporaryFolder folder;
    folder.makeFile("program");
    setMode(folder / "program", 06755);
    setMode(folder.path(), 0777);
    const OrdinaryUser user;
    const auto path = copyItem(folder / "program", at(folder / "copy"));
    ASSERT_TRUE(path) << path.error().description;
    const bool ownFile = statusOf(folder / "copy").st_uid == statusOf(folder / "program").st_uid;
    EXPECT_EQ(statusOf(folder / "copy").st_mode & 07777U, ownFile ? 06755U : 0755U);
}

/// Runs in a thread with a small file system of its own; false where the user may not mount one.
bool onSmallDisk(const std::string& mountPoint, const std::function<void()>& body) {
    bool mounted = false;
    std::thread([&] {
        mounted = unshare(CLONE_NEWNS) == 0 &&
                  mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                  mount("small", mountPoint.c_str(), "tmpfs", 0, "size=1m") == 0;
        if (mounted) body();
    }).join();
    return mounted;
}

TEST(CopyItemOnAFullDisk, IsRefusedBeforeItBeginsWhenItCannotFit) {
    const TemporaryFolder source;
    const TemporaryFolder disk;
    source.makeFolder("d");
    source.makeFile("d/first", std::string(400'000, '1'));
    source.makeFile("d/second", std::string(900'000, '2'));
    const bool ran = onSmallDisk(disk.path(), [&] {
        const auto copied = copyItem(source / "d", at(disk / "d"));
        ASSERT_FALSE(copied);
        EXPECT_THAT(
            copied.error().description,
            testing::StartsWith("Could not copy \"" + (source / "d") + "\" to \"" + disk.path() +
                                "\": No space left on device (it takes 1.3 MB, and 1.0 MB are free)"));
        EXPECT_EQ(copied.error().code, std::errc::no_space_on_device);
        EXPECT_FALSE(moveItem(source / "d", at(disk / "d")));
        EXPECT_THAT(namesIn(disk.path()), IsEmpty());
        EXPECT_TRUE(moveItem(source / "d/first", at(disk / "first")));
    });
    if (!ran) GTEST_SKIP() << "only root may mount the small disk; writes that fail are tested above";
    EXPECT_THAT(namesIn(source / "d"), ElementsAre("second"));
    EXPECT_EQ(statusOf(source / "d/second").st_size, 900'000);
}

TEST(CopyItemOnAFullDisk, LeavesNothingAndKeepsTheSource) {
    const TemporaryFolder source;
    const TemporaryFolder disk;
    source.makeFolder("d");
    // Each takes a block, though it holds one byte.
    constexpr std::size_t files = 400;
    for (std::size_t i = 0; i < files; ++i) source.makeFile("d/" + std::to_string(i), "1");
    const bool ran = onSmallDisk(disk.path(), [&] {
        for (const auto& result :
             {copyItem(source / "d", at(disk / "d")), moveItem(source / "d", at(disk / "d"))}) {
            ASSERT_FALSE(result);
            EXPECT_THAT(result.error().description,
                        AllOf(testing::StartsWith("Could not copy \"" + (source / "d/")),
                              testing::EndsWith("to \"" + disk.path() + "\": No space left on device")));
            EXPECT_THAT(namesIn(disk.path()), IsEmpty());
        }
    });
    if (!ran) GTEST_SKIP() << "only root may mount the small disk; writes that fail are tested above";
    EXPECT_EQ(namesIn(source / "d").size(), files);
}

TEST(CopyItemOnAFullDisk, HolesTakeNoSpace) {
    const TemporaryFolder source;
    const TemporaryFolder disk;
    source.makeFile("film", "begin");
    std::filesystem::resize_file(source / "film", 50'000'000);
    const bool ran = onSmallDisk(disk.path(), [&] {
        EXPECT_TRUE(copyItem(source / "film", at(disk / "film")));
        EXPECT_EQ(statusOf(disk / "film").st_size, 50'000'000);
    });
    if (!ran) GTEST_SKIP() << "only root may mount the small disk";
}

} // namespace

} // namespace brimwick

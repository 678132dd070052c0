#include "platform/Waiting.h"
#include "platform/dbus/TestBus.h"
#include "platform/linux/dbus/FolderOpener.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <gmock/gmock.h>

namespace brimwick {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A file manager on the bus, under its own name or the common one.
class TestFileManager : public QDBusVirtualObject {
  public:
    TestFileManager(TestBus& bus, const QString& name) : connection_(bus.connect()) {
        connection_.registerVirtualObject("/org/freedesktop/FileManager1", this);
        connection_.registerService(name);
    }
    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() != "ShowFolders" || refuses) return false;
        for (const QString& url : message.arguments().at(0).toStringList())
            shown.push_back(url.toStdString());
        connection.send(message.createReply());
        return true;
    }

    std::vector<std::string> shown;
    bool refuses = false;

  private:
    QDBusConnection connection_;
};

class FolderOpenerTest : public testing::Test {
  protected:
    FolderOpenerTest() { qputenv("PATH", QByteArray::fromStdString(programs_.path())); }
    ~FolderOpenerTest() override { qputenv("PATH", path_); }

    /// Puts a program of this name on the path, which writes down what it is given.
    void makeProgram(const std::string& name) {
        const std::string script =
            programs_.makeFile(name, "#!/bin/sh\necho " + name + " \"$@\" >>'" + started_ +
                                         ".new'\n/bin/mv '" + started_ + ".new' '" + started_ + "'\n");
        std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    }
    bool isStarted() const { return TemporaryFolder::exists(started_); }

    const QByteArray path_ = qgetenv("PATH");
    TestBus bus_;
    TemporaryFolder programs_;
    const std::string started_ = programs_ / "started";
    const std::string url_ = "file:///tmp/a%20b%FF";
    const FileManagerProgram inUse_{.busName = "org.example.Files", .program = "example-files"};
};

} // namespace

TEST_F(FolderOpenerTest, AsksTheDesktopsFileManager) {
    TestFileManager desktops(bus_, "org.freedesktop.FileManager1");
    FolderOpener opener(bus_.connect());
    opener.openFolder(url_);
    EXPECT_TRUE(waitFor([&] { return !desktops.shown.empty(); }));
    EXPECT_THAT(desktops.shown, ElementsAre(url_));
}

TEST_F(FolderOpenerTest, AsksTheFileManagerInUseThoughAnotherHasTheCommonName) {
    TestFileManager desktops(bus_, "org.freedesktop.FileManager1");
    TestFileManager used(bus_, "org.example.Files");
    FolderOpener opener(bus_.connect());
    opener.openFolder(url_, inUse_);
    EXPECT_TRUE(waitFor([&] { return !used.shown.empty(); }));
    EXPECT_THAT(used.shown, ElementsAre(url_));
    EXPECT_THAT(desktops.shown, IsEmpty());
}

TEST_F(FolderOpenerTest, StartsTheFileManagerInUseWhenItIsNotToBeAsked) {
    TestFileManager desktops(bus_, "org.freedesktop.FileManager1");
    TestFileManager used(bus_, "org.example.Files");
    used.refuses = true;
    makeProgram("example-files");
    FolderOpener opener(bus_.connect());
    opener.openFolder(url_, inUse_);
    ASSERT_TRUE(waitFor([&] { return isStarted(); }));
    EXPECT_EQ(TemporaryFolder::read(started_), "example-files " + url_ + "\n");
    EXPECT_THAT(desktops.shown, IsEmpty());
}

TEST_F(FolderOpenerTest, AsksTheDesktopsFileManagerWhenTheOneInUseIsGone) {
    TestFileManager desktops(bus_, "org.freedesktop.FileManager1");
    FolderOpener opener(bus_.connect());
    opener.openFolder(url_, inUse_);
    EXPECT_TRUE(waitFor([&] { return !desktops.shown.empty(); }));
    EXPECT_THAT(desktops.shown, ElementsAre(url_));
}

TEST_F(FolderOpenerTest, StartsTheDefaultHandlerWithoutAFileManagerOnTheBus) {
    makeProgram("xdg-open");
    FolderOpener opener(bus_.connect());
    opener.openFolder(url_);
    ASSERT_TRUE(waitFor([&] { return isStarted(); }));
    EXPECT_EQ(TemporaryFolder::read(started_), "xdg-open " + url_ + "\n");
}

TEST_F(FolderOpenerTest, StartsTheOtherDefaultHandlerWithoutABus) {
    makeProgram("gio");
    FolderOpener opener(QDBusConnection("no such connection"));
    opener.openFolder(url_);
    ASSERT_TRUE(waitFor([&] { return isStarted(); }));
    EXPECT_EQ(TemporaryFolder::read(started_), "gio open " + url_ + "\n");
}

TEST_F(FolderOpenerTest, SaysSoWhenNothingOpensFolders) {
    FolderOpener opener(QDBusConnection("no such connection"));
    testing::internal::CaptureStderr();
    opener.openFolder(url_, inUse_);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Brimwick: no program was found to show " + url_ + "\n");
}

} // namespace brimwick

#include "platform/linux/x11/XcbEvents.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QLineEdit>

#include <array>
#include <csignal>
#include <cstring>
#include <random>
#include <thread>

#include "SelectionTest.h"

namespace brimwick {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class ClipboardOfTheUser : public SelectionTest {
  protected:
    void openWithOneFileSelected() {
        const std::string shown = folder.makeFolder("shown");
        folder.makeFile("shown/one.txt");
        openFileManager(shown, 1);
    }
    static std::string randomBytes(std::size_t size) {
        std::mt19937 random(size);
        std::string bytes(size, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        return bytes;
    }
};

TEST_F(ClipboardOfTheUser, HoldsItsTextAfterwards) {
    openWithOneFileSelected();
    offerClipboard("UTF8_STRING", "text of the user\nwith two lines");
    ASSERT_THAT(selectedPaths(), SizeIs(1));
    EXPECT_EQ(clipboard("UTF8_STRING"), "text of the user\nwith two lines");
    EXPECT_EQ(clipboard("text/uri-list"), "");
}

TEST_F(ClipboardOfTheUser, HoldsALargeImageAfterwards) {
    openWithOneFileSelected();
    const std::string image = randomBytes(3U << 20U);
    offerClipboard("image/png", image);
    ASSERT_THAT(selectedPaths(), SizeIs(1));
    EXPECT_EQ(clipboard("image/png"), image);
    ASSERT_THAT(selectedPaths(), SizeIs(1)) << "now that it is ours";
    EXPECT_EQ(clipboard("image/png"), image);
}

TEST_F(ClipboardOfTheUser, IsReadToTheEndByAProgramThatBeganBefore) {
    openWithOneFileSelected();
    const std::string image = randomBytes(3U << 20U);
    offerClipboard("image/png", image);
    ASSERT_THAT(selectedPaths(), SizeIs(1));

    // The reader takes a first piece, then another selection is read, then the reader goes on.
    std::size_t pieces = 0;
    EventPump* handlerPump = nullptr;
    ClipboardReader* handlerReader = nullptr;
    EventPump pump(*observer, [&](const xcb_generic_event_t& event) {
        handlerReader->handle(event);
        if (++pieces == 8) {
            EXPECT_THAT(selectedPaths(), SizeIs(1));
        }
    });
    handlerPump = &pump;
    ClipboardReader reader(*observer, *handlerPump);
    handlerReader = &reader;
    const auto item = reader.read("image/png", in(std::chrono::seconds(10)));
    EXPECT_GE(pieces, 8U);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->bytes, image);
    EXPECT_EQ(clipboard("image/png"), image);
}

TEST_F(ClipboardOfTheUser, AnswersManyProgramsAtOnceWhileSelectionsAreRead) {
    openWithOneFileSelected();
    const std::string image = randomBytes(3U << 20U);
    offerClipboard("image/png", image);
    ASSERT_THAT(selectedPaths(), SizeIs(1));
    const std::vector<std::string> read{"xclip", "-selection", "clipboard", "-o", "-t", "image/png"};
    TestProcess first(read);
    TestProcess second(read);
    TestProcess third(read);
    EXPECT_EQ(first.readAll(), image);
    EXPECT_EQ(second.readAll(), image);
    EXPECT_EQ(third.readAll(), image);
}

TEST_F(ClipboardOfTheUser, IsEmptyAfterwardsWhenItWasEmptyBefore) {
    openWithOneFileSelected();
    xcb_set_selection_owner(observer->get(), XCB_NONE, observer->atom("CLIPBOARD"), XCB_CURRENT_TIME);
    observer->synchronise();
    ASSERT_EQ(clipboardOwner(), xcb_window_t{XCB_NONE});
    EXPECT_THAT(selectedPaths(), SizeIs(1));
    EXPECT_EQ(clipboardOwner(), xcb_window_t{XCB_NONE});
}

TEST_F(ClipboardOfTheUser, KeepsEveryFormAndThePasswordHint) {
    openWithOneFileSelected();
    offerClipboard("x-kde-passwordManagerHint", "secret");
    ASSERT_THAT(selectedPaths(), SizeIs(1));
    EXPECT_EQ(clipboard("x-kde-passwordManagerHint"), "secret");
    EXPECT_THAT(clipboardTargets(), HasSubstr("x-kde-passwordManagerHint"));
    EXPECT_THAT(clipboardTargets(), HasSubstr("TIMESTAMP"));
    EXPECT_THAT(clipboardTargets(), HasSubstr("MULTIPLE"));
    EXPECT_NE(clipboard("TIMESTAMP"), "");
}

TEST_F(ClipboardOfTheUser, OfAProgramThatNeverAnswersCostsABoundedTime) {
    openWithOneFileSelected();
    offerClipboardSilently();
    const auto begin = std::chrono::steady_clock::now();
    selectedPaths();
    EXPECT_LT(std::chrono::steady_clock::now() - begin,
              ClipboardReader::wholeTime + ClipboardLoop::copyTime + FrontWindow::activationTime);
}

TEST_F(ClipboardOfTheUser, IsGivenBackWhenTheFileManagerCopiesLate) {
    openWithOneFileSelected();
    offerClipboard("UTF8_STRING", "text");
    openedFileManager->signal(SIGSTOP);
    EXPECT_THAT(selectedPaths(), IsEmpty());
    ASSERT_EQ(clipboard("UTF8_STRING"), "text");
    const xcb_window_t owner = clipboardOwner();
    openedFileManager->signal(SIGCONT);
    ASSERT_TRUE(eventually([&] { return clipboardOwner() != owner; })) << "the late copy";
    EXPECT_TRUE(eventually([&] { return clipboard("UTF8_STRING") == "text"; }));
    EXPECT_THAT(selectedPaths(), SizeIs(1));
    EXPECT_EQ(clipboard("UTF8_STRING"), "text");
}

TEST_F(ClipboardOfTheUser, HoldsWhatTheUserCopiesInTheFileManagerAfterASelectionThatWasEmpty) {
    openWithOneFileSelected();
    // From an empty field of text nothing is copied.
    offerClipboard("UTF8_STRING", "text");
    press("ctrl+i");
    waitForFileManager();
    EXPECT_THAT(selectedPaths(), IsEmpty());
    press("Escape");
    waitForFileManager();
    const xcb_window_t owner = clipboardOwner();
    ASSERT_TRUE(eventually([&] {
        press("ctrl+a");
        press("ctrl+c");
        return clipboardOwner() != owner;
    }));
    EXPECT_THAT(clipboard("text/uri-list"), HasSubstr("one.txt"));
}

TEST_F(ClipboardOfTheUser, IsOutOfReachAndNothingElseHappensWhenTheConnectionBreaks) {
    openWithOneFileSelected();
    offerClipboard("UTF8_STRING", "text");
    ASSERT_THAT(selectedPaths(), SizeIs(1));
    testing::internal::CaptureStderr();
    xcb_kill_client(observer->get(), clipboardOwner());
    observer->synchronise();
    EXPECT_THAT(selectedPaths(), IsEmpty());
    EXPECT_THAT(selectedPaths(), IsEmpty());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "brimwick: the connection to the X server broke; selections cannot be read\n");
}

TEST_F(ClipboardOfTheUser, GoesToTheClipboardManagerWhenThisProgramEnds) {
    openWithOneFileSelected();
    offerClipboard("UTF8_STRING", "text to be kept");
    ASSERT_THAT(selectedPaths(), SizeIs(1));

    std::optional<ClipboardItem> kept;
    const auto connection = XcbConnection::connect();
    std::optional<xcb_selection_request_event_t> request;
    ClipboardReader* reader = nullptr;
    EventPump pump(*connection, [&](const xcb_generic_event_t& event) {
        reader->handle(event);
        const auto* asked = eventAs<xcb_selection_request_event_t>(event, XCB_SELECTION_REQUEST);
        if (asked != nullptr) request = *asked;
    });
    ClipboardReader itsReader(*connection, pump);
    reader = &itsReader;
    xcb_set_selection_owner(connection->get(), pump.window(), connection->atom("CLIPBOARD_MANAGER"),
                            pump.serverTime());
    connection->synchronise();
    std::thread manager([&] {
        if (!pump.until([&] { return request.has_value(); }, in(std::chrono::seconds(10)))) return;
        kept = itsReader.read("UTF8_STRING", in(std::chrono::seconds(10)));
        xcb_selection_notify_event_t done{XCB_SELECTION_NOTIFY,
                                          0,
                                          0,
                                          request->time,
                                          request->requestor,
                                          request->selection,
                                          request->target,
                                          request->property};
        std::array<char, 32> wire{};
        std::memcpy(wire.data(), &done, sizeof done);
        xcb_send_event(connection->get(), 0, request->requestor, XCB_EVENT_MASK_NO_EVENT, wire.data());
        connection->synchronise();
    });
    fileManager.reset();
    manager.join();
    ASSERT_TRUE(request);
    EXPECT_EQ(connection->atomName(request->target), "SAVE_TARGETS");
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->bytes, "text to be kept");
}

/// The clipboard of this very program, after a key of the user in its window.
class ClipboardOfThisProgram : public ClipboardOfTheUser {
  protected:
    void SetUp() override {
        ClipboardOfTheUser::SetUp();
        openWithOneFileSelected();
        own_ = std::make_unique<QLineEdit>();
        own_->show();
        const auto window = static_cast<xcb_window_t>(own_->winId());
        ASSERT_TRUE(eventually([&] { return isActive(window); }));
        press("space");
        ASSERT_TRUE(eventually([&] { return own_->text() == QStringLiteral(" "); }));
    }
    void TearDown() override {
        own_.reset();
        ClipboardOfTheUser::TearDown();
    }
    /// The programs that look at every new clipboard have had their answers from this one.
    void serve() {
        TestProcess reader({"xclip", "-selection", "clipboard", "-o", "-t", "TARGETS"});
        ASSERT_TRUE(eventually([&] { return !reader.isRunning(); }));
    }

    std::unique_ptr<QLineEdit> own_;
};

TEST_F(ClipboardOfThisProgram, IsGivenBackThoughThisProgramWaits) {
    QGuiApplication::clipboard()->setText(QStringLiteral("copied here"));
    serve();
    EXPECT_THAT(selectedPaths(), SizeIs(1));
    EXPECT_EQ(clipboard("UTF8_STRING"), "copied here");
    EXPECT_EQ(clipboard("text/plain"), "copied here");
    EXPECT_TRUE(eventually([] { return !QGuiApplication::clipboard()->ownsClipboard(); }));
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "copied here");
}

TEST_F(ClipboardOfThisProgram, IsGivenBackWithItsImage) {
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QGuiApplication::clipboard()->setImage(image);
    serve();
    EXPECT_THAT(selectedPaths(), SizeIs(1));
    const auto png = QByteArray::fromStdString(clipboard("image/png"));
    EXPECT_TRUE(QImage::fromData(png, "PNG").convertToFormat(QImage::Format_RGB32) == image);
}

TEST_F(ClipboardOfThisProgram, CountsOnlyWhileItIsTheOneOnTheDesktop) {
    QGuiApplication::clipboard()->setText(QStringLiteral("copied here"));
    serve();
    // This program does not hear of the new owner before the selection is read.
    xcb_set_selection_owner(observer->get(), XCB_NONE, observer->atom("CLIPBOARD"), XCB_CURRENT_TIME);
    observer->synchronise();
    EXPECT_THAT(selectedPaths(), SizeIs(1));
    EXPECT_EQ(clipboardOwner(), xcb_window_t{XCB_NONE});
}

TEST_F(ClipboardOfTheUser, IsLeftAloneOnceAnotherProgramTakesIt) {
    openWithOneFileSelected();
    offerClipboard("UTF8_STRING", "first");
    ASSERT_THAT(selectedPaths(), SizeIs(1));
    offerClipboard("UTF8_STRING", "second");
    EXPECT_EQ(clipboard("UTF8_STRING"), "second");
    ASSERT_THAT(selectedPaths(), SizeIs(1));
    EXPECT_EQ(clipboard("UTF8_STRING"), "second");
}

TEST_F(ClipboardOfTheUser, IsNotTouchedWhenNoFileManagerRuns) {
    offerClipboard("UTF8_STRING", "text");
    const xcb_window_t owner = clipboardOwner();
    EXPECT_THAT(selectedPaths(), IsEmpty());
    EXPECT_EQ(clipboardOwner(), owner);
}

} // namespace
} // namespace brimwick

#include "app/commands/SearchRequest.h"
#include "ui/support/ProgramTest.h"

namespace brimwick {

namespace {

class RequestTest : public ProgramTest {
  protected:
    RequestTest() {
        home.makeFolder("Cabinet/Résumés");
        storePreferences({home / "Cabinet"});
    }
    std::shared_ptr<const FakeInstanceService::Exchange> search(const std::string& text) {
        return instance.ask(searchRequest(text, SearchFormat::lines));
    }
};

} // namespace

TEST_F(RequestTest, FindsInTheIndexWhatThePickerFinds) {
    start();
    home.makeFolder("Cabinet/Resume of later");
    const auto found = search("resume");
    ASSERT_TRUE(found->result);
    EXPECT_EQ(found->result->exitCode, 0);
    EXPECT_EQ(found->printed, home / "Cabinet/Résumés" + "\n");
}

TEST_F(RequestTest, SaysWhenNothingIsFound) {
    start();
    const auto found = search("nothing of that kind");
    ASSERT_TRUE(found->result);
    EXPECT_EQ(found->result->exitCode, 1);
    EXPECT_EQ(found->result->message, "No folders found.");
}

TEST_F(RequestTest, LetsASearchWaitForTheFirstIndex) {
    startWithoutIndex();
    const auto found = search("resume");
    EXPECT_FALSE(found->result);
    ASSERT_TRUE(mainLoop.runNext());
    ASSERT_TRUE(found->result);
    EXPECT_EQ(found->printed, home / "Cabinet/Résumés" + "\n");
}

TEST_F(RequestTest, ShowsThePreferencesInPlaceOfThePickerForAnotherStart) {
    start();
    invoke(BWModeOpen);
    const auto answer = instance.ask({.verb = "preferences", .arguments = {}});
    ASSERT_TRUE(answer->result);
    EXPECT_EQ(answer->result->exitCode, 0);
    EXPECT_TRUE(picker().isInPhantomMode());
    EXPECT_FALSE(preferences().isInPhantomMode());
}

TEST_F(RequestTest, ShowsThePreferencesWhenAnActionIsOver) {
    start();
    mainLoop.held = true;
    const auto answer = instance.ask({.verb = "preferences", .arguments = {}});
    EXPECT_TRUE(preferences().isInPhantomMode());
    EXPECT_FALSE(answer->result);
    mainLoop.held = false;
    ASSERT_TRUE(mainLoop.runNext());
    EXPECT_FALSE(preferences().isInPhantomMode());
    EXPECT_TRUE(answer->result);
}

TEST_F(RequestTest, RefusesAVerbThatItDoesNotKnow) {
    startWithoutIndex();
    const auto answer = instance.ask({.verb = "fly", .arguments = {}});
    ASSERT_TRUE(answer->result);
    EXPECT_EQ(answer->result->exitCode, 1);
    EXPECT_EQ(answer->result->message, "the running Brimwick does not know \"fly\"");
}

TEST_F(RequestTest, RefusesASearchOfAnotherVersion) {
    start();
    const auto answer = instance.ask({.verb = "search", .arguments = {"text"}});
    ASSERT_TRUE(answer->result);
    EXPECT_EQ(answer->result->exitCode, 1);
    EXPECT_NE(answer->result->message, "");
}

TEST_F(RequestTest, TakesNoRequestsOnceTheProgramEnds) {
    startWithoutIndex();
    EXPECT_TRUE(instance.hasHandler());
    brimwick.reset();
    EXPECT_FALSE(instance.hasHandler());
}

} // namespace brimwick

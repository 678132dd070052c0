#include "fakes/FakeMainLoop.h"
#include "fakes/FakeNotificationService.h"
#include "fakes/FakeSoundPlayer.h"
#include "feedback/SoundBox.h"
#include "feedback/UserNotifications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

namespace brimwick {

namespace {

std::chrono::system_clock::time_point localTime(int hour, int minute, int second) {
    std::tm local{};
    local.tm_year = 126;
    local.tm_mon = 5;
    local.tm_mday = 15;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    local.tm_isdst = -1;
    return std::chrono::system_clock::from_time_t(std::mktime(&local));
}

} // namespace

TEST(UserNotifications, TellTheTimeOnATwelveHourClock) {
    EXPECT_EQ(notificationTime(localTime(21, 5, 7)), "9:05:07 PM");
    EXPECT_EQ(notificationTime(localTime(9, 5, 7)), "9:05:07 AM");
    EXPECT_EQ(notificationTime(localTime(0, 0, 0)), "12:00:00 AM");
    EXPECT_EQ(notificationTime(localTime(12, 59, 59)), "12:59:59 PM");
}

TEST(UserNotifications, DeliverTheTextUnchangedBelowTheTime) {
    FakeNotificationService service;
    FakeMainLoop clock;
    clock.time = localTime(21, 5, 7);
    UserNotifications(service, clock).sendUserNotification("Moved file <a&b>\nc to folder /x");
    ASSERT_EQ(service.delivered.size(), 1U);
    EXPECT_EQ(service.delivered[0].summary, "Brimwick");
    EXPECT_EQ(service.delivered[0].body, "9:05:07 PM\nMoved file <a&b>\nc to folder /x");
    EXPECT_FALSE(service.delivered[0].transient);
}

TEST(UserNotifications, TreatTextsAboutTheIndexAsPassing) {
    FakeNotificationService service;
    const FakeMainLoop clock;
    UserNotifications(service, clock).sendUserNotification("Index initialization complete.");
    EXPECT_TRUE(service.delivered.at(0).transient);
}

TEST(SoundBox, DrawsFromItsSetsByTheRemainder) {
    FakeSoundPlayer player;
    std::uint32_t draw = 0;
    SoundBox sounds(player, [&draw] { return draw++; });
    for (int i = 0; i < 5; ++i) sounds.playRandomSound(false);
    EXPECT_THAT(player.played, testing::ElementsAre("Catapult.mp3", "Fireball.mp3", "Flyby.mp3",
                                                    "Swoosh3.mp3", "Swooshing.mp3"));
    player.played.clear();
    draw = 0;
    for (int i = 0; i < 4; ++i) sounds.playRandomSound(true);
    EXPECT_THAT(player.played,
                testing::ElementsAre("GloveBoxClose.mp3", "GloveBoxOpen.mp3", "HolePunch.mp3", "Staple.mp3"));
}

TEST(SoundBox, PlaysTheClipOfEachRole) {
    FakeSoundPlayer player;
    SoundBox sounds(player, [] { return 0U; });
    sounds.playTrashSound();
    sounds.playDingSound();
    sounds.playCopySound();
    sounds.beep();
    EXPECT_THAT(player.played,
                testing::ElementsAre("CrumplingPaper.mp3", "Ding.mp3", "Camera.mp3", "Basso.aiff"));
}

} // namespace brimwick

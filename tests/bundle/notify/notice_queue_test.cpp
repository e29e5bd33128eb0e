#include "notify/notice_queue.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace notices {
namespace {

constexpr Milliseconds kNow{1'000'000};
const Entry kConversion{"/o/a.mp4", "0", "a.avi", "No sound.", "/o/t"};
const Entry kSubtitles{"/o/a.mp4", "1", "a.mp4", "No subtitles.", "/o/t"};
const Entry kOther{"/o/b.mp4", "0", "b.avi", "Failed.", ""};

TEST(NoticeQueue, KeepsItsStateInAnyNames) {
    const Shared shared{kNow, "7", {{"a\nb", "0", "\xFF", "", "x"}}, {kOther, kSubtitles}};
    EXPECT_EQ(unpacked(packed(shared)), shared);
    EXPECT_EQ(unpacked(""), Shared());
    for (std::size_t size = 0; size < packed(shared).size(); ++size) {
        EXPECT_EQ(unpacked(packed(shared).substr(0, size)), Shared()) << size;
    }
}

TEST(NoticeQueue, WaitsForOthersAndBetweenTwoNotifications) {
    Shared shared;
    EXPECT_EQ(waiting_time(shared, kNow), kGathering);
    shared.last_time = kNow - Milliseconds(500);
    EXPECT_EQ(waiting_time(shared, kNow), kPause - Milliseconds(500));
    shared.last_time = kNow - Milliseconds(4900);
    EXPECT_EQ(waiting_time(shared, kNow), kGathering);
    shared.last_time = kNow + Milliseconds(1);
    EXPECT_EQ(waiting_time(shared, kNow), kGathering);
}

TEST(NoticeQueue, HasOneHelperShowWhatTheOthersBring) {
    const TemporaryFolder folder;
    NoticeQueue first(folder.path());
    NoticeQueue second(folder.path());
    EXPECT_EQ(first.join(kConversion, kNow), kGathering);
    EXPECT_FALSE(second.join(kOther, kNow));
    EXPECT_EQ(first.take_all(kNow).entries, (std::vector{kConversion, kOther}));
    EXPECT_EQ(second.join(kSubtitles, kNow), kPause);
    EXPECT_EQ(second.take_all(kNow).entries, std::vector{kSubtitles});
}

TEST(NoticeQueue, PassesOnWhatAKilledHelperWasToShow) {
    const TemporaryFolder folder;
    {
        NoticeQueue killed(folder.path());
        ASSERT_TRUE(killed.join(kConversion, kNow));
    }
    NoticeQueue next(folder.path());
    ASSERT_TRUE(next.join(kOther, kNow));
    EXPECT_EQ(next.take_all(kNow).entries, (std::vector{kConversion, kOther}));
}

TEST(NoticeQueue, ReplacesANotificationByALaterStepOfItsMovie) {
    Shared shared{kNow, "7", {kConversion}, {kSubtitles}};
    const Batch batch = take(shared, kNow + kPause);
    EXPECT_EQ(batch.replaces, "7");
    EXPECT_EQ(batch.entries, (std::vector{kConversion, kSubtitles}));
    EXPECT_TRUE(shared.pending.empty());
}

TEST(NoticeQueue, ReplacesNoNotificationOfAnotherMovieOrLongAgo) {
    Shared shared{kNow, "7", {kConversion}, {kOther}};
    EXPECT_EQ(take(shared, kNow + kPause).replaces, "");
    shared = {kNow, "7", {kConversion}, {kSubtitles, kOther}};
    EXPECT_EQ(take(shared, kNow + kPause).replaces, "");
    shared = {kNow, "7", {kOther, kConversion}, {kSubtitles}};
    EXPECT_EQ(take(shared, kNow + kPause).entries.size(), 3U);
    shared = {kNow, "7", {kConversion}, {kSubtitles}};
    const Batch batch = take(shared, kNow + kReplacing);
    EXPECT_EQ(batch.replaces, "");
    EXPECT_EQ(batch.entries, std::vector{kSubtitles});
}

TEST(NoticeQueue, LetsEachShowItsOwnWhereNothingCanBeKept) {
    NoticeQueue queue("/proc/none");
    EXPECT_EQ(queue.join(kOther, kNow), kGathering);
    EXPECT_TRUE(queue.take_all(kNow).entries.empty());
}

}  // namespace
}  // namespace notices

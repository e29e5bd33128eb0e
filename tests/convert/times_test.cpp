#include <gtest/gtest.h>

#include "convert/Movie.h"
#include "support/folder.h"
#include "support/job_listener.h"

namespace {

JobListener listener;

/// What a job shows as remaining after `elapsed` seconds at `percent`.
wxString remaining(int elapsed, float percent) {
    Movie job(listener, "", "", 0);
    job.elapsed = elapsed;
    job.percent_exact = percent;
    job.percent = static_cast<int>(percent);
    return job.time_remaining(-1, -1);
}

}  // namespace

TEST(Times, ReadsHoursMinutesAndSeconds) {
    EXPECT_EQ(Movie::duration_to_seconds("01:02:03"), 3723);
    EXPECT_EQ(Movie::duration_to_seconds("08:09:08"), 29348) << "a leading zero is no octal";
    EXPECT_EQ(Movie::duration_to_seconds("00:00:00"), 0);
    EXPECT_EQ(Movie::duration_to_seconds("99:59:59"), 359999);
}

TEST(Times, ReadsFewerPartsAsHoursFirst) {
    EXPECT_EQ(Movie::duration_to_seconds("2"), 7200);
    EXPECT_EQ(Movie::duration_to_seconds("2:5"), 7500);
    EXPECT_EQ(Movie::duration_to_seconds(""), 0);
}

TEST(Times, TruncatesMillisecondsToSeconds) {
    EXPECT_EQ(Movie::millis_to_seconds(0), 0);
    EXPECT_EQ(Movie::millis_to_seconds(999), 0);
    EXPECT_EQ(Movie::millis_to_seconds(1000), 1);
    EXPECT_EQ(Movie::millis_to_seconds(59999), 59);
    EXPECT_EQ(Movie::millis_to_seconds(16777999), 16778) << "single precision rounds there";
}

TEST(Times, WritesHoursMinutesAndSeconds) {
    EXPECT_EQ(Movie::seconds_to_duration(0), "00:00:00");
    EXPECT_EQ(Movie::seconds_to_duration(3723), "01:02:03");
    EXPECT_EQ(Movie::seconds_to_duration(86400), "24:00:00");
    EXPECT_EQ(Movie::seconds_to_duration(86401), ">24h");
}

TEST(Times, GivesNoEstimateInTheFirstFourSeconds) {
    EXPECT_EQ(remaining(4, 25.0F), "??:??:??");
    EXPECT_EQ(remaining(5, 25.0F), "00:00:15");
}

TEST(Times, GivesNoEstimateBeforeAnyProgress) {
    EXPECT_EQ(remaining(10, 0.0F), "??:??:??");
}

TEST(Times, EstimatesFromTheExactPercentage) {
    EXPECT_EQ(remaining(10, 25.0F), "00:00:30");
    EXPECT_EQ(remaining(10, 0.5F), "00:33:10");
    EXPECT_EQ(remaining(60, 0.01F), ">24h");
}

TEST(Times, ComputesTheRateInSinglePrecision) {
    EXPECT_EQ(remaining(5, 62.5F), "00:00:02");
}

TEST(Times, ShowsNothingRemainingAtTheEnd) {
    EXPECT_EQ(remaining(10, 100.0F), "00:00:00");
    Movie job(listener, "", "", 0);
    job.elapsed = 10;
    job.percent = 100;
    job.percent_exact = 83.0F;
    EXPECT_EQ(job.time_remaining(-1, -1), "00:00:00") << "the whole percentage decides";
}

TEST(Times, ChecksTheFirstSecondsByTheGivenTimeButEstimatesWithTheJobs) {
    Movie job(listener, "", "", 0);
    job.elapsed = 10;
    job.percent = 25;
    job.percent_exact = 25.0F;
    EXPECT_EQ(job.time_remaining(3, 90), "??:??:??");
    EXPECT_EQ(job.time_remaining(500, 90), "00:00:30");
}

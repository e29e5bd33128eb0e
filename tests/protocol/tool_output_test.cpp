// What the tools write is what the program reads.

#include "protocol/tool_output.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "convert/parsers.h"
#include "core/console.h"
#include "movie/report.h"
#include "process/progress.h"
#include "tools/complaints.h"

namespace {

/// The console's text for a message of the tool.
std::string written_by(const char* tool, const std::string& message) {
    testing::internal::CaptureStderr();
    bundle::complain(tool, message);
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(ToolOutput, OfAProbeIsReadAsTheMoviesFacts) {
    bundle::Movie movie;
    movie.duration = 3723.45;
    movie.video.codec = "h264";
    movie.video.pixel_format = "yuv420p";
    movie.video.shown = {1280, 720};
    movie.video.average_rate = movie.video.base_rate = bundle::Rational{30000, 1001};
    movie.video.time_base = bundle::Rational{1, 1000};
    movie.audio = bundle::AudioStream{1, "aac", 44100, 2};
    const ProbeFacts facts = parse_probe(bundle::movie_report(movie));
    EXPECT_EQ(facts.duration, 3723);
    EXPECT_EQ(facts.width, 1280);
    EXPECT_EQ(facts.height, 720);
    EXPECT_EQ(facts.fps, 29.97);
}

TEST(ToolOutput, OfAConversionIsReadAsSeconds) {
    bundle::Progress progress;
    for (const std::int64_t seconds : {0, 9, 30, 86'399}) {
        progress.microseconds = seconds * 1'000'000 + 990'000;
        EXPECT_EQ(parse_transcoded_seconds(bundle::old_progress_line(progress)), seconds);
    }
}

TEST(ToolOutput, OfMP4BoxIsReadAsPercent) {
    for (const int percent : {0, 9, 45, 100})
        EXPECT_EQ(parse_muxed_percent(bundle::file_progress_line(percent)), percent);
}

TEST(ToolOutput, ReachesTheConsoleWithEveryLineOfAFailure) {
    for (const char* tool : {tool_output::kFFmpeg, tool_output::kMP4Box}) {
        const std::string failure = written_by(tool, "no file was written\nfirst\nsecond\nthird");
        EXPECT_EQ(std::count(failure.begin(), failure.end(), '\n'), 4);
        EXPECT_EQ(Complaints().in("time=1.00 bitrate=\r" + failure), failure);
    }
}

TEST(ToolOutput, ReachesTheConsoleWithEveryLineOfALongFailure) {
    std::string message = "first";
    for (int line = 0; line < 1000; ++line)
        message += "\n" + std::to_string(line);
    const std::string failure = written_by(tool_output::kFFmpeg, message);
    EXPECT_EQ(std::count(failure.begin(), failure.end(), '\n'), 1001);
    EXPECT_EQ(Complaints().in(failure), failure);
}

TEST(ToolOutput, IsNotForgedByTextFromElsewhere) {
    const std::string report =
        "Duration: 01:00:00 Stream #0.0: Video: x, 320x240, 25 tbr, 25 tbn, 25 tbc";
    ASSERT_EQ(parse_probe(report).duration, 3600);
    EXPECT_EQ(parse_probe(bundle::printable(report)).duration, 0);
    ASSERT_TRUE(parse_transcoded_seconds("time=30.04 bitrate="));
    EXPECT_FALSE(parse_transcoded_seconds(bundle::printable("time=30.04 bitrate=")));
    ASSERT_TRUE(parse_muxed_percent("ISO File Writing: (45/100)"));
    EXPECT_FALSE(parse_muxed_percent(bundle::printable("ISO File Writing: (45/100)")));
}

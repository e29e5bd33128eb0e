#include "movie/report.h"

#include <gtest/gtest.h>

#include "bundle/support/program_reading.h"

namespace bundle {
namespace {

Movie sample() {
    Movie movie;
    movie.duration = 123.45;
    movie.bit_rate = 812'999;
    movie.video.codec = "h264";
    movie.video.pixel_format = "yuv420p";
    movie.video.stored = {1440, 1080};
    movie.video.shown = {1280, 720};
    movie.video.average_rate = movie.video.base_rate = Rational{25, 1};
    movie.video.time_base = Rational{1, 1000};
    movie.audio = AudioStream{1, "aac", 44100, 2};
    return movie;
}

ReadReport reading(const Movie& movie) {
    return read_report(movie_report(movie)).value_or(ReadReport{});
}

TEST(MovieReport, HasTheOldForm) {
    EXPECT_EQ(movie_report(sample()),
              "  Duration: 00:02:03.45, start: 0.000000, bitrate: 812 kb/s\n"
              "    Stream #0.0: Video: h264, yuv420p, 1280x720, 25 fps, 25 tbr, 1k tbn, 25 tbc\n"
              "    Stream #0.1: Audio: aac, 44100 Hz, stereo\n");
}

TEST(MovieReport, IsReadByTheProgram) {
    EXPECT_EQ(reading(sample()), (ReadReport{"00:02:03", "1280", "720", "25"}));
}

TEST(MovieReport, ReportsTheAverageRateWithTwoDecimals) {
    Movie movie = sample();
    movie.video.average_rate = Rational{30000, 1001};
    movie.video.base_rate = Rational{60, 1};
    EXPECT_EQ(reading(movie).rate, "29.97");
    movie.video.average_rate = Rational{24000, 1001};
    EXPECT_EQ(reading(movie).rate, "23.98");
    movie.video.average_rate = movie.video.base_rate = Rational{1000, 1};
    EXPECT_EQ(reading(movie).rate, "1000");
}

TEST(MovieReport, NeverPassesATimeBaseOffAsTheRate) {
    Movie movie = sample();
    movie.video.average_rate = std::nullopt;
    movie.video.base_rate = std::nullopt;
    movie.video.time_base = Rational{1, 12800};
    EXPECT_EQ(reading(movie).rate, "0");
}

TEST(MovieReport, SaysThatTheDurationIsUnknown) {
    Movie movie = sample();
    movie.duration = std::nullopt;
    EXPECT_TRUE(movie_report(movie).starts_with("  Duration: N/A, "));
    EXPECT_FALSE(read_report(movie_report(movie)));
}

TEST(MovieReport, KeepsTheDurationInEightCharacters) {
    Movie movie = sample();
    movie.duration = 500'000;
    EXPECT_EQ(reading(movie).duration, "99:59:59");
    movie.duration = 3599.999;
    EXPECT_EQ(reading(movie).duration, "00:59:59");
}

TEST(MovieReport, IsReadWithoutSoundAndWithLargeStreamNumbers) {
    Movie movie = sample();
    movie.audio = std::nullopt;
    movie.video.index = 12;
    EXPECT_EQ(reading(movie), (ReadReport{"00:02:03", "1280", "720", "25"}));
}

}  // namespace
}  // namespace bundle

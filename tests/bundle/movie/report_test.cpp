#include "movie/report.h"

#include <gtest/gtest.h>

#include "bundle/support/program_reading.h"

namespace bundle {
namespace {

Film sample() {
    Film film;
    film.duration = 123.45;
    film.bit_rate = 812'999;
    film.video.codec = "h264";
    film.video.pixel_format = "yuv420p";
    film.video.stored = {1440, 1080};
    film.video.shown = {1280, 720};
    film.video.average_rate = film.video.base_rate = Rational{25, 1};
    film.video.time_base = Rational{1, 1000};
    film.audio = AudioStream{1, "aac", 44100, 2};
    return film;
}

ReadReport reading(const Film& film) {
    return read_report(film_report(film)).value_or(ReadReport{});
}

TEST(FilmReport, HasTheOldForm) {
    EXPECT_EQ(film_report(sample()),
              "  Duration: 00:02:03.45, start: 0.000000, bitrate: 812 kb/s\n"
              "    Stream #0.0: Video: h264, yuv420p, 1280x720, 25 fps, 25 tbr, 1k tbn, 25 tbc\n"
              "    Stream #0.1: Audio: aac, 44100 Hz, stereo\n");
}

TEST(FilmReport, IsReadByTheProgram) {
    EXPECT_EQ(reading(sample()), (ReadReport{"00:02:03", "1280", "720", "25"}));
}

TEST(FilmReport, ReportsTheAverageRateWithTwoDecimals) {
    Film film = sample();
    film.video.average_rate = Rational{30000, 1001};
    film.video.base_rate = Rational{60, 1};
    EXPECT_EQ(reading(film).rate, "29.97");
    film.video.average_rate = Rational{24000, 1001};
    EXPECT_EQ(reading(film).rate, "23.98");
    film.video.average_rate = film.video.base_rate = Rational{1000, 1};
    EXPECT_EQ(reading(film).rate, "1000");
}

TEST(FilmReport, NeverPassesATimeBaseOffAsTheRate) {
    Film film = sample();
    film.video.average_rate = std::nullopt;
    film.video.base_rate = std::nullopt;
    film.video.time_base = Rational{1, 12800};
    EXPECT_EQ(reading(film).rate, "0");
}

TEST(FilmReport, SaysThatTheDurationIsUnknown) {
    Film film = sample();
    film.duration = std::nullopt;
    EXPECT_TRUE(film_report(film).starts_with("  Duration: N/A, "));
    EXPECT_FALSE(read_report(film_report(film)));
}

TEST(FilmReport, KeepsTheDurationInEightCharacters) {
    Film film = sample();
    film.duration = 500'000;
    EXPECT_EQ(reading(film).duration, "99:59:59");
    film.duration = 3599.999;
    EXPECT_EQ(reading(film).duration, "00:59:59");
}

TEST(FilmReport, IsReadWithoutSoundAndWithLargeStreamNumbers) {
    Film film = sample();
    film.audio = std::nullopt;
    film.video.index = 12;
    EXPECT_EQ(reading(film), (ReadReport{"00:02:03", "1280", "720", "25"}));
}

}  // namespace
}  // namespace bundle

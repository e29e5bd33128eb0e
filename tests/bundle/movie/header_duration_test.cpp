#include "movie/header_duration.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

json stream(int index, const char* duration) {
    return {{"index", index},
            {"codec_type", index == 2 ? "subtitle" : "video"},
            {"duration", duration}};
}

json tagged(int index, const char* name, const char* duration) {
    return {{"index", index}, {"tags", {{name, duration}}}};
}

/// A movie of the streams 0 and 1, in a file that starts at 10 s and lasts 60 s.
Movie movie_of(const json& streams) {
    Movie movie;
    movie.video.index = 0;
    movie.audio.emplace().index = 1;
    movie.start = 10;
    set_duration(movie, {{"streams", streams}, {"format", {{"duration", "60.0"}}}});
    return movie;
}

TEST(MovieDuration, IsThatOfTheFileWhichHoldsNothingElse) {
    const Movie movie = movie_of({stream(0, "5.0"), stream(1, "6.0")});
    EXPECT_EQ(movie.duration, 60);
    EXPECT_TRUE(movie.duration_is_certain);
}

TEST(MovieDuration, IsThatOfTheLongerStreamWhichIsTaken) {
    const Movie movie = movie_of({stream(0, "5.0"), stream(1, "6.0"), stream(2, "60.0")});
    EXPECT_EQ(movie.duration, 6);
    EXPECT_TRUE(movie.duration_is_certain);
}

TEST(MovieDuration, CountsFromTheStartOfTheFile) {
    json late = stream(1, "5.0");
    late["start_time"] = "12.5";
    EXPECT_EQ(movie_of({stream(0, "5.0"), late, stream(2, "60.0")}).duration, 7.5);
}

TEST(MovieDuration, IsReadFromTheTagsOfMatroska) {
    const Movie movie =
        movie_of({tagged(0, "DURATION", "00:00:05.500000000"),
                  tagged(1, "DURATION-eng", "00:00:05.000000000"), stream(2, "60.0")});
    EXPECT_EQ(movie.duration, 5.5);
    EXPECT_EQ(movie_of({tagged(0, "DURATION", "99:00:05.5"), stream(1, "5.0"), stream(2, "60.0")})
                  .duration,
              60);
}

TEST(MovieDuration, IsUncertainWhereAStreamDoesNotTell) {
    for (const char* unusable : {"", "N/A", "0", "00:05", "1:2:3:4", "a:b:c"}) {
        const Movie movie =
            movie_of({tagged(0, "DURATION", unusable), stream(1, "5.0"), stream(2, "60.0")});
        EXPECT_EQ(movie.duration, 60) << unusable;
        EXPECT_FALSE(movie.duration_is_certain) << unusable;
    }
}

TEST(MovieDuration, IsNotTouchedByCoversAndAttachments) {
    json cover = stream(2, "");
    cover["disposition"]["attached_pic"] = 1;
    json attachment = stream(3, "");
    attachment["codec_type"] = "attachment";
    const Movie movie = movie_of({stream(0, ""), stream(1, ""), cover, attachment});
    EXPECT_EQ(movie.duration, 60);
    EXPECT_TRUE(movie.duration_is_certain);
}

/// A movie whose clock starts at `start`, in a file of which the header gives `duration`.
Movie movie_starting_at(double start, const char* duration, const char* format = "asf") {
    Movie movie;
    movie.start = start;
    set_duration(movie, {{"streams", {stream(0, "")}},
                         {"format", {{"duration", duration}, {"format_name", format}}}});
    return movie;
}

TEST(MovieDuration, IsUncertainWhereItMayBeTheTimeOnTheClock) {
    EXPECT_FALSE(movie_starting_at(3600, "3604").duration_is_certain);
    EXPECT_TRUE(movie_starting_at(3600, "4").duration_is_certain);
    EXPECT_TRUE(movie_starting_at(1, "4").duration_is_certain);
    EXPECT_TRUE(movie_starting_at(3600, "3604", "mpegts").duration_is_certain);
    EXPECT_FALSE(movie_starting_at(3600, "3604", "matroska,webm").duration_is_certain);
}

TEST(LengthByHeader, IsCountedFromTheStartUnlessPacketsEndLater) {
    EXPECT_EQ(length_by_header(movie_starting_at(3600, "3604"), 3604), 4);
    EXPECT_EQ(length_by_header(movie_starting_at(3600, "3604"), 3602), 4);
    EXPECT_EQ(length_by_header(movie_starting_at(3600, "3700"), 7300), 3700);
    EXPECT_EQ(length_by_header(movie_starting_at(1, "4"), 3), 4);
}

}  // namespace
}  // namespace bundle

#include "movie/movie_tags.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;
using Words = std::vector<std::string>;

constexpr const char* kByPhone = "2024-05-01T14:00:00+0200";
constexpr const char* kByContainer = "2024-06-07T08:09:10.000000Z";

json with_tags(const json& tags) {
    return {{"tags", tags}};
}

TEST(RecordingTime, IsTakenAsItIsWhereItIsOne) {
    for (const char* time : {kByPhone, kByContainer, "2008-02-29 23:59:59", "1971-01-01T00:00:00Z",
                             "2039-12-31T00:00:00-09:30"}) {
        EXPECT_EQ(recording_time(time), time);
    }
}

TEST(RecordingTime, IsEmptyWhereTheClockWasNeverSet) {
    for (const char* time :
         {"1904-01-01T00:00:00.000000Z", "1970-01-01T00:00:00.000000Z", "1970-12-31T23:59:59Z",
          "2040-02-06T06:28:16Z", "0000-00-00T00:00:00Z", "9999-01-01T00:00:00Z"}) {
        EXPECT_EQ(recording_time(time), "") << time;
    }
}

TEST(RecordingTime, IsEmptyForWhatIsNoTime) {
    for (const char* time :
         {"", "now", "2024", "2024-05-01", "2024-13-01T00:00:00Z", "2023-02-29T00:00:00Z",
          "2024-05-01T24:00:00Z", "2024-05-01T14:60:00Z", "2024-05-01T14:00:00Z x",
          "\xFF-05-01T14:00:00Z", "Wed May 01 14:00:00 2024", "2024-05-01T14:00:00+2"}) {
        EXPECT_EQ(recording_time(time), "") << time;
    }
}

TEST(MovieTags, TakeThePhonesDateFirst) {
    const json all = with_tags(
        {{"creation_time", kByContainer}, {"com.apple.quicktime.creationdate", kByPhone}});
    EXPECT_EQ(movie_tags(all, {}, {}).recorded, kByPhone);
    EXPECT_EQ(movie_tags(all, {}, {}).local_day, kByPhone);
}

TEST(MovieTags, GoOnWhereADateIsBad) {
    const json unset = with_tags({{"creation_time", "1904-01-01T00:00:00.000000Z"},
                                  {"com.apple.quicktime.creationdate", "yesterday"}});
    const MovieTags tags = movie_tags(unset, with_tags({{"creation_time", kByContainer}}), {});
    EXPECT_EQ(tags.recorded, kByContainer);
    EXPECT_EQ(tags.local_day, "");
    EXPECT_EQ(movie_tags(unset, {}, {}), MovieTags());
}

TEST(MovieTags, LeaveWhatFfmpegCopiesAnyway) {
    const json all = with_tags({{"date", "2019"},
                                {"location", "+1.0000+002.0000/"},
                                {"com.apple.quicktime.creationdate", kByPhone},
                                {"com.apple.quicktime.location.ISO6709", "+48.85+002.29+035/"}});
    EXPECT_EQ(movie_tags(all, {}, {}).local_day, "");
    EXPECT_EQ(movie_tags(all, {}, {}).place, "");
}

TEST(MovieTags, HaveTheLanguageOfTheSound) {
    EXPECT_EQ(movie_tags({}, {}, with_tags({{"language", "ger"}})).audio_language, "deu");
    EXPECT_EQ(movie_tags({}, {}, with_tags({{"title", "Ton"}})).audio_language, "");
}

TEST(MovieTags, BecomeOptionsOfFfmpeg) {
    EXPECT_EQ(tag_arguments({}), Words());
    EXPECT_EQ(tag_arguments({kByPhone, kByPhone, "+48.85+002.29/", "deu"}),
              (Words{"-metadata", std::string("creation_time=") + kByPhone, "-metadata",
                     std::string("date=") + kByPhone, "-metadata", "location=+48.85+002.29/",
                     "-metadata:s:a:0", "language=deu"}));
}

}  // namespace
}  // namespace bundle

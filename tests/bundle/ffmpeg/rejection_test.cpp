#include "movie/rejection.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>

#include "output/advice.h"

namespace bundle {
namespace {

using nlohmann::json;

json streams(const char* text) {
    return {{"streams", json::parse(text)}};
}

TEST(Rejection, HasAReasonForEachKindOfFileWithoutAMovingPicture) {
    EXPECT_EQ(no_video(streams("[]")).message, "it has neither picture nor sound");
    EXPECT_EQ(no_video(streams(R"([{"codec_type": "audio"}])")).message,
              "it has sound only, no picture");
    EXPECT_EQ(no_video(streams(R"([{"codec_type": "video", "codec_name": "unknown"}])")).message,
              "its picture is in a format that the system's ffmpeg cannot decode");
    EXPECT_EQ(no_video(streams(R"([{"codec_type": "video", "codec_name": "vvc"}])")).message,
              "its picture is in a format that the system's ffmpeg cannot decode (vvc)");
    EXPECT_EQ(no_video(streams(R"([{"codec_type": "audio"}, {"codec_type": "video",
                                 "codec_name": "mjpeg", "pix_fmt": "yuvj420p"}])"))
                  .message,
              "it has no moving picture, only a still one");
}

TEST(Rejection, FindsAnEncryptedPicture) {
    EXPECT_TRUE(is_protected(streams(R"([{"codec_type": "video", "codec_tag_string": "encv"}])")));
    EXPECT_FALSE(is_protected(streams(R"([{"codec_type": "video", "codec_tag_string": "avc1"},
                                          {"codec_type": "audio", "codec_tag_string": "encv"}])")));
    const char* const packets =
        R"({"packets": [{"stream_index": 1, "side_data_list": [{"side_data_type": "Encryption info"}]}],
            "streams": [{"index": 0, "codec_type": "audio"}, {"index": 1, "codec_type": "video"}]})";
    EXPECT_TRUE(is_protected(json::parse(packets)));
    EXPECT_FALSE(is_protected(json::object()));
}

TEST(Rejection, IsForWhatTheProgramCannotReadOutOfAReport) {
    Movie movie;
    movie.video.average_rate = Rational{25, 1};
    EXPECT_NE(rejection_of(movie).value_or("").find("its length"), std::string::npos);
    movie.duration = 0.99;
    EXPECT_EQ(rejection_of(movie), "it is shorter than a second");
    movie.duration = 1;
    EXPECT_FALSE(rejection_of(movie));
    movie.video.average_rate.reset();
    EXPECT_EQ(rejection_of(movie), "its frame rate cannot be found");
}

TEST(Advice, IsThereForEveryCauseAndDiffers) {
    std::set<std::string_view> seen;
    for (int cause = 0; cause <= static_cast<int>(Cause::kNotConverted); ++cause) {
        const Words words = words_for(static_cast<Cause>(cause));
        EXPECT_TRUE(words.advice.ends_with('.')) << words.advice;
        EXPECT_FALSE(words.reason.ends_with('.')) << words.reason;
        EXPECT_TRUE(seen.insert(words.reason).second) << words.reason;
    }
}

TEST(Advice, FollowsTheSystemsErrors) {
    EXPECT_EQ(write_cause(ENOSPC), Cause::kNoRoom);
    EXPECT_EQ(write_cause(EDQUOT), Cause::kNoRoom);
    EXPECT_EQ(write_cause(EROFS), Cause::kNotWritable);
    EXPECT_EQ(write_cause(ENOENT), Cause::kFolderGone);
    EXPECT_EQ(read_cause(ENOENT), Cause::kMovieGone);
    EXPECT_EQ(read_cause(EACCES), Cause::kMovieForbidden);
    EXPECT_EQ(read_cause(EIO), Cause::kMovieUnreadable);
}

}  // namespace
}  // namespace bundle

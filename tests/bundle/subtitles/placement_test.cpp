#include "subtitles/placement.h"

#include <gtest/gtest.h>

#include "bundle/support/samples.h"
#include "support/temporary_folder.h"

namespace bundle {
namespace {

TEST(SubtitlePlace, IsTheLowerEdgeOfThePicture) {
    const TextPlace place = subtitle_place(480, 270);
    EXPECT_EQ(place.width, 480);
    EXPECT_EQ(place.height, 40);
    EXPECT_EQ(place.top, 230);
}

TEST(TextTrack, IsPlacedInAMp4File) {
    const TemporaryFolder folder;
    ASSERT_TRUE(make_movie_with_subtitles(folder / "movie.mp4"));
    const std::string before = content_of(folder / "movie.mp4");
    EXPECT_FALSE(place_text_track_in(folder / "movie.mp4", {0x123, 0x45, 0x67}));
    const std::string after = content_of(folder / "movie.mp4");
    EXPECT_EQ(after.size(), before.size());
    using namespace std::string_literals;
    EXPECT_NE(after.find("\0\x67\0\0\x40\0\0\0\x01\x23\0\0\0\x45\0\0"s), std::string::npos);
    EXPECT_EQ(only_stream(probed(folder / "movie.mp4"), "subtitle")["codec_name"], "mov_text");
}

TEST(TextTrack, LeavesThoseOfOthersWhereTheyWere) {
    const TemporaryFolder folder;
    ASSERT_TRUE(make_movie_with_subtitles(folder / "movie.mp4"));
    std::string mp4 = content_of(folder / "movie.mp4");
    std::string original = mp4.substr(mp4.find("moov") + 4);
    original.replace(original.find(kTrackName), 7, "Another");
    std::string copy = original;
    const std::size_t layer = original.rfind("tkhd") + 4 + 32;
    original.replace(layer, 2, "\xFF\xFE");
    original.replace(layer + 8, 44, std::string(44, 'x'));
    keep_places(copy, original);
    EXPECT_EQ(copy, original);
    original.replace(layer, 2, "\1\2");
    keep_places(copy, "");
    EXPECT_NE(copy, original);
}

TEST(TextTrack, IsNotFoundInABrokenIndex) {
    const TemporaryFolder folder;
    ASSERT_TRUE(make_movie_with_subtitles(folder / "movie.mp4"));
    const std::string mp4 = content_of(folder / "movie.mp4");
    const std::string moov = mp4.substr(mp4.find("moov") + 4);
    std::string whole = moov;
    ASSERT_TRUE(place_text_track(whole, {}));
    for (std::size_t length = 0; length < moov.size(); length += 7) {
        std::string cut = moov.substr(0, length);
        (void)place_text_track(cut, {});
        EXPECT_EQ(cut.size(), length);
    }
    std::string none;
    EXPECT_FALSE(place_text_track(none, {}));
}

TEST(TextTrack, IsNotFoundInOtherFiles) {
    const TemporaryFolder folder;
    EXPECT_TRUE(place_text_track_in(folder.write("text", "no movie at all, but long enough"), {}));
    EXPECT_TRUE(place_text_track_in(folder / "missing", {}));
}

}  // namespace
}  // namespace bundle

#include "subtitles/track_adding.h"

#include <gtest/gtest.h>

#include <fstream>

#include "bundle/support/samples.h"
#include "mp4/boxes.h"
#include "mp4/index.h"
#include "support/temporary_folder.h"

namespace bundle {
namespace {

TextTrack track_with(const std::string& text) {
    TextTrack track;
    track.cues = {{100, 400, text}, {400, 700, "b"}, {800, 900, "c"}};
    track.language = "deu";
    track.name = "Name";
    return track;
}

class TextTracks : public testing::Test {
  protected:
    void SetUp() override {
        path_ = folder_ / "movie.mp4";
        ASSERT_TRUE(make_movie_with_subtitles(path_));
    }

    std::optional<Mp4Index> index() const {
        std::ifstream file(path_, std::ios::binary);
        return read_mp4_index(file);
    }

    TemporaryFolder folder_;
    std::string path_;
};

TEST_F(TextTracks, AreAddedToAWholeFile) {
    const auto before = index();
    ASSERT_TRUE(before);
    TextTrack forced = track_with("forced");
    forced.is_forced = true;
    forced.is_enabled = true;
    EXPECT_FALSE(add_text_tracks(path_, {track_with("a"), forced}));
    const auto after = index();
    ASSERT_TRUE(after);
    ASSERT_EQ(after->tracks.size(), before->tracks.size() + 2);
    EXPECT_EQ(after->tracks.back().handler, "sbtl");
    EXPECT_EQ(after->tracks.back().samples, 6U);
    EXPECT_NEAR(after->tracks.back().duration, 0.9, 0.01);
    const auto streams = probed(path_)["streams"];
    const auto& last = streams.back();
    EXPECT_EQ(last["codec_name"], "mov_text");
    EXPECT_EQ(last["tags"]["language"], "deu");
    EXPECT_EQ(last["tags"]["handler_name"], "Name");
    EXPECT_EQ(last["disposition"]["default"], 1);
    EXPECT_EQ(streams[streams.size() - 2]["disposition"]["default"], 0);
}

TEST_F(TextTracks, AreAddedAfterAnIndexThatComesFirst) {
    std::ifstream file(path_, std::ios::binary);
    const auto moov = find_moov(file);
    ASSERT_TRUE(moov);
    file.close();
    std::ofstream(path_, std::ios::binary | std::ios::app) << std::string("\0\0\0\x8wide", 8);
    EXPECT_FALSE(add_text_tracks(path_, {track_with("a")}));
    EXPECT_EQ(content_of(path_).substr(moov->start - 4, 4), "free");
    EXPECT_TRUE(index());
    EXPECT_EQ(probed(path_)["streams"].back()["tags"]["handler_name"], "Name");
}

TEST_F(TextTracks, HaveNumbersOfTheirOwn) {
    EXPECT_FALSE(add_text_tracks(path_, {track_with("a"), track_with("b")}));
    std::set<std::string> ids;
    const auto streams = probed(path_)["streams"];
    for (const auto& stream : streams) {
        ids.insert(stream["id"]);
    }
    EXPECT_EQ(ids.size(), streams.size());
}

TEST_F(TextTracks, AreNotAddedToABrokenIndex) {
    const std::string movie = content_of(path_);
    const std::string moov = movie.substr(movie.find("moov") + 4);
    ASSERT_GT(with_text_tracks(moov, {track_with("a")}, 0).size(), moov.size());
    for (std::size_t length = 0; length < moov.size(); length += 7) {
        const std::string result = with_text_tracks(moov.substr(0, length), {track_with("a")}, 0);
        EXPECT_TRUE(result.empty() || result.size() > length);
    }
    EXPECT_TRUE(add_text_tracks(folder_ / "missing", {track_with("a")}));
    EXPECT_TRUE(add_text_tracks(folder_.write("text", "no movie at all"), {track_with("a")}));
}

}  // namespace
}  // namespace bundle

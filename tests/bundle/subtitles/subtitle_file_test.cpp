#include "subtitles/subtitle_file.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace bundle {
namespace {

TEST(SubtitleText, IsReadIntoCues) {
    const TemporaryFolder folder;
    const auto cues =
        read_subtitles(folder.write("movie.srt",
                                    "\xEF\xBB\xBF"
                                    "1\r\n00:00:01,000 --> 00:00:02,500\r\nText\r\n"));
    ASSERT_TRUE(cues);
    EXPECT_EQ(*cues, (std::vector<Cue>{{1000, 2500, "Text"}}));
}

TEST(SubtitleText, IsRefusedWithoutCues) {
    const TemporaryFolder folder;
    EXPECT_FALSE(read_subtitles(folder.write("empty.srt", "")));
    EXPECT_FALSE(read_subtitles(folder.write("prose.srt", "This --> is no subtitle.\n")));
    EXPECT_FALSE(read_subtitles(folder.write("binary.srt", std::string("\0\xE9", 2))));
    EXPECT_FALSE(read_subtitles(folder / "missing.srt"));
    EXPECT_FALSE(read_subtitles(folder.path().string()));
}

}  // namespace
}  // namespace bundle

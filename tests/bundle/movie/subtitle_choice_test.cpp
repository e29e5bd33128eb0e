#include "movie/subtitle_choice.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

json stream(int index, const char* codec, int is_default = 0) {
    return {{"index", index},
            {"codec_type", "subtitle"},
            {"codec_name", codec},
            {"disposition", {{"default", is_default}, {"forced", 0}}}};
}

std::vector<TextStream> chosen(const std::vector<json>& streams) {
    std::vector<const json*> pointers;
    for (const json& stream : streams) {
        pointers.push_back(&stream);
    }
    return text_streams(pointers);
}

TEST(SubtitleChoice, TakesTextAndLeavesPictures) {
    std::vector<std::string> codecs;
    const std::vector<json> all{stream(2, "subrip"),        stream(3, "hdmv_pgs_subtitle"),
                                stream(4, "ass"),           stream(5, "dvd_subtitle"),
                                stream(6, "webvtt"),        stream(7, "dvb_subtitle"),
                                stream(8, "mov_text"),      stream(9, "xsub"),
                                stream(10, "dvb_teletext"), stream(11, "")};
    for (const TextStream& text : chosen(all)) {
        codecs.push_back(text.codec);
    }
    EXPECT_EQ(codecs,
              (std::vector<std::string>{"subrip", "ass", "webvtt", "mov_text", "dvb_teletext"}));
}

TEST(SubtitleChoice, KnowsWhatTheFileSaysOfAStream) {
    json said = stream(3, "subrip", 1);
    said["disposition"]["forced"] = 1;
    said["tags"] = {{"language", "ger"}, {"title", "Schilder"}};
    EXPECT_EQ(chosen({said}),
              (std::vector<TextStream>{{3, "subrip", "deu", "Schilder", true, true}}));
    EXPECT_EQ(chosen({{{"index", 4}, {"codec_name", "ass"}}}),
              (std::vector<TextStream>{{4, "ass", "und", "", false, false}}));
}

TEST(SubtitleChoice, LeavesOneDefaultOfSeveral) {
    const auto texts = chosen({stream(1, "dvd_subtitle", 1), stream(2, "ass", 0),
                               stream(3, "ass", 1), stream(4, "ass", 1)});
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_FALSE(texts[0].is_default);
    EXPECT_TRUE(texts[1].is_default);
    EXPECT_FALSE(texts[2].is_default);
}

TEST(SubtitleChoice, HasAnEnd) {
    EXPECT_EQ(chosen(std::vector<json>(40, stream(1, "subrip"))).size(), 40U);
    EXPECT_EQ(chosen(std::vector<json>(5000, stream(1, "subrip"))).size(), 100U);
}

}  // namespace
}  // namespace bundle

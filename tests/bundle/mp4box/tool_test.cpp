// The bundle's MP4Box adding subtitles with the program's command line.

#include <gtest/gtest.h>

#include "bundle/support/child_run.h"
#include "bundle/support/program_reading.h"
#include "bundle/support/samples.h"
#include "mp4box/mux.h"

namespace {

using Names = std::vector<std::string>;
using nlohmann::json;

const std::string kSubtitles =
    "1\n00:00:00,120 --> 00:00:00,560\nZa\xC5\xBC\xC3\xB3\xC5\x82\xC4\x87\n\n"
    "2\n00:00:01,000 --> 00:00:01,870\nTwo\nlines\n";

/// Hash, time and length of every packet of one stream.
std::vector<std::string> packets_of(const json& mp4, const std::string& kind) {
    std::vector<std::string> packets;
    for (const json& packet : mp4.value("packets", json::array())) {
        if (packet["codec_type"] == kind) {
            packets.push_back(packet["data_hash"].dump() + packet["pts_time"].dump() +
                              packet["duration_time"].dump() + packet["flags"].dump());
        }
    }
    return packets;
}

class Subtitles : public testing::Test {
  protected:
    void SetUp() override {
        mp4_ = folder_ / "movie.mp4";
        ASSERT_TRUE(make_movie(folder_ / "in.avi"));
        ASSERT_EQ(ChildRun(transcode_words(folder_ / "in.avi", "160x120", mp4_)).wait(), 0);
        std::filesystem::remove(folder_ / "in.avi");
    }

    int add(const std::string& subtitles, const std::string& mp4) {
        ChildRun tool({TOOL_MP4BOX, "-add", subtitles + ":hdlr=sbtl", mp4});
        const int status = tool.wait();
        output_ = tool.output();
        errors_ = tool.errors();
        return status;
    }

    TemporaryFolder folder_;
    std::string mp4_;
    std::string output_;
    std::string errors_;
};

TEST_F(Subtitles, BecomeAnEnabledTextTrack) {
    ASSERT_EQ(add(folder_.write("movie.srt", kSubtitles), mp4_), 0) << errors_;
    const auto track = only_stream(probed(mp4_), "subtitle");
    ASSERT_TRUE(track.is_object());
    EXPECT_EQ(track["codec_name"], "mov_text");
    EXPECT_EQ(track["codec_tag_string"], "tx3g");
    EXPECT_EQ(track["disposition"]["default"], 1);
    EXPECT_NE(content_of(mp4_).find("hdlr" + std::string(8, '\0') + "sbtl"), std::string::npos);
    EXPECT_EQ(folder_.names(), (Names{"movie.mp4", "movie.srt"}));
}

TEST_F(Subtitles, LeaveVideoAndAudioUntouched) {
    const auto before = probed(mp4_, true);
    ASSERT_EQ(add(folder_.write("movie.srt", kSubtitles), mp4_), 0) << errors_;
    const auto after = probed(mp4_, true);
    for (const char* kind : {"video", "audio"}) {
        const auto packets = packets_of(before, kind);
        EXPECT_GT(packets.size(), 40U);
        EXPECT_EQ(packets_of(after, kind), packets);
        EXPECT_EQ(only_stream(after, kind)["extradata_hash"],
                  only_stream(before, kind)["extradata_hash"]);
    }
    EXPECT_EQ(after["format"]["tags"]["major_brand"], "M4V ");
}

TEST_F(Subtitles, KeepTheirTextsAndTimes) {
    ASSERT_EQ(add(folder_.write("movie.srt", "\xEF\xBB\xBF" + kSubtitles), mp4_), 0) << errors_;
    ASSERT_TRUE(run_ffmpeg({"-i", mp4_, "-map", "0:s", folder_ / "back.srt"}));
    std::string back = content_of(folder_ / "back.srt");
    std::erase(back, '\r');  // ffmpeg writes them within a cue
    EXPECT_EQ(back, kSubtitles + "\n");
}

TEST_F(Subtitles, ReplaceEarlierOnesAndKeepChaptersAndMetadata) {
    const std::string metadata =
        folder_.write("chapters",
                      ";FFMETADATA1\ntitle=A title\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=2000\n"
                      "title=First\n");
    ASSERT_TRUE(
        run_ffmpeg({"-i", mp4_, "-f", "ffmetadata", "-i", metadata, "-map_metadata", "1",
                    "-map_chapters", "1", "-c", "copy", "-f", "ipod", folder_ / "chapters.mp4"}));
    const std::string text = folder_.write("movie.srt", kSubtitles);
    ASSERT_EQ(add(text, folder_ / "chapters.mp4"), 0) << errors_;
    ASSERT_EQ(add(text, folder_ / "chapters.mp4"), 0) << errors_;
    const auto mp4 = probed(folder_ / "chapters.mp4");
    EXPECT_EQ(mp4["format"]["tags"]["title"], "A title");
    int subtitle_tracks = 0;
    for (const json& stream : mp4["streams"]) {
        subtitle_tracks += stream["codec_type"] == "subtitle" ? 1 : 0;
    }
    EXPECT_EQ(subtitle_tracks, 1);
    ASSERT_TRUE(run_ffmpeg({"-i", folder_ / "chapters.mp4", "-f", "ffmetadata", folder_ / "back"}));
    EXPECT_NE(content_of(folder_ / "back").find("title=First"), std::string::npos);
}

TEST_F(Subtitles, ShowProgressThatTheProgramReads) {
    ASSERT_EQ(add(folder_.write("movie.srt", kSubtitles), mp4_), 0) << errors_;
    EXPECT_TRUE(output_.starts_with("ISO File Writing: |                    | (0/100)\r"));
    EXPECT_EQ(read_subtitle_percent(output_), "100");
    EXPECT_EQ(errors_, "");
}

TEST_F(Subtitles, TakeNamesOfAllKinds) {
    for (const char* name : {"12:30 clip", "with \"quotes\" and 's", "back\\slash", "line\nbreak",
                             "x:hdlr=sbtl", "caf\xE9"}) {
        const std::string mp4 = folder_ / (std::string(name) + ".mp4");
        std::filesystem::copy_file(mp4_, mp4);
        const std::string text = folder_.write(std::string(name) + ".srt", kSubtitles);
        EXPECT_EQ(add(text, mp4), 0) << name << errors_;
        EXPECT_TRUE(only_stream(probed(mp4), "subtitle").is_object()) << name;
    }
}

TEST_F(Subtitles, TakeNamesThatLookLikeOptionsInTheCurrentFolder) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());
    std::filesystem::copy_file(mp4_, "-y");
    folder_.write("-add", kSubtitles);
    EXPECT_EQ(add("-add", "-y"), 0) << errors_;
    EXPECT_TRUE(only_stream(probed("-y"), "subtitle").is_object());
    std::filesystem::current_path(before);
}

TEST_F(Subtitles, AreAddedToThoseOfOthers) {
    const std::string text = folder_.write("movie.srt", kSubtitles);
    const std::string other = folder_ / "other.mp4";
    ASSERT_TRUE(run_ffmpeg({"-i", mp4_, "-i", text, "-map", "0", "-map", "1", "-c", "copy", "-c:s",
                            "mov_text", other}));
    ASSERT_EQ(add(text, other), 0) << errors_;
    ASSERT_EQ(add(text, other), 0) << errors_;
    std::vector<std::string> handlers;
    const json mp4 = probed(other);
    for (const json& stream : mp4["streams"]) {
        if (stream["codec_type"] == "subtitle") {
            handlers.push_back(stream["tags"]["handler_name"]);
        }
    }
    EXPECT_EQ(handlers, (Names{"SubtitleHandler", "Vantreo subtitles"}));
}

TEST_F(Subtitles, LeaveTheMp4FileUnchangedAndANoteWhenTheyAreBroken) {
    const std::string before = content_of(mp4_);
    for (const std::string& broken :
         {folder_.write("empty.srt", ""), folder_.write("prose.srt", "Just some prose.\n"),
          folder_.write("binary.srt", std::string("1\0\xE9", 3)), folder_ / "missing.srt",
          folder_.path().string(), mp4_}) {
        EXPECT_EQ(add(broken, mp4_), 1) << broken;
        EXPECT_TRUE(errors_.starts_with("MP4Box: cannot add the subtitles '")) << errors_;
        EXPECT_EQ(content_of(mp4_), before);
        EXPECT_TRUE(std::filesystem::remove(mp4_ + ".failed.txt")) << broken;
    }
    EXPECT_EQ(folder_.names(), (Names{"binary.srt", "empty.srt", "movie.mp4", "prose.srt"}));
}

TEST_F(Subtitles, LeaveOtherFilesUnchanged) {
    const std::string text = folder_.write("movie.srt", kSubtitles);
    ASSERT_TRUE(run_ffmpeg({"-i", mp4_, "-c", "copy", folder_ / "movie.mkv"}));
    ASSERT_TRUE(run_ffmpeg({"-i", mp4_, "-c", "copy", folder_ / "MP4 file.mov"}));
    for (const std::string& other : {folder_.write("garbage.mp4", "no movie at all"),
                                     folder_ / "movie.mkv", folder_ / "MP4 file.mov"}) {
        const std::string before = content_of(other);
        EXPECT_EQ(add(text, other), 1) << other;
        EXPECT_EQ(content_of(other), before) << other;
    }
    EXPECT_EQ(add(text, folder_ / "missing.mp4"), 1);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "missing.mp4"));
}

TEST_F(Subtitles, AreNotAddedToAnOlderMp4FileAfterAFailedConversion) {
    const std::string before = content_of(mp4_);
    const std::string broken = folder_.write("broken.avi", "no MP4 file");
    ASSERT_EQ(ChildRun(transcode_words(broken, "160x120", mp4_)).wait(), 1);
    EXPECT_EQ(add(folder_.write("movie.srt", kSubtitles), mp4_), 1);
    EXPECT_EQ(content_of(mp4_), before);
    EXPECT_NE(content_of(mp4_ + ".failed.txt").find("== The conversion =="), std::string::npos);
}

TEST_F(Subtitles, SayInTheNoteWhetherThereIsAMp4File) {
    const std::string text = folder_.write("movie.srt", "no subtitles");
    EXPECT_EQ(add(text, mp4_), 1);
    EXPECT_NE(content_of(mp4_ + ".failed.txt").find("' is there, without"), std::string::npos);
    const std::string missing = folder_ / "missing.mp4";
    EXPECT_EQ(add(text, missing), 1);
    EXPECT_NE(content_of(missing + ".failed.txt").find("There is no MP4 file '"),
              std::string::npos);
}

TEST(SubtitleRequest, CutsOnlyTheLastHandler) {
    const auto request =
        bundle::parse_subtitle_request({"-add", "/a:b:hdlr=sbtl:hdlr=sbtl", "-out"});
    ASSERT_TRUE(request);
    EXPECT_EQ(request->subtitles, "/a:b:hdlr=sbtl");
    EXPECT_EQ(request->mp4, "-out");
}

TEST(SubtitleRequest, RefusesOtherArguments) {
    for (const Names& words : {Names{}, Names{"-add", "a.srt", "out"}, Names{"-info", "out"},
                               Names{"-add", "a.srt:hdlr=sbtl"}, Names{"-add", "a:hdlr=sbtl", ""},
                               Names{"-add", "a.srt:hdlr=sbtl", "out", "-v"}}) {
        EXPECT_FALSE(bundle::parse_subtitle_request(words));
    }
    ChildRun tool({TOOL_MP4BOX, "-version"});
    EXPECT_EQ(tool.wait(), 2);
    EXPECT_TRUE(tool.errors().starts_with("MP4Box: usage: "));
}

TEST(SubtitleArguments, ReplaceEarlierTracksAfterThoseOfOthers) {
    bundle::Mp4Facts facts;
    facts.subtitle_tracks = 2;
    facts.brand = "isom";
    facts.recorded = "2024-05-01T12:00:00.000000Z";
    facts.own_tracks = {4};
    const Names expected{"-i",
                         "file:f:1",
                         "-f",
                         "ass",
                         "-i",
                         "pipe:0",
                         "-map",
                         "0",
                         "-map",
                         "-0:d",
                         "-map",
                         "-0:4",
                         "-map",
                         "1:0",
                         "-c",
                         "copy",
                         "-c:s:2",
                         "mov_text",
                         "-time_base:s:2",
                         "1/1000",
                         "-metadata:s:s:2",
                         "handler_name=Vantreo subtitles",
                         "-metadata",
                         "creation_time=2024-05-01T12:00:00.000000Z",
                         "-disposition:s",
                         "0",
                         "-disposition:s:2",
                         "default",
                         "-f",
                         "mp4",
                         "file:out"};
    EXPECT_EQ(bundle::subtitle_arguments("f:1", facts, "out"), expected);
}

}  // namespace

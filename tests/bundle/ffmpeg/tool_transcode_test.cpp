// The bundle's ffmpeg converting movies with the program's command line.

#include <gtest/gtest.h>

#include "bundle/support/child_run.h"
#include "bundle/support/program_reading.h"
#include "bundle/support/samples.h"
#include "core/numbers.h"

namespace {

using Names = std::vector<std::string>;

double seconds_of(const nlohmann::json& object) {
    return std::stod(object.value("duration", std::string("0")));
}

void expect_device_video(const nlohmann::json& video, const std::string& level) {
    ASSERT_TRUE(video.is_object());
    EXPECT_EQ(video["codec_name"], "h264");
    EXPECT_EQ(video["profile"], "Constrained Baseline");
    EXPECT_EQ(video["level"].dump(), level);
    EXPECT_EQ(video["pix_fmt"], "yuv420p");
    EXPECT_EQ(video["has_b_frames"], 0);
    EXPECT_EQ(video["codec_tag_string"], "avc1");
}

void expect_device_audio(const nlohmann::json& audio) {
    ASSERT_TRUE(audio.is_object());
    EXPECT_EQ(audio["codec_name"], "aac");
    EXPECT_EQ(audio["profile"], "LC");
    EXPECT_EQ(audio["sample_rate"], "44100");
    EXPECT_EQ(audio["channels"], 2);
}

std::string size_of(const nlohmann::json& video) {
    return video["width"].dump() + "x" + video["height"].dump();
}

class Transcode : public testing::Test {
  protected:
    int transcode(const std::vector<std::string>& words) {
        ChildRun tool(words);
        const int status = tool.wait();
        errors_ = tool.errors();
        EXPECT_EQ(tool.output(), "");
        return status;
    }

    TemporaryFolder folder_;
    std::string errors_;
};

struct Format {
    const char* name;
    const char* extension;
    std::vector<std::string> coding;
};

void PrintTo(const Format& format, std::ostream* out) {
    *out << format.name;
}

class TranscodeOf : public Transcode, public testing::WithParamInterface<Format> {};

TEST_P(TranscodeOf, GivesAMovieForTheDevices) {
    const std::string source = folder_ / "movie." + GetParam().extension;
    ASSERT_TRUE(make_movie(source, "176x144", "25", "2", GetParam().coding));
    ASSERT_EQ(transcode(transcode_words(source, "176x144", folder_ / "out.mp4")), 0) << errors_;
    const auto movie = probed(folder_ / "out.mp4");
    const auto video = only_stream(movie, "video");
    expect_device_video(video, "30");
    expect_device_audio(only_stream(movie, "audio"));
    EXPECT_EQ(size_of(video), "176x144");
    EXPECT_EQ(video["r_frame_rate"], "25/1");
    EXPECT_EQ(movie["streams"].size(), 2U);
    EXPECT_NEAR(seconds_of(video), 2.0, 0.1);
    EXPECT_NEAR(seconds_of(movie["format"]), 2.0, 0.2);
}

INSTANTIATE_TEST_SUITE_P(
    Formats, TranscodeOf,
    testing::Values(
        Format{"Avi", "avi", {"-c:v", "mpeg4", "-c:a", "libmp3lame"}},
        Format{"Mkv", "mkv", {"-c:v", "libx264", "-c:a", "ac3"}},
        Format{"Mov", "mov", {"-c:v", "mjpeg", "-c:a", "pcm_s16le"}},
        Format{"Mp4", "mp4", {"-c:v", "libx264", "-c:a", "aac"}},
        Format{"Wmv", "wmv", {"-c:v", "wmv2", "-c:a", "wmav2"}},
        Format{"Flv", "flv", {"-c:v", "flv1", "-c:a", "libmp3lame"}},
        Format{"Mpeg", "mpg", {"-c:v", "mpeg2video", "-c:a", "mp2"}},
        Format{"ThreeGp", "3gp", {"-c:v", "h263", "-c:a", "aac"}},
        Format{"WebM", "webm", {"-c:v", "libvpx", "-deadline", "realtime", "-c:a", "libopus"}}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_F(Transcode, KeepsTheMoviesRateAndScalesThePicture) {
    ASSERT_TRUE(make_movie(folder_ / "in.avi", "640x360", "24000/1001", "2", {"-c:v", "mpeg4"}));
    ASSERT_EQ(transcode(transcode_words(folder_ / "in.avi", "480x270", folder_ / "out.mp4")), 0);
    const auto video = only_stream(probed(folder_ / "out.mp4"), "video");
    expect_device_video(video, "30");
    EXPECT_EQ(size_of(video), "480x270");
    EXPECT_EQ(video["r_frame_rate"], "24000/1001");
}

TEST_F(Transcode, TakesTheAskedRate) {
    ASSERT_TRUE(make_movie(folder_ / "in.mp4", "160x120", "60", "2", {"-c:v", "mpeg4"}));
    auto words = transcode_words(folder_ / "in.mp4", "160x120", folder_ / "out.mp4");
    words.insert(words.end() - 3, {"-r", "30000/1001"});
    ASSERT_EQ(transcode(words), 0) << errors_;
    const auto video = only_stream(probed(folder_ / "out.mp4"), "video");
    EXPECT_EQ(video["r_frame_rate"], "30000/1001");
    EXPECT_NEAR(seconds_of(video), 2.0, 0.034);
}

TEST_F(Transcode, RaisesTheLevelForALargePicture) {
    ASSERT_TRUE(make_movie(folder_ / "in.avi", "1024x576", "25", "0.4", {"-c:v", "mpeg4"}));
    ASSERT_EQ(transcode(transcode_words(folder_ / "in.avi", "1024x576", folder_ / "out.mp4")), 0);
    expect_device_video(only_stream(probed(folder_ / "out.mp4"), "video"), "31");
}

TEST_F(Transcode, MakesAnOddSizeEven) {
    ASSERT_TRUE(make_movie(folder_ / "in.mkv", "162x122", "25", "0.4",
                           {"-vf", "format=yuv444p,crop=161:121:exact=1", "-c:v", "libx264"}));
    ASSERT_EQ(transcode(transcode_words(folder_ / "in.mkv", "161x121", folder_ / "out.mp4")), 0)
        << errors_;
    const auto video = only_stream(probed(folder_ / "out.mp4"), "video");
    expect_device_video(video, "30");
    EXPECT_EQ(size_of(video), "160x120");
}

TEST_F(Transcode, LeavesAnAnamorphicMovieInSquarePixels) {
    ASSERT_TRUE(make_movie(folder_ / "in.mpg", "720x576", "25", "0.4",
                           {"-c:v", "mpeg2video", "-aspect", "16:9"}));
    ASSERT_EQ(transcode(transcode_words(folder_ / "in.mpg", "480x270", folder_ / "out.mp4")), 0);
    EXPECT_EQ(only_stream(probed(folder_ / "out.mp4"), "video")["sample_aspect_ratio"], "1:1");
}

TEST_F(Transcode, ConvertsAMovieWithoutSound) {
    ASSERT_TRUE(make_silent_movie(folder_ / "in.avi"));
    ASSERT_EQ(transcode(transcode_words(folder_ / "in.avi", "160x120", folder_ / "out.mp4")), 0)
        << errors_;
    const auto movie = probed(folder_ / "out.mp4");
    expect_device_video(only_stream(movie, "video"), "30");
    EXPECT_EQ(movie["streams"].size(), 1U);
}

TEST_F(Transcode, KeepsTheSourcesSubtitles) {
    ASSERT_TRUE(make_movie(folder_ / "movie.avi"));
    const std::string text = folder_.write("in.srt", "1\n00:00:00,500 --> 00:00:01,000\nText\n");
    ASSERT_TRUE(run_ffmpeg({"-i", folder_ / "movie.avi", "-i", text, folder_ / "in.mkv"}));
    ASSERT_EQ(transcode(transcode_words(folder_ / "in.mkv", "160x120", folder_ / "out.mp4")), 0);
    EXPECT_EQ(only_stream(probed(folder_ / "out.mp4"), "subtitle")["codec_tag_string"], "tx3g");
}

TEST_F(Transcode, ShowsProgressThatTheProgramReads) {
    ASSERT_TRUE(make_movie(folder_ / "in.avi"));
    ASSERT_EQ(transcode(transcode_words(folder_ / "in.avi", "160x120", folder_ / "out.mp4")), 0);
    const std::size_t last = errors_.rfind('\r', errors_.size() - 2);
    const std::string line = errors_.substr(last == std::string::npos ? 0 : last + 1);
    EXPECT_TRUE(line.starts_with("frame=   50 fps=")) << line;
    EXPECT_TRUE(line.ends_with("\r"));
    EXPECT_EQ(read_conversion_seconds(line), "2") << line;
}

TEST_F(Transcode, TakesNamesOfAllKinds) {
    ASSERT_TRUE(make_silent_movie(folder_ / "movie.avi"));
    for (const char* name : {"12:30 clip", "with \"quotes\" and 's", "back\\slash", "per%d cent",
                             "line\nbreak", "caf\xE9"}) {
        const std::string source = folder_ / (std::string(name) + ".avi");
        const std::string output = folder_ / (std::string(name) + ".mp4");
        std::filesystem::rename(folder_ / "movie.avi", source);
        EXPECT_EQ(transcode(transcode_words(source, "160x120", output)), 0) << errors_;
        EXPECT_TRUE(std::filesystem::exists(output)) << name;
        std::filesystem::rename(source, folder_ / "movie.avi");
    }
}

TEST_F(Transcode, TakesNamesThatLookLikeOptionsInTheCurrentFolder) {
    ASSERT_TRUE(make_silent_movie(folder_ / "in.avi"));
    std::filesystem::rename(folder_ / "in.avi", folder_ / "-s");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());
    EXPECT_EQ(transcode(transcode_words("-s", "160x120", "-i")), 0) << errors_;
    std::filesystem::current_path(before);
    EXPECT_EQ(folder_.names(), (Names{"-i", "-s"}));
}

TEST_F(Transcode, KeepsTheOldOutputWhenTheSourceIsNoMovie) {
    const std::string garbage = folder_.write("in.avi", "no movie at all");
    const std::string old = folder_.write("out.mp4", "old");
    EXPECT_EQ(transcode(transcode_words(garbage, "160x120", old)), 1);
    EXPECT_EQ(content_of(old), "old");
    EXPECT_EQ(folder_.names(), (Names{"in.avi", "out.mp4", "out.mp4.failed.txt"}));
}

TEST_F(Transcode, KeepsTheOldOutputWhenTheEncoderFails) {
    ASSERT_TRUE(make_silent_movie(folder_ / "in.avi"));
    const std::string old = folder_.write("out.mp4", "old");
    auto words = transcode_words(folder_ / "in.avi", "160x120", old);
    words.insert(words.end() - 3, {"-threads", "many"});
    EXPECT_EQ(transcode(words), 1);
    EXPECT_NE(errors_.find("ffmpeg failed with status 1"), std::string::npos) << errors_;
    EXPECT_NE(errors_.find("many"), std::string::npos) << errors_;
    EXPECT_EQ(content_of(old), "old");
    EXPECT_EQ(folder_.names(), (Names{"in.avi", "out.mp4", "out.mp4.failed.txt"}));
}

TEST_F(Transcode, RefusesToWriteOverItsSource) {
    ASSERT_TRUE(make_silent_movie(folder_ / "in.avi"));
    const std::string before = content_of(folder_ / "in.avi");
    std::filesystem::create_symlink(folder_ / "in.avi", folder_ / "symbolic.mp4");
    std::filesystem::create_hard_link(folder_ / "in.avi", folder_ / "hard.mp4");
    for (const char* output : {"in.avi", "symbolic.mp4", "hard.mp4"}) {
        EXPECT_EQ(transcode(transcode_words(folder_ / "in.avi", "160x120", folder_ / output)), 1);
        EXPECT_TRUE(errors_.ends_with(": '" + folder_ / output + "' is the input file itself\n"))
            << errors_;
    }
    EXPECT_EQ(content_of(folder_ / "in.avi"), before);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "symbolic.mp4"));
    EXPECT_EQ(std::filesystem::hard_link_count(folder_ / "in.avi"), 2U);
}

TEST_F(Transcode, OverwritesOnlyWhenItIsTold) {
    ASSERT_TRUE(make_silent_movie(folder_ / "in.avi"));
    const std::string old = folder_.write("out.mp4", "old");
    auto words = transcode_words(folder_ / "in.avi", "160x120", old);
    words.erase(words.begin() + 1);
    EXPECT_EQ(transcode(words), 1);
    EXPECT_EQ(content_of(old), "old");
}

TEST_F(Transcode, RefusesAnUnknownOption) {
    ASSERT_TRUE(make_silent_movie(folder_ / "in.avi"));
    auto words = transcode_words(folder_ / "in.avi", "160x120", folder_ / "out.mp4");
    words.insert(words.end() - 3, {"-vcodec", "copy"});
    EXPECT_EQ(transcode(words), 2);
    EXPECT_EQ(errors_, "ffmpeg: unknown option: '-vcodec'\n");
    EXPECT_EQ(folder_.names(), (Names{"in.avi", "out.mp4.failed.txt"}));
}

}  // namespace

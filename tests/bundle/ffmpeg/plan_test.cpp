#include "ffmpeg/plan.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "bundle/support/samples.h"
#include "ffmpeg/shape_fit.h"

namespace bundle {
namespace {

using Words = std::vector<std::string>;

Movie movie_of(int video, std::optional<int> audio, Rational rate) {
    Movie movie;
    movie.video.index = video;
    movie.video.pixel_format = "yuv420p";
    movie.video.stored = movie.video.shown = {720, 480};
    movie.video.colour = assumed_colour({}, "yuv420p", {720, 480});
    movie.video.average_rate = rate;
    if (audio) {
        movie.audio = AudioStream{*audio, "mp3", 44100, 2};
    }
    return movie;
}

Movie usual_movie() {
    return movie_of(0, 1, {25, 1});
}

Movie movie_with_subtitles(const std::string& codec) {
    Movie movie = usual_movie();
    movie.subtitles = {{3, codec, "deu", "", true, false}};
    return movie;
}

Movie hdr_movie() {
    Movie movie = usual_movie();
    movie.video.colour = {"tv", "bt2020nc", "bt2020", "smpte2084"};
    movie.video.needs_colour_conversion = true;
    return movie;
}

TranscodeRequest request_for(const std::string& size) {
    auto words = transcode_words("-lead: in.avi", size, "out.mp4");
    words.erase(words.begin());
    return *parse_transcode(words);
}

ConversionPlan plan_of(const Movie& movie, const SystemFilters& system = {}) {
    return plan_conversion(request_for("480x270"), movie, system);
}

std::string joined(const Words& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

std::string value_of(const Words& words, const std::string& name) {
    const auto found = std::find(words.begin(), words.end(), name);
    return found == words.end() ? "" : *(found + 1);
}

std::string value_of(const ConversionPlan& plan, const std::string& name) {
    return value_of(arguments_of(plan, "out"), name);
}

TEST(ConversionPlan, BecomesOneCommandLine) {
    const Movie movie = movie_of(0, 1, {24000, 1001});
    EXPECT_EQ(
        joined(arguments_of(plan_of(movie), "/out/private")),
        "-reinit_filter:v 0 -max_error_rate 1 -i file:-lead: in.avi -map 0:0 -map 0:1 "
        "-af aformat=sample_fmts=fltp:channel_layouts=mono|stereo,pan=stereo|FL=FL+FC|FR=FR+FC,"
        "aresample=async=50:min_comp=0.01:min_hard_comp=0.015 "
        "-c:a aac -b:a 128k -ac 2 -ar 44100 "
        "-c:v libx264 -profile:v baseline -pix_fmt yuv420p -coder 0 -flags:v +loop "
        "-cmp +chroma -partitions +parti8x8+parti4x4+partp8x8+partb8x8 -motion-est hex "
        "-subq 6 -me_range 16 -g 250 -keyint_min 25 -sc_threshold 40 -i_qfactor 0.71 "
        "-b_strategy 1 -qcomp 0.6 -qmin 10 -qmax 51 -qdiff 4 -bf 0 -direct-pred 1 "
        "-trellis 1 -b-pyramid 1 -mixed-refs 1 -fast-pskip 1 -weightp 0 -rc-lookahead 30 "
        "-maxrate:v 10000000 -bufsize:v 10000000 -crf 21 -refs 2 -level:v 30 "
        "-vf " +
            fit_filters(movie.video) +
            "bwdif=mode=send_frame:deint=interlaced,scale=480:270:out_range=tv,format=yuv420p,"
            "setsar=1,setparams=range=tv:color_primaries=smpte170m:color_trc=smpte170m:"
            "colorspace=smpte170m -threads 0 -f ipod file:/out/private");
}

TEST(ConversionPlan, TakesTheReportedStreams) {
    const auto text = joined(arguments_of(plan_of(movie_of(2, 5, {25, 1})), "out"));
    EXPECT_NE(text.find("-map 0:2 -map 0:5 -af"), std::string::npos);
}

TEST(ConversionPlan, HasNoAudioOptionsForAMovieWithoutAudio) {
    const ConversionPlan plan = plan_of(movie_of(0, std::nullopt, {25, 1}));
    EXPECT_FALSE(plan.has_audio);
    const auto text = joined(arguments_of(plan, "out"));
    EXPECT_NE(text.find("-map 0:0 -c:v libx264"), std::string::npos);
    EXPECT_EQ(text.find("-c:a"), std::string::npos);
}

TEST(ConversionPlan, KeepsTheFrameTimesOfAVariableRate) {
    Movie movie = movie_of(0, 1, {24, 1});
    movie.video.base_rate = Rational{30, 1};
    EXPECT_EQ(value_of(plan_of(movie), "-enc_time_base"), "1:90000");
    EXPECT_EQ(value_of(plan_of(movie), "-fps_mode"), "vfr");
    EXPECT_FALSE(plan_of(movie).fills_gaps);
    auto request = request_for("480x270");
    request.rate = Rational{30000, 1001};
    EXPECT_EQ(value_of(plan_conversion(request, movie, {}), "-enc_time_base"), "");
}

TEST(ConversionPlan, HasTheRequestedRateElseTheMovies) {
    auto request = request_for("480x270");
    EXPECT_DOUBLE_EQ(plan_conversion(request, usual_movie(), {}).rate, 25);
    EXPECT_TRUE(plan_conversion(request, usual_movie(), {}).fills_gaps);
    request.rate = Rational{30, 1};
    EXPECT_DOUBLE_EQ(plan_conversion(request, usual_movie(), {}).rate, 30);
    EXPECT_FALSE(plan_conversion(request, usual_movie(), {}).fills_gaps);
}

TEST(ConversionPlan, LetsFfmpegRebuildItsFiltersForARotatedMovie) {
    Movie movie = usual_movie();
    EXPECT_EQ(value_of(plan_of(movie), "-reinit_filter:v"), "0");
    movie.video.rotation = 90;
    EXPECT_EQ(value_of(plan_of(movie), "-reinit_filter:v"), "");
}

TEST(ConversionPlan, ChoosesTheLevelForBurstsOfFrames) {
    Movie movie = movie_of(0, 1, {15, 1});
    movie.video.base_rate = Rational{60, 1};
    EXPECT_EQ(value_of(plan_conversion(request_for("720x576"), movie, {}), "-level:v"), "31");
}

TEST(ConversionPlan, ChoosesTheLevelForTheOutputRate) {
    auto request = request_for("720x480");
    const Movie fast = movie_of(0, 1, {60, 1});
    EXPECT_EQ(value_of(plan_conversion(request, fast, {}), "-level:v"), "31");
    request.rate = Rational{30000, 1001};
    EXPECT_EQ(value_of(plan_conversion(request, fast, {}), "-level:v"), "30");
}

TEST(ConversionPlan, ChoosesTheLevelForTheReferenceFrames) {
    auto request = request_for("720x576");
    request.reference_frames = 6;
    const ConversionPlan plan = plan_conversion(request, usual_movie(), {});
    EXPECT_EQ(value_of(plan, "-refs"), "6");
    EXPECT_EQ(value_of(plan, "-level:v"), "31");
}

TEST(ConversionPlan, ReadsAMovieWithoutItsJumpsFromAPipe) {
    Movie movie = usual_movie();
    movie.has_jumping_clock = true;
    EXPECT_EQ(value_of(plan_of(movie), "-i"), "pipe:0");
}

TEST(ConversionPlan, ConvertsColoursWhereTheSystemCan) {
    const ConversionPlan plan = plan_of(hdr_movie());
    EXPECT_NE(value_of(plan, "-vf").find("tonemap"), std::string::npos);
    EXPECT_EQ(plan.notes, Words());
}

TEST(ConversionPlan, KeepsColoursWithANoteWhereTheSystemCannotConvertThem) {
    const ConversionPlan plan = plan_of(hdr_movie(), {.can_convert_colours = false});
    EXPECT_EQ(value_of(plan, "-vf").find("tonemap"), std::string::npos);
    ASSERT_EQ(plan.notes.size(), 1U);
    EXPECT_NE(plan.notes[0].find("is HDR"), std::string::npos);
    EXPECT_EQ(plan_of(usual_movie(), {.can_convert_colours = false}).notes, Words());
}

TEST(ConversionPlan, WritesSubtitlesAsScripts) {
    const ConversionPlan plan = plan_of(movie_with_subtitles("subrip"));
    const auto text = joined(arguments_of(plan, "out", {7}));
    EXPECT_TRUE(text.starts_with("-sub_charenc_mode:3 ignore -reinit_filter:v 0 ")) << text;
    EXPECT_TRUE(
        text.ends_with(" file:out -map 0:3 -c:s ass -avoid_negative_ts disabled "
                       "-ignore_readorder 1 -f ass pipe:7"))
        << text;
}

TEST(ConversionPlan, ReadsTheTextOfAnMp4FileThroughASecondInput) {
    Movie movie = movie_with_subtitles("mov_text");
    movie.start = 1;
    movie.text_start = 1.5;
    const auto text = joined(arguments_of(plan_of(movie), "out", {7}));
    EXPECT_NE(text.find("-i file:-lead: in.avi -sub_charenc_mode:3 ignore -protocol_whitelist "
                        "file,pipe -advanced_editlist 0 -itsoffset 0.500000 -i file:-lead: in.avi "
                        "-map 0:0"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("-map 1:3 -c:s ass"), std::string::npos) << text;
}

TEST(ConversionPlan, LeavesTeletextOutWithANoteWhereTheSystemCannotDecodeIt) {
    const Movie movie = movie_with_subtitles("dvb_teletext");
    EXPECT_EQ(value_of(plan_of(movie), "-txt_format:3"), "text");
    const ConversionPlan plan = plan_of(movie, {.can_decode_teletext = false});
    EXPECT_EQ(plan.subtitles, std::vector<TextStream>());
    EXPECT_EQ(value_of(plan, "-txt_format:3"), "");
    ASSERT_EQ(plan.notes.size(), 1U);
    EXPECT_NE(plan.notes[0].find("teletext"), std::string::npos);
}

}  // namespace
}  // namespace bundle

#include "ffmpeg/arguments.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "bundle/support/samples.h"
#include "ffmpeg/shape_fit.h"

namespace bundle {
namespace {

Movie movie_of(int video, std::optional<int> audio, Rational rate) {
    Movie movie;
    movie.video.index = video;
    movie.video.pixel_format = "yuv420p";
    movie.video.stored = movie.video.shown = {720, 480};
    movie.video.average_rate = rate;
    if (audio) {
        movie.audio = AudioStream{*audio, "mp3", 44100, 2};
    }
    return movie;
}

TranscodeRequest request_for(const std::string& size) {
    auto words = transcode_words("-lead: in.avi", size, "out.mp4");
    words.erase(words.begin());
    return *parse_transcode(words);
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

std::string value_of(const std::vector<std::string>& words, const std::string& name) {
    const auto found = std::find(words.begin(), words.end(), name);
    return found == words.end() ? "" : *(found + 1);
}

TEST(EncoderArguments, AreTheWholeCommandLineOfToday) {
    const auto arguments = encoder_arguments(request_for("480x270"), movie_of(0, 1, {24000, 1001}),
                                             "/out/private", true);
    EXPECT_EQ(
        joined(arguments),
        "-reinit_filter:v 0 -max_error_rate 1 -i file:-lead: in.avi -map 0:0 -map 0:1 "
        "-af aformat=sample_fmts=fltp:channel_layouts=mono|stereo,pan=stereo|FL=FL+FC|FR=FR+FC,"
        "aresample=async=50:min_comp=0.01:min_hard_comp=0.015 "
        "-c:a aac -b:a 128k -ac 2 -ar 44100 "
        "-c:v libx264 -profile:v baseline -pix_fmt yuv420p -coder 0 -flags:v +loop "
        "-cmp +chroma -partitions +parti8x8+parti4x4+partp8x8+partb8x8 -motion-est hex "
        "-subq 6 -me_range 16 -g 250 -keyint_min 25 -sc_threshold 40 -i_qfactor 0.71 "
        "-b_strategy 1 -qcomp 0.6 -qmin 10 -qmax 51 -qdiff 4 -bf 0 -refs 2 -direct-pred 1 "
        "-trellis 1 -b-pyramid 1 -mixed-refs 1 -fast-pskip 1 -weightp 0 -rc-lookahead 30 "
        "-maxrate:v 10000000 -bufsize:v 10000000 -crf 21 -level:v 30 "
        "-vf " +
            fit_filters(movie_of(0, 1, {24000, 1001}).video) +
            "bwdif=mode=send_frame:deint=interlaced,scale=480:270:out_range=tv,format=yuv420p,"
            "setsar=1,setparams=range=tv:color_primaries=smpte170m:color_trc=smpte170m:"
            "colorspace=smpte170m -threads 0 -f ipod file:/out/private");
}

TEST(EncoderArguments, TakeTheStreamsThatWereReported) {
    const auto text =
        joined(encoder_arguments(request_for("480x270"), movie_of(2, 5, {25, 1}), "out", true));
    EXPECT_NE(text.find("-map 0:2 -map 0:5 -af"), std::string::npos);
}

TEST(EncoderArguments, SayNothingOfSoundWhereThereIsNone) {
    const auto text = joined(
        encoder_arguments(request_for("480x270"), movie_of(0, std::nullopt, {25, 1}), "out", true));
    EXPECT_NE(text.find("-map 0:0 -c:v libx264"), std::string::npos);
    EXPECT_EQ(text.find("-c:a"), std::string::npos);
}

TEST(EncoderArguments, KeepTheFrameTimesOfAVariableRate) {
    Movie movie = movie_of(0, 1, {24, 1});
    movie.video.base_rate = Rational{30, 1};
    auto request = request_for("480x270");
    EXPECT_EQ(value_of(encoder_arguments(request, movie, "out", true), "-enc_time_base"),
              "1:90000");
    EXPECT_EQ(value_of(encoder_arguments(request, movie, "out", true), "-fps_mode"), "vfr");
    request.rate = Rational{30000, 1001};
    EXPECT_EQ(value_of(encoder_arguments(request, movie, "out", true), "-enc_time_base"), "");
}

TEST(EncoderArguments, LetFfmpegPlaceItsFiltersAnewWhereItTurnsTheMovie) {
    Movie movie = movie_of(0, 1, {25, 1});
    movie.video.rotation = 90;
    const auto arguments = encoder_arguments(request_for("480x270"), movie, "out", true);
    EXPECT_EQ(value_of(arguments, "-reinit_filter:v"), "");
}

TEST(EncoderArguments, ChooseTheLevelForBurstsOfFrames) {
    Movie movie = movie_of(0, 1, {15, 1});
    movie.video.base_rate = Rational{60, 1};
    EXPECT_EQ(value_of(encoder_arguments(request_for("720x576"), movie, "out", true), "-level:v"),
              "31");
}

TEST(EncoderArguments, ChooseTheLevelForTheOutputRate) {
    auto request = request_for("720x480");
    const Movie fast = movie_of(0, 1, {60, 1});
    EXPECT_EQ(value_of(encoder_arguments(request, fast, "out", true), "-level:v"), "31");
    request.rate = Rational{30000, 1001};
    EXPECT_EQ(value_of(encoder_arguments(request, fast, "out", true), "-level:v"), "30");
}

}  // namespace
}  // namespace bundle

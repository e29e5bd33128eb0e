#include "convert/commands.h"

#include <gtest/gtest.h>
#include <wx/cmdline.h>

#include "support/folder.h"

namespace {

const wxString kHostile = "/m/-y \"quoted\" \\back\\ $HOME `x` 'y' %s\n\ttab/-i.avi";

wxArrayString arguments(const wxString& command) {
    return wxCmdLineParser::ConvertStringToArgs(command, wxCMD_LINE_SPLIT_UNIX);
}

}  // namespace

TEST(Commands, ProbesWithTheInputAlone) {
    EXPECT_EQ(probe_command("/movies/a b.avi"),
              "Vantreo.app/Contents/Resources/ffmpeg -i \"/movies/a b.avi\"");
}

TEST(Commands, TranscodesWithTheFixedOptions) {
    EXPECT_EQ(transcode_command("/movies/a.avi", 25.0, {480, 270}, "/out/a.mp4"),
              "Vantreo.app/Contents/Resources/ffmpeg -y -i \"/movies/a.avi\" -acodec aac -strict "
              "experimental -ab 128k -ac 2 -ar 44100 -coder 0 -flags +loop -cmp +chroma "
              "-partitions +parti8x8+parti4x4+partp8x8+partb8x8 -me_method hex -subq 6 -me_range "
              "16 -g 250 -keyint_min 25 -sc_threshold 40 -i_qfactor 0.71 -b_strategy 1 -qcomp 0.6 "
              "-qmin 10 -qmax 51 -qdiff 4 -bf 0 -refs 2 -directpred 1 -trellis 1 -flags2 "
              "+bpyramid+mixed_refs+fastpskip -wpredp 0 -rc_lookahead 30 -level 30 -maxrate "
              "10000000 -bufsize 10000000 -crf 21 -threads 0 -f ipod -s 480x270 \"/out/a.mp4\"");
}

TEST(Commands, LimitsARateAbove2997) {
    const auto limits = [](double fps) {
        return transcode_command("a", fps, {480, 270}, "b")
            .Contains(" -f ipod -r 30000/1001 -s 480x270 \"b\"");
    };
    EXPECT_FALSE(limits(25.0));
    EXPECT_FALSE(limits(29.97));
    EXPECT_TRUE(limits(29.98));
    EXPECT_TRUE(limits(30.0));
    EXPECT_TRUE(limits(59.94));
    EXPECT_FALSE(transcode_command("a", 29.97, {480, 270}, "b").Contains("-r "));
}

TEST(Commands, AddsSubtitlesInPlace) {
    EXPECT_EQ(subtitle_command("/dir/movie.srt", "/out/movie.mp4"),
              "Vantreo.app/Contents/Resources/MP4Box -add \"/dir/movie.srt:hdlr=sbtl\" "
              "\"/out/movie.mp4\"");
}

TEST(Commands, PassAnyPathUnchangedAsOneArgument) {
    const wxArrayString probe = arguments(probe_command(kHostile));
    ASSERT_EQ(probe.size(), 3U);
    EXPECT_EQ(probe[2], kHostile);

    const wxArrayString plain = arguments(transcode_command("a", 25.0, {480, 270}, "b"));
    const wxArrayString transcode =
        arguments(transcode_command(kHostile, 25.0, {480, 270}, kHostile + ".mp4"));
    ASSERT_EQ(transcode.size(), plain.size());
    EXPECT_EQ(transcode[3], kHostile);
    EXPECT_EQ(transcode.Last(), kHostile + ".mp4");

    const wxArrayString subtitles = arguments(subtitle_command(kHostile, kHostile + ".mp4"));
    ASSERT_EQ(subtitles.size(), 4U);
    EXPECT_EQ(subtitles[2], kHostile + ":hdlr=sbtl");
    EXPECT_EQ(subtitles[3], kHostile + ".mp4");
}

#include "convert/parsers.h"

#include <gtest/gtest.h>

#include "support/folder.h"

namespace {

const wxString kReport =
    "Input #0, avi, from 'x.avi':\n"
    "  Duration: 00:02:03.45, start: 0.000000, bitrate: 812 kb/s\n"
    "    Stream #0.0: Video: h264, yuv420p, 1280x720, 25 fps, 25 tbr, 1k tbn, 25 tbc\n"
    "    Stream #0.1: Audio: mp3, 44100 Hz, stereo, s16, 128 kb/s\n"
    "At least one output file must be specified\n";

ProbeFacts facts_with_rates(const wxString& rates) {
    wxString report = kReport;
    report.Replace("25 fps, 25 tbr, 1k tbn, 25 tbc", rates);
    return parse_probe(report);
}

}  // namespace

TEST(ParseProbe, ReadsDurationSizeAndRate) {
    const ProbeFacts facts = parse_probe(kReport);
    EXPECT_EQ(facts.duration, 123);
    EXPECT_EQ(facts.width, 1280);
    EXPECT_EQ(facts.height, 720);
    EXPECT_EQ(facts.fps, 25.0);
}

TEST(ParseProbe, UsesTheLastRateAsTheFrameRate) {
    EXPECT_EQ(facts_with_rates("23.98 fps, 23.98 tbr, 1k tbn, 47.95 tbc").fps, 47.95);
    EXPECT_EQ(facts_with_rates("59.94 tbr, 90k tbn, 59.94 tbc").fps, 59.94);
}

TEST(ParseProbe, UsesTheLeadingNumberOfAFraction) {
    EXPECT_EQ(facts_with_rates("30000/1001 tbc").fps, 30000.0);
}

TEST(ParseProbe, ReadsNumbersWithALeadingZeroAsDecimal) {
    wxString report = kReport;
    report.Replace("00:02:03.45", "00:08:09.45");
    report.Replace("1280x720", "0890x098");
    const ProbeFacts facts = parse_probe(report);
    EXPECT_EQ(facts.duration, 489);
    EXPECT_EQ(facts.width, 890);
    EXPECT_EQ(facts.height, 98);
}

TEST(ParseProbe, ReadsEveryFormOfAStreamsNumber) {
    for (const char* stream : {"#0.10:", "#12.3:", "#0/1:", "#0.0[0x1e0]:", "#0.0(eng): Side A:"}) {
        wxString report = kReport;
        report.Replace("#0.0:", stream);
        EXPECT_EQ(parse_probe(report).width, 1280) << stream;
    }
}

TEST(ParseProbe, ReadsASizeUpToABlankACommaOrASlash) {
    for (const char* end : {" ", ",", "/"}) {
        wxString report = kReport;
        report.Replace("1280x720,", wxString("1280x720") + end);
        EXPECT_EQ(parse_probe(report).width, 1280) << end;
        report.Replace(wxString("1280x720") + end, "1280x720;");
        EXPECT_EQ(parse_probe(report).width, 0);
    }
}

TEST(ParseProbe, UsesTheSizeOfTheLastVideoStream) {
    const ProbeFacts facts = parse_probe(
        kReport + "    Stream #0.2: Video: mjpeg, yuvj420p, 640x360 , 90k tbr, 90k tbn, 90 tbc\n");
    EXPECT_EQ(facts.width, 640);
    EXPECT_EQ(facts.height, 360);
    EXPECT_EQ(facts.fps, 90.0);
}

TEST(ParseProbe, FindsEverythingFromTheFirstRateOnAndNothingBefore) {
    const size_t enough = kReport.find(" tbr") + 3;
    for (size_t length = 0; length < kReport.length(); ++length) {
        const ProbeFacts facts = parse_probe(kReport.Left(length));
        const bool expected = length >= enough;
        EXPECT_EQ(facts.width, expected ? 1280 : 0) << "cut at " << length;
        EXPECT_EQ(facts.fps, expected ? 25.0 : 0.0) << "cut at " << length;
    }
}

TEST(ParseProbe, FindsNothingWithoutADuration) {
    wxString report = kReport;
    report.Replace("Duration: 00:02:03.45", "Duration: N/A");
    const ProbeFacts facts = parse_probe(report);
    EXPECT_EQ(facts.duration, 0);
    EXPECT_EQ(facts.width, 0);
    EXPECT_EQ(facts.fps, 0.0);
}

TEST(ParseProbe, DoesNotReadTheReportOfTheCurrentFfmpeg) {
    wxString report = kReport;
    report.Replace("#0.", "#0:");
    EXPECT_EQ(parse_probe(report).width, 0);
}

TEST(ParseProbe, ReadsAReportWithForeignBytes) {
    const wxString name = wxString(wxUniChar(0xFFC3)) + wxUniChar(0xFFA9);
    EXPECT_EQ(parse_probe(name + "\n" + kReport).width, 1280);
}

TEST(ParseTranscode, ReadsTheWholeSecondsOfTheFirstRecord) {
    const wxString first = "frame=  751 fps=120 q=25.0 size=    1234kB time=30.04 bitrate= 336.5";
    EXPECT_EQ(parse_transcoded_seconds(first + "kbits/s\r"), 30);
    EXPECT_EQ(parse_transcoded_seconds(first + "kbits/s\rframe= 800 time=32.00 bitrate= 1kb\r"),
              30);
}

TEST(ParseTranscode, ReadsADecimalWithALeadingZeroAndASlash) {
    EXPECT_EQ(parse_transcoded_seconds("time=08.00 bitrate="), 8);
    EXPECT_EQ(parse_transcoded_seconds("time=30/04 bitrate="), 30);
}

TEST(ParseTranscode, NeedsAWholeRecord) {
    const wxString record = "time=30.04 bitrate=";
    for (size_t length = 0; length < record.length(); ++length)
        EXPECT_FALSE(parse_transcoded_seconds(record.Left(length))) << "cut at " << length;
    EXPECT_EQ(parse_transcoded_seconds(record), 30);
}

TEST(ParseTranscode, ReadsPastARecordWhoseBeginningIsMissing) {
    EXPECT_EQ(parse_transcoded_seconds("me=30.04 bitrate= 1\rtime=31.10 bitrate= 1\r"), 31);
}

TEST(ParseTranscode, DoesNotReadTheTimeOfTheCurrentFfmpeg) {
    EXPECT_FALSE(parse_transcoded_seconds("time=00:00:30.04 bitrate= 336.5kbits/s"));
    EXPECT_FALSE(parse_transcoded_seconds(""));
}

TEST(ParseMux, ReadsTheLastPercentage) {
    EXPECT_EQ(parse_muxed_percent("ISO File Writing: |=====     | (45/100)\r"), 45);
    EXPECT_EQ(parse_muxed_percent("ISO File Writing: |=         | (09/100)\r"), 9);
    EXPECT_EQ(parse_muxed_percent("ISO File Writing: |=  | (10/100)\rISO File Writing: |== | (20/"),
              20);
}

TEST(ParseMux, DoesNotLimitThePercentage) {
    EXPECT_EQ(parse_muxed_percent("ISO File Writing: | | (450/1000)"), 450);
}

TEST(ParseMux, FindsNothingInATruncatedLine) {
    const wxString line = "ISO File Writing: |==| (45/";
    for (size_t length = 0; length < line.length(); ++length)
        EXPECT_FALSE(parse_muxed_percent(line.Left(length))) << "cut at " << length;
    EXPECT_EQ(parse_muxed_percent(line), 45);
}

TEST(ProgressParsing, ClampsANumberThatIsTooLarge) {
    EXPECT_EQ(parse_transcoded_seconds("time=99999999999999999999.00 bitrate="), 2147483647);
    EXPECT_EQ(parse_transcoded_seconds("time=4294967296.00 bitrate="), 2147483647);
    EXPECT_EQ(parse_muxed_percent("ISO File Writing: (4294967300/1)"), 2147483647);
}

#include "process/progress.h"

#include <gtest/gtest.h>

#include <vector>

#include "bundle/support/program_reading.h"

namespace bundle {
namespace {

const std::string kReports =
    "frame=0\nfps=0.00\nstream_0_0_q=0.0\nbitrate=N/A\ntotal_size=N/A\nout_time_us=N/A\n"
    "out_time=N/A\nspeed=N/A\nprogress=continue\n"
    "frame=123\nfps=45.12\nstream_0_0_q=22.0\nbitrate= 336.5kbits/s\ntotal_size=1264000\n"
    "out_time_us=30049999\nout_time=00:00:30.049999\nspeed=1.2x\nprogress=end\n";

std::vector<std::string> lines_of(const std::vector<std::string>& pieces) {
    std::vector<std::string> lines;
    ProgressReader reader(
        [&lines](const Progress& progress) { lines.push_back(old_progress_line(progress)); });
    for (const std::string& piece : pieces) {
        reader.add(piece);
    }
    return lines;
}

const std::vector<std::string> kLines{
    "frame=    0 fps=  0 q=0.0 size=       0kB time=0.00 bitrate=N/A    \r",
    "frame=  123 fps= 45 q=22.0 size=    1234kB time=30.04 bitrate= 336.5kbits/s    \r"};

TEST(Progress, IsWrittenInTheOldForm) {
    EXPECT_EQ(lines_of({kReports}), kLines);
}

TEST(Progress, IsTheSameWhereverItsReportsAreCut) {
    for (std::size_t cut = 0; cut <= kReports.size(); ++cut) {
        EXPECT_EQ(lines_of({kReports.substr(0, cut), kReports.substr(cut)}), kLines)
            << "cut at " << cut;
    }
}

TEST(Progress, IsReadByTheProgram) {
    EXPECT_EQ(read_conversion_seconds(kLines[0]), "0");
    EXPECT_EQ(read_conversion_seconds(kLines[1]), "30");
}

TEST(Progress, AlwaysHasTwoDecimals) {
    Progress progress;
    progress.microseconds = 3'600'000'000;
    EXPECT_EQ(read_conversion_seconds(old_progress_line(progress)), "3600");
    progress.microseconds = 9'999'999;
    EXPECT_NE(old_progress_line(progress).find("time=9.99 "), std::string::npos);
    progress.microseconds = -23'000;
    EXPECT_NE(old_progress_line(progress).find("time=0.00 "), std::string::npos);
}

TEST(Progress, SkipsUnknownLines) {
    EXPECT_EQ(lines_of({"\nnonsense\n=\n" + std::string(100'000, 'x') + "\n" + kReports}), kLines);
}

TEST(FurthestProgress, StandsStillUntilTheWorkHasCaughtUp) {
    const auto at = [](std::int64_t microseconds) {
        Progress progress;
        progress.microseconds = microseconds;
        return progress;
    };
    FurthestProgress furthest;
    EXPECT_EQ(furthest.with({}).microseconds, std::nullopt);
    EXPECT_EQ(furthest.with(at(100)).microseconds, 100);
    EXPECT_EQ(furthest.with(at(300)).microseconds, 300);
    EXPECT_EQ(furthest.with({}).microseconds, 300);
    EXPECT_EQ(furthest.with(at(200)).microseconds, 300);
    EXPECT_EQ(furthest.with(at(301)).microseconds, 301);
}

TEST(FileProgress, DrawsABar) {
    EXPECT_EQ(file_progress_line(45), "ISO File Writing: |=========           | (45/100)\r");
    EXPECT_EQ(file_progress_line(-1), "ISO File Writing: |                    | (0/100)\r");
    EXPECT_EQ(file_progress_line(101), "ISO File Writing: |====================| (100/100)\r");
}

TEST(FileProgress, IsReadByTheProgramAsTheLastOfSeveral) {
    EXPECT_EQ(read_subtitle_percent(file_progress_line(5) + file_progress_line(45)), "45");
}

}  // namespace
}  // namespace bundle

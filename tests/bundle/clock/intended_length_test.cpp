#include "clock/intended_length.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace bundle {
namespace {

std::string little(std::uint64_t value, int width) {
    std::string bytes;
    for (int byte = 0; byte < width; ++byte) {
        bytes += static_cast<char>(value >> (8 * byte) & 0xFF);
    }
    return bytes;
}

/// The beginning of an AVI file of 1,008 bytes with 300 frames, 25 a second.
std::string avi() {
    return "RIFF" + little(1000, 4) + "AVI LIST" + little(200, 4) + "hdrlstrh" + little(56, 4) +
           "vidsXVID" + std::string(12, '\0') + little(1, 4) + little(25, 4) + little(0, 4) +
           little(300, 4);
}

/// The beginning of an ASF file of 1,000 bytes, 12 s and a preroll of 3 s.
std::string asf(std::uint64_t flags) {
    return std::string("\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16) +
           std::string(14, '\0') +
           std::string("\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4\x00\xC0\x0C\x20\x53\x65", 16) +
           std::string(24, '\0') + little(1000, 8) + std::string(16, '\0') +
           little(150'000'000, 8) + std::string(8, '\0') + little(3000, 8) + little(flags, 4);
}

std::optional<double> length_in_header(const std::string& file, std::int64_t size) {
    return bundle::length_in_header(size, [&](std::int64_t from, std::int64_t count) {
        const auto at = std::min(static_cast<std::size_t>(from), file.size());
        return file.substr(at, static_cast<std::size_t>(count));
    });
}

TEST(LengthInHeader, IsThatOfATruncatedAvi) {
    EXPECT_EQ(length_in_header(avi(), 500), 12);
    EXPECT_EQ(length_in_header(avi(), 1007), 12);
    EXPECT_EQ(length_in_header(avi(), 1008), std::nullopt);
}

TEST(LengthInHeader, IsThatOfATruncatedAsfButNotOfABroadcast) {
    EXPECT_EQ(length_in_header(asf(2), 999), 12);
    EXPECT_EQ(length_in_header(asf(2), 1000), std::nullopt);
    EXPECT_EQ(length_in_header(asf(3), 999), std::nullopt);
}

TEST(LengthInHeader, IsThatOfAllJoinedAsfMoviesTogether) {
    const std::string whole = asf(2) + std::string(1000 - asf(2).size(), 'x');
    EXPECT_EQ(length_in_header(whole + whole + whole, 3000), 36);
    EXPECT_EQ(length_in_header(whole + whole.substr(0, 300), 1300), 24);
    EXPECT_EQ(length_in_header(whole + asf(3), 2000), std::nullopt);
}

TEST(LengthInHeader, IsUnknownWhereverTheHeaderEndsEarly) {
    for (const std::string& whole : {avi(), asf(2)}) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            length_in_header(whole.substr(0, size), 1);
        }
    }
    EXPECT_EQ(length_in_header("", 1), std::nullopt);
    EXPECT_EQ(length_in_header("RIFF", 1), std::nullopt);
    EXPECT_EQ(length_in_header(avi().substr(0, avi().size() - 1), 1), std::nullopt);
}

TEST(HasOwnLength, IsTrueWhereTheHeaderGivesTheLengthOfTheMovie) {
    const std::string matroska = "\x1A\x45\xDF\xA3 segment and info ";
    EXPECT_TRUE(has_own_length(avi()));
    EXPECT_TRUE(has_own_length(asf(2)));
    EXPECT_TRUE(
        has_own_length(std::string("\0\0\0\x20"
                                   "ftypisom",
                                   12)));
    EXPECT_TRUE(
        has_own_length(std::string("\0\0\0\x08"
                                   "wide",
                                   8)));
    EXPECT_TRUE(has_own_length(matroska + "\x44\x89\x88 seconds"));
    EXPECT_TRUE(has_own_length(matroska + "\x44\x89\x84 seconds"));
    EXPECT_FALSE(has_own_length(matroska));
    EXPECT_FALSE(has_own_length("FLV\x01"));
    EXPECT_FALSE(has_own_length("G@\x11\x10"));
    EXPECT_FALSE(has_own_length("ftyp"));
    EXPECT_FALSE(has_own_length(""));
}

TEST(ContentEnd, IsWhereTheZerosBegin) {
    const TemporaryFolder folder;
    for (const std::size_t content : {70'000U, 500'000U, 999'000U}) {
        const std::string path =
            folder.write("movie", std::string(content, 'x') + std::string(600'000, '\0'));
        EXPECT_NEAR(static_cast<double>(content_end(path)), static_cast<double>(content), 65'536);
        EXPECT_GE(content_end(path), static_cast<std::int64_t>(content));
    }
}

TEST(ContentEnd, IsTheSizeOfAWholeFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(content_end(folder.write("whole", std::string(300'000, 'x'))), 300'000);
    EXPECT_EQ(content_end(folder.write("small", std::string(100, '\0'))), 100);
    EXPECT_EQ(content_end(folder.write("empty", "")), 0);
}

TEST(IntendedLength, GrowsWithTheZerosAtTheEnd) {
    const TemporaryFolder folder;
    const std::string half = std::string(655'360, 'x');
    EXPECT_EQ(intended_length(folder.write("half", half + std::string(655'360, '\0')), 6), 12);
    EXPECT_EQ(intended_length(folder.write("whole", half), 6), 0);
    EXPECT_EQ(intended_length(folder / "missing", 6), 0);
}

TEST(IntendedLength, IsNotThatOfTheZerosAtTheEndOfAFileWithItsOwnLength) {
    const TemporaryFolder folder;
    const std::string padded = std::string(
                                   "\0\0\0\x20"
                                   "ftypisom",
                                   12) +
                               std::string(655'360, 'x') + std::string(655'360, '\0');
    EXPECT_EQ(intended_length(folder.write("whole", padded), 6), 0);
}

}  // namespace
}  // namespace bundle

#include "mp4/index.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "bundle/support/samples.h"
#include "mp4/box_writing.h"
#include "support/temporary_folder.h"

namespace bundle {
namespace {

std::string zeros(std::size_t count) {
    return std::string(count, '\0');
}

std::string long_box(const std::string& type, const std::string& content) {
    return number(1, 4) + type + number(content.size() + 16, 8) + content;
}

/// A box without flags.
std::string full_box(const std::string& type, const std::string& content,
                     std::uint64_t version = 0) {
    return bundle::full_box(type, version << 24, content);
}

const std::string kMvhd = full_box("mvhd", zeros(8) + number(1000, 4) + number(2500, 4));

// Where the content of the "mdat" box of `mp4` begins, and how much there is.
constexpr std::uint64_t kData = 24;
constexpr std::uint64_t kDataSize = 10;

/// Three samples of 2, 3 and 5 bytes in two chunks.
const std::string kSizes =
    full_box("stsz", zeros(4) + number(3, 4) + number(2, 4) + number(3, 4) + number(5, 4));
const std::string kOffsets =
    full_box("stco", number(2, 4) + number(kData, 4) + number(kData + 5, 4));
const std::string kRuns =
    full_box("stsc", number(2, 4) + number(1, 4) + number(2, 4) + number(1, 4) + number(2, 4) +
                         number(1, 4) + number(1, 4));

const std::string kTable = box("stbl", kSizes + kOffsets + kRuns);

std::string track(const std::string& handler, const std::string& sizes = kSizes,
                  const std::string& offsets = kOffsets, const std::string& runs = kRuns) {
    const std::string table = box("stbl", sizes + offsets + runs);
    return box("trak",
               box("mdia", full_box("hdlr", zeros(4) + handler + zeros(13)) + box("minf", table)));
}

std::string mp4(const std::string& index) {
    return box("ftyp", "isom0000") + box("mdat", std::string(kDataSize, '.')) + box("moov", index);
}

std::optional<Mp4Index> read(const std::string& bytes) {
    std::istringstream file(bytes);
    return read_mp4_index(file);
}

TEST(Mp4Index, HasTheDurationAndTheTracks) {
    const auto index = read(mp4(kMvhd + track("vide") + box("free", "") + track("soun")));
    ASSERT_TRUE(index);
    EXPECT_EQ(index->duration, 2.5);
    ASSERT_EQ(index->tracks.size(), 2U);
    EXPECT_EQ(index->tracks[0].handler, "vide");
    EXPECT_EQ(index->tracks[0].samples, 3U);
    EXPECT_EQ(index->tracks[1].handler, "soun");
}

TEST(Mp4Index, HasATrackWithoutSamples) {
    const std::string none = zeros(4);
    const auto index = read(mp4(kMvhd + track("soun", full_box("stsz", none + none),
                                              full_box("stco", none), full_box("stsc", none))));
    ASSERT_TRUE(index);
    ASSERT_EQ(index->tracks.size(), 1U);
    EXPECT_EQ(index->tracks[0].samples, 0U);
}

TEST(Mp4Index, HasNoDurationWhenTheMp4FileHasNone) {
    const auto index =
        read(mp4(full_box("mvhd", zeros(8) + number(1000, 4) + number(0xFFFFFFFF, 4))));
    ASSERT_TRUE(index);
    EXPECT_EQ(index->duration, 0);
}

TEST(Mp4Index, TakesNumbersOf64Bits) {
    const std::string mvhd =
        full_box("mvhd", zeros(16) + number(1000, 4) + number(std::uint64_t{1} << 33, 8), 1);
    const std::string head = box("ftyp", "isom0000");
    const std::uint64_t data = head.size() + 16;
    const std::string offsets =
        full_box("co64", number(2, 4) + number(data, 8) + number(data + 5, 8));
    const std::string bytes = head + long_box("mdat", std::string(kDataSize, '.')) +
                              long_box("moov", mvhd + track("vide", kSizes, offsets));
    const auto index = read(bytes);
    ASSERT_TRUE(index);
    EXPECT_EQ(index->duration, 8589934.592);
    EXPECT_EQ(index->tracks.size(), 1U);
    EXPECT_FALSE(read(bytes.substr(0, bytes.size() - 1)));
}

TEST(Mp4Index, TakesALastBoxThatReachesToTheEnd) {
    const std::string bytes = box("moov", kMvhd) + zeros(4) + "mdat";
    EXPECT_TRUE(read(bytes));
    EXPECT_TRUE(read(bytes + "more"));
}

/// An MP4 file that ends with the last of three samples, 10 bytes after the start of the first.
std::string mp4_that_ends_with_a_sample(const std::string& sizes) {
    const auto index = [&sizes](std::uint64_t data) {
        const std::string offsets =
            full_box("stco", number(2, 4) + number(data, 4) + number(data + 5, 4));
        return box("moov", kMvhd + track("vide", sizes, offsets));
    };
    return index(index(0).size() + 8) + box("mdat", std::string(kDataSize, '.'));
}

TEST(Mp4Index, TakesSizesOfAllSamplesAndOfEach) {
    const auto equal = [](unsigned size) {
        return full_box("stsz", number(size, 4) + number(3, 4));
    };
    for (const std::string& sizes : {kSizes, equal(5)}) {
        const auto index = read(mp4_that_ends_with_a_sample(sizes));
        ASSERT_TRUE(index);
        EXPECT_EQ(index->tracks[0].samples, 3U);
    }
    EXPECT_FALSE(read(mp4_that_ends_with_a_sample(equal(6))));
    EXPECT_FALSE(read(mp4_that_ends_with_a_sample(full_box("stsz", ""))));
}

TEST(Mp4Index, RequiresEverySampleInTheFile) {
    const auto last_chunk_at = [](std::uint64_t offset) {
        return full_box("stco", number(2, 4) + number(kData, 4) + number(offset, 4));
    };
    const std::string rest = mp4(kMvhd + track("vide")).substr(kData);
    EXPECT_TRUE(read(mp4(kMvhd + track("vide", kSizes, last_chunk_at(kData + rest.size() - 5)))));
    for (const std::uint64_t offset :
         {kData + rest.size() - 4, std::uint64_t{0x7FFFFFFF}, std::uint64_t{0xFFFFFFFF}}) {
        EXPECT_FALSE(read(mp4(kMvhd + track("vide", kSizes, last_chunk_at(offset)))));
    }
}

TEST(Mp4Index, RequiresAChunkForEverySample) {
    const auto runs = [](std::uint64_t first_chunk, std::uint64_t samples) {
        return full_box("stsc",
                        number(1, 4) + number(first_chunk, 4) + number(samples, 4) + number(1, 4));
    };
    EXPECT_FALSE(read(mp4(kMvhd + track("vide", kSizes, kOffsets, runs(1, 1)))));
    EXPECT_FALSE(read(mp4(kMvhd + track("vide", kSizes, kOffsets, runs(1, 2)))));
    EXPECT_FALSE(read(mp4(kMvhd + track("vide", kSizes, kOffsets, runs(1, 0xFFFFFFFF)))));
    EXPECT_FALSE(read(mp4(kMvhd + track("vide", kSizes, kOffsets, runs(2, 3)))));
    EXPECT_FALSE(read(mp4(kMvhd + track("vide", kSizes, kOffsets, full_box("stsc", zeros(4))))));
}

TEST(Mp4Index, IsEmptyWhenAPartIsMissing) {
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read("no movie at all"));
    EXPECT_FALSE(read(box("ftyp", "isom0000") + box("mdat", "")));
    EXPECT_FALSE(read(mp4("")));
    EXPECT_FALSE(read(mp4(full_box("mvhd", zeros(8) + zeros(4) + number(1, 4)))));
    EXPECT_FALSE(read(mp4(kMvhd + box("trak", ""))));
    EXPECT_FALSE(read(mp4(kMvhd + track("vide", ""))));
    EXPECT_FALSE(read(mp4(kMvhd + track("vide", kSizes, ""))));
    EXPECT_FALSE(read(mp4(kMvhd + track("vide", kSizes, kOffsets, ""))));
    EXPECT_FALSE(read(
        mp4(kMvhd + box("trak", box("mdia", full_box("hdlr", zeros(7)) + box("minf", kTable))))));
}

TEST(Mp4Index, RequiresEveryBoxToEndWithinItsParent) {
    const std::string whole = mp4(kMvhd + track("vide"));
    EXPECT_TRUE(read(whole));
    EXPECT_FALSE(read(whole + number(100, 4) + "free"));
    EXPECT_FALSE(read(whole + number(7, 4) + "free"));
    EXPECT_FALSE(read(whole + number(1, 4) + "free"));
    EXPECT_FALSE(read(whole + number(1, 4) + "free" + number(~std::uint64_t{0}, 8)));
    EXPECT_FALSE(read(mp4(kMvhd + track("vide") + number(9, 4) + "free")));
    EXPECT_FALSE(read(mp4(kMvhd + "0000")));
}

TEST(Mp4Index, IsEmptyWhereverTheFileIsCut) {
    const std::string whole = mp4(kMvhd + track("vide") + track("soun"));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(read(whole.substr(0, length))) << length;
    }
}

TEST(Mp4Index, IsEmptyWhenItPromisesMoreThanTheFileHas) {
    const std::string many = zeros(4) + number(0xFFFFFFFF, 4);
    const std::string head = box("mdat", std::string(kDataSize, '.'));
    EXPECT_FALSE(read(mp4(kMvhd + track("vide", full_box("stsz", many)))));
    EXPECT_FALSE(read(head + number(1, 4) + "moov" + number(std::uint64_t{1} << 62, 8) + kMvhd));
}

struct Real {
    const char* name;
    std::vector<std::string> arguments;
};

void PrintTo(const Real& mp4, std::ostream* out) {
    *out << mp4.name;
}

class Mp4IndexOf : public testing::TestWithParam<Real> {};

TEST_P(Mp4IndexOf, AgreesWithFfprobe) {
    const TemporaryFolder folder;
    const std::string path = folder / "movie.mp4";
    std::vector<std::string> arguments{
        "-f",
        "lavfi",
        "-i",
        "testsrc2=s=160x120:r=25:d=1.5",
        "-f",
        "lavfi",
        "-i",
        "sine=d=1.4",
        "-i",
        folder.write("text.srt", "1\n00:00:00,100 --> 00:00:00,500\nText\n"),
        "-i",
        folder.write("chapters",
                     ";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/10\nSTART=0\nEND=9\n"
                     "title=One\n")};
    arguments.insert(arguments.end(), GetParam().arguments.begin(), GetParam().arguments.end());
    arguments.push_back(path);
    ASSERT_TRUE(run_ffmpeg(arguments));
    std::ifstream file(path, std::ios::binary);
    const auto index = read_mp4_index(file);
    ASSERT_TRUE(index);
    const auto expected = probed(path, true);
    EXPECT_NEAR(index->duration, std::stod(expected["format"]["duration"].get<std::string>()),
                1e-6);
    ASSERT_EQ(index->tracks.size(), expected["streams"].size());
    for (std::size_t at = 0; at < index->tracks.size(); ++at) {
        const std::string kind = expected["streams"][at]["codec_type"];
        const std::string& handler = index->tracks[at].handler;
        EXPECT_EQ(kind, handler == "vide"   ? "video"
                        : handler == "soun" ? "audio"
                        : handler == "sbtl" ? "subtitle"
                                            : "data");
        EXPECT_EQ(expected["streams"][at]["nb_frames"], std::to_string(index->tracks[at].samples));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Mp4Files, Mp4IndexOf,
    testing::Values(
        Real{"Ordinary", {"-map", "0", "-map", "1", "-f", "ipod"}},
        Real{"WithBFramesAndAnEditList", {"-map", "0", "-map", "1", "-c:v", "libx264", "-bf", "3"}},
        Real{"WithTheIndexInFront", {"-map", "0", "-map", "1", "-movflags", "+faststart"}},
        Real{"WithoutSound", {"-map", "0"}},
        Real{"WithSoundInStereo", {"-map", "0", "-map", "1", "-ac", "2"}},
        Real{"WithSubtitles", {"-map", "0", "-map", "1", "-map", "2", "-c:s", "mov_text"}},
        Real{"WithChapters", {"-map", "0", "-map", "1", "-map_chapters", "3"}}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(Mp4Index, IsEmptyForARealMp4FileThatIsCut) {
    const TemporaryFolder folder;
    ASSERT_TRUE(make_movie_with_subtitles(folder / "movie.mp4"));
    const std::string whole = content_of(folder / "movie.mp4");
    EXPECT_TRUE(read(whole));
    for (std::size_t length = 0; length < whole.size(); length += 101) {
        EXPECT_FALSE(read(whole.substr(0, length))) << length;
    }
    EXPECT_FALSE(read(whole.substr(0, whole.size() - 1)));
}

}  // namespace
}  // namespace bundle

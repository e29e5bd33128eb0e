#include "clock/asf_parts.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace bundle {
namespace {

using namespace std::string_literals;

std::string number(std::uint64_t value, int width) {
    std::string bytes;
    for (int byte = 0; byte < width; ++byte) {
        bytes += static_cast<char>(value >> (8 * byte) & 0xFF);
    }
    return bytes;
}

struct Movie {
    std::uint64_t size = 1000;     ///< as the header gives it
    std::uint64_t seconds = 12;    ///< as the header gives them
    std::uint64_t flags = 2;       ///< seekable
    std::uint64_t first_ms = 0;    ///< when the first packet is sent
    std::uint64_t last_ms = 0;     ///< when the last packet is sent
    std::string picture = "XVID";  ///< the content of the Stream Properties Object

    std::string bytes() const {
        const std::string properties =
            "\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4\x00\xC0\x0C\x20\x53\x65"s + number(104, 8) +
            std::string(16, 'i') + number(size, 8) + number(0, 8) + number(3, 8) +
            number((seconds + 3) * 10'000'000, 8) + number(0, 8) + number(3000, 8) +
            number(flags, 4) + number(100, 4) + number(100, 4) + number(0, 4);
        const std::string other(16, 'o');
        const std::string objects = other + number(30, 8) + "abcdef" + properties + stream();
        const std::string header =
            std::string(kAsf) + number(30 + objects.size(), 8) + number(3, 4) + "\1\2" + objects;
        std::string all =
            header + std::string(50, 'd') + packet(first_ms) + packet(0) + packet(last_ms);
        all.resize(1000, 'x');
        return all;
    }

    std::string stream() const {
        return "\x91\x07\xDC\xB7\xB7\xA9\xCF\x11\x8E\xE6\x00\xC0\x0C\x20\x53\x65"s +
               number(24 + picture.size(), 8) + picture;
    }

    /// With error correction data, and the length of its padding in one byte.
    static std::string packet(std::uint64_t ms) {
        std::string bytes = "\x82zz\x08\x5D\x07"s + number(ms, 4) + "\0\0"s;
        bytes.resize(100, 'p');
        return bytes;
    }
};

std::vector<AsfPart> parts_of(const std::string& file) {
    return asf_parts(static_cast<std::int64_t>(file.size()),
                     [&](std::int64_t from, std::int64_t size) {
                         const auto at = std::min(static_cast<std::size_t>(from), file.size());
                         return file.substr(at, static_cast<std::size_t>(size));
                     });
}

std::vector<std::int64_t> ends_in(const std::string& file) {
    std::vector<std::int64_t> ends;
    for (const AsfPart& part : parts_of(file)) {
        ends.push_back(part.range.to);
    }
    return ends;
}

TEST(AsfParts, BeginWhereTheHeaderBeforeThemEnds) {
    const std::string movie = Movie().bytes();
    EXPECT_EQ(ends_in(movie), (std::vector<std::int64_t>{1000}));
    EXPECT_EQ(ends_in(movie + movie + movie), (std::vector<std::int64_t>{1000, 2000, 3000}));
    EXPECT_EQ(ends_in(movie + "x" + movie), (std::vector<std::int64_t>{2001}));
    EXPECT_EQ(ends_in("x" + movie), (std::vector<std::int64_t>{}));
    EXPECT_EQ(ends_in(""), (std::vector<std::int64_t>{}));
}

TEST(AsfParts, EndWithTheFile) {
    const auto parts = parts_of(Movie().bytes() + Movie{.size = 2000}.bytes());
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_FALSE(parts[0].is_truncated);
    EXPECT_TRUE(parts[1].is_truncated);
    EXPECT_EQ(parts[1].range.to, 2000);
}

TEST(AsfParts, AreAsLongAsTheirHeadersSay) {
    const std::string movie = Movie().bytes();
    EXPECT_EQ(length_of(parts_of(movie)), 12);
    EXPECT_EQ(length_of(parts_of(movie + Movie{.seconds = 7}.bytes())), 19);
    EXPECT_EQ(length_of(parts_of(movie + Movie{.flags = 3}.bytes())), std::nullopt);
    EXPECT_EQ(length_of({}), std::nullopt);
}

TEST(AsfParts, MayBeGivenTheTimeAtWhichTheyEnd) {
    const Movie to_end{.seconds = 3612, .first_ms = 3'600'000, .last_ms = 3'611'000};
    EXPECT_EQ(length_of(parts_of(to_end.bytes())), 12);
    const Movie own{.seconds = 7200, .first_ms = 3'600'000, .last_ms = 10'790'000};
    EXPECT_EQ(length_of(parts_of(own.bytes())), 7200);
}

TEST(AsfParts, HaveTheirStreams) {
    const Movie other{.picture = "WMV3"};
    const auto parts = parts_of(Movie().bytes() + Movie().bytes() + other.bytes());
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_EQ(parts[0].streams, Movie().stream());
    EXPECT_EQ(parts[1].streams, parts[0].streams);
    EXPECT_EQ(parts[2].streams, other.stream());
}

TEST(AsfParts, AreOfOneMovieWithTheSameStreams) {
    const std::string movie = Movie().bytes();
    EXPECT_TRUE(are_of_one_movie(parts_of(movie + movie + Movie{.seconds = 7}.bytes())));
    EXPECT_FALSE(are_of_one_movie(parts_of(movie)));
    EXPECT_FALSE(are_of_one_movie(parts_of(movie + Movie{.picture = "WMV3"}.bytes())));
    EXPECT_FALSE(are_of_one_movie(parts_of(movie + Movie{.flags = 3}.bytes())));
    EXPECT_FALSE(are_of_one_movie({}));
}

TEST(AsfParts, AreListedForFfmpeg) {
    const std::string movie = Movie().bytes();
    EXPECT_EQ(part_list(parts_of(movie + Movie{.seconds = 7}.bytes()), 5),
              "ffconcat version 1.0\n"
              "file subfile,,start,0,end,1000,,:file:/dev/fd/5\nduration 12000ms\n"
              "file subfile,,start,1000,end,2000,,:file:/dev/fd/5\nduration 7000ms\n");
}

TEST(AsfParts, ComeToAnEndWithBadHeaders) {
    const std::string movie = Movie().bytes();
    for (const std::uint64_t size : {std::uint64_t{0}, std::uint64_t{1}, ~std::uint64_t{0}}) {
        EXPECT_EQ(ends_in(Movie{.size = size}.bytes() + movie), (std::vector<std::int64_t>{2000}));
    }
    std::string small = movie.substr(0, 170);
    small.replace(small.find(number(1000, 8)), 8, number(170, 8));
    std::string many;
    for (int count = 0; count < 150; ++count) {
        many += small;
    }
    EXPECT_EQ(ends_in(many).size(), 100U);
    EXPECT_EQ(ends_in(many).back(), static_cast<std::int64_t>(many.size()));
    for (std::size_t at = 0; at < movie.size(); ++at) {
        std::string damaged = movie;
        damaged[at] = '\xFF';
        EXPECT_LE(parts_of(damaged + movie).size(), 2U);
        EXPECT_LE(parts_of(movie.substr(0, at)).size(), 1U);
    }
}

}  // namespace
}  // namespace bundle

#include "clock/ogg_links.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

/// A page with two segments, 263 bytes of content.
std::string page(bool opens_stream) {
    std::string bytes = "OggS";
    bytes += '\0';
    bytes += opens_stream ? '\2' : '\0';
    bytes += std::string(20, 'x') + "\2\xFF\x08" + std::string(263, 'y');
    return bytes;
}

constexpr std::int64_t kSize = 27 + 2 + 263;

std::vector<std::int64_t> starts_in(const std::string& bytes) {
    const auto links = ogg_links(
        static_cast<std::int64_t>(bytes.size()), [&](std::int64_t from, std::int64_t size) {
            return bytes.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(size));
        });
    std::vector<std::int64_t> starts;
    for (const ByteRange& link : links) {
        starts.push_back(link.from);
    }
    return starts;
}

TEST(OggLinks, BeginWhereStreamsAreOpenedAgain) {
    const std::string movie = page(true) + page(true) + page(false) + page(false);
    EXPECT_EQ(starts_in(movie), std::vector<std::int64_t>{0});
    EXPECT_EQ(starts_in(movie + movie + movie),
              (std::vector<std::int64_t>{0, 4 * kSize, 8 * kSize}));
}

TEST(OggLinks, EndAtDamage) {
    const std::string movie = page(true) + page(false);
    EXPECT_EQ(starts_in(movie + "noise" + movie), std::vector<std::int64_t>{0});
    EXPECT_EQ(starts_in(movie + movie.substr(0, 20)), std::vector<std::int64_t>{0});
    EXPECT_EQ(starts_in(""), std::vector<std::int64_t>{});
}

}  // namespace
}  // namespace bundle

#include "clock/file_pieces.h"

#include <gtest/gtest.h>

#include "core/files.h"

namespace bundle {
namespace {

using Places = std::vector<std::pair<std::int64_t, std::int64_t>>;

Places places_in(const std::string& content, int count, std::int64_t length) {
    const auto file = nameless_file(content);
    Places places;
    for (const ByteRange& piece :
         spread_pieces(file->get(), static_cast<std::int64_t>(content.size()), count, length)) {
        places.emplace_back(piece.from, piece.to);
    }
    return places;
}

TEST(FilePieces, AreSpreadFromTheBeginningToTheEnd) {
    EXPECT_EQ(places_in(std::string(1000, 'x'), 3, 100),
              (Places{{0, 100}, {450, 550}, {900, 1000}}));
}

TEST(FilePieces, AreAllOfASmallFile) {
    EXPECT_EQ(places_in(std::string(300, 'x'), 3, 100), (Places{{0, 300}}));
}

TEST(FilePieces, BeginAndEndWithClustersInMatroska) {
    std::string content = std::string(kMatroska) + std::string(996, 'x');
    for (const std::size_t at : {20U, 80U, 460U, 540U, 600U, 950U}) {
        content.replace(at, kCluster.size(), kCluster);
    }
    EXPECT_EQ(places_in(content, 3, 100), (Places{{0, 80}, {460, 540}, {950, 1000}}));
}

}  // namespace
}  // namespace bundle

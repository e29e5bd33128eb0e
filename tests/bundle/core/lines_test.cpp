#include "core/lines.h"

#include <gtest/gtest.h>

#include <vector>

namespace bundle {
namespace {

using Texts = std::vector<std::string>;

Texts lines_of(const Texts& pieces) {
    Texts lines;
    LineReader reader([&lines](std::string_view line) { lines.emplace_back(line); });
    for (const std::string& piece : pieces) {
        reader.add(piece);
    }
    return lines;
}

TEST(Lines, AreTheSameWhateverPiecesTheyComeIn) {
    EXPECT_EQ(lines_of({"one\n\ntwo\nthree"}), (Texts{"one", "", "two"}));
    EXPECT_EQ(lines_of({"on", "e\n", "\nt", "wo", "\n"}), (Texts{"one", "", "two"}));
}

TEST(Lines, AreCutAfterAThousandBytes) {
    EXPECT_EQ(lines_of({std::string(3000, 'x'), "y\nnext\n"}),
              (Texts{std::string(1000, 'x'), "next"}));
}

TEST(Lines, AreTakenFromATextOneByOne) {
    std::string_view text = "one\n\nthree";
    EXPECT_EQ(take_line(text), "one");
    EXPECT_EQ(take_line(text), "");
    EXPECT_EQ(take_line(text), "three");
    EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace bundle

#include "subtitles/styled_text.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

using Runs = std::vector<StyledRun>;

const LetterStyle kItalic{false, true, false, 0xFFFFFF};
const LetterStyle kYellow{true, false, true, 0xFFFF00};

TEST(StyledText, HasRunsForAllButTheDefaultStyle) {
    StyledText text;
    text.add("a ", {});
    text.add("b\xC3\xA9", kItalic);
    text.add("c", kYellow);
    text.add(" d", {});
    const PlainText plain = take_apart(text.marked());
    EXPECT_EQ(plain.text,
              "a b\xC3\xA9"
              "c d");
    EXPECT_EQ(plain.runs, (Runs{{2, 4, kItalic}, {4, 5, kYellow}}));
}

TEST(StyledText, HasNoEmptyLinesAndNoBlanksAtTheEnds) {
    StyledText text;
    text.add(" \n a ", {});
    text.add(" \n\n", kItalic);
    text.add(" b c\n ", {});
    EXPECT_EQ(take_apart(text.marked()).text, "a\nb c");
}

TEST(StyledText, IsEmptyWithoutAnythingToSee) {
    StyledText text;
    text.add(" \n\x02\x01", kItalic);
    EXPECT_EQ(text.marked(), "");
}

TEST(StyledText, CanBeJoined) {
    StyledText first;
    first.add("a", kItalic);
    StyledText second;
    second.add("b", {});
    const PlainText plain = take_apart(first.marked() + "\n" + second.marked());
    EXPECT_EQ(plain.text, "a\nb");
    EXPECT_EQ(plain.runs, (Runs{{0, 1, kItalic}}));
}

TEST(StyledText, IsCutBetweenCharacters) {
    StyledText text;
    text.add("a\xF0\x9F\x98\x80z", kItalic);
    EXPECT_EQ(take_apart(text.marked(), 4).text, "a");
    EXPECT_EQ(take_apart(text.marked(), 5).text, "a\xF0\x9F\x98\x80");
    EXPECT_EQ(take_apart(text.marked(), 5).runs, (Runs{{0, 2, kItalic}}));
}

}  // namespace
}  // namespace bundle

#include "support/text.h"

#include <gtest/gtest.h>

namespace {

std::string Trimmed(std::string text) {
    EatLeadingAndTrailingWhitespace(text);
    return text;
}

std::string WithoutFirstWord(std::string text) {
    DelFirstWord(text);
    return text;
}

std::string Extended(std::string text) {
    AddExtensionToString(text, ".tlx");
    return text;
}

}  // namespace

// White space is blank, tab and line feed, and nothing else.
TEST(Text, IsTrimmedAtBothEnds) {
    EXPECT_EQ(Trimmed(" \t abc def \n"), "abc def");
    EXPECT_EQ(Trimmed("  \t\n"), "");
    EXPECT_EQ(Trimmed(""), "");
    EXPECT_EQ(Trimmed("abc\r\n"), "abc\r");
    EXPECT_EQ(Trimmed("\v a \f"), "\v a \f");
}

TEST(Text, LosesItsFirstWord) {
    EXPECT_EQ(WithoutFirstWord("  move  a1-b2  "), "a1-b2");
    EXPECT_EQ(WithoutFirstWord("move\ta1 b2\n"), "a1 b2");
    EXPECT_EQ(WithoutFirstWord("move"), "");
    EXPECT_EQ(WithoutFirstWord(""), "");
    EXPECT_EQ(WithoutFirstWord("move\ra1 b2"), "b2");
}

TEST(Text, GetsItsExtensionOnce) {
    EXPECT_EQ(Extended("game"), "game.tlx");
    EXPECT_EQ(Extended("game.tlx"), "game.tlx");
    EXPECT_EQ(Extended("game.TLX"), "game.TLX.tlx");
    EXPECT_EQ(Extended(""), ".tlx");
    EXPECT_EQ(Extended("tlx"), "tlx.tlx");
    EXPECT_EQ(Extended(".tlx"), ".tlx");
}

// Words end at all that scanf takes for white space.
TEST(Text, IsScannedWordByWord) {
    std::string_view text = " \f\vone\rtwo  three";
    EXPECT_EQ(ScanWord(text), "one");
    EXPECT_EQ(ScanWord(text, &text), "one");
    EXPECT_EQ(ScanWord(text, &text), "two");
    EXPECT_EQ(text, "  three");
    EXPECT_EQ(ScanWord(text, &text), "three");
    EXPECT_EQ(ScanWord(text, &text), "");
    EXPECT_EQ(ScanWord(" \r\n"), "");
}

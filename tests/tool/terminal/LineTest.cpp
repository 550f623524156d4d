#include "terminal/Line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace inspect;
using testing::ElementsAre;

MATCHER_P2(IsSpan, text, ink, "") {
    return arg.text == text && arg.ink == ink;
}

TEST(Line, ACharacterTakesACell) {
    EXPECT_EQ(Line().cells(), 0);
    EXPECT_EQ(Line("PAT").cells(), 3);
    EXPECT_EQ(Line("Maré-Açu").cells(), 8);
}

TEST(Line, AWideCharacterTakesTwoCells) {
    EXPECT_EQ(Line("日本放送").cells(), 8);
    EXPECT_EQ(Line("한국").cells(), 4);
    EXPECT_EQ(Line("ＮＨＫ").cells(), 6);
    EXPECT_EQ(Line("ﾃﾚﾋﾞ").cells(), 4);
    EXPECT_EQ(Line("📺").cells(), 2);
}

TEST(Line, ACombiningCharacterTakesNone) {
    EXPECT_EQ(Line("Mare\u0301-Ac\u0327u").cells(), 8);
    EXPECT_EQ(Line("a\u200Bb").cells(), 2);
}

TEST(Line, AnInkTakesNone) {
    EXPECT_EQ((Line("日本", Ink::Fault) + " PAT").cells(), 8);
}

TEST(Line, BytesThatAreNoCharactersAreMeasured) {
    EXPECT_EQ(Line("a\xFF"
                   "b")
                  .cells(),
              3);
    EXPECT_EQ(Line("\xE6\x97").bytesWithin(10), 2);
}

TEST(Line, KeepsInksApart) {
    EXPECT_THAT((Line("a") + Line("b", Ink::Name) + Line("c", Ink::Name) + "" + Line("d", Ink::Name) + "e").spans(),
                ElementsAre(IsSpan("a", Ink::Plain), IsSpan("bcd", Ink::Name), IsSpan("e", Ink::Plain)));
}

TEST(Line, APartHasTheInksOfTheWhole) {
    const Line line = Line("one", Ink::Heading) + "two" + Line("three", Ink::Good);
    EXPECT_THAT(line.part(1, 6).spans(),
                ElementsAre(IsSpan("ne", Ink::Heading), IsSpan("two", Ink::Plain), IsSpan("t", Ink::Good)));
    EXPECT_THAT(line.part(7).spans(), ElementsAre(IsSpan("hree", Ink::Good)));
    EXPECT_TRUE(line.part(11).empty());
}

TEST(Line, WholeCharactersFitInCells) {
    EXPECT_EQ(Line("日本").bytesWithin(3), 3);
    EXPECT_EQ(Line("日本").bytesWithin(4), 6);
    EXPECT_EQ(Line("e\u0301a").bytesWithin(1), 3);
    EXPECT_EQ(Line("日本").bytesWithin(1), 3); // a line gets on by one at least
}

TEST(Line, HasNoControlCharacters) {
    EXPECT_EQ(Line("a\x1B[2Jb\nc\td\x7F").text(), "a?[2Jb?c?d?");
}

TEST(Line, IsFilledUpToItsCells) {
    EXPECT_EQ(padded("日", 4).text(), "日  ");
    EXPECT_EQ(padded("日本放送", 4).text(), "日本放送");
}

} // namespace

#include "text/Page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace inspect;
using testing::ElementsAre;

Page pageOf(std::size_t width, bool wraps = true) {
    Style style;
    style.width = width;
    style.wraps = wraps;
    return {style, {}};
}

std::vector<std::string> textsOf(const Page& page) {
    std::vector<std::string> texts;
    for (const Line& line : page.lines) {
        texts.push_back(line.text());
    }
    return texts;
}

std::vector<std::string> lines(std::size_t width, const Line& line, std::size_t indent = 0) {
    Page page = pageOf(width);
    appendLine(page, line, indent);
    return textsOf(page);
}

std::vector<std::string> pieces(std::size_t width, const std::vector<Line>& all) {
    Page page = pageOf(width);
    appendPieces(page, "> ", "    ", all);
    return textsOf(page);
}

TEST(Page, BreaksALineBetweenWords) {
    EXPECT_THAT(lines(12, "one two  three four", 2), ElementsAre("one two", "  three four"));
    EXPECT_THAT(lines(19, "one two  three four", 2), ElementsAre("one two  three four"));
}

TEST(Page, BreaksNoLineInAPipe) {
    Page page = pageOf(12, false);
    appendLine(page, "one two  three four", 2);
    appendPieces(page, "> ", "    ", {"one two three", "four"});
    EXPECT_THAT(textsOf(page), ElementsAre("one two  three four", "> one two three  four"));
}

TEST(Page, CountsCellsNotCharacters) {
    EXPECT_THAT(lines(9, "日本 放送 協会"), ElementsAre("日本 放送", "協会"));
    EXPECT_THAT(lines(9, "e\u0301e\u0301e\u0301e\u0301 e\u0301e\u0301e\u0301e\u0301 a"),
                ElementsAre("e\u0301e\u0301e\u0301e\u0301 e\u0301e\u0301e\u0301e\u0301", "a"));
}

TEST(Page, BreaksAWordThatIsLongerThanALine) {
    EXPECT_THAT(lines(10, "abcdefghijklmnopqrstuvwxyz", 2), ElementsAre("abcdefghij", "  klmnopqr", "  stuvwxyz"));
    EXPECT_THAT(lines(7, "日本放送協会"), ElementsAre("日本放", "送協会"));
}

/// Its parts stay together.
TEST(Page, BreaksANameBehindAnUnderscore) {
    EXPECT_THAT(lines(16, "a stream_identifier_descriptor", 2),
                ElementsAre("a stream_", "  identifier_", "  descriptor"));
}

/// A value begins behind its name where it is longer than a line anyway.
TEST(Page, BeginsALongWordWhereThereIsRoom) {
    EXPECT_THAT(lines(20, "name abcdefghijklmnopqrstuvwxyz", 5),
                ElementsAre("name abcdefghijklmno", "     pqrstuvwxyz"));
}

TEST(Page, LeavesSomethingOfNarrowLinesBesideTheMargin) {
    EXPECT_THAT(lines(12, "          name value other", 11),
                ElementsAre("        name", "        valu", "        e", "        othe", "        r"));
}

TEST(Page, KeepsInksWhereItBreaks) {
    Page page = pageOf(8);
    appendLine(page, Line("one ", Ink::Name) + Line("two three", Ink::Fault));
    ASSERT_EQ(page.lines.size(), 2);
    EXPECT_EQ(page.lines[0].spans().size(), 2);
    EXPECT_EQ(page.lines[1].spans().front().ink, Ink::Fault);
}

TEST(Page, BreaksPiecesWhereTheyMeet) {
    EXPECT_THAT(pieces(16, {"one two", "three four"}), ElementsAre("> one two", "    three four"));
    EXPECT_THAT(pieces(22, {"one,", "two:", "three", "four"}), ElementsAre("> one, two: three", "    four"));
}

/// Between their own pieces first.
TEST(Page, BreaksAPieceThatIsLongerThanALine) {
    EXPECT_THAT(pieces(16, {"a", "one two  three four five"}),
                ElementsAre("> a  one two", "    three four", "    five"));
}

TEST(Page, PutsLinesBesideAMargin) {
    Page page = pageOf(20);
    Page inner = pageBehind(4, page.style);
    EXPECT_EQ(inner.style.width, 16);
    inner.lines = {"one", "two", "three"};
    appendPage(page, "[0] ", "    ", inner);
    EXPECT_THAT(textsOf(page), ElementsAre("[0] one", "    two", "    three"));
}

} // namespace

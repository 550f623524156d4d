#include "terminal/Output.h"

#include <array>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using namespace inspect;

std::string written(const std::vector<Line>& lines, Colour colour) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    Output(ends[1], colour).write(lines);
    close(ends[1]);
    std::array<char, 4096> text{};
    const ssize_t count = read(ends[0], text.data(), text.size());
    close(ends[0]);
    return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
}

const std::vector<Line> LINES{Line("PAT", Ink::Heading) + "  " + Line("a", Ink::Name) + Line("b", Ink::Remark),
                              {},
                              Line("new", Ink::Good) + Line("!", Ink::Fault)};

TEST(Output, WritesInksAsColours) {
    EXPECT_EQ(written(LINES, Colour::Always), "\x1B[1mPAT\x1B[0m  \x1B[36ma\x1B[0m\x1B[33mb\x1B[0m\n"
                                              "\n"
                                              "\x1B[32mnew\x1B[0m\x1B[1;31m!\x1B[0m\n");
}

TEST(Output, WritesNoneWithoutColours) {
    EXPECT_EQ(written(LINES, Colour::Never), "PAT  ab\n\nnew!\n");
    EXPECT_EQ(written(LINES, Colour::Auto), "PAT  ab\n\nnew!\n"); // a pipe
}

TEST(Output, NoTextSendsAnEscapeOfItsOwn) {
    EXPECT_EQ(written({Line("\x1B[2J", Ink::Name)}, Colour::Always), "\x1B[36m?[2J\x1B[0m\n");
}

TEST(Output, GoesToWhoTakesItWithoutColours) {
    std::string taken;
    const auto sink = std::make_shared<Sink>([&taken](std::string_view piece) {
        taken += piece;
        return true;
    });
    Output output(sink);
    output.begin({"one.ts"});
    output.write(LINES);
    Output other(sink);
    other.begin({"two.ts"});
    other.write("PMT\n");
    EXPECT_EQ(taken, "one.ts\nPAT  ab\n\nnew!\ntwo.ts\nPMT\n");
}

TEST(Output, EndsWhenNoMoreIsWanted) {
    int pieces = 0;
    const Output output(std::make_shared<Sink>([&pieces](std::string_view /*piece*/) { return ++pieces < 2; }));
    output.write("PAT\n");
    EXPECT_THROW(output.write("PMT\n"), OutputClosed);
    EXPECT_THROW(output.write("AIT\n"), OutputClosed);
    EXPECT_EQ(pieces, 2);
}

} // namespace

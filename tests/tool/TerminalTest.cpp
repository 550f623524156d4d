#include "Running.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* ESCAPE = "\x1B[";

/// A variable of the tool's environment, which goes with the object.
class Variable {
public:
    Variable(const char* name, const char* value) : m_name(name) { setenv(name, value, 1); }
    ~Variable() { unsetenv(m_name); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
};

/// What a person sees on a terminal.
std::string shown(std::vector<std::string> options) {
    const Variable terminal("TERM", "xterm");
    options.insert(options.end(), {"--view", "tables", "--table", "pat", SAMPLE_FILE});
    Running program(options, Running::On::Terminal);
    return program.finish().output;
}

TEST(InspectTerminal, HasColours) {
    EXPECT_THAT(shown({}), HasSubstr("\x1B[1mPAT\x1B[0m  PID 0x0000"));
}

TEST(InspectTerminal, HasNoneWhenTheUserWantsNone) {
    EXPECT_THAT(shown({"--color", "never"}), Not(HasSubstr(ESCAPE)));
    const Variable wish("NO_COLOR", "1");
    EXPECT_THAT(shown({}), Not(HasSubstr(ESCAPE)));
    EXPECT_THAT(shown({"--color", "always"}), HasSubstr(ESCAPE));
}

TEST(InspectTerminal, AnEmptyNoColorIsNoWish) {
    const Variable wish("NO_COLOR", "");
    EXPECT_THAT(shown({}), HasSubstr(ESCAPE));
}

TEST(InspectTerminal, IsNoPipe) {
    EXPECT_THAT(inspect({SAMPLE_FILE}).output, Not(HasSubstr(ESCAPE)));
    EXPECT_THAT(inspect({"--color", "always", SAMPLE_FILE}).output, HasSubstr(ESCAPE));
}

TEST(InspectTerminal, GivesTheLinesItsWidth) {
    EXPECT_THAT(shown({"--color", "never"}),
                HasSubstr("\n480 packets of 188 bytes, 73 sections on 9 PIDs: 1 shown, 0 rejected, 0 CRC\r\n"
                          "  errors, 0 discontinuities\r\n"));
    EXPECT_THAT(shown({"--color", "never", "--width", "60"}),
                HasSubstr("\n480 packets of 188 bytes, 73 sections on 9 PIDs: 1 shown, 0\r\n"
                          "  rejected, 0 CRC errors, 0 discontinuities\r\n"));
}

/// What is read by programs keeps its lines, so that they are found by what stands in them.
TEST(InspectTerminal, BreaksNoLineOfAPipe) {
    EXPECT_THAT(inspect({"--view", "tables", "--table", "pat", SAMPLE_FILE}).output,
                HasSubstr("\n480 packets of 188 bytes, 73 sections on 9 PIDs: 1 shown, 0 rejected, 0 CRC errors, "
                          "0 discontinuities\n"));
}

/// The longest line, in characters; none of the sample is wide.
std::size_t longest(const std::string& text) {
    std::size_t longest = 0;
    std::size_t length = 0;
    for (const char each : text) {
        const bool goesOn = (static_cast<unsigned char>(each) & 0xC0U) == 0x80;
        length = each == '\n' ? 0 : length + (goesOn ? 0 : 1);
        longest = std::max(longest, length);
    }
    return longest;
}

class InspectWidth : public testing::TestWithParam<const char*> {};

TEST_P(InspectWidth, IsKeptByEachLine) {
    const char* const rejected = "02 B0 14 E6 A0 C1 00 00 E1 00 F0 00 1B E1 11 F0 02 52 00 4D 74 93 47";
    for (std::size_t width = 40; width <= 80; ++width) {
        const std::vector<std::string> options{"--view", GetParam(), "--width", std::to_string(width)};
        for (const std::vector<std::string>& input : {std::vector<std::string>{SAMPLE_FILE}, {"--hex", rejected}}) {
            std::vector<std::string> arguments = options;
            arguments.insert(arguments.end(), input.begin(), input.end());
            EXPECT_LE(longest(inspect(arguments).output), width) << input.front();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Views, InspectWidth, testing::Values("tree", "tables", "stats", "diff"));

} // namespace

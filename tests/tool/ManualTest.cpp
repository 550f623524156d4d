#include "Process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// The long options that the help names.
std::set<std::string> options() {
    const std::string help = inspect({"--help"}).output;
    const std::regex option("\n  (?:-h,)?(--[a-z-]+)");
    std::set<std::string> found;
    for (std::sregex_iterator each(help.begin(), help.end(), option); each != std::sregex_iterator(); ++each) {
        found.insert((*each)[1]);
    }
    return found;
}

/// What bash offers behind the words of a command, the last of which is being typed.
std::string completions(const std::string& words) {
    const std::string script = ". /usr/share/bash-completion/bash_completion; . " COMPLETION_FILE "; COMP_WORDS=(" +
                               words +
                               "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); COMP_LINE=\"${COMP_WORDS[*]}\"; "
                               "COMP_POINT=${#COMP_LINE}; compopt() { :; }; _isdbt_inspect; echo \"${COMPREPLY[@]}\"";
    return runProgram("/bin/bash", {"-c", script}).output;
}

TEST(Manual, HasEveryOption) {
    const std::string manual = readText(MANUAL_FILE);
    EXPECT_EQ(options().size(), 40U);
    for (const std::string& option : options()) {
        EXPECT_THAT(manual, HasSubstr(std::regex_replace(option, std::regex("-"), "\\-"))) << option;
    }
}

TEST(Manual, IsOfThisVersion) {
    EXPECT_THAT(readText(MANUAL_FILE), StartsWith(".TH ISDBT-INSPECT 1 "));
    EXPECT_THAT(readText(MANUAL_FILE), HasSubstr("\"isdbt-inspect " INSPECT_VERSION "\""));
}

TEST(Manual, IsSetWithoutAWarning) {
    const Finished finished =
        runProgram("/usr/bin/env", {"LC_ALL=C.UTF-8", "MANROFFSEQ=", "MANWIDTH=80", "man", "--warnings", "-E", "UTF-8",
                                    "-l", "-Tutf8", "-Z", MANUAL_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
}

TEST(Completion, HasEveryOption) {
    const std::string offered = ' ' + completions("isdbt-inspect --");
    for (const std::string& option : options()) {
        EXPECT_THAT(offered, testing::ContainsRegex(" " + option + "[ \n]"));
    }
}

TEST(Completion, OffersTheValuesOfAnOption) {
    EXPECT_EQ(completions("isdbt-inspect --view ''"), "tree tables stats diff applications carousels all\n");
    EXPECT_EQ(completions("isdbt-inspect --view t"), "tree tables\n");
    EXPECT_EQ(completions("isdbt-inspect --color a"), "auto always\n");
    EXPECT_EQ(completions("isdbt-inspect --limits dv"), "dvb\n");
    EXPECT_EQ(completions("isdbt-inspect --table p"), "pat pmt\n");
    EXPECT_EQ(completions("isdbt-inspect --table nit,sd"), "nit,sdt nit,sdtt\n");
    EXPECT_EQ(completions("isdbt-inspect --descriptor p"), "pmt\n");
    EXPECT_EQ(completions("isdbt-inspect --pid 0x002"),
              "0x0020 0x0021 0x0022 0x0023 0x0024 0x0025 0x0026 0x0027 0x0028 "
              "0x0029 0x002E 0x002F\n");
    EXPECT_THAT(completions("isdbt-inspect --charset latin-a"), HasSubstr("latin-america"));
    EXPECT_THAT(completions("isdbt-inspect --charset ISO-8859-1"), HasSubstr("ISO-8859-15"));
}

TEST(Completion, OffersFiles) {
    EXPECT_EQ(completions("isdbt-inspect " SAMPLE_FOLDER "/isdbt-sample."), SAMPLE_FILE "\n");
}

} // namespace

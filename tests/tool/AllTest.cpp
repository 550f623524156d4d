#include "Process.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace {

/// How many lines of which type come, one kind behind the other.
std::string typesOf(const std::string& lines) {
    std::string types;
    std::string last;
    int count = 0;
    const auto tell = [&] { types += count != 0 ? std::to_string(count) + " " + last + "\n" : ""; };
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line); ++count) {
        const std::string type = nlohmann::json::parse(line).at("type");
        if (type != last) {
            tell();
            last = type;
            count = 0;
        }
    }
    tell();
    return types;
}

} // namespace

TEST(InspectAll, HasTheLinesOfTheOthersOnce) {
    const ByteVector noCarousel;
    const TemporaryFile file(noCarousel);
    runBuilt(MAKE_SAMPLE_PROGRAM, {"--seconds", "3", "--bit-rate", "600000", "--fault", "pmt-changes=1", file.path()});
    const Finished finished =
        inspect({"--json", "--view", "all", "--limits", "isdbt", "--table", "pat,pmt", file.path()});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(typesOf(finished.output), "4 section\n1 alarm\n1 pid_statistics\n1 table_statistics\n1 pid_statistics\n"
                                        "1 table_statistics\n1 pid_statistics\n1 table_statistics\n1 stream\n"
                                        "1 carousel_pid\n1 carousel\n46 check\n1 fault\n");
}

TEST(InspectAll, IsForPrograms) {
    const Finished finished = inspect({"--view", "all", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.errors, "isdbt-inspect: --view all: it is for --json\nRun with --help for more information.\n");
}

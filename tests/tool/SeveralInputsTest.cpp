#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// A stream with one TOT.
ByteVector stream(const std::string& body) {
    return StreamBuilder().section(TOT_PID, shortSection(0x73, hex(body))).bytes();
}

ByteVector good() {
    return stream("C079 124500 F000");
}

ByteVector rejected() {
    return stream("C079 124500 F00E");
}

constexpr const char* GOOD_SHOWN = "TOT  PID 0x0014  packet 1\n"
                                   "  unix_time  750516300 = 1993-10-13 12:45:00 (UTC-3 assumed)\n"
                                   "\n"
                                   "1 packet of 188 bytes, 1 section on 1 PID: 1 shown, 0 rejected, 0 CRC errors, "
                                   "0 discontinuities\n";

/// Runs isdbt-inspect where only the TOT is of interest, as the streams have nothing else.
Finished inspectTimes(std::vector<std::string> arguments, const Start& start = {}) {
    arguments.insert(arguments.begin(), {"--table", "tot"});
    return inspect(arguments, start);
}

Finished inspectTimesInTables(std::vector<std::string> arguments, const Start& start = {}) {
    arguments.insert(arguments.begin(), {"--view", "tables"});
    return inspectTimes(arguments, start);
}

} // namespace

TEST(InspectSeveralInputs, EachIsInspectedByItselfUnderItsName) {
    const TemporaryFile one(good());
    const TemporaryFile other(good());
    const Finished finished = inspectTimesInTables({one.path(), other.path()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, "== " + one.path() + " ==\n" + GOOD_SHOWN + "== " + other.path() + " ==\n" + GOOD_SHOWN);
}

TEST(InspectSeveralInputs, StandardInputIsOne) {
    const TemporaryFile one(good());
    Start start;
    start.input = good();
    const Finished finished = inspectTimesInTables({one.path(), "-"}, start);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, "== " + one.path() + " ==\n" + GOOD_SHOWN + "== standard input ==\n" + GOOD_SHOWN);
}

TEST(InspectSeveralInputs, UnreadableOneDoesNotKeepTheOthersFromBeingShown) {
    const TemporaryFile one(good());
    const TemporaryFile other(good());
    const Finished finished = inspectTimesInTables({one.path(), "/no-such-folder/stream.ts", other.path()});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors, "isdbt-inspect: /no-such-folder/stream.ts: No such file or directory\n");
    EXPECT_EQ(finished.output, "== " + one.path() + " ==\n" + GOOD_SHOWN + "== " + other.path() + " ==\n" + GOOD_SHOWN);
}

/// What could not be read weighs more than what was rejected, and no leniency is about it.
TEST(InspectSeveralInputs, ExitStatus) {
    const TemporaryFile well(good());
    const TemporaryFile fault(rejected());
    const TemporaryFile cut(slice(good(), 0, 100));
    const std::string& a = well.path();
    const std::string& r = fault.path();
    const std::string& u = cut.path();
    struct Case {
        std::vector<std::string> files;
        int status;
        int lenient;
    };
    const std::vector<Case> cases{{{a}, 0, 0},       {{r}, 3, 0},       {{u}, 1, 1},      {{a, a}, 0, 0},
                                  {{a, r}, 3, 0},    {{r, a}, 3, 0},    {{a, u}, 1, 1},   {{u, a}, 1, 1},
                                  {{r, u}, 1, 1},    {{u, r}, 1, 1},    {{r, r}, 3, 0},   {{a, r, u}, 1, 1},
                                  {{u, r, a}, 1, 1}, {{r, u, a}, 1, 1}, {{r, a, a}, 3, 0}};
    for (const Case& each : cases) {
        EXPECT_EQ(inspectTimes(each.files).status, each.status) << testing::PrintToString(each.files);
        std::vector<std::string> leniently = each.files;
        leniently.insert(leniently.begin(), "--lenient");
        EXPECT_EQ(inspectTimes(leniently).status, each.lenient) << testing::PrintToString(leniently);
    }
    EXPECT_EQ(inspect({a, r, "--pid", "x"}).status, 2);
    EXPECT_EQ(inspect({"--lenient", a, "--pid", "x"}).status, 2);
}

TEST(InspectSeveralInputs, ReaderThatGoesAwayEndsThemAll) {
    Start start;
    start.outputIsClosed = true;
    const Finished finished = inspect({SAMPLE_FILE, "/no-such-folder/stream.ts"}, start);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
}

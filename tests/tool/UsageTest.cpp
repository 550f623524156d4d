#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST(InspectUsage, HelpNamesArgumentsOptionsAndExitStatus) {
    for (const char* const option : {"--help", "-h"}) {
        const Finished finished = inspect({option});
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.errors, "");
        EXPECT_THAT(finished.output,
                    AllOf(HasSubstr("Usage: isdbt-inspect [OPTIONS] [FILE...]"), HasSubstr("188, 192 or 204 bytes"),
                          HasSubstr("- is standard input"), HasSubstr("--pid PID"), HasSubstr("--charset NAME"),
                          HasSubstr("latin-america"), HasSubstr("--version"), HasSubstr("2 wrong usage"),
                          HasSubstr("if not given, tree, or tables"), testing::Not(HasSubstr("[tree]"))));
    }
}

TEST(InspectUsage, TablesGoByTheirNamesInAnyCase) {
    const Finished finished = inspect({"--view", "diff", "--table", "Pat,SDT,DSM-CC", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, inspect({"--view", "diff", "--table", "pat,sdt,dsmcc", SAMPLE_FILE}).output);
    EXPECT_THAT(finished.output, AllOf(StartsWith("+ PAT 0x0735"), HasSubstr("\n+ SDT 0x0735")));
    EXPECT_EQ(inspect({"--descriptor", "PMT", "--hex", "52 01 07"}).output,
              "stream_identifier_descriptor (0x52)  component_tag 0x07 (7)\n");
    EXPECT_EQ(inspect({"--table", "EIT", SAMPLE_FILE}).status, 2);
}

TEST(InspectUsage, Version) {
    const Finished finished = inspect({"--version"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, "isdbt-inspect " INSPECT_VERSION "\n");
    EXPECT_EQ(finished.errors, "");
}

TEST(InspectUsage, WithoutFile) {
    const Finished finished = inspect({});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.errors, "isdbt-inspect: FILE is required\nRun with --help for more information.\n");
}

TEST(InspectUsage, UnknownOption) {
    const Finished finished = inspect({"--colour-of-the-sky", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.output, "");
    EXPECT_THAT(finished.errors, AllOf(StartsWith("isdbt-inspect: "), HasSubstr("--colour-of-the-sky")));
}

TEST(InspectUsage, ReaderThatGoesAwayIsNoError) {
    Start start;
    start.outputIsClosed = true;
    const Finished finished = inspect({SAMPLE_FILE}, start);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
}

TEST(InspectUsage, DamagedSectionsAreNoChanges) {
    const Finished finished = inspect({"--show-damaged", "--view", "diff", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.errors, testing::HasSubstr("--show-damaged: what is damaged is no change"));
}

TEST(InspectUsage, OutputThatCannotBeWritten) {
    Start start;
    start.outputFile = "/dev/full";
    const Finished finished = inspect({SAMPLE_FILE}, start);
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors, "isdbt-inspect: standard output: No space left on device\n");
}

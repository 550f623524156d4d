#include "Process.h"
#include "Streams.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string usageOf(std::vector<std::string> arguments) {
    const Finished finished = inspect(arguments);
    EXPECT_EQ(finished.status, 2) << testing::PrintToString(arguments);
    return finished.errors.substr(0, finished.errors.find('\n'));
}

/// What is written of a range goes into a file.
std::unique_ptr<TemporaryFile> range(std::vector<std::string> arguments, int status) {
    arguments.insert(arguments.begin(), "--json");
    const Finished finished = inspect(arguments);
    EXPECT_EQ(finished.status, status);
    EXPECT_EQ(finished.errors, "");
    return std::make_unique<TemporaryFile>(text(finished.output));
}

void expectTheSameAtOnce(std::vector<std::string> arguments) {
    const Finished inTurn = inspect(arguments);
    EXPECT_EQ(inTurn.status, 1);
    arguments.emplace_back();
    for (const char* const jobs : {"--jobs=2", "--jobs=0", "--jobs=7"}) {
        arguments.back() = jobs;
        const Finished finished = inspect(arguments);
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.errors, inTurn.errors);
        EXPECT_EQ(finished.output, inTurn.output);
    }
}

} // namespace

TEST(InspectRanges, MergeToWhatTheWholeSays) {
    ByteVector stream = sampleStream();
    stream[100 * PACKET_SIZE + 3] ^= 0x0F; // a packet seems to be lost
    const TemporaryFile file(stream);
    const auto first = range({"--view", "stats", "--to", "20001", file.path()}, 0);
    const auto second = range({"--view", "stats", "--from", "20001", "--to", "60000", file.path()}, 0);
    const auto third = range({"--view", "stats", "--from", "60000", file.path()}, 3);
    const Finished whole = inspect({"--json", "--view", "stats", file.path()});
    const Finished merged = inspect({"--merge", first->path(), second->path(), third->path()});
    EXPECT_EQ(whole.status, 3);
    EXPECT_EQ(merged.status, 3);
    EXPECT_EQ(merged.errors, "");
    EXPECT_EQ(merged.output, whole.output);
    EXPECT_EQ(inspect({"--lenient", "--merge", first->path(), second->path(), third->path()}).status, 0);
}

TEST(InspectRanges, MergeFromStandardInput) {
    Start start;
    start.input = text(inspect({"--json", "--table", "pat", "--to", "1s", SAMPLE_FILE}).output +
                       inspect({"--json", "--table", "pat", "--from", "1s", SAMPLE_FILE}).output);
    EXPECT_EQ(inspect({"--merge", "-"}, start).output, inspect({"--json", "--table", "pat", SAMPLE_FILE}).output);
}

TEST(InspectRanges, TellOfTheirPacketsAlone) {
    const Finished before = inspect({"--json", "--table", "tot", "--to", "1s", SAMPLE_FILE});
    EXPECT_THAT(before.output, StartsWith(R"({"type":"section","schema_version":1,"source":")" SAMPLE_FILE
                                          R"(","pid":20,"table":"TOT","table_id":115,)"));
    EXPECT_THAT(before.output, HasSubstr(R"("packet":3,"offset":376,)"));
    EXPECT_THAT(before.output, testing::Not(HasSubstr(R"("packet":243,)")));
    const Finished behind = inspect({"--json", "--table", "tot", "--from", "0:01", SAMPLE_FILE});
    EXPECT_THAT(behind.output, testing::Not(HasSubstr(R"("packet":3,)")));
    EXPECT_THAT(behind.output,
                HasSubstr(R"("packet":243,"offset":45496,"seconds":1.008333,"time":"2025-06-15T21:30:01.000Z")"));
    EXPECT_THAT(behind.output,
                HasSubstr(R"({"type":"range","schema_version":1,"source":")" SAMPLE_FILE
                          R"(","packets_before":240,"packets_until":480,"ended":true,"fault_found":false,)"));
}

TEST(InspectRanges, ThatDoNotFollowEachOtherAreNotMerged) {
    const auto first = range({"--to", "20000", SAMPLE_FILE}, 0);
    const auto third = range({"--from", "60000", SAMPLE_FILE}, 0);
    const Finished gap = inspect({"--merge", first->path(), third->path()});
    EXPECT_EQ(gap.status, 1);
    EXPECT_EQ(gap.errors, "isdbt-inspect: " + third->path() +
                              ": line 1 ends a range that begins behind packet 320, and the one before it ended with "
                              "packet 107\n");
    const Finished open = inspect({"--merge", first->path()});
    EXPECT_EQ(open.status, 1);
    EXPECT_EQ(open.errors, "isdbt-inspect: " + first->path() + ": the range that ends with the input is missing\n");
    const Finished stream = inspect({"--merge", SAMPLE_FILE});
    EXPECT_EQ(stream.status, 1);
    EXPECT_THAT(stream.errors, EndsWith(": line 1 is no line of a range\n"));
}

TEST(InspectRanges, NeedAClockWhenTheyAreOfTime) {
    const TemporaryFile file(StreamBuilder().section(PAT_PID, pat("E6A0 E101")).null(5).bytes());
    const Finished finished = inspect({"--json", "--to", "1s", file.path()});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors,
              "isdbt-inspect: " + file.path() + ": has no clock (PCR) by which --from and --to could be counted\n");
}

TEST(InspectRanges, AreRefusedWhereTheyCouldNotBePutTogether) {
    struct Case {
        std::vector<std::string> arguments;
        std::string error;
    };
    const std::string ofWholeFile = "--export, --extract, --report and --serve are of a whole file";
    const std::string overTime = "--metrics, --every and --seconds are of a whole file";
    const std::vector<Case> cases{
        {{"--from", "1", SAMPLE_FILE}, "they are for --json"},
        {{"--json", "--from", "1", SAMPLE_FILE, SAMPLE_FILE}, "one file at a time"},
        {{"--json", "--from", "1", "--hex", "00"}, "one file at a time"},
        {{"--json", "--to", "1", "udp://127.0.0.1:5000"}, "a live input is not read twice"},
        {{"--json", "--to", "1", "--sections", SAMPLE_FILE}, "sections outside of packets have no place in a stream"},
        {{"--json", "--to", "1", "--export=x.sec", SAMPLE_FILE}, ofWholeFile},
        {{"--json", "--to", "1", "--extract=x", SAMPLE_FILE}, ofWholeFile},
        {{"--json", "--to", "1", "--report=x.html", SAMPLE_FILE}, ofWholeFile},
        {{"--json", "--to", "1", "--seconds=1", SAMPLE_FILE}, overTime},
        {{"--json", "--to", "1", "--view=stats", "--every=1", SAMPLE_FILE}, overTime},
        {{"--json", "--from", "2", "--to", "1", SAMPLE_FILE}, "the range ends before it begins"}};
    for (const Case& each : cases) {
        EXPECT_EQ(usageOf(each.arguments), "isdbt-inspect: --from, --to: " + each.error);
    }
    EXPECT_EQ(usageOf({"--merge", "--view", "stats", SAMPLE_FILE}), "isdbt-inspect: --merge: --view is for streams");
}

TEST(InspectRanges, BeginAtAByteOrATime) {
    for (const char* const wrong : {"x", "-1", "1k", "1:30m", "1.5", "1:60", "s"}) {
        EXPECT_EQ(usageOf({"--json", std::string("--from=") + wrong, SAMPLE_FILE}),
                  std::string("isdbt-inspect: --from: ") + wrong +
                      " is no byte (1000000) and no time (90s, 2m, 1:30 or 00:01:30)");
    }
}

TEST(InspectRanges, OfFilesOfSectionsAreRefused) {
    const std::string path = testing::TempDir() + "ranges.sec";
    std::ofstream(path) << "";
    const Finished finished = inspect({"--json", "--to", "1", path});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors, "isdbt-inspect: " + path + ": holds sections: --from and --to are for packets\n");
    std::filesystem::remove(path);
}

TEST(InspectJobs, TellTheSameInTheSameOrder) {
    const TemporaryFile small(StreamBuilder().section(PAT_PID, pat("E6A0 E101")).null(5).bytes());
    const TemporaryFile cut(slice(sampleStream(), 0, 20000));
    for (const std::string view : {"tree", "stats", "tables", "carousels"}) {
        for (const char* const form : {"--json", "--color=always"}) {
            expectTheSameAtOnce({"--view", view, form, SAMPLE_FILE, small.path(), "/no-such-folder/stream.ts",
                                 cut.path(), SAMPLE_FILE, small.path()});
        }
    }
}

TEST(InspectJobs, ReadOneFileAhead) {
    const Finished alone = inspect({"--view", "stats", SAMPLE_FILE});
    const Finished ahead = inspect({"--view", "stats", "--jobs", "2", SAMPLE_FILE});
    EXPECT_EQ(ahead.status, 0);
    EXPECT_EQ(ahead.output, alone.output);
    EXPECT_EQ(inspect({"--json", "--jobs", "2", "--to", "300", SAMPLE_FILE}).status, 0); // what is read ahead is left
    const Finished none = inspect({"--jobs", "2", "/no-such-folder/stream.ts"});
    EXPECT_EQ(none.errors, "isdbt-inspect: /no-such-folder/stream.ts: No such file or directory\n");
    const Finished folder = inspect({"--jobs", "2", "/"});
    EXPECT_EQ(folder.errors, "isdbt-inspect: /: Is a directory\n");
}

TEST(InspectJobs, EndWithWhoReadsTheOutput) {
    Start start;
    start.outputIsClosed = true;
    const Finished finished = inspect({"--jobs", "2", SAMPLE_FILE, SAMPLE_FILE, SAMPLE_FILE}, start);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
}

TEST(InspectJobs, AreRefusedWhereOneInputComesAfterTheOther) {
    const std::string prefix = "isdbt-inspect: --jobs: ";
    EXPECT_EQ(usageOf({"--jobs", "2", "udp://127.0.0.1:5000"}),
              prefix + "it is for files; live inputs are received at once");
    EXPECT_EQ(usageOf({"--jobs", "2", "--view", "diff", SAMPLE_FILE, SAMPLE_FILE}),
              prefix + "view diff compares each file with those before it");
    EXPECT_EQ(usageOf({"--jobs", "2", "--export", "x.sec", SAMPLE_FILE, SAMPLE_FILE}),
              prefix + "--export, --report and --metrics take one file after the other");
    EXPECT_THAT(usageOf({"--jobs", "-1", SAMPLE_FILE}), HasSubstr("--jobs"));
}

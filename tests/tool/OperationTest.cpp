#include "Running.h"
#include "Sender.h"
#include "Streams.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

using namespace std::chrono_literals;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr unsigned CLOCK_PID = 0x0100;
constexpr std::uint64_t SECOND = 27000000;

/// Ten seconds, with a PAT in each.
ByteVector tenSeconds() {
    StreamBuilder stream;
    for (unsigned tenth = 0; tenth < 100; ++tenth) {
        stream.clock(CLOCK_PID, SECOND * tenth / 10);
        if (tenth % 10 == 0) {
            stream.section(PAT_PID, pat("E6A0 E101"));
        }
    }
    return stream.bytes();
}

ByteVector datagram() {
    return StreamBuilder().section(PAT_PID, pat("E6A0 E101")).null(6).bytes();
}

std::string usageError(const std::vector<std::string>& arguments) {
    const Finished finished = inspect(arguments);
    EXPECT_EQ(finished.status, 2);
    return finished.errors.substr(0, finished.errors.find('\n'));
}

/// How long a program takes.
class Taking {
public:
    double seconds() const { return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_begin).count(); }

private:
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

} // namespace

TEST(InspectSeconds, EndAFileByItsClock) {
    const TemporaryFile file(tenSeconds());
    const Finished finished = inspect({"--view", "stats", "--table", "pat", "--seconds", "4.5", file.path()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, ContainsRegex("\n[0-9]+ packets of 188 bytes, 5 sections on 1 PID: "));
    EXPECT_EQ(inspect({"--view", "stats", "--table", "pat", "--seconds", "1:00", file.path()}).output,
              inspect({"--view", "stats", "--table", "pat", file.path()}).output);
}

TEST(InspectSeconds, EndALiveInputByThoseThatPass) {
    const Sender sender;
    const Taking taking;
    const Finished finished = inspect({"--view", "stats", "--table", "tot", "--seconds", "1", sender.address()});
    EXPECT_GE(taking.seconds(), 0.9);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, "0 sections: 0 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n");
}

TEST(InspectSeconds, EndEachOfSeveralLiveInputs) {
    const Sender one;
    const Sender other;
    const Taking taking;
    const Finished finished =
        inspect({"--view", "stats", "--table", "tot", "--seconds", "1s", one.address(), other.address()});
    EXPECT_GE(taking.seconds(), 0.9);
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("== " + one.address() + " ==\n0 sections: 0 shown"));
    EXPECT_THAT(finished.output, HasSubstr("== " + other.address() + " ==\n0 sections: 0 shown"));
}

TEST(InspectSeconds, CutNoPacketOfALiveInput) {
    const Sender sender;
    Running program({"--view", "stats", "--table", "pat", "--seconds", "1", sender.address()});
    sender.waitForListener();
    sender.send(join({datagram(), hex("47 00")}));
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr("\n7 packets of 188 bytes, 1 section on 1 PID: "));
}

TEST(InspectSeconds, NeedAClock) {
    const TemporaryFile file(datagram());
    for (const char* const option : {"--seconds", "--every"}) {
        const Finished finished = inspect({"--view", "stats", option, "4", file.path()});
        EXPECT_EQ(finished.status, 1);
        EXPECT_THAT(finished.errors, EndsWith(" has no clock (PCR) by which --every and --seconds could be counted\n"));
    }
}

TEST(InspectEvery, GivesInterimResultsOfAFile) {
    const TemporaryFile file(tenSeconds());
    const Finished finished = inspect({"--view", "stats", "--table", "pat", "--every", "4s", file.path()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, MatchesRegex("-- 4\\.[01] s --\n(.*\n)+.* ([45]) sections on 1 PID: [^-]*"
                                              "-- 8\\.[01] s --\n(.*\n)+.* ([89]) sections on 1 PID: [^-]*\n"
                                              "(.*\n)+.* 10 sections on 1 PID: [^-]*"));
}

TEST(InspectEvery, GivesLinesOfJsonThatSaySo) {
    const TemporaryFile file(tenSeconds());
    const Finished finished = inspect({"--view", "stats", "--json", "--table", "pat", "--every", "4s", file.path()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, MatchesRegex("([^\n]*\"interim\":4[^\n]*\n){3}([^\n]*\"interim\":8[^\n]*\n){3}"
                                              "[^\n]*\"pid_statistics\"[^\n]*\n([^\n]*\n)+"));
    const std::size_t last = finished.output.rfind("\"interim\"");
    EXPECT_THAT(finished.output.substr(last), HasSubstr("\"sections\":10,"));
}

TEST(InspectEvery, GivesInterimResultsOfALiveInput) {
    const Sender sender;
    Running program({"--view", "stats", "--table", "pat", "--every", "0.5", sender.address()});
    sender.waitForListener();
    ASSERT_TRUE(program.waitFor("-- 0."));
    sender.send(datagram());
    ASSERT_TRUE(program.waitFor("7 packets of 188 bytes"));
    ASSERT_TRUE(program.waitFor("-- 1."));
    program.signal(SIGTERM);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, StartsWith("-- 0.5 s --\n0 sections: 0 shown"));
}

TEST(InspectNoData, IsSaidAndOver) {
    const Sender sender;
    Running program({"--view", "tables", "--table", "pat", "--no-data", "0.5s", sender.address()});
    sender.waitForListener();
    ASSERT_TRUE(program.waitFor("! no data for 0."));
    sender.send(datagram());
    ASSERT_TRUE(program.waitFor("= data again after "));
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, MatchesRegex("! no data for 0\\.[5-9] s  20[-0-9]+ [0-9:]+ UTC\n"
                                              "= data again after [0-9.]+ s  20[-0-9]+ [0-9:]+ UTC\n"
                                              "PAT  PID 0x0000(.*\n)+"));
    EXPECT_THAT(finished.output, EndsWith(", 0 discontinuities, 1 time without data\n"));
}

TEST(InspectNoData, IsAFaultInJson) {
    const Sender sender;
    Running program({"--json", "--table", "pat", "--no-data", "0.5s", sender.address()});
    ASSERT_TRUE(program.waitFor("}\n"));
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, StartsWith("{\"type\":\"no_data\",\"schema_version\":1,\"source\":\"" +
                                            sender.address() + "\",\"over\":false,\"duration\":0."));
    EXPECT_THAT(finished.output,
                HasSubstr("\"fault\":\"no_data\",\"severity\":\"error\",\"about\":\"Transport stream\","
                          "\"text\":\"1 time without data\""));
}

TEST(InspectNoData, IsNotSaidWhileDataCome) {
    const Sender sender;
    Running program({"--view", "tables", "--table", "pat", "--no-data", "2s", sender.address()});
    sender.waitForListener();
    for (int count = 0; count < 15; ++count) {
        sender.send(StreamBuilder().null(7).bytes());
        std::this_thread::sleep_for(200ms);
    }
    program.signal(SIGINT);
    EXPECT_THAT(program.finish().output, Not(HasSubstr("data")));
}

TEST(InspectOperation, WrongUsage) {
    EXPECT_EQ(usageError({"--every", "4s", SAMPLE_FILE}),
              "isdbt-inspect: --every: it is for --view stats and --view carousels");
    EXPECT_EQ(usageError({"--no-data", "4s", SAMPLE_FILE}), "isdbt-inspect: --no-data: it is for live inputs");
    EXPECT_EQ(usageError({"--seconds", "0", SAMPLE_FILE}), "isdbt-inspect: --seconds: 0 is no time that passes");
    EXPECT_EQ(usageError({"--seconds", "-1", SAMPLE_FILE}),
              "isdbt-inspect: --seconds: -1 is no time (90, 90s, 1:30 or 00:01:30)");
    EXPECT_EQ(usageError({"--sections", "--seconds", "1", SAMPLE_FILE}),
              "isdbt-inspect: --every, --seconds: sections outside of packets have no time");
}

#include "Running.h"
#include "Sender.h"
#include "Streams.h"

#include <chrono>
#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

using namespace std::chrono_literals;
using testing::HasSubstr;

namespace {

constexpr std::size_t PACKETS_OF_DATAGRAM = 7;

/// A datagram with a PAT.
ByteVector patOf(unsigned version) {
    return StreamBuilder().section(PAT_PID, pat("E6A0 E101", version)).null(6).bytes();
}

std::string heading(const Sender& sender) {
    return "== " + sender.address() + " ==\n";
}

std::string title(unsigned version, unsigned packet) {
    return "PAT  PID 0x0000  version " + std::to_string(version) + "  section 0/0  current  packet " +
           std::to_string(packet) + "\n";
}

/// How often a text comes.
std::size_t countOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

} // namespace

TEST(InspectAtOnce, LiveInputsAreReceivedAndNamed) {
    const Sender one;
    const Sender other;
    Running program({"--view", "tables", "--table", "pat", one.address(), other.address()});
    one.waitForListener();
    other.waitForListener();
    one.send(patOf(1));
    one.send(patOf(2));
    ASSERT_TRUE(program.waitFor("version 2"));
    other.send(patOf(3));
    ASSERT_TRUE(program.waitFor("version 3"));
    one.send(patOf(4));
    ASSERT_TRUE(program.waitFor("version 4"));
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 3); // three versions in three packets with the same continuity_counter
    EXPECT_THAT(finished.output, testing::StartsWith(heading(one) + title(1, 1)));
    EXPECT_EQ(countOf("== ", finished.output), countOf(" ==\n", finished.output));
    EXPECT_THAT(finished.output, HasSubstr("\n\n" + heading(other) + title(3, 1)));
    EXPECT_THAT(finished.output, HasSubstr("\n\n" + heading(one) + title(4, 15)));
}

TEST(InspectAtOnce, LinesOfJsonHaveTheirInput) {
    const Sender one;
    const Sender other;
    Running program({"--json", "--table", "pat", one.address(), other.address()});
    one.waitForListener();
    other.waitForListener();
    one.send(patOf(1));
    other.send(patOf(2));
    ASSERT_TRUE(program.waitFor("\"version\":1,"));
    ASSERT_TRUE(program.waitFor("\"version\":2,"));
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output,
                HasSubstr("{\"type\":\"section\",\"schema_version\":1,\"source\":\"" + one.address() + "\""));
    EXPECT_THAT(finished.output,
                HasSubstr("{\"type\":\"section\",\"schema_version\":1,\"source\":\"" + other.address() + "\""));
}

TEST(InspectAtOnce, OneThatCannotBeReceivedKeepsNoOther) {
    const Sender sender;
    Running program({"--view", "tables", "--table", "pat", "udp://192.0.2.200:5000", sender.address()});
    sender.waitForListener();
    sender.send(patOf(1));
    ASSERT_TRUE(program.waitFor(title(1, 1)));
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors, "isdbt-inspect: udp://192.0.2.200:5000: bind: Cannot assign requested address\n");
    EXPECT_THAT(finished.output, HasSubstr("7 packets of 188 bytes, 1 section on 1 PID: 1 shown"));
}

TEST(InspectAtOnce, ReaderThatGoesAwayEndsThemAll) {
    const Sender one;
    const Sender other;
    Running program({"--view", "tables", one.address(), other.address()});
    one.waitForListener();
    other.waitForListener();
    program.closeOutput();
    one.send(patOf(1));
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
}

TEST(InspectAtOnce, FilesStandBeforeThemAsTheyAreGiven) {
    const TemporaryFile file(patOf(5));
    const Sender one;
    const Sender other;
    Running program({"--view", "tables", "--table", "pat", file.path(), one.address(), other.address()});
    one.waitForListener();
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_THAT(finished.output, testing::StartsWith("== " + file.path() + " ==\n" + title(5, 1)));
    EXPECT_THAT(finished.output, HasSubstr(heading(one) + "1 fault:\n! Transport stream: no PAT came\n0 sections"));
    EXPECT_THAT(finished.output, HasSubstr(heading(other) + "1 fault:\n! Transport stream: no PAT came\n0 sections"));
}

/// A hundred of a megabit a second, of which every datagram is counted.
TEST(InspectAtOnce, LosesNothingOfAHundred) {
    const std::size_t multiplexes = *EMULATOR == '\0' ? 100 : 10;
    constexpr std::size_t DATAGRAMS = 285; // of each, in three seconds
    constexpr auto SPAN = 3s;
    constexpr std::size_t MOST_MEMORY = std::size_t{500} << 20;
    std::deque<Sender> senders(multiplexes);
    std::vector<std::string> arguments{"--view", "stats", "--table", "pat", "--json"};
    for (const Sender& sender : senders) {
        arguments.push_back(sender.address());
    }
    Running program(arguments);
    for (const Sender& sender : senders) {
        sender.waitForListener();
    }
    StreamBuilder stream;
    for (unsigned number = 0; number < 16; ++number) {
        stream.section(PAT_PID, pat("E6A0 E101")).null(PACKETS_OF_DATAGRAM - 1);
    }
    constexpr std::size_t SIZE = PACKETS_OF_DATAGRAM * PACKET_SIZE;
    const auto begin = std::chrono::steady_clock::now();
    for (std::size_t number = 0; number < DATAGRAMS; ++number) {
        const ByteVector datagram = slice(stream.bytes(), number % 16 * SIZE, (number % 16 + 1) * SIZE);
        for (std::size_t at = 0; at < multiplexes; ++at) {
            std::this_thread::sleep_until(begin + SPAN * (number * multiplexes + at) / (DATAGRAMS * multiplexes));
            senders[at].send(datagram);
        }
    }
    std::this_thread::sleep_for(500ms);
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0) << finished.errors;
    std::map<std::string, std::string> counts;
    std::istringstream lines(finished.output);
    for (std::string line; std::getline(lines, line);) {
        const nlohmann::json object = nlohmann::json::parse(line);
        if (object["type"] == "pid_statistics") {
            counts[object["source"]] +=
                object["packets"].dump() + " packets, " + object["discontinuities"].dump() + " lost, ";
        } else if (object["type"] == "table_statistics") {
            counts[object["source"]] += object["sections"].dump() + " sections";
        }
    }
    EXPECT_EQ(counts.size(), multiplexes);
    for (const auto& [input, count] : counts) {
        EXPECT_EQ(count, "285 packets, 0 lost, 285 sections") << input;
    }
    EXPECT_LT(program.memory(), MOST_MEMORY);
}

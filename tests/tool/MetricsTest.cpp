#include "Client.h"
#include "Running.h"
#include "Sender.h"
#include "Streams.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

using namespace std::chrono_literals;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace {

/// Asks until the answer has a text.
std::string waitFor(in_port_t port, const std::string& text) {
    std::string answer;
    for (int round = 0; round < 300 && answer.find(text) == std::string::npos; ++round) {
        answer = get(port, "/metrics");
        std::this_thread::sleep_for(100ms);
    }
    return answer;
}

/// A value behind its labels.
std::string value(const std::string& answer, const std::string& metric) {
    const std::size_t at = answer.find('\n' + metric + ' ');
    const std::size_t begin = at + metric.size() + 2;
    return at == std::string::npos ? "" : answer.substr(begin, answer.find('\n', begin) - begin);
}

} // namespace

TEST(InspectMetrics, AreServedWhileALiveInputIsRead) {
    const Sender sender;
    const in_port_t port = Port::free();
    Running program({"--view", "stats", "--metrics", std::to_string(port), sender.address()});
    sender.waitForListener();
    const std::string source = R"(source=")" + sender.address() + '"';
    EXPECT_EQ(value(waitFor(port, "isdbt_up{"), "isdbt_up{" + source + "}"), "1");
    sender.send(StreamBuilder()
                    .section(PAT_PID, pat("E6A0 E101"))
                    .section(PAT_PID, pat("E6A0 E101"))
                    .section(PAT_PID, longSection(0x00, {}, hex("0001 E100 00")))
                    .lose(PAT_PID, 1)
                    .section(PAT_PID, pat("E6A0 E102", 1))
                    .null(3)
                    .bytes());
    const std::string answer = waitFor(port, "isdbt_packets_total{" + source + "} 7\n");
    EXPECT_THAT(answer, testing::StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(answer, HasSubstr("\n# TYPE isdbt_packets_total counter\n"));
    EXPECT_THAT(answer, HasSubstr("\n# TYPE isdbt_up gauge\n"));
    const std::string pid = "{" + source + R"(,pid="0x0000"})";
    const std::string table = "{" + source + R"(,pid="0x0000",table="PAT"})";
    EXPECT_EQ(value(answer, "isdbt_pid_packets_total" + pid), "4");
    EXPECT_EQ(value(answer, "isdbt_discontinuities_total" + pid), "1");
    EXPECT_EQ(value(answer, "isdbt_sections_total" + table), "4");
    EXPECT_EQ(value(answer, "isdbt_distinct_sections_total" + table), "3");
    EXPECT_EQ(value(answer, "isdbt_rejected_total" + table), "1");
    EXPECT_EQ(value(answer, "isdbt_crc_errors_total" + table), "0");
    EXPECT_EQ(value(answer, "isdbt_version_changes_total" + table), "1");
    EXPECT_NEAR(std::stod(value(answer, "isdbt_table_last_seen_timestamp_seconds" + table)),
                static_cast<double>(std::time(nullptr)), 60);
    program.signal(SIGINT);
    EXPECT_EQ(program.finish().status, 3);
}

TEST(InspectMetrics, OfSeveralInputsStandBesideEachOther) {
    const Sender one;
    const Sender other;
    const in_port_t port = Port::free();
    Running program(
        {"--view", "stats", "--metrics", "127.0.0.1:" + std::to_string(port), one.address(), other.address()});
    other.waitForListener();
    other.send(StreamBuilder().null(7).bytes());
    const std::string answer = waitFor(port, "isdbt_packets_total{source=\"" + other.address() + "\"} 7\n");
    EXPECT_EQ(value(answer, "isdbt_packets_total{source=\"" + one.address() + "\"}"), "0");
    EXPECT_EQ(value(answer, "isdbt_packets_total{source=\"" + other.address() + "\"}"), "7");
    program.signal(SIGINT);
    program.finish();
}

TEST(InspectMetrics, HaveTheSilenceOfALiveInput) {
    const Sender sender;
    const in_port_t port = Port::free();
    Running program({"--view", "stats", "--no-data", "0.5", "--metrics", std::to_string(port), sender.address()});
    const std::string alarm = "isdbt_alarm_active{source=\"" + sender.address() + "\",check=\"no_data\"} ";
    EXPECT_THAT(waitFor(port, alarm + "1\n"), HasSubstr(alarm + "1\n"));
    sender.send(StreamBuilder().null(7).bytes());
    EXPECT_THAT(waitFor(port, alarm + "0\n"), HasSubstr(alarm + "0\n"));
    program.signal(SIGINT);
    EXPECT_EQ(program.finish().status, 3);
}

/// Names are the station's: whoever sends them must not fill a data base.
TEST(InspectMetrics, HaveNoNamesFromTheAir) {
    const in_port_t port = Port::free();
    Running program({"--view", "stats", "--metrics", std::to_string(port), "-"});
    program.write(sampleStream());
    program.write(sampleStream());
    const std::string answer = waitFor(port, "isdbt_sections_total{source=\"standard input\",pid=\"0x0011\"");
    EXPECT_THAT(answer, HasSubstr("table=\"SDT\""));
    EXPECT_THAT(answer, Not(ContainsRegex("Mar|HD")));
    program.endInput();
    program.finish();
}

TEST(InspectMetrics, TakeAnAddress) {
    EXPECT_THAT(inspect({"--metrics", "x", SAMPLE_FILE}).errors, HasSubstr("--metrics: x: a port is missing"));
    EXPECT_THAT(inspect({"--metrics", ":9464", SAMPLE_FILE}).errors, HasSubstr("--metrics: :9464 is no address"));
    EXPECT_THAT(inspect({"--metrics", "host:9464", SAMPLE_FILE}).errors, HasSubstr("--metrics: host:9464: host is no"));
    EXPECT_EQ(inspect({"--metrics", "239.1.1.1:9464", SAMPLE_FILE}).status, 2);
}

TEST(InspectMetrics, NeedAFreePort) {
    const Port taken;
    const Finished finished = inspect({"--metrics", std::to_string(taken.number()), SAMPLE_FILE});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.output, "");
    EXPECT_THAT(finished.errors, HasSubstr("isdbt-inspect: --metrics: 127.0.0.1:" + std::to_string(taken.number()) +
                                           " cannot be listened on\n"));
}

TEST(InspectMetrics, AskForNothingElse) {
    const in_port_t port = Port::free();
    Running program({"--view", "stats", "--metrics", std::to_string(port), "-"});
    ASSERT_THAT(waitFor(port, "200 OK"), HasSubstr("200 OK"));
    EXPECT_THAT(get(port, "/etc/passwd"), HasSubstr("404"));
    EXPECT_THAT(get(port, "/"), HasSubstr("404"));
}

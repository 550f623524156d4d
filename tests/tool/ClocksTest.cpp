#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr unsigned EIT_PID = 0x0012;
constexpr unsigned CLOCK_PID = 0x0131;
constexpr QUOR_U8 EIT = 0x4E;

constexpr const char* AHEAD = "! Time: the clock of the TOT is three hours ahead of that of the EIT";
constexpr const char* BEHIND = "! Time: the clock of the TOT is three hours behind that of the EIT";
constexpr const char* NOTHING = "";

/// On 2025-06-15. @param time "150000"
ByteVector tot(const std::string& time) {
    return shortSection(TOT, hex("EDA9" + time + "F000"));
}

/// What is on the air. @param events each of a service, "0001 EDA9143000 010000 8000"
ByteVector eit(const std::string& events, LongHeader service = named(0xE6A0), QUOR_U8 tableId = EIT) {
    return longSection(tableId, service, hex("0735 0735 00 4E" + events));
}

/// An event of that day.
/// @param time "143000"
std::string event(const std::string& time, const std::string& duration = "010000") {
    return "0001 EDA9" + time + duration + "8000";
}

/// What is said in the end, at three in the afternoon.
std::string saidOf(StreamBuilder stream) {
    Start start;
    start.input = stream.section(TOT_PID, tot("150000")).bytes();
    const Finished finished = inspect({"--view", "diff", "--table", "tot", "-"}, start);
    const std::size_t begin = finished.output.find("! Time: ");
    EXPECT_EQ(finished.status, begin == std::string::npos ? 0 : 3);
    return begin == std::string::npos ? NOTHING
                                      : finished.output.substr(begin, finished.output.find('\n', begin) - begin);
}

/// The same with one section before it.
std::string saidBehind(const ByteVector& section, unsigned pid = EIT_PID) {
    return saidOf(StreamBuilder().section(pid, section));
}

/// Who is told so would otherwise have been told that the clock is ahead.
std::string saidBesideAnEarlyEvent(const std::string& other) {
    return saidOf(StreamBuilder().section(EIT_PID, eit(event("113000"))).section(EIT_PID, eit(other, named(0xE6B8))));
}

} // namespace

TEST(InspectClocks, AreOneWhenTheTimeLiesInAPresentEvent) {
    EXPECT_EQ(saidOf({}), NOTHING);
    EXPECT_EQ(saidBehind(eit(event("143000"))), NOTHING);
    EXPECT_EQ(saidBesideAnEarlyEvent(event("143000")), NOTHING);
}

TEST(InspectClocks, DifferWhenItDoesSoThreeHoursEarlierOrLater) {
    EXPECT_EQ(saidBehind(eit(event("113000"))), AHEAD);
    EXPECT_EQ(saidBehind(eit(event("173000"))), BEHIND);
    EXPECT_EQ(saidBehind(eit(event("113000")), 0x0026), AHEAD);
    EXPECT_EQ(saidBehind(eit(event("113000")), 0x0027), AHEAD);
}

TEST(InspectClocks, TellNothingWhenNeitherFits) {
    EXPECT_EQ(saidBehind(eit(event("123000"))), NOTHING);
    EXPECT_EQ(saidBesideAnEarlyEvent(event("173000")), NOTHING);
}

/// Stations are not on time.
TEST(InspectClocks, HaveFiveMinutesOfTolerance) {
    EXPECT_EQ(saidBesideAnEarlyEvent(event("150500")), NOTHING);
    EXPECT_EQ(saidBesideAnEarlyEvent(event("150501")), AHEAD);
    EXPECT_EQ(saidBesideAnEarlyEvent(event("135501")), NOTHING);
    EXPECT_EQ(saidBesideAnEarlyEvent(event("135500")), AHEAD);
    EXPECT_EQ(saidBehind(eit(event("120500"))), AHEAD);
    EXPECT_EQ(saidBehind(eit(event("120501"))), NOTHING);
}

TEST(InspectClocks, AreNotReadFromEventsWithoutATime) {
    EXPECT_EQ(saidBehind(eit("0001 FFFFFFFFFF 010000 8000")), NOTHING);
    EXPECT_EQ(saidBehind(eit(event("113000", "FFFFFF"))), NOTHING);
    EXPECT_EQ(saidBehind(eit(event("11300A"))), NOTHING);
    EXPECT_EQ(saidBehind(eit("0001 EDA9113000 0100")), NOTHING); // ends too early
    EXPECT_EQ(saidBehind(longSection(EIT, named(0xE6A0), {})), NOTHING);
}

TEST(InspectClocks, AreNotReadFromOtherSections) {
    LongHeader following = named(0xE6A0);
    following.section = 1;
    following.last = 1;
    LongHeader next = named(0xE6A0);
    next.current = false;
    ByteVector damaged = eit(event("113000"));
    damaged.back() ^= 1U;
    EXPECT_EQ(saidBehind(eit(event("113000"), following)), NOTHING);
    EXPECT_EQ(saidBehind(eit(event("113000"), next)), NOTHING);
    EXPECT_EQ(saidBehind(eit(event("113000"), named(0xE6A0), 0x4F)), NOTHING); // of another transport stream
    EXPECT_EQ(saidBehind(eit(event("113000"), named(0xE6A0), 0x50)), NOTHING);
    EXPECT_EQ(saidBehind(damaged), NOTHING);
    EXPECT_EQ(saidBehind(shortSection(EIT, fill(30, 0))), NOTHING);
    EXPECT_EQ(saidBehind(shortSection(EIT, {})), NOTHING);
}

TEST(InspectClocks, AreReadFromWhatIsOnTheAirLast) {
    StreamBuilder stream;
    stream.section(EIT_PID, eit(event("113000")));
    StreamBuilder pause = stream;
    EXPECT_EQ(saidOf(pause.section(EIT_PID, eit(""))), NOTHING);
    EXPECT_EQ(saidOf(stream.section(EIT_PID, eit(event("173000"), named(0xE6A0, 1)))), BEHIND);
}

/// An EIT that ceased says nothing of a time hours later.
TEST(InspectClocks, AreComparedWithinFiveMinutes) {
    StreamBuilder stream; // one packet for each second
    stream.clock(CLOCK_PID, 0).clock(CLOCK_PID, 27000000).section(EIT_PID, eit(event("113000"))).null(299);
    EXPECT_EQ(saidOf(stream), AHEAD);
    EXPECT_EQ(saidOf(stream.null(1)), NOTHING);
}

TEST(InspectClocks, DoNotMakeAnotherTableKnown) {
    Start start;
    start.input = StreamBuilder().section(EIT_PID, eit(event("113000"))).section(TOT_PID, tot("150000")).bytes();
    EXPECT_EQ(inspect({"--view", "tables", "--table", "tot", "--width", "200", "-"}, start).output,
              "TOT  PID 0x0014  packet 2\n"
              "  unix_time  1749999600 = 2025-06-15 15:00:00 (UTC-3 assumed)\n"
              "\n"
              "1 fault:\n"
              "! Time: the clock of the TOT is three hours ahead of that of the EIT\n"
              "2 packets of 188 bytes, 1 section on 1 PID: 1 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n");
    EXPECT_THAT(inspect({"--json", "--table", "tot", "-"}, start).output,
                EndsWith(R"({"type":"fault","schema_version":1,"source":"standard input","id":"9298ac34db58a787",)"
                         R"("fault":"clocks_differ","severity":"warning",)"
                         R"("about":"Time","text":"the clock of the TOT is three hours ahead of that of the EIT",)"
                         R"("pid":20,"table":"TOT","table_id":115,"table_id_extension":0,"packet":2,"offset":188,)"
                         R"("seconds":null,"time":null,"time_source":null})"
                         "\n"));
    EXPECT_THAT(inspect({"-"}, start).output,
                HasSubstr("\nTime  2025-06-15 15:00:00 (UTC-3 assumed)\n"
                          "   ! the clock of the TOT is three hours ahead of that of the EIT\n"));
}

namespace {

/// Seconds of a PCR each 50 ms and a PAT, a TOT and video beside it, 1000 packets each; those of one part are not sent.
ByteVector withGap(unsigned milliseconds, unsigned gapBegin, unsigned gapEnd) {
    StreamBuilder part;
    for (unsigned at = 0; at < milliseconds; at += 10) {
        if (at % 50 == 0) {
            part.clock(CLOCK_PID, std::uint64_t{27000} * at);
        } else {
            part.null(1);
        }
        part.section(PAT_PID, pat("")).section(TOT_PID, tot("150000")).proceed(0x0111, {});
        if (at + 10 == gapBegin) {
            part.lose(PAT_PID, (gapEnd - gapBegin) / 10).lose(TOT_PID, (gapEnd - gapBegin) / 10);
            part.lose(0x0111, (gapEnd - gapBegin) / 10);
            at = gapEnd - 10;
        }
    }
    return part.bytes();
}

} // namespace

/// Three seconds are cut out of a stream whose PCRs go on.
TEST(InspectClocks, CountTheTimeOfLostPackets) {
    Start start;
    start.input = withGap(8000, 2000, 5000);
    const std::string output = inspect({"--view", "stats", "--width", "200", "-"}, start).output;
    EXPECT_THAT(output, HasSubstr("\n8.0"));
    EXPECT_THAT(output, HasSubstr(" by the stream's clock"));
}

TEST(InspectClocks, AreGivenByTheBitRate) {
    Start start;
    start.input = StreamBuilder().null(999).section(TOT_PID, tot("150000")).bytes();
    EXPECT_THAT(inspect({"--bit-rate", "1504k", "--table", "tot", "--view", "tables", "-"}, start).output,
                HasSubstr("TOT  PID 0x0014  packet 1000  0.999 s\n"));
    EXPECT_EQ(inspect({"--bit-rate", "0", "-"}, start).status, 2);
    EXPECT_EQ(inspect({"--bit-rate", "1504k", "--sections", "-"}, start).status, 2);
}

#include "Process.h"
#include "Running.h"
#include "Sender.h"
#include "Streams.h"
#include "support/RecordedFolder.h"

#include <filesystem>
#include <fmt/format.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

constexpr unsigned CLOCK_PID = 0x0100;
constexpr std::uint64_t TENTH = 2700000; // of a second, in ticks of 27 MHz

/// A clock, and what is carried beside it in each tenth of a second.
ByteVector timed(unsigned tenths, const std::function<void(StreamBuilder&, unsigned)>& carry) {
    StreamBuilder stream;
    for (unsigned tenth = 0; tenth < tenths; ++tenth) {
        stream.clock(CLOCK_PID, tenth * TENTH);
        const std::size_t before = stream.bytes().size();
        carry(stream, tenth);
        stream.null(5 - (stream.bytes().size() - before) / PACKET_SIZE);
    }
    return stream.bytes();
}

/// A PAT that is gone from second 2 to 6.
ByteVector withoutPatForFourSeconds() {
    return timed(120, [](StreamBuilder& stream, unsigned tenth) {
        if (tenth < 20 || tenth >= 60) {
            stream.section(PAT_PID, pat("0000 E010"));
        }
    });
}

const char* const ONLY_THE_PAT = R"({
    "hold": {"seconds": 3, "source": "house rule 1"},
    "settle": {"seconds": 0.5, "source": "house rule 1"},
    "checks": {
        "pat_interval": {
            "warn": {"seconds": 0.25, "source": "proposal"},
            "alarm": {"seconds": 0.95, "source": "house rule 2"}
        },
        "pcr_accuracy": {"alarm": {"source": "TR 101 290 2.4"}},
        "nit_interval": {"alarm": {"seconds": 10, "source": "TR 101 290 3.1.a"}}
    }
})";

Finished inspectHeld(const std::string& view, const std::string& limits, const ByteVector& stream,
                     std::vector<std::string> more = {}) {
    const TemporaryFile profile(text(limits));
    const TemporaryFile file(stream);
    more.insert(more.end(), {"--view", view, "--table", "pat", "--limits", profile.path(), file.path()});
    return inspect(more);
}

TEST(Limits, AreSaidWhenTheyAreBrokenAndWhenTheyHoldAgain) {
    for (const char* const view : {"tables", "diff", "stats"}) {
        const Finished finished = inspectHeld(view, ONLY_THE_PAT, withoutPatForFourSeconds());
        EXPECT_EQ(finished.status, 3);
        EXPECT_EQ(finished.errors, "");
        EXPECT_THAT(finished.output, HasSubstr("? no PAT for 0.283 s (limit 0.25 s, proposal)  packet "));
        EXPECT_THAT(finished.output, HasSubstr("! no PAT for 0.983 s (limit 0.95 s, house rule 2)  packet "));
        EXPECT_THAT(finished.output, HasSubstr("= PAT came again after 4.1 s  packet "));
    }
}

TEST(Limits, AreFaultsInTheTree) {
    const Finished finished = inspectHeld("tree", ONLY_THE_PAT, withoutPatForFourSeconds());
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("no PAT for 4.1 s (limit 0.95 s, house rule 2)\n"));
    EXPECT_THAT(finished.output, Not(HasSubstr("came again")));
}

TEST(Limits, EndWithATableOfWhatWasMeasured) {
    const Finished finished = inspectHeld("stats", ONLY_THE_PAT, withoutPatForFourSeconds());
    EXPECT_THAT(finished.output, HasSubstr("check        TR 101 290 limit (s)   result\n"
                                           "pat_interval 1.3.a      0.25*, 0.95 1 alarm\n"));
}

TEST(Limits, AreLinesInJson) {
    const std::string lines = inspectHeld("diff", ONLY_THE_PAT, withoutPatForFourSeconds(), {"--json"}).output;
    EXPECT_THAT(lines, ContainsRegex(R"("event":"begin",.*"check":"pat_interval","indicator":"1.3.a",)"
                                     R"("severity":"warning","text":"no PAT for 0.283 s )"));
    EXPECT_THAT(lines, HasSubstr(R"("pid":0,"table":"PAT","table_id":0,"table_id_extension":null,"packet":)"));
    EXPECT_THAT(lines, HasSubstr(R"("limit":0.25,"limit_source":"proposal","proposal":true,"count":1,"worst":0.2)"));
    EXPECT_THAT(lines,
                ContainsRegex(R"("event":"worse",.*"check":"pat_interval","indicator":"1.3.a","severity":"error")"));
    EXPECT_THAT(lines, ContainsRegex(R"("event":"end",.*"check":"pat_interval","indicator":"1.3.a",)"
                                     R"("severity":"error","text":"PAT came again after 4.1 s")"));
    EXPECT_THAT(lines, HasSubstr(R"("type":"fault")"));
    EXPECT_THAT(lines, HasSubstr(R"("fault":"pat_interval","severity":"error")"));
}

/// What the clock itself finds has a time, too.
TEST(Limits, TellWhenAClockJumps) {
    const TemporaryFile file(timed(60, [](StreamBuilder& stream, unsigned tenth) {
        if (tenth == 10) {
            stream.section(TOT_PID, shortSection(TOT, hex("EDA9150000F000")));
        } else if (tenth == 40) {
            stream.clock(CLOCK_PID, tenth * TENTH + 100 * TENTH);
        }
    }));
    const std::string lines = inspect({"--view", "diff", "--json", "--limits", "always", file.path()}).output;
    EXPECT_THAT(inspect({"--view", "diff", "--limits", "always", file.path()}).output,
                ContainsRegex("! PCR on PID 0x0100 jumps [^\n]* s  2025-06-15 18:00:0[23] UTC\n"));
    EXPECT_THAT(lines, ContainsRegex(R"("check":"pcr_jump",.*"time":"2025-06-15T18:00:0[34]\.[0-9]*Z","time_source")"));
}

/// In Japan, as the NIT says only later.
TEST(Limits, TellTheTimeOfAStationThatIsRecognisedLater) {
    const TemporaryFile file(timed(60, [](StreamBuilder& stream, unsigned tenth) {
        if (tenth == 10) {
            stream.section(TOT_PID, shortSection(TOT, hex("EDA9150000F000")));
        } else if (tenth == 20) {
            stream.section(0x0010, longSection(NIT, named(0x7FE8), hex("F000 F006 7FE8 7FE8 F000")));
        }
    }));
    const std::string output = inspect({"--view", "stats", file.path()}).output;
    EXPECT_THAT(output, HasSubstr("\n2025-06-15T05:59:58."));
    EXPECT_THAT(output, HasSubstr("Z to 2025-06-15T06:00:0"));
}

TEST(Limits, AreResultsInJson) {
    const std::string lines = inspectHeld("stats", ONLY_THE_PAT, withoutPatForFourSeconds(), {"--json"}).output;
    EXPECT_THAT(
        lines, HasSubstr(R"("check":"pat_interval","indicator":"1.3.a","what":"PAT","limits":"0.25*, 0.95",)"
                         R"("result":"alarm","alarms":1,"warnings":0,"remarks":0,"why_not_measured":null,"seconds":)"));
    EXPECT_THAT(
        lines,
        HasSubstr(
            R"("result":"not_measured","alarms":0,"warnings":0,"remarks":0,"why_not_measured":"packets come without )"));
    EXPECT_THAT(
        lines,
        HasSubstr(
            R"("result":"not_measured","alarms":0,"warnings":0,"remarks":0,"why_not_measured":"none came","seconds":)"));
}

TEST(Limits, CountWarningsByThemselves) {
    const ByteVector stream = timed(120, [](StreamBuilder& packets, unsigned tenth) {
        if (tenth < 20 || (tenth >= 24 && tenth < 80) || tenth >= 100) {
            packets.section(PAT_PID, pat("0000 E010"));
        }
    });
    std::string limits = ONLY_THE_PAT;
    limits.replace(limits.find(": 3,"), 4, ": 1,"); // else the two would be one
    EXPECT_THAT(inspectHeld("stats", limits, stream).output, HasSubstr("0.25*, 0.95 1 alarm, 1 warning\n"));
    EXPECT_THAT(inspectHeld("stats", limits, stream, {"--json"}).output,
                HasSubstr(R"("result":"alarm","alarms":1,"warnings":1,"remarks":0,)"));
    const ByteVector begin = slice(stream, 0, stream.size() / 2);
    EXPECT_THAT(inspectHeld("stats", limits, begin).output, HasSubstr("0.25*, 0.95 1 warning\n"));
    EXPECT_THAT(inspectHeld("stats", limits, begin, {"--json"}).output,
                HasSubstr(R"("result":"warning","alarms":0,"warnings":1,"remarks":0,)"));
}

/// What an alarm says and what the tables show at the end is one fault.
TEST(Limits, SayNoFaultTwice) {
    const TemporaryFile file(timed(60, [](StreamBuilder& stream, unsigned tenth) {
        stream.section(PAT_PID, pat("0000 E010 E6A0 E101"));
        stream.section(0x0010, longSection(NIT, named(0x0001), hex("F000 F006 0735 0001 F000")));
        stream.section(0x0011, sdt(tenth < 30 ? "E6A0 FD 8000" : "E6A0 FC 8000"));
    }));
    const std::string lines = inspect({"--json", "--limits", "isdbt", file.path()}).output;
    EXPECT_THAT(lines, HasSubstr(R"("fault":"silent_change")"));
    EXPECT_THAT(lines, Not(HasSubstr("changed_without_new_version")));
    EXPECT_THAT(lines, HasSubstr(R"("fault":"original_network")"));
    EXPECT_THAT(lines, Not(HasSubstr("networks_differ")));
    const std::string withoutLimits = inspect({"--json", file.path()}).output;
    EXPECT_THAT(withoutLimits, HasSubstr(R"("fault":"changed_without_new_version")"));
    EXPECT_THAT(withoutLimits, HasSubstr(R"("fault":"networks_differ")"));
}

/// Seven times as many packets come from one PCR to the next, in the same time.
TEST(Limits, AreNotBrokenByAHigherRate) {
    StreamBuilder stream;
    for (unsigned tenth = 0; tenth < 60; ++tenth) {
        const std::size_t between = tenth < 30 ? 2 : 20;
        stream.clock(CLOCK_PID, tenth * TENTH).null(between).section(PAT_PID, pat("0000 E010")).null(between);
    }
    const Finished finished = inspectHeld("stats", ONLY_THE_PAT, stream.bytes());
    EXPECT_THAT(finished.output, HasSubstr("0.25*, 0.95 ok\n"));
    EXPECT_THAT(finished.output, Not(HasSubstr("? no PAT")));
}

/// A twentieth of a second is missing, the PAT that was in it, too.
TEST(Limits, TellOfOneLossOnce) {
    const auto carry = [](StreamBuilder& stream, unsigned tenth) {
        if (tenth % 3 == 0) {
            stream.section(PAT_PID, pat("0000 E010"));
        }
        for (const unsigned pid : {0x0111U, 0x0112U, 0x0113U}) {
            stream.proceed(pid, ByteVector(184, static_cast<QUOR_U8>(tenth)));
        }
    };
    const ByteVector whole = timed(120, carry);
    const auto at = [](std::size_t tenth, std::size_t packet) { return (tenth * 6 + packet) * PACKET_SIZE; };
    const ByteVector damaged = join({slice(whole, 0, at(60, 1)), slice(whole, at(60, 4), whole.size())});
    const TemporaryFile profile(text(R"({"based_on": "always", "checks": {
        "continuity": {"alarm": {"source": "me"}},
        "pat_interval": {"alarm": {"seconds": 0.4, "source": "me"}}}})"));
    const TemporaryFile file(damaged);
    const std::string lines =
        inspect({"--view", "diff", "--table", "pat", "--limits", profile.path(), file.path()}).output;
    EXPECT_THAT(lines, HasSubstr("! at least 3 packets of 3 PIDs lost at once (ISO/IEC 13818-1 2.4.3.3)  packet "));
    EXPECT_THAT(lines, Not(HasSubstr("wrong continuity_counter")));
    EXPECT_THAT(lines, Not(HasSubstr("no PAT")));
}

/// All that does not come then is not told beside it.
TEST(Limits, SayOnceThatNothingComesLive) {
    const Sender sender;
    Running running({"--view", "stats", "--table", "pat", "--limits", "isdbt", sender.address()});
    sender.waitForListener();
    const ByteVector sample = sampleStream();
    const auto send = [&](std::size_t from, std::size_t to) {
        for (std::size_t at = from; at < to; ++at) {
            sender.send(slice(sample, at * 6 * PACKET_SIZE, (at + 1) * 6 * PACKET_SIZE));
        }
    };
    send(0, 40);
    ASSERT_TRUE(running.waitFor("! no packets for 1"));
    send(40, 80);
    ASSERT_FALSE(running.output().empty());
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    running.signal(SIGTERM);
    const std::string output = running.finish().output;
    EXPECT_THAT(output, HasSubstr("\nno_packets"));
    EXPECT_THAT(output, HasSubstr("\n1 fault:\n"));
}

TEST(Limits, AreNoneUnlessTheyAreAskedFor) {
    const TemporaryFile file(withoutPatForFourSeconds());
    const Finished finished = inspect({"--view", "stats", "--table", "pat", file.path()});
    EXPECT_THAT(finished.output, Not(HasSubstr("no PAT")));
    EXPECT_THAT(finished.output, Not(HasSubstr("TR 101 290")));
}

TEST(Limits, HaveToBeUnderstood) {
    const TemporaryFile profile(text("{\"checks\": {\"pat\": {}}}"));
    const Finished finished = inspect({"--limits", profile.path(), SAMPLE_FILE});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.errors, HasSubstr("--limits: " + profile.path() + ": expected \"hold\""));
    EXPECT_THAT(inspect({"--limits", "atsc", SAMPLE_FILE}).errors,
                HasSubstr("atsc: neither a file with limits nor one of always, dvb, isdbt"));
    EXPECT_THAT(inspect({"--limits", "dvb", "--sections", SAMPLE_FILE}).errors,
                HasSubstr("--limits: sections outside of packets have no time"));
}

TEST(Limits, FindNothingInTheSample) {
    const Finished finished = inspect({"--limits", "isdbt", "--json", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, Not(HasSubstr(R"("type":"alarm")")));
}

class LimitsOfRecordings : public RecordedTest {};

/// The alarms of a recording that the page has, in backquotes, and why they are right.
std::vector<std::string> alarmsOnPage(const std::string& name) {
    const std::string page = readText(LIMITS_PAGE);
    const std::size_t row = page.find("\n| `" + name + "` | ");
    std::vector<std::string> alarms;
    if (row == std::string::npos) {
        return alarms;
    }
    const std::size_t begin = page.find(" | ", row) + 3;
    const std::string cell = page.substr(begin, page.find(" | ", begin) - begin);
    for (std::size_t open = cell.find('`'); open != std::string::npos; open = cell.find('`', open)) {
        const std::size_t close = cell.find('`', open + 1);
        alarms.push_back(cell.substr(open + 1, close - open - 1));
        open = close + 1;
    }
    return alarms;
}

std::size_t countOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

/// Each recording raises the alarms that the page explains, and no others.
TEST_F(LimitsOfRecordings, AreBrokenAsThePageSays) {
    unsigned recordings = 0;
    for (const char* const folder : {"/streams", "/carousel"}) {
        for (const auto& entry : std::filesystem::directory_iterator(std::string(TEST_DATA) + folder)) {
            if (entry.path().extension() != ".ts") {
                continue;
            }
            ++recordings;
            const std::vector<std::string> alarms = alarmsOnPage(entry.path().filename().string());
            const std::string lines = inspect({"--limits", "isdbt", "--json", entry.path().string()}).output;
            EXPECT_EQ(countOf(R"("event":"begin")", lines), alarms.size()) << entry.path();
            for (const std::string& alarm : alarms) {
                EXPECT_THAT(lines, HasSubstr(R"("text":")" + alarm + " (")) << entry.path();
            }
        }
    }
    EXPECT_GT(recordings, 10U);
}

} // namespace

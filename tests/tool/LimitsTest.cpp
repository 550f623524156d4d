#include "Process.h"
#include "Streams.h"
#include "support/RecordedFolder.h"

#include <fmt/format.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST(Limits, AreResultsInJson) {
    const std::string lines = inspectHeld("stats", ONLY_THE_PAT, withoutPatForFourSeconds(), {"--json"}).output;
    EXPECT_THAT(lines, HasSubstr(R"("check":"pat_interval","indicator":"1.3.a","what":"PAT","limits":"0.25*, 0.95",)"
                                 R"("result":"alarm","alarms":1,"why_not_measured":null,"seconds":)"));
    EXPECT_THAT(lines, HasSubstr(R"("result":"not_measured","alarms":0,"why_not_measured":"packets come without )"));
    EXPECT_THAT(lines, HasSubstr(R"("result":"not_measured","alarms":0,"why_not_measured":"none came","seconds":)"));
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

/// Those that are as they were broadcast, whole and without errors.
TEST_F(LimitsOfRecordings, AreKept) {
    for (const char* const name : {"exoplayer-ait.ts", "tsduck-018.ts", "tsduck-032.1.ts", "tsduck-101.ts",
                                   "tsduck-182.1.ts", "tsduck-208.1.ts"}) {
        const Finished finished = inspect({"--limits", "isdbt", "--json", recordedStream(name)});
        EXPECT_THAT(finished.output, Not(HasSubstr(R"("type":"alarm")"))) << name;
    }
}

/// A multiplex from a lab that announces what it does not send.
TEST_F(LimitsOfRecordings, AreBrokenByWhatIsNotSent) {
    const Finished finished = inspect({"--limits", "isdbt", "--json", recordedStream("gr-isdbt-tx.ts")});
    EXPECT_THAT(finished.output, HasSubstr("no PMT of 0x0110 on PID 0x0110"));
}

} // namespace

#include "Process.h"
#include "Streams.h"
#include "support/RecordedFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr unsigned PCR_PID = 0x0100;
constexpr unsigned PMT_PID = 0x0101;
constexpr unsigned OTHER_PID = 0x0321;

constexpr std::uint64_t HUNDREDTH = 270000; ///< of a second, in ticks of 27 MHz

/// A PAT of 16 bytes.
ByteVector pat(unsigned version = 0) {
    LongHeader header;
    header.version = version;
    return longSection(0x00, header, hex("0007 E101"));
}

ByteVector corrupted(ByteVector section) {
    section.back() ^= 0x01U;
    return section;
}

/// A hundred packets in a second: the clock in each tenth of them, something else five packets behind it.
/// @param each void(StreamBuilder&, std::size_t tenth)
template <class Each> StreamBuilder second(const Each& each) {
    StreamBuilder stream;
    for (std::size_t tenth = 0; tenth < 10; ++tenth) {
        stream.clock(PCR_PID, tenth * 10 * HUNDREDTH).null(4);
        each(stream, tenth);
        stream.null(4);
    }
    return stream;
}

/// A minute and ten seconds with the clock in each tenth, and a PAT in the middle between them where there is one.
ByteVector minuteWithPats(bool (*hasPat)(std::size_t tenth)) {
    StreamBuilder stream;
    for (std::size_t tenth = 0; tenth < 700; ++tenth) {
        stream.clock(PCR_PID, tenth * 10 * HUNDREDTH);
        hasPat(tenth) ? stream.section(PAT_PID, pat()) : stream.null(1);
    }
    return stream.bytes();
}

Finished statistics(const ByteVector& stream, std::vector<std::string> options = {}) {
    const TemporaryFile file(stream);
    options.insert(options.end(), {"--view", "stats", file.path()});
    return inspect(options);
}

/// A text with a single blank wherever columns stand apart.
std::string squeezed(const std::string& text) {
    std::string result;
    for (const char each : text) {
        if (each != ' ' || result.empty() || (result.back() != ' ' && result.back() != '\n')) {
            result += each;
        }
    }
    return result;
}

std::string golden(const std::string& name) {
    return readText(std::string(GOLDEN_FOLDER "/") + name);
}

class InspectRecordedStatistics : public RecordedTest {};

} // namespace

/// PATs half a tenth behind each reference, from 0.05 s on; none at 0.45 s, a damaged one at 0.75 s. The first comes
/// before the second reference has told the rate.
TEST(InspectStatistics, CountsIntervalsAndRates) {
    const StreamBuilder stream = second([](StreamBuilder& built, std::size_t tenth) {
        switch (tenth) {
        case 4:
            built.null(1);
            break;
        case 7:
            built.section(PAT_PID, corrupted(pat(1)));
            break;
        case 9:
            built.lose(PAT_PID, 1).section(PAT_PID, pat(1));
            break;
        default:
            built.section(PAT_PID, pat(tenth < 6 ? 0 : 1));
        }
    });
    const Finished finished = statistics(stream.bytes(), {"--width", "120"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    // 0.1 s from 0.05, 0.15, 0.25, 0.55 and 0.85 s on, 0.2 s from 0.35 and 0.65 s on; 9 sections of 16 bytes a second
    EXPECT_EQ(squeezed(finished.output),
              "PID table sections distinct versions version changes CRC errors rejected rejected distinct kbit/s\n"
              "0x0000 PAT 9 2 0-1 1 1 0 0 1.15\n"
              "\n"
              "PID table shortest interval mean interval longest interval from to open at begin open at end\n"
              "0x0000 PAT 0.100 s 0.129 s 0.200 s 0.350 s 0.550 s 0.050 s 0.040 s\n"
              "\n"
              "PID packets share kbit/s lowest highest content\n"
              "0x0000 9 9.00 % 13.54 - - PAT\n"
              "0x0100 10 10.00 % 15.04 - -\n"
              "0x0101 0 0.00 % 0.00 - - no packets: PMT\n"
              "0x1FFF 81 81.00 % 121.82 - - null packets\n"
              "\n"
              "PID discontinuities packets lost announced jumps duplicates transport errors scrambled\n"
              "0x0000 1 >= 1 0 0 0 0\n"
              "\n"
              "PID PCRs mean interval longest interval ended PCR jumps longest of PTSs ended\n"
              "0x0100 10 0.100 s 0.100 s - 0 - -\n"
              "\n"
              "1.000 s by the stream's clock, 150.40 kbit/s\n"
              "3 faults:\n"
              "! Transport stream 0x0001 (1): no NIT came\n"
              "! Transport stream 0x0001 (1): no SDT came\n"
              "! Service 0x0007 (7): no PMT came\n"
              "100 packets of 188 bytes, 9 sections on 1 PID: 2 shown, 0 rejected, 1 CRC error (PID 0x0000), "
              "1 discontinuity (PID\n"
              "0x0000)\n");
}

TEST(InspectStatistics, ATableThatStopsForAWhileIsSeen) {
    const ByteVector stream = minuteWithPats([](std::size_t tenth) { return tenth < 200 || tenth >= 600; });
    EXPECT_THAT(
        squeezed(statistics(stream, {"--width", "120"}).output),
        HasSubstr("\nPID table shortest interval mean interval longest interval from to open at begin open at end\n"
                  "0x0000 PAT 0.100 s 0.234 s 40.100 s 19.950 s 60.050 s 0.050 s 0.000 s\n"));
}

TEST(InspectStatistics, ATableThatStopsForGoodIsSeen) {
    const ByteVector stream = minuteWithPats([](std::size_t tenth) { return tenth < 200; });
    EXPECT_THAT(squeezed(statistics(stream, {"--width", "120"}).output),
                HasSubstr("\n0x0000 PAT 0.100 s 0.100 s > 50.000 s 19.950 s end 0.050 s 50.000 s\n"));
}

TEST(InspectStatistics, ATableThatComesLateIsSeen) {
    const ByteVector stream = minuteWithPats([](std::size_t tenth) { return tenth >= 600; });
    EXPECT_THAT(squeezed(statistics(stream, {"--width", "120"}).output),
                HasSubstr("\n0x0000 PAT 0.100 s 0.100 s > 60.050 s begin 60.050 s 60.050 s 0.000 s\n"));
}

TEST(InspectStatistics, OpenIntervalsHaveAColour) {
    const ByteVector stream = minuteWithPats([](std::size_t tenth) { return tenth < 200; });
    EXPECT_THAT(statistics(stream, {"--color", "always"}).output, HasSubstr("\x1B[33m> 50.000 s\x1B[0m"));
}

/// Each section of a table is repeated for itself, whatever comes between.
TEST(InspectStatistics, IntervalsAreThoseOfAPlaceInATable) {
    const StreamBuilder stream = second([](StreamBuilder& built, std::size_t tenth) {
        LongHeader header;
        header.section = static_cast<QUOR_U8>(tenth % 2);
        header.last = 1;
        built.section(PAT_PID, longSection(0x00, header, {}));
    });
    EXPECT_THAT(squeezed(statistics(stream.bytes()).output),
                HasSubstr("\n0x0000 PAT 0.200 s 0.200 s 0.200 s 0.050 s 0.250 s 0.050 s 0.140 s\n"));
}

/// A TOT says something else each time; its repetitions are counted all the same.
TEST(InspectStatistics, TimeIsDistinctEachTimeAndHasNoVersions) {
    const StreamBuilder stream = second([](StreamBuilder& built, std::size_t tenth) {
        built.section(TOT_PID,
                      shortSection(0x73, join({hex("C079 1245"), {static_cast<QUOR_U8>(tenth)}, hex("F000")})));
    });
    EXPECT_THAT(squeezed(statistics(stream.bytes()).output), HasSubstr("\n0x0014 TOT 10 10 - 0 0 0 0 1.12\n"));
}

TEST(InspectStatistics, AnnouncedVersionIsNoChangeUntilItHolds) {
    LongHeader next;
    next.version = 1;
    next.current = false;
    const ByteVector announced = longSection(0x00, next, hex("0007 E101"));
    StreamBuilder stream;
    stream.section(PAT_PID, pat(0)).section(PAT_PID, announced).section(PAT_PID, pat(0)).section(PAT_PID, announced);
    EXPECT_THAT(squeezed(statistics(stream.bytes()).output), HasSubstr("\n0x0000 PAT 4 2 0-1 0 0 0 0 -\n"));
    stream.section(PAT_PID, pat(1));
    EXPECT_THAT(squeezed(statistics(stream.bytes()).output), HasSubstr("\n0x0000 PAT 5 3 0-1 1 0 0 0 -\n"));
}

/// EITs are looked at no further.
TEST(InspectStatistics, StandardsNameThePidsOfAllMultiplexes) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat()).section(0x0012, longSection(0x4E, {}, hex("0001 0001 00 4E"))).proceed(0x0029, {});
    EXPECT_THAT(squeezed(statistics(stream.bytes()).output),
                HasSubstr("\n0x0000 1 33.33 % - - - PAT\n"
                          "0x0012 1 33.33 % - - - EIT (H-EIT, fixed receivers)\n"
                          "0x0029 1 33.33 % - - - CDT\n"));
}

TEST(InspectStatistics, ProgramMapsNameTheStreams) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat())
        .section(PMT_PID, longSection(0x02, {}, hex("E100 F000  1B E111 F000  90 E112 F000  05 E113 F000")))
        .clock(PCR_PID, 0)
        .proceed(0x0111, {})
        .proceed(0x0112, {})
        .section(0x0113, longSection(0x74, {}, hex("F000 F000")));
    EXPECT_THAT(squeezed(statistics(stream.bytes()).output),
                HasSubstr("PID packets share kbit/s lowest highest content\n"
                          "0x0000 1 16.67 % - - - PAT\n"
                          "0x0100 1 16.67 % - - - PCR\n"
                          "0x0101 1 16.67 % - - - PMT\n"
                          "0x0111 1 16.67 % - - - H.264 video\n"
                          "0x0112 1 16.67 % - - - user private (0x90)\n"
                          "0x0113 1 16.67 % - - - private sections: AIT\n"
                          "\n"
                          "PID PCRs mean interval longest interval ended PCR jumps longest of PTSs ended\n"
                          "0x0100 1 - - - 0 - -\n"
                          "\n"
                          "no clock (PCR) in the stream: intervals and bit rates are unknown\n"));
}

TEST(InspectStatistics, TablesThatTheLibraryDoesNotKnowAreCountedToo) {
    StreamBuilder stream;
    stream.section(OTHER_PID, longSection(0x4A, {}, {})).section(OTHER_PID, longSection(0x4A, {}, {}));
    stream.section(OTHER_PID, corrupted(longSection(0x4A, {}, {})))
        .section(OTHER_PID, corrupted(longSection(0x4B, {}, {})));
    const std::string output = squeezed(statistics(stream.bytes(), {"--pid", "0x321"}).output);
    EXPECT_THAT(output, HasSubstr("\n0x0321 BAT 0x4A 3 1 0 0 1 0 0 -\n\n"));
    EXPECT_THAT(output, HasSubstr("4 sections on 1 PID: 0 shown, 0 rejected, 2 CRC errors (PID 0x0321)"));
}

TEST(InspectStatistics, ShowsOnlyTheTablesThatAreAskedFor) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat()).section(TOT_PID, shortSection(0x73, hex("C079 124530 F000"))).null(2);
    const std::string output = squeezed(statistics(stream.bytes(), {"--table", "tot"}).output);
    EXPECT_THAT(output, HasSubstr("\n0x0014 TOT 1 1 - 0 0 0 0 -\n"
                                  "\n"
                                  "PID packets share kbit/s lowest highest content\n"
                                  "0x0014 1 25.00 % - - - TOT\n\n"));
    EXPECT_THAT(output, Not(HasSubstr("0x0000")));
}

TEST(InspectStatistics, RejectedSectionsAreShownWhenTheyComeAndCounted) {
    StreamBuilder stream;
    const ByteVector refused = longSection(0x02, {}, hex("E111 F000  1B E111 F002 5200"));
    stream.section(PAT_PID, pat()).section(PMT_PID, refused).section(PMT_PID, refused);
    const Finished finished = statistics(stream.bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, StartsWith("PMT  PID 0x0101  version 0  section 0/0  current  packet 2  REJECTED\n"
                                            "  error  ERROR_INVALID_ITEM (0x0A0A)\n"));
    EXPECT_THAT(squeezed(finished.output), HasSubstr("\n0x0101 PMT 2 1 0 0 0 2 1 -\n"));
}

/// What a receiver refuses comes again and again, like all the rest.
TEST(InspectStatistics, RejectedSectionsAreCountedLikeTheOthers) {
    StreamBuilder stream;
    for (int count = 0; count < 30; ++count) {
        stream.section(0x0010, longSection(0x40, {}, hex("F002 4001 F000")));
    }
    EXPECT_THAT(
        squeezed(statistics(stream.bytes(), {"--width", "120"}).output),
        HasSubstr("\nPID table sections distinct versions version changes CRC errors rejected rejected distinct "
                  "kbit/s\n0x0010 NIT 30 1 0 0 0 30 1 -\n"));
}

TEST(InspectStatistics, ShowsWhichVersionsCame) {
    StreamBuilder stream;
    for (const unsigned version : {3U, 4U, 5U, 31U, 0U, 0U}) {
        stream.section(PAT_PID, pat(version));
    }
    EXPECT_THAT(squeezed(statistics(stream.bytes(), {"--width", "120"}).output),
                HasSubstr("\n0x0000 PAT 6 5 0, 3-5, 31 4 0 0 0 -\n"));
}

/// Of the streams that the program map has one came, beside one that it has not.
TEST(InspectStatistics, SaysWhatIsAnnouncedAndDoesNotComeAndWhatComesUnannounced) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat())
        .section(PMT_PID, longSection(0x02, {7}, hex("E100 F000  1B E111 F000  11 E112 F000")))
        .clock(PCR_PID, 0)
        .proceed(0x0111, {})
        .proceed(0x0222, {})
        .proceed(0x0029, {});
    EXPECT_THAT(squeezed(statistics(stream.bytes()).output),
                HasSubstr("0x0029 1 16.67 % - - - CDT\n"
                          "0x0100 1 16.67 % - - - PCR\n"
                          "0x0101 1 16.67 % - - - PMT\n"
                          "0x0111 1 16.67 % - - - H.264 video\n"
                          "0x0112 0 0.00 % - - - no packets: AAC audio in LATM\n"
                          "0x0222 1 16.67 % - - - not announced\n"));
}

/// The program map that did not come may announce it.
TEST(InspectStatistics, NothingIsUnannouncedBeforeAllProgramMapsCame) {
    StreamBuilder stream;
    stream.section(PAT_PID, longSection(0x00, {}, hex("0007 E101 0008 E102")))
        .section(PMT_PID, longSection(0x02, {7}, hex("FFFF F000  1B E111 F000")))
        .proceed(0x0111, {})
        .proceed(0x0222, {});
    EXPECT_THAT(squeezed(statistics(stream.bytes()).output), HasSubstr("0x0102 0 0.00 % - - - no packets: PMT\n"
                                                                       "0x0111 1 25.00 % - - - H.264 video\n"
                                                                       "0x0222 1 25.00 % - - -\n"));
}

TEST(InspectStatistics, TablesOfKeysAnnounceToo) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat())
        .section(0x0001, longSection(0x01, {}, hex("09 04 0005 E501")))
        .section(PMT_PID, longSection(0x02, {7}, hex("FFFF F006 09 04 0005 E502  1B E111 F006 F6 04 0005 E503")))
        .proceed(0x0111, {})
        .proceed(0x0501, {})
        .proceed(0x0502, {})
        .proceed(0x0503, {});
    EXPECT_THAT(squeezed(statistics(stream.bytes()).output), HasSubstr("0x0501 1 14.29 % - - - EMM\n"
                                                                       "0x0502 1 14.29 % - - - ECM\n"
                                                                       "0x0503 1 14.29 % - - - ECM\n"));
}

/// Video of which packets are missing, audio that is marked as damaged, and something that is scrambled.
TEST(InspectStatistics, SaysWhatBecameOfThePacketsOfAllPids) {
    StreamBuilder stream;
    stream.proceed(0x0111, {}).again().lose(0x0111, 3).proceed(0x0111, {});
    stream.proceed(0x0112, {}).patch(1, 0x81).proceed(0x0113, {}).patch(3, 0x90).proceed(0x0114, {});
    const Finished finished = statistics(stream.bytes(), {"--width", "120"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(squeezed(finished.output),
                HasSubstr("\nPID discontinuities packets lost announced jumps duplicates transport errors scrambled\n"
                          "0x0111 1 >= 3 0 1 0 0\n"
                          "0x0112 0 0 0 0 1 0\n"
                          "0x0113 0 0 0 0 0 1\n"
                          "\n"));
}

/// It stands for none.
TEST(InspectStatistics, NullPacketsAreNoPcr) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat())
        .section(PMT_PID, longSection(0x02, {7}, hex("FFFF F000  1B E111 F000")))
        .proceed(0x0111, {})
        .null(1);
    const std::string output = squeezed(statistics(stream.bytes()).output);
    EXPECT_THAT(output, HasSubstr("\n0x1FFF 1 25.00 % - - - null packets\n"));
    EXPECT_THAT(output, Not(HasSubstr("PCR\n")));
}

TEST(InspectStatistics, SaysWhatTimeItWas) {
    const StreamBuilder stream = second([](StreamBuilder& built, std::size_t tenth) {
        tenth == 5 ? built.section(TOT_PID, shortSection(0x73, hex("C079 124530 F000"))) : built.null(1);
    });
    EXPECT_THAT(statistics(stream.bytes()).output, HasSubstr("\n1.000 s by the stream's clock, 150.40 kbit/s\n"
                                                             "1993-10-13T15:45:29.450Z to 1993-10-13T15:45:30.440Z by "
                                                             "the TOT\n"));
    EXPECT_THAT(statistics(stream.bytes(), {"--time-zone", "UTC"}).output,
                HasSubstr("\n1993-10-13T12:45:29.450Z to 1993-10-13T12:45:30.440Z by the TOT\n"));
}

TEST(InspectStatistics, WhatIsNoticedHasAColour) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat(0)).section(PAT_PID, pat(1)).section(PAT_PID, corrupted(pat(1)));
    EXPECT_THAT(
        statistics(stream.bytes(), {"--color", "always", "--width", "80"}).output,
        HasSubstr("\n\x1B[36m0x0000\x1B[0m \x1B[36mPAT\x1B[0m          3        2      0-1       \x1B[33m1\x1B[0m      "
                  "\x1B[1;31m1\x1B[0m        0        0      -\n"));
}

TEST(InspectStatistics, SampleAtEightyColumns) {
    EXPECT_EQ(inspect({"--view", "stats", "--width", "80", SAMPLE_FILE}).output, golden("sample-stats-80.txt"));
}

TEST(InspectStatistics, SampleAtAHundredAndTwentyColumns) {
    EXPECT_EQ(inspect({"--view", "stats", "--width", "120", SAMPLE_FILE}).output, golden("sample-stats-120.txt"));
}

TEST(InspectStatistics, NarrowLinesLeaveOutColumns) {
    EXPECT_THAT(inspect({"--view", "stats", "--width", "46", SAMPLE_FILE}).output,
                StartsWith("                          CRC\n"
                           "PID    table  sections errors rejected kbit/s\n"
                           "0x0000 PAT          20      0        0   1.92\n"));
    EXPECT_THAT(inspect({"--view", "stats", "--width", "40", SAMPLE_FILE}).output,
                StartsWith("                          CRC\n"
                           "PID    table  sections errors rejected\n"
                           "0x0000 PAT          20      0        0\n"));
}

/// The clock comes on PID 0x021E, twenty times a second.
TEST_F(InspectRecordedStatistics, OneSegMultiplexFromALab) {
    const std::string output =
        squeezed(inspect({"--view", "stats", "--width", "80", recordedStream("gr-isdbt-tx.ts")}).output);
    EXPECT_THAT(output, HasSubstr("\n0x0000 PAT 19 1 5 0 0 0 0 2.18\n"
                                  "0x0011 SDT 4 1 5 0 0 0 0 1.16\n"
                                  "0x0218 PMT 9 1 23 0 0 0 0 3.24\n"));
    EXPECT_THAT(output, HasSubstr("\n0x0219 399 18.75 % 307.26 - - H.264 video\n"));
    EXPECT_THAT(output, HasSubstr("\n0x1FFF 1595 74.95 % 1228.3 - - null packets\n"));
    EXPECT_THAT(output, HasSubstr("\n1.953 s by the stream's clock, 1638.7 kbit/s\n"));
}

TEST_F(InspectRecordedStatistics, ItalianMultiplexWithoutAClock) {
    const std::string output =
        squeezed(inspect({"--view", "stats", "--width", "80", recordedStream("tsduck-018.ts")}).output);
    EXPECT_THAT(output, HasSubstr("\n0x0014 0x70 4 4 - 0 0 0 0 -\n"
                                  "0x0014 TOT 3 3 - 0 0 0 0 -\n"));
    EXPECT_THAT(output, HasSubstr("\n0x1EC5 AIT 2 1 0 0 0 2 1 -\n"));
    EXPECT_THAT(output, HasSubstr("\nno clock (PCR) in the stream: intervals and bit rates are unknown\n"));
}

#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

ByteVector pat(const LongHeader& header, const std::string& programs) {
    return longSection(PAT, header, hex(programs));
}

LongHeader version(unsigned number) {
    LongHeader header;
    header.version = number;
    return header;
}

std::size_t occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

} // namespace

TEST(InspectTables, WithTheBytesOnDemand) {
    const ByteVector stream = StreamBuilder().section(PAT_PID, longSection(0x00, {}, hex("0001 E100"))).bytes();
    const Finished finished = inspectBytes(stream, {"--table", "pat", "--bytes"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, testing::HasSubstr("    0x0001 (1)      0x0100 (256)\n"
                                                    "  bytes (16)\n"
                                                    "    0000  00 B0 0D 00 01 C1 00 00 00 01 E1 00 E8 F9 5E 7D\n"
                                                    "\n1 packet of 188 bytes"));
}

TEST(InspectTables, PatIsShownOncePerVersion) {
    StreamBuilder stream;
    for (const unsigned number : {5U, 5U, 6U, 6U, 6U}) {
        stream.section(PAT_PID, pat(version(number), "0001 E100"));
    }
    const Finished finished = inspectOnly("pat", stream.bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, "PAT  PID 0x0000  version 5  section 0/0  current  packet 1\n"
                               "  transport_stream_id  0x0001 (1)\n"
                               "  network_pid          0x0000 (0)\n"
                               "  programs (1)\n"
                               "    program_number  program_map_pid\n"
                               "    0x0001 (1)      0x0100 (256)\n"
                               "\n"
                               "PAT  PID 0x0000  version 6  section 0/0  current  packet 3\n"
                               "  transport_stream_id  0x0001 (1)\n"
                               "  network_pid          0x0000 (0)\n"
                               "  programs (1)\n"
                               "    program_number  program_map_pid\n"
                               "    0x0001 (1)      0x0100 (256)\n"
                               "\n"
                               "5 packets of 188 bytes, 5 sections on 1 PID: 2 shown, 0 rejected, 0 CRC errors, "
                               "0 discontinuities\n");
}

TEST(InspectTables, VersionThatComesBackIsShownAgain) {
    StreamBuilder stream;
    for (const unsigned number : {30U, 31U, 30U}) {
        stream.section(PAT_PID, pat(version(number), ""));
    }
    EXPECT_EQ(occurrences(inspectBytes(stream.bytes()).output, "PAT  PID"), 3U);
}

TEST(InspectTables, PatWithoutProgramsHasAnEmptyList) {
    const Finished finished = inspectBytes(StreamBuilder().section(PAT_PID, pat({}, "")).bytes());
    EXPECT_THAT(finished.output, HasSubstr("  programs (0)\n\n"));
}

TEST(InspectTables, ChangeUnderTheSameVersionIsMarked) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat(version(5), "0001 E100"));
    stream.section(PAT_PID, pat(version(5), "0001 E101"));
    const Finished finished = inspectBytes(stream.bytes());
    EXPECT_THAT(finished.output, StartsWith("PAT  PID 0x0000  version 5  section 0/0  current  packet 1\n"));
    EXPECT_THAT(finished.output, HasSubstr("\nPAT  PID 0x0000  version 5  section 0/0  current  packet 2  "
                                           "CHANGED WITHOUT A NEW VERSION\n"));
    EXPECT_THAT(finished.output, HasSubstr("    0x0001 (1)      0x0101 (257)\n"));
}

TEST(InspectTables, NextVersionStandsBesideTheCurrentOne) {
    LongHeader next = version(6);
    next.current = false;
    StreamBuilder stream;
    stream.section(PAT_PID, pat(version(5), "0001 E100"));
    stream.section(PAT_PID, pat(next, "0001 E101"));
    stream.section(PAT_PID, pat(version(5), "0001 E100"));
    stream.section(PAT_PID, pat(next, "0001 E101"));
    const Finished finished = inspectBytes(stream.bytes());
    EXPECT_EQ(occurrences(finished.output, "PAT  PID"), 2U);
    EXPECT_THAT(finished.output, HasSubstr("\nPAT  PID 0x0000  version 6  section 0/0  not yet current  packet 2\n"));
}

TEST(InspectTables, EachSectionOfATableIsShown) {
    LongHeader first = version(5);
    first.last = 1;
    LongHeader second = first;
    second.section = 1;
    StreamBuilder stream;
    for (int round = 0; round < 2; ++round) {
        stream.section(PAT_PID, pat(first, "0001 E100")).section(PAT_PID, pat(second, "0002 E101"));
    }
    const Finished finished = inspectBytes(stream.bytes());
    EXPECT_EQ(occurrences(finished.output, "PAT  PID"), 2U);
    EXPECT_THAT(finished.output, HasSubstr("version 5  section 0/1  current  packet 1\n"));
    EXPECT_THAT(finished.output, HasSubstr("version 5  section 1/1  current  packet 2\n"));
}

TEST(InspectTables, TotIsShownWheneverItDiffers) {
    StreamBuilder stream;
    for (const char* const time : {"C079 124500", "C079 124500", "C079 124505"}) {
        stream.section(TOT_PID, shortSection(TOT, join({hex(time), hex("F000")})));
    }
    const Finished finished = inspectOnly("tot", stream.bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, "TOT  PID 0x0014  packet 1\n"
                               "  unix_time  750516300 = 1993-10-13 12:45:00 (UTC-3 assumed)\n"
                               "\n"
                               "TOT  PID 0x0014  packet 3\n"
                               "  unix_time  750516305 = 1993-10-13 12:45:05 (UTC-3 assumed)\n"
                               "\n"
                               "3 packets of 188 bytes, 3 sections on 1 PID: 2 shown, 0 rejected, 0 CRC errors, "
                               "0 discontinuities\n");
}

/// The library counts in 32 bits with a sign; the time is right all the same.
TEST(InspectTables, TimeBeyond2038) {
    const Finished finished =
        inspectBytes(StreamBuilder().section(TOT_PID, shortSection(TOT, hex("FFFF 000000 F000"))).bytes());
    EXPECT_THAT(finished.output, HasSubstr("  unix_time  -2139460096 = 2038-04-22 00:00:00 (UTC-3 assumed)\n"));
}

TEST(InspectTables, LocalTimeOffsets) {
    const ByteVector argentina = hex("415247 FF 0300 C079 030000 0300");
    const ByteVector brazil = hex("425241 0C 0300 C079 030000 0300");
    const ByteVector offsets = descriptor(0x58, join({brazil, argentina}));
    const Finished finished = inspectOnly(
        "tot", StreamBuilder().section(TOT_PID, shortSection(TOT, join({hex("C079 124500 F01C"), offsets}))).bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output,
                HasSubstr("  local_time_offset_descriptor (0x58)\n"
                          "    regions (2)\n"
                          "      [0] country_code       \"BRA\"\n"
                          "          country_region_id  3\n"
                          "          local_time_offset  180 min = +03:00\n"
                          "          time_of_change     750481200 s = 1993-10-13 03:00:00\n"
                          "          next_time_offset   180 min = +03:00\n"
                          "      [1] country_code       \"ARG\"\n"
                          "          country_region_id  63\n"
                          "          local_time_offset  -180 min = -03:00\n"
                          "          time_of_change     750481200 s = 1993-10-13 03:00:00\n"
                          "          next_time_offset   -180 min = -03:00\n"
                          "    the receiver reads\n"
                          "      items (2)\n"
                          "        country_code  country_region_id  local_time_offset_polarity  local_time_offset\n"
                          "        \"ARG\"         63                 1 behind                    10800 s = -03:00\n"
                          "        \"BRA\"         3                  0 ahead                     10800 s = +03:00\n"));
}

/// What is broadcast must not steer the terminal.
TEST(InspectTables, ControlCharactersAreEscaped) {
    const ByteVector offsets = descriptor(0x58, hex("1B225C 0D 0300 C079 030000 0300"));
    const Finished finished = inspectBytes(
        StreamBuilder().section(TOT_PID, shortSection(TOT, join({hex("C079 124500 F00F"), offsets}))).bytes());
    EXPECT_THAT(finished.output, HasSubstr("      \"\\x1B\\\"\\\\\"  "));
}

TEST(InspectTables, OthersOnTheSamePidAreSkipped) {
    StreamBuilder stream;
    stream.section(TOT_PID, hex("70 7005 C079 124500")); // TDT: no CRC_32
    stream.section(TOT_PID, shortSection(TOT, hex("C079 124501 F000")));
    const Finished finished = inspectOnly("tot", stream.bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(occurrences(finished.output, "PID 0x"), 1U);
    EXPECT_THAT(finished.output,
                EndsWith("2 sections on 1 PID: 1 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n"));
}

TEST(InspectTables, StreamWithoutTables) {
    const Finished finished = inspectBytes(StreamBuilder().null(10).bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.output, "3 faults:\n"
                               "! Transport stream: no PAT came\n"
                               "! Transport stream: no NIT came\n"
                               "! Transport stream: no SDT came\n"
                               "10 packets of 188 bytes, 0 sections on 0 PIDs: 0 shown, 0 rejected, 0 CRC errors, "
                               "0 discontinuities\n");
}

TEST(InspectTables, PidsOfThePatAreFollowed) {
    const ByteVector pmt = longSection(0x02, {}, hex("E100 F000"));
    StreamBuilder before;
    before.section(0x0100, pmt).section(PAT_PID, pat({}, "0001 E100")).section(0x0100, pmt);
    EXPECT_THAT(inspectBytes(before.bytes()).output, HasSubstr("2 sections on 2 PIDs"));

    StreamBuilder moved;
    moved.section(PAT_PID, pat(version(1), "0001 E100")).section(0x0100, pmt);
    moved.section(PAT_PID, pat(version(2), "0001 E200")).section(0x0100, pmt).section(0x0200, pmt);
    EXPECT_THAT(inspectBytes(moved.bytes()).output, HasSubstr("4 sections on 3 PIDs"));
}

TEST(InspectTables, RejectedSectionSaysWhy) {
    const Finished finished =
        inspectOnly("pat", StreamBuilder().section(PAT_PID, pat(version(5), "0001 E100 0002")).bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output,
                StartsWith("PAT  PID 0x0000  version 5  section 0/0  current  packet 1  REJECTED\n"
                           "  error  ERROR_INVALID_DATA_LENGTH (0x0A03)\n"
                           "  log    ISDBTUtils: TPATTable::parse: Item length not valid: 4 > 2. Aborting!\n"
                           "  bytes (18)\n"
                           "    0000  00 B0 0F 00 01 CB 00 00 00 01 E1 00 00 02 "));
    EXPECT_THAT(finished.output, HasSubstr("\n    0010  "));
    EXPECT_THAT(finished.output, EndsWith("\n\n1 packet of 188 bytes, 1 section on 1 PID: 0 shown, 1 rejected, "
                                          "0 CRC errors, 0 discontinuities\n"));
}

TEST(InspectTables, RejectedSectionShowsAllLogLines) {
    const ByteVector offsets = descriptor(0x58, hex("425241 0C 0300 C079 030000 03"));
    const Finished finished = inspectOnly(
        "tot", StreamBuilder().section(TOT_PID, shortSection(TOT, join({hex("C079 124500 F00E"), offsets}))).bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output,
                StartsWith("TOT  PID 0x0014  packet 1  REJECTED\n"
                           "  error  ERROR_INVALID_DESCRIPTOR_LENGTH (0x0A08)\n"
                           "  log    ISDBTUtils: TLocalTimeOffsetDescriptorItem::parse: Descriptor length not valid: "
                           "12. Aborting!\n"
                           "  log    ISDBTUtils: TLocalTimeOffsetDescriptor::parse: Descriptor length not valid: 12. "
                           "Aborting!\n"
                           "  descriptors of time_offset (1)\n"
                           "    > 000A  0x58  local_time_offset_descriptor, 12 bytes  refused with "
                           "ERROR_INVALID_DESCRIPTOR_LENGTH\n"
                           "                  42 52 41 0C 03 00 C0 79 03 00 00 03\n"
                           "  bytes (28)\n"));
}

TEST(InspectTables, RejectedSectionIsShownOnce) {
    StreamBuilder stream;
    for (int round = 0; round < 3; ++round) {
        stream.section(PAT_PID, pat(version(5), "0001 E100 0002"));
    }
    const Finished finished = inspectBytes(stream.bytes());
    EXPECT_EQ(occurrences(finished.output, "REJECTED"), 1U);
    EXPECT_THAT(finished.output, HasSubstr("3 sections on 1 PID: 0 shown, 1 rejected"));
}

/// Neither standard error nor the tables carry log lines of sections that were taken.
TEST(InspectTables, LogLinesOfTakenSectionsAreNotShown) {
    const Finished finished =
        inspectOnly("tot", StreamBuilder().section(TOT_PID, shortSection(TOT, hex("C079 124500 F002 4A00"))).bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, Not(HasSubstr("Ignored!")));
}

/// They stand where they were sent, so that nobody looks for them in vain.
TEST(InspectTables, DescriptorsThatTheLibrarySkips) {
    const ByteVector pmt = longSection(0x02, {}, hex("E100 F004 09 02 AABB  1B E111 F00A 0A 00 52 01 00 0E 03 C04650"));
    const Finished finished =
        inspectBytes(StreamBuilder().section(0x0100, pmt).bytes(), {"--pid", "0x100", "--table", "pmt"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("  unknown_descriptors (1 skipped by the receiver)\n"
                                           "    descriptor_tag          length   bytes\n"
                                           "    0x09 (9) ca_descriptor  2 bytes  AA BB\n"
                                           "  elementary_streams (1)\n"
                                           "    [0] stream_type 0x1B (27) H.264 video  elementary_pid 0x0111 (273)\n"
                                           "        stream_identifier_descriptor (0x52)  component_tag 0x00 (0)\n"
                                           "        unknown_descriptors (2 skipped by the receiver)\n"
                                           "          descriptor_tag                         length   bytes\n"
                                           "          0x0A (10) iso_639_language_descriptor  0 bytes  none\n"
                                           "          0x0E (14) maximum_bitrate_descriptor   3 bytes  C0 46 50\n"));
}

/// A table would be too wide: each entry then has its own lines, and its bytes go on below each other.
TEST(InspectTables, LongBytesGoOnInTheNextLine) {
    const ByteVector unknown = descriptor(0x0A, join({fill(32, 0x11), fill(3, 0x22)}));
    const ByteVector pmt = longSection(0x02, {}, join({hex("E100 F025"), unknown}));
    const TemporaryFile file(StreamBuilder().section(0x0100, pmt).bytes());
    EXPECT_THAT(inspectTables({"--pid", "0x100", file.path()}).output,
                HasSubstr("  unknown_descriptors (1 skipped by the receiver)\n"
                          "    [0] descriptor_tag  0x0A (10) iso_639_language_descriptor\n"
                          "        length          35 bytes\n"
                          "        bytes           11 11 11 11 11 11 11 11 11 11 11 11 11 11 11 11\n"
                          "                        11 11 11 11 11 11 11 11 11 11 11 11 11 11 11 11\n"
                          "                        22 22 22\n"
                          "  elementary_streams (0)\n"));
}

/// Nothing at all stands beside some names, however narrow the lines are.
TEST(InspectTables, MayBeNarrow) {
    for (unsigned width = 40; width <= 50; ++width) {
        const Finished finished = inspect({"--view", "tables", "--width", std::to_string(width), SAMPLE_FILE});
        EXPECT_EQ(finished.status, 0) << width;
        EXPECT_EQ(finished.errors, "") << width;
        EXPECT_THAT(finished.output, HasSubstr("11 shown")) << width;
    }
}

TEST(InspectTables, BytesStandInLinesThatFit) {
    const std::string section = "02 B0 14 E6 A0 C1 00 00 E1 00 F0 00 1B E1 11 F0 02 52 00 4D 74 93 47";
    const std::string begin = "  bytes (23)\n";
    const auto dump = [&](const char* width) {
        const std::string output = inspect({"--width", width, "--hex", section}).output;
        return output.substr(output.find(begin) + begin.size(),
                             output.find("\n\n") + 1 - output.find(begin) - begin.size());
    };
    EXPECT_EQ(dump("57"), "    0000  02 B0 14 E6 A0 C1 00 00 E1 00 F0 00 1B E1 11 F0\n"
                          "    0010  02 52 00 4D 74 93 47\n");
    EXPECT_EQ(dump("56"), "    0000  02 B0 14 E6 A0 C1 00 00\n"
                          "    0008  E1 00 F0 00 1B E1 11 F0\n"
                          "    0010  02 52 00 4D 74 93 47\n");
}

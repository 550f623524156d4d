#include "Process.h"
#include "Streams.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

ByteVector patOfOne(const std::string& programs, unsigned version = 0) {
    LongHeader header;
    header.version = version;
    return longSection(0x00, header, hex(programs));
}

ByteVector wrongCrc(ByteVector section) {
    section.back() ^= 0x01U;
    return section;
}

Finished inspectSections(const ByteVector& sections, const std::vector<std::string>& options = {}) {
    Start start;
    start.input = sections;
    std::vector<std::string> arguments{"--sections", "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return inspectTables(arguments, start);
}

Finished inspectHex(const std::string& digits) {
    return inspect({"--hex", digits});
}

constexpr const char* PAT_HEX = "00 B0 0D 00 01 C1 00 00 00 01 E1 00 E8 F9 5E 7D";

constexpr const char* PAT_SHOWN = "PAT  version 0  section 0/0  current  byte 0\n"
                                  "  transport_stream_id  0x0001 (1)\n"
                                  "  network_pid          0x0000 (0)\n"
                                  "  programs (1)\n"
                                  "    program_number  program_map_pid\n"
                                  "    0x0001 (1)      0x0100 (256)\n"
                                  "\n"
                                  "1 section: 1 shown, 0 rejected, 0 CRC errors\n";

} // namespace

TEST(InspectSections, StandOneBehindTheOther) {
    const ByteVector sections =
        join({patOfOne("0001 E100"), shortSection(0x73, hex("C079 124500 F000")), patOfOne("0001 E100")});
    const Finished finished = inspectSections(sections);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, "PAT  version 0  section 0/0  current  byte 0\n"
                               "  transport_stream_id  0x0001 (1)\n"
                               "  network_pid          0x0000 (0)\n"
                               "  programs (1)\n"
                               "    program_number  program_map_pid\n"
                               "    0x0001 (1)      0x0100 (256)\n"
                               "\n"
                               "TOT  byte 16\n"
                               "  unix_time  750516300 = 1993-10-13 12:45:00 (UTC-3 assumed)\n"
                               "\n"
                               "3 sections: 2 shown, 0 rejected, 0 CRC errors\n");
}

TEST(InspectSections, OfAFile) {
    const TemporaryFile file(patOfOne("0001 E100"));
    const Finished finished = inspectTables({"--sections", file.path()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, PAT_SHOWN);
}

TEST(InspectSections, InOddChunks) {
    for (const std::size_t chunk : {1U, 2U, 7U, 17U}) {
        Start start;
        start.input = join({patOfOne("0001 E100"), hex("FF FF"), patOfOne("0001 E101", 1)});
        start.chunk = chunk;
        const Finished finished = inspectTables({"--sections", "-"}, start);
        EXPECT_EQ(finished.status, 0);
        EXPECT_THAT(finished.output, EndsWith("2 sections: 2 shown, 0 rejected, 0 CRC errors\n")) << chunk;
    }
}

/// More than is read at a time.
TEST(InspectSections, ManyAndLarge) {
    ByteVector sections;
    for (unsigned number = 0; number < 50; ++number) {
        LongHeader header;
        header.section = static_cast<QUOR_U8>(number);
        header.last = 49;
        ByteVector programs;
        for (unsigned program = 1; program <= 1021; ++program) {
            programs = join({programs, u16(program), hex("E100")});
        }
        sections = join({sections, longSection(0x00, header, programs)});
    }
    const Finished finished = inspectSections(sections);
    EXPECT_THAT(finished.output, HasSubstr("section 49/49  current  byte 200704"));
    EXPECT_THAT(finished.output, HasSubstr("50 sections: "));
    EXPECT_THAT(finished.output, EndsWith(", 0 CRC errors\n"));
}

TEST(InspectSections, StuffingIsSkipped) {
    const Finished finished = inspectSections(
        join({hex("FF FF FF"), patOfOne("0001 E100"), hex("FF"), patOfOne("0001 E101", 1), fill(70000, 0xFF)}));
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("  byte 3\n"));
    EXPECT_THAT(finished.output, HasSubstr("  byte 20\n"));
    EXPECT_THAT(finished.output, EndsWith("2 sections: 2 shown, 0 rejected, 0 CRC errors\n"));
}

TEST(InspectSections, NothingButStuffing) {
    const Finished finished = inspectSections(hex("FF FF"));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, "0 sections: 0 shown, 0 rejected, 0 CRC errors\n");
}

TEST(InspectSections, EmptyInput) {
    const Finished finished = inspectSections({});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.errors, "isdbt-inspect: standard input: is empty\n");
}

TEST(InspectSections, OtherBytesUnderTheSameVersionAreShown) {
    const Finished finished = inspectSections(join({patOfOne("0001 E100"), patOfOne("0001 E101")}));
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("current  byte 16  CHANGED WITHOUT A NEW VERSION\n"));
    EXPECT_THAT(finished.output, HasSubstr("    0x0001 (1)      0x0101 (257)\n"));
}

TEST(InspectSections, WrongCrcIsMarkedAndTheSectionShown) {
    const Finished finished = inspectSections(join({patOfOne("0001 E100"), wrongCrc(patOfOne("0001 E101", 1))}));
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr("PAT  version 1  section 0/0  current  byte 16  DAMAGED\n"));
    EXPECT_THAT(finished.output, HasSubstr("    0x0001 (1)      0x0101 (257)\n"));
    EXPECT_THAT(finished.output, EndsWith("2 sections: 2 shown, 0 rejected, 1 CRC error\n"));
}

/// A damaged one in between is no change of the table.
TEST(InspectSections, WrongCrcIsNoChange) {
    const Finished finished = inspectSections(join({patOfOne("0001 E100"), wrongCrc(patOfOne("0001 E100")),
                                                    patOfOne("0001 E100"), wrongCrc(patOfOne("0001 E100"))}));
    EXPECT_THAT(finished.output, Not(HasSubstr("CHANGED")));
    EXPECT_THAT(finished.output, EndsWith("4 sections: 3 shown, 0 rejected, 2 CRC errors\n"));
}

TEST(InspectSections, CutShortIsWhatTheReceiverSays) {
    const ByteVector section = patOfOne("0001 E100");
    const Finished finished = inspectSections(join({section, slice(section, 0, 11)}));
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output,
                HasSubstr("PAT  version 0  section 0/0  current  byte 16  DAMAGED  REJECTED\n"
                          "  error  ERROR_INVALID_SECTION_LEN_TOO_BIG (0x0A05)\n"
                          "  log    ISDBTUtils: TISDBTTable::parse: Section length exceeds data length. Aborting!\n"
                          "  bytes (11)\n"
                          "    0000  00 B0 0D 00 01 C1 00 00 00 01 E1\n"));
    EXPECT_THAT(finished.output, EndsWith("2 sections: 1 shown, 1 rejected, 0 CRC errors, 1 section cut short\n"));
}

TEST(InspectSections, CutShortAnywhere) {
    const ByteVector pmt = longSection(0x02, {}, hex("E100 F003 520181 1B E111 F003 520100"));
    for (std::size_t size = 1; size < pmt.size(); ++size) {
        const Finished finished = inspectSections(slice(pmt, 0, size));
        EXPECT_EQ(finished.status, 3) << size;
        EXPECT_THAT(finished.output, StartsWith("PMT  ")) << size;
        EXPECT_THAT(finished.output, HasSubstr("  byte 0  DAMAGED")) << size;
        EXPECT_THAT(finished.output, EndsWith(", 0 CRC errors, 1 section cut short\n")) << size;
    }
}

TEST(InspectSections, UnknownTablesAreCounted) {
    const ByteVector eit = longSection(0x4E, {}, hex("0001 0001 00 4E"));
    const Finished one = inspectSections(join({eit, patOfOne("0001 E100")}));
    EXPECT_EQ(one.status, 0);
    EXPECT_THAT(one.output,
                EndsWith("2 sections: 1 shown, 0 rejected, 1 of an unknown table (EIT p/f 0x4E), 0 CRC errors\n"));
    const Finished two = inspectSections(join({eit, patOfOne("0001 E100"), wrongCrc(eit)}));
    EXPECT_EQ(two.status, 3);
    EXPECT_THAT(two.output,
                EndsWith("3 sections: 1 shown, 0 rejected, 2 of unknown tables (EIT p/f 0x4E), 1 CRC error\n"));
}

TEST(InspectSections, OfSomeTablesOnly) {
    const ByteVector both = join({patOfOne("0001 E100"), shortSection(0x73, hex("C079 124500 F000"))});
    const Finished finished = inspectSections(both, {"--table", "tot"});
    EXPECT_THAT(finished.output, StartsWith("TOT  byte 16\n"));
    EXPECT_THAT(finished.output, EndsWith("2 sections: 1 shown, 0 rejected, 0 CRC errors\n"));
}

TEST(InspectSections, HaveNoPid) {
    for (const std::vector<std::string>& input :
         {std::vector<std::string>{"--sections", "-"}, std::vector<std::string>{"--hex", PAT_HEX}}) {
        std::vector<std::string> arguments = input;
        arguments.insert(arguments.end(), {"--pid", "0x100"});
        const Finished finished = inspect(arguments);
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.output, "");
        EXPECT_THAT(finished.errors, StartsWith("isdbt-inspect: --pid: sections outside of packets have no PID\n"));
    }
}

TEST(InspectSections, OfAFileNamedSoAreKnown) {
    const TemporaryFile file(patOfOne("0001 E100"));
    for (const char* const ending : {".sec", ".SEC"}) {
        const std::string path = file.path() + ending;
        std::filesystem::copy(file.path(), path);
        const Finished finished = inspectTables({path});
        std::filesystem::remove(path);
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.output, PAT_SHOWN);
    }
    EXPECT_EQ(inspectTables({file.path()}).status, 1);
}

TEST(InspectHex, ASectionOutOfALog) {
    for (const char* const digits :
         {PAT_HEX, "00b00d0001c1000000 01e100e8f95e7d", "  00 B0 0D 00 01 C1 00 00\n  00 01 E1 00 E8 F9 5E 7D\t\r\n"}) {
        const Finished finished = inspectHex(digits);
        EXPECT_EQ(finished.status, 0) << digits;
        EXPECT_EQ(finished.errors, "");
        EXPECT_EQ(finished.output, PAT_SHOWN);
    }
}

TEST(InspectHex, ShowsWhatComesTwice) {
    const Finished finished = inspectHex(std::string(PAT_HEX) + PAT_HEX);
    EXPECT_THAT(finished.output, HasSubstr("byte 16\n"));
    EXPECT_THAT(finished.output, EndsWith("2 sections: 2 shown, 0 rejected, 0 CRC errors\n"));
}

TEST(InspectHex, OtherThanBytes) {
    for (const char* const digits : {"", "0", "00 B", "00 B0 XY"}) {
        const Finished finished = inspectHex(digits);
        EXPECT_EQ(finished.status, 2) << digits;
        EXPECT_EQ(finished.output, "");
        EXPECT_THAT(finished.errors, StartsWith("isdbt-inspect: --hex: "));
    }
    EXPECT_EQ(inspectHex("00 B0\n0D XY").errors, "isdbt-inspect: --hex: line 2, column 4: two hexadecimal digits "
                                                 "expected, not \"XY\"\nRun with --help for more information.\n");
}

TEST(InspectHex, MayComeFromStandardInput) {
    Start start;
    start.input = text("0000: 00b0 0d00 01c1 0000 0001 e100 e8f9 5e7d  .......}\n");
    const Finished finished = inspect({"--hex", "-"}, start);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, PAT_SHOWN);
}

/// What the tool writes of a section that it rejects, it reads again.
TEST(InspectHex, ItsOwnDump) {
    const std::string shown = inspectHex("02 B0 14 E6 A0 C1 00 00 E1 00 F0 00 1B E1 11 F0 02 52 00 4D 74 93 47").output;
    const std::size_t begin = shown.find('\n', shown.find("  bytes (23)")) + 1;
    EXPECT_EQ(inspectHex(shown.substr(begin, shown.find("\n\n", begin) - begin)).output, shown);
}

/// Nothing says what a packet carries, or that others would come.
TEST(InspectHex, APacketOutOfALog) {
    StreamBuilder stream;
    stream.section(0x0100, longSection(0x02, {}, hex("E100 F000 1B E111 F000")));
    std::ostringstream digits;
    for (const unsigned byte : stream.bytes()) {
        digits << "0x" << std::hex << byte << ", ";
    }
    const Finished finished = inspectHex(digits.str());
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, StartsWith("PMT  PID 0x0100  version 0  section 0/0  current  packet 1\n"));
    EXPECT_THAT(finished.output, EndsWith("\n\n1 packet of 188 bytes, 1 section on 1 PID: 1 shown, 0 rejected, 0 CRC "
                                          "errors, 0 discontinuities\n"));
}

TEST(InspectHex, NothingThatTheLibraryKnows) {
    for (const char* const digits : {"4E 00 00", "FF FF", "47 00 11"}) {
        const Finished finished = inspectHex(digits);
        EXPECT_EQ(finished.status, 1) << digits;
        EXPECT_EQ(finished.errors, "isdbt-inspect: --hex: no section of a table that the library knows (a descriptor "
                                   "needs --descriptor TABLE)\n");
    }
}

TEST(InspectHex, StandsInPlaceOfAFile) {
    const Finished finished = inspect({"--hex", PAT_HEX, SAMPLE_FILE});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.errors, StartsWith("isdbt-inspect: either FILE or --hex\n"));
}

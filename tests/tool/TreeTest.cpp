#include "Process.h"
#include "Streams.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr unsigned NIT_PID = 0x0010;
constexpr unsigned SDT_PID = 0x0011;
constexpr unsigned PMT_PID = 0x0100;
constexpr unsigned AIT_PID = 0x0321;
constexpr QUOR_U16 STREAM = 0x0735;
constexpr QUOR_U16 NCL = 9;

ByteVector pmt(const std::string& streams, unsigned version = 0) {
    return longSection(PMT, named(1, version), hex("E1FF F000" + streams));
}

/// A NIT of this transport stream with some descriptors.
ByteVector nit(const std::string& descriptors) {
    const ByteVector loop = hex(descriptors);
    return longSection(NIT, named(STREAM),
                       join({hex("F000"), u16(static_cast<unsigned>(loop.size()) + 6, 0xF000), hex("0735 0735"),
                             u16(static_cast<unsigned>(loop.size()), 0xF000), loop}));
}

/// An AIT with one application that has these descriptors.
ByteVector ait(const std::string& descriptors) {
    const ByteVector loop = hex(descriptors);
    return longSection(AIT, named(NCL),
                       join({hex("F000"), u16(static_cast<unsigned>(loop.size()) + 9, 0xF000), hex("00000735 0001 01"),
                             u16(static_cast<unsigned>(loop.size()), 0xF000), loop}));
}

const std::string PRIVATE_SECTIONS = "05 E321 F000";
const std::string CAROUSEL = "0B E322 F003 52 01 40";
const std::string APPLICATION = "00 09 05 0001 010000 FF 28 01";
const std::string FROM_TAG_40 = "02 05 0001 01 7F 40";
const std::string LOCATION = "07 09 02 2F61 00 782E6E636C";

/// A stream with one service whose PMT and AIT are these.
std::string shownWithApplication(const std::string& streams, const ByteVector& applications) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt(streams)).section(AIT_PID, applications);
    const TemporaryFile file(stream.bytes());
    return inspect({"--full", "--width", "200", file.path()}).output;
}

std::string shown(const StreamBuilder& stream, std::vector<std::string> arguments = {}) {
    const TemporaryFile file(stream.bytes());
    arguments.insert(arguments.end(), {"--full", file.path()});
    return inspect(arguments).output;
}

/// A multiplex of television services, each with a picture, a sound and captions. Two have an AIT, of which the
/// receiver refuses one.
ByteVector largeMultiplex(unsigned services) {
    constexpr unsigned OF_A_SECTION = 7;
    ByteVector programs;
    std::vector<ByteVector> described((services + OF_A_SECTION - 1) / OF_A_SECTION);
    for (unsigned number = 0; number < services; ++number) {
        const auto letter = static_cast<QUOR_U8>('A' + number);
        programs = join({programs, u16(0xE6A0 + number), u16(0x0200 + number, 0xE000)});
        described[number / OF_A_SECTION] = join({described[number / OF_A_SECTION],
                                                 u16(0xE6A0 + number),
                                                 hex("FD 800C 48 0A 01 00 07 43616E616C20"),
                                                 {letter}});
    }
    StreamBuilder stream;
    stream.section(PAT_PID, longSection(PAT, named(STREAM), programs)).section(NIT_PID, nit(""));
    for (std::size_t number = 0; number < described.size(); ++number) {
        LongHeader header = named(STREAM);
        header.section = static_cast<QUOR_U8>(number);
        header.last = static_cast<QUOR_U8>(described.size() - 1);
        stream.section(SDT_PID, longSection(SDT, header, join({hex("0735 FF"), described[number]})));
    }
    for (unsigned number = 0; number < services; ++number) {
        const std::string applications = number == 0 ? "05 E401 F000" : number == 1 ? "05 E402 F000" : "";
        const unsigned pid = 0x0300 + 4 * number;
        const ByteVector streams =
            join({hex("E1FF F000 1B"), u16(pid, 0xE000), hex("F000 11"), u16(pid + 1, 0xE000), hex("F000 06"),
                  u16(pid + 2, 0xE000), hex("F005 FD 03 0008 3D" + applications)});
        stream.section(0x0200 + number, longSection(PMT, named(static_cast<QUOR_U16>(0xE6A0 + number)), streams));
    }
    stream.section(0x0401, ait(APPLICATION + "02 05 0003 01 7F 00" + LOCATION)).section(0x0402, ait(""));
    return stream.bytes();
}

} // namespace

TEST(InspectTree, IsTheUsualView) {
    EXPECT_EQ(inspect({SAMPLE_FILE}).output, inspect({"--view", "tree", SAMPLE_FILE}).output);
}

TEST(InspectTree, OverviewOfTheSampleInEightyColumns) {
    const Finished finished = inspect({"--width", "80", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, readText(GOLDEN_FOLDER "/overview-80.txt"));
}

TEST(InspectTree, OverviewOfALargeMultiplexFitsAScreen) {
    const TemporaryFile file(largeMultiplex(20));
    const std::string output = inspect({"--width", "100", file.path()}).output;
    EXPECT_LE(std::count(output.begin(), output.end(), '\n'), 50);
    EXPECT_THAT(output, HasSubstr("   ├─ Service 0xE6A0 (59040) \"Canal A\"  digital television, 4 components\n"
                                  "   │  └─ AIT of Ginga-NCL (0x0009)  ! AIT version 0 (packet 26) rejected with "
                                  "ERROR_INVALID_ITEM:\n"));
    EXPECT_THAT(output, HasSubstr("   └─ Service 0xE6B3 (59059) \"Canal T\"  digital television, 3 components\n"));
    EXPECT_THAT(output, HasSubstr("\nAIT  PID 0x0401  version 0  section 0/0  current  packet 26  REJECTED\n"
                                  "  error  ERROR_INVALID_ITEM (0x0A0A)\n"
                                  "  descriptor of application 000007350001\n"
                                  "    > 0020  0x02  transport_protocol_descriptor, 5 bytes  refused with ERROR_OK\n"
                                  "                  right by the standard; this receiver refuses it because it has no "
                                  "data piping\n"
                                  "                  (protocol_id 3)\n"
                                  "\n"));
}

TEST(InspectTree, OverviewOfAMiddlingMultiplexHasTheKindsOfComponents) {
    const TemporaryFile file(largeMultiplex(12));
    const std::string output = inspect({"--width", "100", file.path()}).output;
    EXPECT_LE(std::count(output.begin(), output.end(), '\n'), 50);
    EXPECT_THAT(output, HasSubstr("   └─ Service 0xE6AB (59051) \"Canal L\"  digital television, H.264 video 0x032C,\n"
                                  "             AAC audio in LATM 0x032D, captions and superimposed text 0x032E\n"));
    EXPECT_THAT(inspect({"--full", file.path()}).output,
                HasSubstr("   ├─ Component PID 0x032D  AAC audio in LATM (0x11)\n"));
}

TEST(InspectTree, SampleInEightyColumns) {
    const Finished finished = inspect({"--full", "--width", "80", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, readText(GOLDEN_FOLDER "/tree-80.txt"));
}

TEST(InspectTree, SampleInHundredAndTwentyColumns) {
    EXPECT_EQ(inspect({"--full", "--width", "120", SAMPLE_FILE}).output, readText(GOLDEN_FOLDER "/tree-120.txt"));
}

TEST(InspectTree, SampleInColours) {
    EXPECT_EQ(inspect({"--full", "--width", "80", "--color", "always", SAMPLE_FILE}).output,
              readText(GOLDEN_FOLDER "/tree-colours.txt"));
}

/// What everybody expects is not said, what is otherwise is.
TEST(InspectTree, OverviewSaysOfAServiceWhatIsUnusual) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100 0002 E101"))
        .section(SDT_PID, sdt("0001 FF 8005 4803 01 00 00  0002 FF 3005 4803 01 00 00"));
    EXPECT_THAT(shown(stream, {"--width", "200"}), HasSubstr("running, not scrambled"));
    const TemporaryFile file(stream.bytes());
    const std::string output = inspect({"--width", "200", file.path()}).output;
    EXPECT_THAT(output, HasSubstr("├─ Service 0x0001 (1)  digital television (0x01), PMT PID 0x0100\n"));
    EXPECT_THAT(output, HasSubstr("└─ Service 0x0002 (2)  digital television (0x01), not running, "
                                  "controlled by a CA system, PMT PID 0x0101\n"));
    EXPECT_THAT(output, Not(HasSubstr("service_descriptor")));
}

TEST(InspectTree, AllThatTheTablesSayIsForTheTreeAlone) {
    const Finished finished = inspect({"--full", "--view", "tables", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.errors, HasSubstr("--full: it is for the tree in text; the others show all"));
    EXPECT_EQ(inspect({"--full", "--json", SAMPLE_FILE}).status, 2);
}

TEST(InspectTree, LinesOfAPipeAreBrokenAtTheUsualWidth) {
    const std::string output = inspect({"--full", SAMPLE_FILE}).output;
    EXPECT_THAT(output,
                HasSubstr("\n   │  │  PMT digital_copy_control_descriptor (0xC1)  digital_recording_control_data "
                          "copy freely\n"
                          "   │  │      component_control no  copy_control_type SD free, original once  "
                          "aps_control_data 0\n"
                          "   │  │      maximum_bitrate 18.00 Mbit/s\n"));
    EXPECT_EQ(output, inspect({"--full", "--width", "100", SAMPLE_FILE}).output);
}

TEST(InspectTree, NothingThatAMultiplexHas) {
    EXPECT_EQ(shown(StreamBuilder().null(3)), "Transport stream\n"
                                              "   ! no PAT came\n"
                                              "   ! no NIT came\n"
                                              "   ! no SDT came\n"
                                              "\n"
                                              "3 faults:\n"
                                              "! Transport stream: no PAT came\n"
                                              "! Transport stream: no NIT came\n"
                                              "! Transport stream: no SDT came\n"
                                              "3 packets of 188 bytes, 0 sections on 0 PIDs: 0 shown, 0 rejected, "
                                              "0 CRC errors, 0 discontinuities\n");
}

TEST(InspectTree, OnlyAPat) {
    EXPECT_EQ(shown(StreamBuilder().section(PAT_PID, pat("0001 E100"))),
              "Transport stream 0x0735 (1845)  PAT PID 0x0000 version 0\n"
              "│  ! no NIT came\n"
              "│  ! no SDT came\n"
              "└─ Service 0x0001 (1)  PMT PID 0x0100\n"
              "      ! no PMT came\n"
              "\n"
              "3 faults:\n"
              "! Transport stream 0x0735 (1845): no NIT came\n"
              "! Transport stream 0x0735 (1845): no SDT came\n"
              "! Service 0x0001 (1): no PMT came\n"
              "1 packet of 188 bytes, 1 section on 1 PID: 1 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n");
}

/// The user did not want to see the others: they are not missed.
TEST(InspectTree, OnlySomeTablesAreShown) {
    EXPECT_EQ(shown(StreamBuilder().section(PAT_PID, pat("0001 E100")), {"--table", "pat"}),
              "Transport stream 0x0735 (1845)  PAT PID 0x0000 version 0\n"
              "└─ Service 0x0001 (1)  PMT PID 0x0100\n"
              "\n"
              "1 packet of 188 bytes, 1 section on 1 PID: 1 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n");
}

TEST(InspectTree, PmtWithoutAPat) {
    EXPECT_THAT(shown(StreamBuilder().section(PMT_PID, pmt("1B E111 F000")), {"--pid", "0x100"}),
                StartsWith("Transport stream\n"
                           "│  ! no NIT came\n"
                           "│  ! no PAT came\n"
                           "│  ! no SDT came\n"
                           "└─ Service 0x0001 (1)  PMT PID 0x0100 version 0, PCR PID 0x01FF\n"
                           "   └─ Component PID 0x0111  H.264 video (0x1B)\n"
                           "\n"
                           "3 faults:\n"
                           "! Transport stream: no NIT came\n"
                           "! Transport stream: no PAT came\n"
                           "! Transport stream: no SDT came\n"
                           "1 packet"));
}

/// The PID of null packets stands for no clock of its own.
TEST(InspectTree, ProgramWithoutAClock) {
    const ByteVector program = longSection(0x02, {}, hex("FFFF F000  1B E111 F000"));
    EXPECT_THAT(shown(StreamBuilder().section(PMT_PID, program), {"--pid", "0x100"}),
                HasSubstr("Service 0x0001 (1)  PMT PID 0x0100 version 0, no PCR\n"));
}

TEST(InspectTree, ServicesThatOneTableHasAndTheOtherHasNot) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100 0002 E101"));
    stream.section(SDT_PID, sdt("0002 FD 8000 0003 FD 8000"));
    stream.section(NIT_PID, nit("FB 02 0004  CD 08 21 09 5456 0F 01 0001"));
    const std::string output = shown(stream);
    EXPECT_THAT(output, HasSubstr("├─ Service 0x0001 (1)  PMT PID 0x0100\n"
                                  "   │     ! no PMT came\n"
                                  "   │     ! the PAT has it, but not the SDT\n"));
    EXPECT_THAT(output, HasSubstr("├─ Service 0x0002 (2)  running, not scrambled, EIT present/following, "
                                  "PMT PID 0x0101\n"
                                  "   │     ! no PMT came\n"
                                  "   │     ! the PAT has it, but not the ts_information_descriptor of the NIT\n"));
    EXPECT_THAT(output, HasSubstr("├─ Service 0x0003 (3)  running, not scrambled, EIT present/following\n"
                                  "   │     ! the SDT has it, but not the PAT\n"));
    EXPECT_THAT(output, HasSubstr("└─ Service 0x0004 (4)  partial reception\n"
                                  "         ! the NIT has it in its partial_reception_descriptor, but not the PAT\n"));
}

TEST(InspectTree, TransportStreamThatTheNitDoesNotHave) {
    StreamBuilder stream;
    stream.section(NIT_PID, longSection(NIT, named(STREAM), hex("F000 F000")));
    EXPECT_THAT(shown(stream.section(PAT_PID, pat("0000 E012"))),
                StartsWith("Network 0x0735 (1845)  NIT PID 0x0010 version 0\n"
                           "   ! the NIT came on PID 0x0010, but the PAT says 0x0012\n"
                           "   ! the NIT has no transport stream\n"
                           "\n"
                           "Transport stream 0x0735 (1845)  PAT PID 0x0000 version 0, network PID 0x0012\n"
                           "   ! not in the NIT\n"
                           "   ! the PAT has no program\n"
                           "   ! no SDT came\n"));
}

TEST(InspectTree, NetworksThatContradict) {
    StreamBuilder stream;
    stream.section(NIT_PID, nit("")).section(SDT_PID, longSection(SDT, named(STREAM), hex("0736 FF")));
    EXPECT_THAT(shown(stream), HasSubstr("   ! the SDT says original network 0x0736, the NIT 0x0735\n"));
}

/// Services of other transport streams of the network have no PAT here.
TEST(InspectTree, OtherTransportStreamOfTheNetwork) {
    StreamBuilder stream;
    stream.section(NIT_PID, longSection(NIT, named(STREAM), hex("F000 F00A 0736 0735 F004 FB 02 0004")));
    EXPECT_THAT(shown(stream.section(PAT_PID, pat("0001 E100"))),
                StartsWith("Network 0x0735 (1845)  NIT PID 0x0010 version 0\n"
                           "└─ Transport stream 0x0736 (1846)  original network 0x0735\n"
                           "   │  partial_reception_descriptor (0xFB)  service_ids: 0x0004\n"
                           "   └─ Service 0x0004 (4)  partial reception\n"
                           "\n"
                           "Transport stream 0x0735 (1845)  PAT PID 0x0000 version 0\n"
                           "│  ! not in the NIT\n"));
}

TEST(InspectTree, PmtThatThePatDoesNotName) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("1B E111 F000"));
    EXPECT_THAT(shown(stream.section(PAT_PID, pat("0002 E200", 1))),
                AllOf(HasSubstr("├─ Service 0x0001 (1)  PMT PID 0x0100 version 0, PCR PID 0x01FF\n"
                                "│  │  ! it has a PMT, but the PAT does not name it, or no longer\n"),
                      HasSubstr("└─ Service 0x0002 (2)  PMT PID 0x0200\n"
                                "      ! no PMT came\n")));
}

TEST(InspectTree, PmtOnAnotherPidThanThePatSays) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(0x0101, pmt("1B E111 F000"));
    EXPECT_THAT(shown(stream, {"--pid", "0x101"}),
                HasSubstr("└─ Service 0x0001 (1)  PMT PID 0x0101 version 0, PCR PID 0x01FF\n"
                          "   │  ! a PMT came on PID 0x0101, but the PAT says 0x0100\n"));
}

TEST(InspectTree, LastVersionsCount) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("1B E111 F000"));
    const std::string output = shown(stream.section(PMT_PID, pmt("02 E112 F000", 1)));
    EXPECT_THAT(output, HasSubstr("└─ Service 0x0001 (1)  PMT PID 0x0100 version 1, PCR PID 0x01FF\n"
                                  "   └─ Component PID 0x0112  MPEG-2 video (0x02)\n"));
    EXPECT_THAT(output, Not(HasSubstr("0x0111")));
}

TEST(InspectTree, NextVersionsDoNotCount) {
    LongHeader next = named(1, 1);
    next.current = false;
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("1B E111 F000"));
    EXPECT_THAT(shown(stream.section(PMT_PID, longSection(PMT, next, hex("E1FF F000")))),
                HasSubstr("PMT PID 0x0100 version 0, PCR PID 0x01FF\n"
                          "   └─ Component PID 0x0111  H.264 video (0x1B)\n"));
}

TEST(InspectTree, ChangeWithoutANewVersion) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("1B E111 F000"));
    EXPECT_THAT(shown(stream.section(PMT_PID, pmt("02 E112 F000"))),
                HasSubstr("   │  ! PMT changed without a new version\n"
                          "   └─ Component PID 0x0112  MPEG-2 video (0x02)\n"));
}

TEST(InspectTree, TableOfSeveralSections) {
    LongHeader first = named(STREAM);
    first.last = 2;
    LongHeader last = first;
    last.section = 2;
    StreamBuilder stream;
    stream.section(SDT_PID, longSection(SDT, first, hex("0735 FF 0001 FD 8000")));
    stream.section(SDT_PID, longSection(SDT, last, hex("0735 FF 0003 FD 8000")));
    const std::string output = shown(stream.section(PAT_PID, pat("0001 E100 0002 E101 0003 E102")));
    EXPECT_THAT(output, HasSubstr("│  ! section 1 of the SDT did not come\n"
                                  "├─ Service 0x0001 (1)  running, not scrambled, EIT present/following, PMT PID"));
    EXPECT_THAT(output, HasSubstr("└─ Service 0x0003 (3)  running, not scrambled, EIT present/following, PMT PID"));
    EXPECT_THAT(output, Not(HasSubstr("but not the SDT"))); // it may be in the section that did not come
}

TEST(InspectTree, TableThatBecomesShorter) {
    LongHeader longer = named(STREAM);
    longer.section = 1;
    longer.last = 1;
    StreamBuilder stream;
    stream.section(SDT_PID, longSection(SDT, longer, hex("0735 FF 0003 FD 8000")));
    EXPECT_THAT(shown(stream.section(SDT_PID, longSection(SDT, named(STREAM, 1), hex("0735 FF 0001 FD 8000")))),
                AllOf(HasSubstr("└─ Service 0x0001 (1)"), Not(HasSubstr("Service 0x0003"))));
}

TEST(InspectTree, RejectedSectionStandsWhereItsTableIsMissing) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("1B E111 F002 52 00"));
    const TemporaryFile file(stream.bytes());
    const Finished finished = inspect({"--width", "200", file.path()});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output,
                HasSubstr("└─ Service 0x0001 (1)  PMT PID 0x0100\n"
                          "      ! PMT version 0 (packet 2) rejected with ERROR_INVALID_ITEM: ISDBTUtils: "
                          "TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 2 < 3. Aborting!\n"
                          "\n"
                          "PMT  PID 0x0100  version 0  section 0/0  current  packet 2  REJECTED\n"
                          "  error  ERROR_INVALID_ITEM (0x0A0A)\n"));
    EXPECT_THAT(finished.output, HasSubstr("    > 0011  0x52  stream_identifier_descriptor, 0 bytes  refused with "
                                           "ERROR_INVALID_DESCRIPTOR_LENGTH\n"));
    EXPECT_THAT(finished.output,
                EndsWith("\n3 faults:\n"
                         "! Transport stream 0x0735 (1845): no NIT came\n"
                         "! Transport stream 0x0735 (1845): no SDT came\n"
                         "! Service 0x0001 (1): PMT version 0 (packet 2) rejected with ERROR_INVALID_ITEM: ISDBTUtils: "
                         "TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 2 < 3. Aborting!\n"
                         "2 packets of 188 bytes, 2 sections on 2 "
                         "PIDs: 1 shown, 1 rejected, 0 CRC errors, 0 discontinuities\n"));
}

TEST(InspectTree, RejectedVersionBesideTheFormerOne) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("1B E111 F000"));
    EXPECT_THAT(shown(stream.section(PMT_PID, pmt("1B E111 F002 52 00", 1))),
                AllOf(HasSubstr("   │  ! PMT version 1 (packet 3) rejected with ERROR_INVALID_ITEM: "),
                      HasSubstr("   └─ Component PID 0x0111  H.264 video (0x1B)\n")));
}

TEST(InspectTree, CodesWithoutAName) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("3E E111 F000"));
    EXPECT_THAT(shown(stream), HasSubstr("   └─ Component PID 0x0111  stream_type 0x3E\n"));
}

TEST(InspectTree, ComponentsThatCannotBeToldApart) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100"));
    stream.section(PMT_PID, pmt("1B E111 F003 52 01 00  0F E112 F003 52 01 00  06 E111 F000"));
    EXPECT_THAT(shown(stream), HasSubstr("   ├─ Component PID 0x0111  H.264 video (0x1B), tag 0x00\n"
                                         "   ├─ Component PID 0x0112  AAC audio in ADTS (0x0F), tag 0x00\n"
                                         "   │     ! component tag 0x00 is that of PID 0x0111, too\n"
                                         "   └─ Component PID 0x0111  PES packets with private data (0x06)\n"
                                         "         ! another component has this PID, too\n"));
}

TEST(InspectTree, DescriptorsThatTheLibraryLeavesOut) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100"));
    stream.section(PMT_PID, pmt("1B E111 F00A 0A 02 AABB 52 01 01 52 01 02"));
    EXPECT_THAT(shown(stream),
                HasSubstr("   └─ Component PID 0x0111  H.264 video (0x1B), tag 0x02\n"
                          "         iso_639_language_descriptor (0x0A, skipped by the receiver)  bytes AA BB\n"
                          "         stream_identifier_descriptor (0x52, displaced by a later one)  "
                          "bytes 01\n"));
}

TEST(InspectTree, ApplicationWithAllThatItNeeds) {
    EXPECT_THAT(shownWithApplication(PRIVATE_SECTIONS + CAROUSEL, ait(APPLICATION + FROM_TAG_40 + LOCATION)),
                HasSubstr("   ├─ Component PID 0x0321  private sections (0x05)\n"
                          "   │  └─ AIT of Ginga-NCL (0x0009)  version 0\n"
                          "   │     └─ Application 0x00000735/0x0001  AUTOSTART, priority 40, visible to users and "
                          "applications, service-bound yes, profile 0x0001 = version 1.0.0, carousel PID 0x0322\n"
                          "   │           application_descriptor (0x00)  transport_protocols: 0x01\n"
                          "   │           transport_protocol_descriptor (0x02)  type object carousel  protocol_id "
                          "0x0001  transport_protocol_label 0x01  remote_connection no  component_tag 0x40\n"
                          "   │           ginga_application_location_descriptor (0x07, Ginga-NCL)  base_directory "
                          "\"/a\"  initial_class \"x.ncl\"\n"
                          "   └─ Component PID 0x0322  DSM-CC U-N messages (0x0B), tag 0x40\n"));
}

TEST(InspectTree, ApplicationWithoutWhatItNeeds) {
    EXPECT_THAT(shownWithApplication(PRIVATE_SECTIONS, ait("")),
                HasSubstr("└─ Application 0x00000735/0x0001  AUTOSTART\n"
                          "               ! no application_descriptor\n"
                          "               ! no transport_protocol_descriptor\n"
                          "               ! no ginga_application_location_descriptor\n"));
}

TEST(InspectTree, ApplicationWhoseCarouselIsNotInThePmt) {
    EXPECT_THAT(shownWithApplication(PRIVATE_SECTIONS, ait(APPLICATION + FROM_TAG_40 + LOCATION)),
                HasSubstr("! its carousel has component tag 0x40, which the PMT does not have\n"));
}

TEST(InspectTree, ApplicationWhoseCarouselIsAnotherComponent) {
    EXPECT_THAT(
        shownWithApplication(PRIVATE_SECTIONS + "1B E111 F003 52 01 40", ait(APPLICATION + FROM_TAG_40 + LOCATION)),
        AllOf(HasSubstr("carousel PID 0x0111\n"),
              HasSubstr("! the component 0x40 of its carousel is no DSM-CC (stream type 0x1B)\n")));
}

TEST(InspectTree, ApplicationOfAnotherProtocolLabel) {
    const std::string prefetch = "0C 04 03 01 61 05";
    EXPECT_THAT(shownWithApplication(PRIVATE_SECTIONS + CAROUSEL,
                                     ait(APPLICATION + "02 05 0001 02 7F 40" + LOCATION + prefetch)),
                AllOf(HasSubstr("! application_descriptor names transport protocol label 0x01, but the receiver has "
                                "0x02\n"),
                      HasSubstr("! prefetch_descriptor names transport protocol label 0x03, but the receiver has "
                                "0x02\n")));
}

/// Captions pause for seconds, so that it takes a while until nothing is a sign.
TEST(InspectTree, ComponentOfWhichNothingCame) {
    constexpr std::uint64_t SECOND = 27000000;
    for (const std::uint64_t seconds : {2U, 6U}) {
        StreamBuilder stream;
        stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("1B E321 F000 06 E322 F000"));
        stream.proceed(0x0321, hex("00"));
        for (std::uint64_t half = 0; half <= 2 * seconds; ++half) {
            stream.clock(0x01FF, half * SECOND / 2);
        }
        const std::string output = shown(stream);
        EXPECT_THAT(output, HasSubstr("Component PID 0x0321  H.264 video (0x1B)\n"));
        EXPECT_THAT(output, HasSubstr(seconds == 2 ? "private data (0x06)\n" : "private data (0x06), no packets\n"));
        EXPECT_THAT(shown(stream, {"--table", "pat,pmt"}), Not(HasSubstr("no packets")));
    }
}

TEST(InspectTree, AitThatIsAnnouncedAndDoesNotCome) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("05 E321 F004 FD 02 00A3"));
    EXPECT_THAT(shown(stream), HasSubstr("   └─ Component PID 0x0321  private sections (0x05), Ginga application "
                                         "information table (0x00A3)\n"
                                         "         ! no AIT came\n"));
}

TEST(InspectTree, ApplicationsWithoutAnAit) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("0B E322 F004 FD 02 00A0"));
    EXPECT_THAT(shown(stream), HasSubstr("   │  ! PID 0x0322 is for applications, but no component carries their AIT\n"
                                         "   └─ Component PID 0x0322  DSM-CC U-N messages (0x0B), Ginga application "
                                         "engine (0x00A0)\n"));
}

TEST(InspectTree, AitWithoutApplications) {
    EXPECT_THAT(shownWithApplication(PRIVATE_SECTIONS, longSection(AIT, named(NCL), hex("F000 F000"))),
                HasSubstr("      └─ AIT of Ginga-NCL (0x0009)  version 0\n"
                          "            ! it names no application\n"));
}

TEST(InspectTree, AitOfTwoServicesIsShownOnce) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100 0002 E101")).section(PMT_PID, pmt(PRIVATE_SECTIONS));
    stream.section(0x0101, longSection(PMT, named(2), hex("E1FF F000" + PRIVATE_SECTIONS)));
    EXPECT_THAT(shown(stream.section(AIT_PID, ait(""))),
                AllOf(HasSubstr("│  └─ Component PID 0x0321  private sections (0x05)\n"
                                "│     └─ AIT of Ginga-NCL (0x0009)  version 0\n"),
                      HasSubstr("   └─ Component PID 0x0321  private sections (0x05), carries what is shown at Service "
                                "0x0001 (1)\n")));
}

TEST(InspectTree, AitOnAPidThatNoPmtNames) {
    EXPECT_THAT(shown(StreamBuilder().section(AIT_PID, ait("")), {"--pid", "0x321"}),
                StartsWith("Transport stream\n"
                           "   ! no PAT came\n"
                           "   ! no NIT came\n"
                           "   ! no SDT came\n"
                           "\n"
                           "PID 0x0321\n"
                           "│  ! no PMT names this PID\n"
                           "└─ AIT of Ginga-NCL (0x0009)  version 0\n"
                           "   └─ Application 0x00000735/0x0001  AUTOSTART\n"));
}

TEST(InspectTree, EventsStandBelowTheirComponent) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("0C E150 F003 52 01 50"));
    stream.section(0x0150, longSection(DSMCC, named(0x3123), hex("04 0B 0007 00000000 00015F90 01")));
    EXPECT_THAT(shown(stream), HasSubstr("   └─ Component PID 0x0150  DSM-CC stream descriptors (0x0C), tag 0x50\n"
                                         "      └─ DSM-CC stream descriptors  data event 0x3, event message group "
                                         "0x123, version 0\n"
                                         "            stream_event_descriptor (0x04)  event_id 0x0007"));
}

TEST(InspectTree, TimeWithoutAMultiplex) {
    EXPECT_THAT(shown(StreamBuilder().section(TOT_PID, shortSection(TOT, hex("C079124500 F000")))),
                StartsWith("Transport stream\n"
                           "   ! no PAT came\n"
                           "   ! no NIT came\n"
                           "   ! no SDT came\n"
                           "\n"
                           "Time  1993-10-13 12:45:00 (UTC-3 assumed), TOT PID 0x0014\n"
                           "\n"
                           "3 faults:\n"
                           "! Transport stream: no PAT came\n"
                           "! Transport stream: no NIT came\n"
                           "! Transport stream: no SDT came\n"
                           "1 packet"));
}

/// Of single sections nobody misses the others.
TEST(InspectTree, SectionsWithoutPackets) {
    const TemporaryFile file(join({pat("0001 E100 0002 E101"), pmt("1B E111 F000")}));
    EXPECT_EQ(inspect({"--full", "--sections", file.path()}).output,
              "Transport stream 0x0735 (1845)  PAT version 0\n"
              "├─ Service 0x0001 (1)  PMT version 0, PCR PID 0x01FF\n"
              "│  └─ Component PID 0x0111  H.264 video (0x1B)\n"
              "└─ Service 0x0002 (2)  PMT PID 0x0101\n"
              "\n"
              "2 sections: 2 shown, 0 rejected, 0 CRC errors\n");
}

TEST(InspectTree, SectionsThatNeedNoPmt) {
    const TemporaryFile file(ait(""));
    EXPECT_THAT(inspect({"--sections", file.path()}).output,
                StartsWith("AIT of Ginga-NCL (0x0009)  version 0\n"
                           "└─ Application 0x00000735/0x0001  AUTOSTART\n"));
}

TEST(InspectTree, DamagedSection) {
    ByteVector damaged = pat("0001 E100");
    damaged.back() ^= 1U;
    const TemporaryFile file(damaged);
    const Finished finished = inspect({"--sections", file.path()});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, StartsWith("Transport stream 0x0735 (1845)\n"
                                            "│  ! PAT is incomplete, or its CRC_32 is wrong\n"));
}

TEST(InspectTree, SeveralInputsOneAfterTheOther) {
    const TemporaryFile first(StreamBuilder().section(PAT_PID, pat("0001 E100")).bytes());
    const TemporaryFile second(StreamBuilder().section(PMT_PID, pmt("1B E111 F000")).bytes());
    const std::string output = inspect({"--pid", "0x100", first.path(), second.path()}).output;
    EXPECT_THAT(output, AllOf(StartsWith("== " + first.path() + " ==\nTransport stream 0x0735 (1845)"),
                              HasSubstr("\n== " + second.path() + " ==\nTransport stream\n│  ! no NIT came\n")));
}

/// Events that come for ever do not displace the tables that came first.
TEST(InspectTree, WhatIsRememberedIsBounded) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("0C E150 F000"));
    for (unsigned event = 0; event < 600; ++event) {
        stream.section(0x0150, longSection(DSMCC, named(static_cast<QUOR_U16>(event)), {}));
    }
    const std::string output = shown(stream);
    EXPECT_THAT(output, StartsWith("Transport stream 0x0735 (1845)  PAT PID 0x0000 version 0\n"));
    EXPECT_THAT(output, AllOf(Not(HasSubstr("event message group 0x059,")), HasSubstr("event message group 0x05A,"),
                              HasSubstr("└─ DSM-CC stream descriptors  data event 0x0, event message group 0x257,")));
    EXPECT_THAT(output, HasSubstr("\n90 older sections are not in the outline\n"));
}

#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr unsigned PMT_PID = 0x0100;
constexpr unsigned STREAM_PID = 0x0321;

/// A PMT of program 1 with one elementary stream on STREAM_PID.
ByteVector pmt(const std::string& streamType, const std::string& descriptors, unsigned version = 0) {
    const ByteVector info = hex(descriptors);
    return longSection(PMT, named(1, version),
                       join({hex("E100 F000"), hex(streamType), u16(STREAM_PID, 0xE000),
                             u16(static_cast<unsigned>(info.size()), 0xF000), info}));
}

ByteVector emptyAit() {
    return longSection(AIT, named(9), hex("F000 F000"));
}

ByteVector emptyDsmcc() {
    return longSection(DSMCC, named(0x3123), {});
}

/// What is shown of a section on the PID of the one elementary stream, which the PMT describes.
std::string onStreamPid(const std::string& streamType, const std::string& descriptors, const ByteVector& section) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt(streamType, descriptors));
    return inspectBytes(stream.section(STREAM_PID, section).bytes()).output;
}

} // namespace

TEST(InspectFollowing, TablesOnTheirFixedPids) {
    StreamBuilder stream;
    stream.section(0x0010, longSection(NIT, named(0x0735), hex("F000 F000")));
    stream.section(0x0011, longSection(SDT, named(0x0735), hex("0735 FF")));
    stream.section(0x0023, longSection(SDTT, named(0x1234), hex("0735 0735 E6A0 00")));
    stream.section(0x0028, longSection(SDTT, named(0x1235), hex("0735 0735 E6B8 00")));
    const Finished finished = inspectBytes(stream.bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.output, "NIT  PID 0x0010  version 0  section 0/0  current  packet 1\n"
                               "  network_id  0x0735 (1845)\n"
                               "  transport_streams (0)\n"
                               "\n"
                               "SDT  PID 0x0011  version 0  section 0/0  current  packet 2\n"
                               "  transport_stream_id  0x0735 (1845)\n"
                               "  original_network_id  0x0735 (1845)\n"
                               "  services (0)\n"
                               "\n"
                               "SDTT  PID 0x0023  version 0  section 0/0  current  packet 3\n"
                               "  table_id_extension   0x1234 (4660)\n"
                               "  maker_id             0x12 (18)\n"
                               "  model_id             0x34 (52)\n"
                               "  transport_stream_id  0x0735 (1845)\n"
                               "  original_network_id  0x0735 (1845)\n"
                               "  service_id           0xE6A0 (59040)\n"
                               "  download_contents (0)\n"
                               "\n"
                               "SDTT  PID 0x0028  version 0  section 0/0  current  packet 4\n"
                               "  table_id_extension   0x1235 (4661)\n"
                               "  maker_id             0x12 (18)\n"
                               "  model_id             0x35 (53)\n"
                               "  transport_stream_id  0x0735 (1845)\n"
                               "  original_network_id  0x0735 (1845)\n"
                               "  service_id           0xE6B8 (59064)\n"
                               "  download_contents (0)\n"
                               "\n"
                               "3 faults:\n"
                               "! Network 0x0735 (1845): the NIT has no transport stream\n"
                               "! Transport stream 0x0735 (1845): not in the NIT\n"
                               "! Transport stream 0x0735 (1845): no PAT came\n"
                               "4 packets of 188 bytes, 4 sections on 4 PIDs: 4 shown, 0 rejected, 0 CRC errors, "
                               "0 discontinuities\n");
}

TEST(InspectFollowing, NetworkPidOfThePat) {
    const ByteVector nit = longSection(NIT, named(0x0735), hex("F000 F000"));
    StreamBuilder stream;
    stream.section(0x0015, nit).section(PAT_PID, pat("0000 E015")).section(0x0015, nit);
    const Finished finished = inspectBytes(stream.bytes());
    EXPECT_THAT(finished.output, HasSubstr("NIT  PID 0x0015  version 0  section 0/0  current  packet 3\n"));
}

TEST(InspectFollowing, PmtsOfThePat) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("1B", ""));
    const Finished finished = inspectOnly("pat,pmt", stream.bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("PMT  PID 0x0100  version 0  section 0/0  current  packet 2\n"
                                           "  program_number  0x0001 (1)\n"
                                           "  pcr_pid         0x0100 (256)\n"));
}

TEST(InspectFollowing, AitOnPrivateSections) {
    EXPECT_THAT(onStreamPid("05", "", emptyAit()),
                HasSubstr("AIT  PID 0x0321  version 0  section 0/0  current  packet 3\n"
                          "  application_type  0x0009 (9) Ginga-NCL\n"
                          "  applications (0)\n"));
}

TEST(InspectFollowing, AitOfADataComponent) {
    EXPECT_THAT(onStreamPid("05", "FD 02 00A3", emptyAit()), HasSubstr("AIT  PID 0x0321"));
    EXPECT_THAT(onStreamPid("0D", "FD 02 00A3", emptyAit()), HasSubstr("AIT  PID 0x0321"));
    EXPECT_THAT(onStreamPid("06", "FD 02 00A3", emptyAit()), HasSubstr("AIT  PID 0x0321"));
}

TEST(InspectFollowing, StreamsOfOtherKindsCarryNoTables) {
    for (const char* const streamType : {"01", "02", "06", "0A", "0B", "11", "1B"}) {
        EXPECT_THAT(onStreamPid(streamType, "FD 02 00A0", emptyAit()), HasSubstr("2 sections on 2 PIDs")) << streamType;
    }
}

TEST(InspectFollowing, StreamDescriptorsOfDsmcc) {
    for (const char* const streamType : {"0C", "0D"}) {
        EXPECT_THAT(onStreamPid(streamType, "", emptyDsmcc()),
                    HasSubstr("DSM-CC  PID 0x0321  version 0  section 0/0  current  packet 3\n"
                              "  data_event_id       0x3 (3)\n"
                              "  event_msg_group_id  0x123 (291)\n"))
            << streamType;
    }
}

TEST(InspectFollowing, StreamDescriptorsOnAnyGatheredPid) {
    EXPECT_THAT(onStreamPid("05", "", emptyDsmcc()), HasSubstr("DSM-CC  PID 0x0321"));
    EXPECT_THAT(inspectBytes(StreamBuilder().section(PAT_PID, emptyDsmcc()).bytes()).output,
                HasSubstr("DSM-CC  PID 0x0000"));
}

TEST(InspectFollowing, StreamThatThePmtNoLongerSignals) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("05", ""));
    stream.section(PMT_PID, pmt("1B", "", 1)).section(STREAM_PID, emptyAit());
    EXPECT_THAT(inspectBytes(stream.bytes()).output, AllOf(Not(HasSubstr("AIT")), HasSubstr("3 sections on 2 PIDs")));
}

TEST(InspectFollowing, StreamOfAProgramThatThePatNoLongerHas) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("05", ""));
    stream.section(PAT_PID, pat("0002 E200", 1)).section(STREAM_PID, emptyAit());
    EXPECT_THAT(inspectBytes(stream.bytes()).output, AllOf(Not(HasSubstr("AIT")), HasSubstr("3 sections on 2 PIDs")));
}

TEST(InspectFollowing, MoreStreamsThanTheLibraryReaches) {
    ByteVector streams = hex("E100 F000");
    for (unsigned number = 0; number < 200; ++number) {
        streams = join({streams, hex("05"), u16(0x0400 + number, 0xE000), hex("F000")});
    }
    const ByteVector section = longSection(PMT, named(1), streams); // 1016 bytes
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).begin(PMT_PID, join({hex("00"), slice(section, 0, 183)}));
    for (std::size_t at = 183; at < section.size(); at += 184) {
        stream.proceed(PMT_PID, slice(section, at, std::min(at + 184, section.size())));
    }
    stream.section(0x0400 + 199, emptyAit());
    EXPECT_THAT(inspectBytes(stream.bytes()).output, HasSubstr("AIT  PID 0x04C7"));
}

/// A broken stream that announces ever more programs must not fill the memory. What was known before stays known.
TEST(InspectFollowing, SourcesAreBounded) {
    StreamBuilder stream;
    for (unsigned program = 0; program < 1025; ++program) {
        stream.section(PMT_PID, longSection(PMT, named(static_cast<QUOR_U16>(program)),
                                            join({hex("E100 F000 05"), u16(0x0400 + program, 0xE000), hex("F000")})));
    }
    stream.section(0x0400, emptyAit()).section(0x0400 + 1023, emptyAit()).section(0x0400 + 1024, emptyAit());
    const TemporaryFile file(stream.bytes());
    const std::string output = inspectTables({"--pid", "0x100", file.path()}).output;
    EXPECT_THAT(output, AllOf(HasSubstr("AIT  PID 0x0400"), HasSubstr("AIT  PID 0x07FF")));
    EXPECT_THAT(output, Not(HasSubstr("AIT  PID 0x0800")));
}

TEST(InspectPids, GivenByHand) {
    const TemporaryFile file(StreamBuilder().section(0x0194, emptyDsmcc()).section(0x0195, emptyAit()).bytes());
    EXPECT_THAT(inspectTables({file.path()}).output, HasSubstr("0 sections on 0 PIDs"));
    for (const char* const pid : {"404", "0x194", "0X194", "0x0194", "0404"}) {
        const Finished finished = inspectTables({"--table", "dsmcc", "--pid", pid, file.path()});
        EXPECT_EQ(finished.status, 0) << pid;
        EXPECT_THAT(finished.output, AllOf(StartsWith("DSM-CC  PID 0x0194"), HasSubstr("1 section on 1 PID"))) << pid;
    }
}

TEST(InspectPids, SeveralGivenByHand) {
    const TemporaryFile file(StreamBuilder().section(0x0194, emptyDsmcc()).section(0x0195, emptyAit()).bytes());
    const Finished finished = inspectTables({"--pid", "0x0194", "--pid=0x0195", file.path()});
    EXPECT_THAT(finished.output, AllOf(HasSubstr("DSM-CC  PID 0x0194"), HasSubstr("AIT  PID 0x0195")));
}

/// For streams that were cut out of a multiplex without their PAT.
TEST(InspectPids, PmtGivenByHandIsFollowed) {
    const TemporaryFile file(StreamBuilder().section(PMT_PID, pmt("05", "")).section(STREAM_PID, emptyAit()).bytes());
    EXPECT_THAT(inspectTables({file.path(), "--pid", "0x100"}).output,
                AllOf(HasSubstr("PMT  PID 0x0100"), HasSubstr("AIT  PID 0x0321")));
}

TEST(InspectPids, GivenByHandStaysWhateverIsSignalled) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("0001 E100")).section(PMT_PID, pmt("05", ""));
    stream.section(PMT_PID, pmt("1B", "", 1)).section(STREAM_PID, emptyAit());
    const TemporaryFile file(stream.bytes());
    EXPECT_THAT(inspectTables({"--pid", "0x321", file.path()}).output, HasSubstr("AIT  PID 0x0321"));
}

TEST(InspectPids, ThatAreNone) {
    for (const char* const pid : {"8191", "0x1FFF", "0x2000", "-1", "12x", "0x", "x12", "", "0x-1", "99999999999"}) {
        const Finished finished = inspectTables({std::string("--pid=") + pid, SAMPLE_FILE});
        EXPECT_EQ(finished.status, 2) << pid;
        EXPECT_EQ(finished.output, "") << pid;
        EXPECT_THAT(finished.errors, StartsWith("isdbt-inspect: --pid: ")) << pid;
    }
    EXPECT_EQ(inspectTables({"--pid", "8191", SAMPLE_FILE}).errors,
              "isdbt-inspect: --pid: 8191 is no PID (0 to 8190, or 0x0000 to 0x1FFE)\n"
              "Run with --help for more information.\n");
}

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

constexpr unsigned PMT_PID = 0x0101;

LongHeader header(QUOR_U16 extension, unsigned version, QUOR_U8 section = 0, QUOR_U8 last = 0) {
    LongHeader header;
    header.extension = extension;
    header.version = version;
    header.section = section;
    header.last = last;
    return header;
}

LongHeader announced(QUOR_U16 extension, unsigned version) {
    LongHeader next = header(extension, version);
    next.current = false;
    return next;
}

/// A PAT of the program 0x0007.
ByteVector patOfProgram7(unsigned version = 0, unsigned pmtPid = PMT_PID, QUOR_U16 streamId = 1) {
    return longSection(0x00, header(streamId, version), join({hex("0007"), u16(pmtPid, 0xE000)}));
}

/// A video stream on PID 0x0131.
ByteVector video(const std::string& componentTag) {
    return join({hex("1B E131 F003 5201"), hex(componentTag)});
}

/// A PMT of the program 0x0007.
ByteVector pmt(unsigned version, const ByteVector& streams) {
    return longSection(0x02, header(7, version), join({hex("E131 F000"), streams}));
}

ByteVector nextPmt(unsigned version, const ByteVector& streams) {
    return longSection(0x02, announced(7, version), join({hex("E131 F000"), streams}));
}

ByteVector tot(const std::string& time) {
    return shortSection(0x73, join({hex(time), hex("F000")}));
}

std::string diff(const StreamBuilder& stream, std::vector<std::string> options = {}) {
    const TemporaryFile file(stream.bytes());
    options.insert(options.end(), {"--view", "diff", file.path()});
    return inspect(options).output;
}

/// @param tables of interest: no others are missed
std::string diffOf(const std::string& tables, const StreamBuilder& stream, std::vector<std::string> options = {}) {
    options.insert(options.end(), {"--table", tables});
    return diff(stream, options);
}

/// What is said of the second of two recordings of programs and times.
std::string diff(const StreamBuilder& yesterday, const StreamBuilder& today) {
    const TemporaryFile one(yesterday.bytes());
    const TemporaryFile other(today.bytes());
    const std::string output = inspect({"--view", "diff", "--table", "pat,pmt,tot", one.path(), other.path()}).output;
    const std::string heading = "== " + other.path() + " ==\n";
    return output.substr(output.find(heading) + heading.size());
}

} // namespace

TEST(InspectDiff, FirstSightIsOneLine) {
    StreamBuilder stream;
    stream.section(PAT_PID, patOfProgram7()).section(PMT_PID, pmt(3, video("30")));
    EXPECT_EQ(diffOf("pat,pmt", stream),
              "+ PAT 0x0001  PID 0x0000  version 0  section 0/0  packet 1  new\n"
              "+ PMT 0x0007  PID 0x0101  version 3  section 0/0  packet 2  new\n"
              "2 packets of 188 bytes, 2 sections on 2 PIDs: 2 shown, 0 rejected, 0 CRC errors, "
              "0 discontinuities\n");
}

TEST(InspectDiff, ShowsFieldByFieldWhatANewVersionChanges) {
    StreamBuilder stream;
    stream.section(PAT_PID, patOfProgram7())
        .section(PMT_PID, pmt(3, video("30")))
        .section(PMT_PID, pmt(4, join({hex("11 E132 F003 5201 10"), video("31")})))
        .section(PMT_PID, pmt(5, hex("1B E131 F000")));
    EXPECT_THAT(diffOf("pat,pmt", stream),
                HasSubstr("\n"
                          "~ PMT 0x0007  PID 0x0101  version 3 -> 4  section 0/0  packet 3\n"
                          "    ~ elementary_streams[0x0131].stream_identifier_descriptor.component_tag  "
                          "0x30 (48) -> 0x31 (49)\n"
                          "    + elementary_streams[0x0132]\n"
                          "    +   stream_type     0x11 (17) AAC audio in LATM\n"
                          "    +   elementary_pid  0x0132 (306)\n"
                          "    +   stream_identifier_descriptor (0x52)  component_tag 0x10 (16)\n"
                          "~ PMT 0x0007  PID 0x0101  version 4 -> 5  section 0/0  packet 4\n"
                          "    - elementary_streams[0x0132]\n"
                          "    -   stream_type     0x11 (17) AAC audio in LATM\n"
                          "    -   elementary_pid  0x0132 (306)\n"
                          "    -   stream_identifier_descriptor (0x52)  component_tag 0x10 (16)\n"
                          "    - elementary_streams[0x0131].stream_identifier_descriptor (0x52)  component_tag "
                          "0x31 (49)\n"
                          "4 packets"));
}

TEST(InspectDiff, BreaksChangesThatTheLineHasNoRoomFor) {
    StreamBuilder stream;
    stream.section(PAT_PID, patOfProgram7())
        .section(PMT_PID, pmt(3, video("30")))
        .section(PMT_PID, pmt(4, video("31")));
    EXPECT_THAT(diff(stream, {"--width", "80"}),
                HasSubstr("    ~ elementary_streams[0x0131].stream_identifier_descriptor.component_tag\n"
                          "        0x30 (48) -> 0x31 (49)\n"));
    EXPECT_THAT(diff(stream, {"--width", "40"}), HasSubstr("    ~ elementary_streams[0x0131].stream_\n"
                                                           "      identifier_descriptor.component_\n"
                                                           "      tag\n"
                                                           "        0x30 (48) -> 0x31 (49)\n"));
}

/// The clock of Brasília is three hours behind.
TEST(InspectDiff, SaysWhatTimeItWasWhereThereIsRoom) {
    StreamBuilder stream;
    stream.clock(0x0100, 0).clock(0x0100, 2700000).section(TOT_PID, tot("C079 124530"));
    stream.section(PMT_PID, pmt(3, video("30")));
    EXPECT_THAT(diffOf("pmt", stream, {"--pid", "0x101", "--width", "100"}),
                HasSubstr("packet 4  0.300 s  new  1993-10-13T15:45:30.100Z\n"));
    EXPECT_THAT(diffOf("pmt", stream, {"--pid", "0x101", "--width", "80"}), HasSubstr("packet 4  0.300 s  new\n"));
}

/// Of single values, their order does not matter and each says what it is.
TEST(InspectDiff, ShowsWhichOfSeveralValuesComeAndGo) {
    const auto nit = [](unsigned version, const std::string& services) {
        return longSection(0x40, header(0x0735, version), join({hex("F000 F00C 0735 0735 F006 FB04"), hex(services)}));
    };
    StreamBuilder stream;
    stream.section(0x0010, nit(0, "E6B8 E6A0")).section(0x0010, nit(1, "E6A0 E6B9"));
    const std::string title = "~ NIT 0x0735  PID 0x0010  version 0 -> 1  section 0/0  packet 2\n";
    EXPECT_THAT(diffOf("nit", stream), HasSubstr(title + "    - transport_streams[0x0735].partial_reception_descriptor."
                                                         "service_ids  0xE6B8 (59064)\n"
                                                         "    + transport_streams[0x0735].partial_reception_descriptor."
                                                         "service_ids  0xE6B9 (59065)\n"
                                                         "2 packets"));
    EXPECT_THAT(diffOf("nit", stream, {"--width", "75"}),
                HasSubstr(title + "    - transport_streams[0x0735].partial_reception_descriptor.service_ids\n"
                                  "    -     0xE6B8 (59064)\n"
                                  "    + transport_streams[0x0735].partial_reception_descriptor.service_ids\n"
                                  "    +     0xE6B9 (59065)\n"
                                  "2 packets"));
}

TEST(InspectDiff, MarksHaveColours) {
    StreamBuilder stream;
    stream.section(PAT_PID, patOfProgram7()).section(PAT_PID, patOfProgram7(1, 0x0102));
    EXPECT_THAT(diff(stream, {"--color", "always"}),
                StartsWith("\x1B[32m+\x1B[0m \x1B[1mPAT 0x0001\x1B[0m  PID 0x0000  version 0  section 0/0  packet 1  "
                           "\x1B[32mnew\x1B[0m\n"
                           "\x1B[33m~\x1B[0m \x1B[1mPAT 0x0001\x1B[0m  PID 0x0000  version 0 -> 1  section 0/0  "
                           "packet 2\n"
                           "    \x1B[33m~\x1B[0m \x1B[36mprograms[0x0007].program_map_pid\x1B[0m  "));
}

TEST(InspectDiff, SaysWhenNothingButTheVersionChanges) {
    StreamBuilder stream;
    stream.section(PAT_PID, patOfProgram7(0)).section(PAT_PID, patOfProgram7(1));
    EXPECT_THAT(diff(stream), HasSubstr("~ PAT 0x0001  PID 0x0000  version 0 -> 1  section 0/0  packet 2\n"
                                        "    no field differs\n"));
}

TEST(InspectDiff, SaysWhenTheVersionStays) {
    StreamBuilder stream;
    stream.section(PAT_PID, patOfProgram7()).section(PAT_PID, patOfProgram7(0, 0x0102));
    EXPECT_THAT(diff(stream),
                HasSubstr("~ PAT 0x0001  PID 0x0000  version 0  section 0/0  packet 2  CHANGED WITHOUT A NEW VERSION\n"
                          "    ~ programs[0x0007].program_map_pid  0x0101 (257) -> 0x0102 (258)\n"));
}

TEST(InspectDiff, AnotherTransportStreamReplacesThePat) {
    StreamBuilder stream;
    stream.section(PAT_PID, patOfProgram7()).section(PAT_PID, patOfProgram7(0, PMT_PID, 0x0735));
    EXPECT_THAT(diffOf("pat", stream), HasSubstr("~ PAT 0x0735  PID 0x0000  version 0  section 0/0  packet 2\n"
                                                 "    ~ transport_stream_id  0x0001 (1) -> 0x0735 (1845)\n"
                                                 "2 packets"));
}

/// What is announced is compared with what holds; when it holds, it is compared with what did.
TEST(InspectDiff, AnnouncedVersionIsKeptApart) {
    StreamBuilder stream;
    stream.section(PAT_PID, patOfProgram7())
        .section(PMT_PID, pmt(3, video("30")))
        .section(PMT_PID, nextPmt(4, video("31")))
        .section(PMT_PID, pmt(3, video("30")))
        .section(PMT_PID, nextPmt(4, video("31")))
        .section(PMT_PID, pmt(4, video("31")));
    const std::string change = "    ~ elementary_streams[0x0131].stream_identifier_descriptor.component_tag  "
                               "0x30 (48) -> 0x31 (49)\n";
    EXPECT_THAT(diffOf("pat,pmt", stream),
                HasSubstr("packet 2  new\n"
                          "~ PMT 0x0007  PID 0x0101  version 3 -> 4  section 0/0  not yet current  "
                          "packet 3\n" +
                          change + "~ PMT 0x0007  PID 0x0101  version 3 -> 4  section 0/0  packet 6\n" + change +
                          "6 packets"));
}

TEST(InspectDiff, SaysWhichSectionsAreNoMore) {
    StreamBuilder stream;
    const auto part = [](unsigned version, QUOR_U8 section, QUOR_U8 last) {
        return longSection(0x00, header(1, version, section, last), join({u16(section + 1U), hex("E101")}));
    };
    stream.section(PAT_PID, part(0, 0, 2)).section(PAT_PID, part(0, 1, 2)).section(PAT_PID, part(0, 2, 2));
    stream.section(PAT_PID, part(1, 0, 0));
    EXPECT_THAT(diffOf("pat", stream), HasSubstr("~ PAT 0x0001  PID 0x0000  version 0 -> 1  section 0/0  packet 4\n"
                                                 "    no field differs\n"
                                                 "    - section 1 is no more\n"
                                                 "    - section 2 is no more\n"
                                                 "4 packets"));
}

TEST(InspectDiff, RejectedSectionIsShownAndTheFormerOneStaysKnown) {
    StreamBuilder stream;
    const ByteVector refused = hex("1B E131 F002 5200");
    stream.section(PAT_PID, patOfProgram7())
        .section(PMT_PID, pmt(3, video("30")))
        .section(PMT_PID, pmt(4, refused))
        .section(PMT_PID, pmt(3, video("30")))
        .section(PMT_PID, pmt(4, refused))
        .section(PMT_PID, pmt(5, video("31")));
    const std::string output = diff(stream);
    EXPECT_THAT(output,
                HasSubstr("! PMT 0x0007  PID 0x0101  version 4  section 0/0  packet 3  REJECTED\n"
                          "    error  ERROR_INVALID_ITEM (0x0A0A)\n"
                          "    log    ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                          "required: 2 < 3. Aborting!\n"
                          "    log    ISDBTUtils: TPMTTable::parse: Invalid item. Aborting!\n"
                          "    descriptors of program (0)\n"
                          "    descriptors of elementary_stream 0x0131 (1)\n"
                          "      > 0011  0x52  stream_identifier_descriptor, 0 bytes  refused with "
                          "ERROR_INVALID_DESCRIPTOR_LENGTH\n"));
    EXPECT_THAT(output, HasSubstr("  PMT 0x0007  PID 0x0101  version 3  section 0/0  packet 4  as it was\n"));
    EXPECT_THAT(output, HasSubstr("~ PMT 0x0007  PID 0x0101  version 3 -> 5  section 0/0  packet 6\n"
                                  "    ~ elementary_streams[0x0131].stream_identifier_descriptor.component_tag  "
                                  "0x30 (48) -> 0x31 (49)\n"));
}

TEST(InspectDiff, TimeGoesOnInOneLine) {
    StreamBuilder stream;
    stream.section(TOT_PID, tot("C079 124530")).section(TOT_PID, tot("C079 124535"));
    EXPECT_THAT(diffOf("tot", stream),
                StartsWith("+ TOT  PID 0x0014  packet 1  new\n"
                           "~ TOT  PID 0x0014  packet 2  1993-10-13 12:45:35 (UTC-3 assumed) (+5 s)\n"
                           "2 packets"));
}

TEST(InspectDiff, ShowsOnlyTheTablesThatAreAskedFor) {
    StreamBuilder stream;
    stream.section(PAT_PID, patOfProgram7()).section(TOT_PID, tot("C079 124530"));
    EXPECT_THAT(diff(stream, {"--table", "tot"}), StartsWith("+ TOT  PID 0x0014  packet 2  new\n2 packets"));
}

TEST(InspectDiff, SameRecordingSaysNothing) {
    StreamBuilder stream;
    stream.section(PAT_PID, patOfProgram7()).section(PMT_PID, pmt(3, video("30")));
    EXPECT_THAT(diff(stream, stream), StartsWith("2 packets of 188 bytes, 2 sections on 2 PIDs: 2 shown"));
}

TEST(InspectDiff, ComparesTwoRecordings) {
    StreamBuilder yesterday;
    yesterday.section(PAT_PID, patOfProgram7())
        .section(PMT_PID, pmt(3, video("30")))
        .section(TOT_PID, tot("C079 124530"));
    StreamBuilder today;
    today.section(PAT_PID, patOfProgram7()).section(PMT_PID, pmt(3, video("31")));
    EXPECT_THAT(diff(yesterday, today),
                StartsWith("~ PMT 0x0007  PID 0x0101  version 3  section 0/0  packet 2  CHANGED WITHOUT A NEW VERSION\n"
                           "    ~ elementary_streams[0x0131].stream_identifier_descriptor.component_tag  "
                           "0x30 (48) -> 0x31 (49)\n"
                           "- TOT  PID 0x0014  not in this input\n"
                           "2 packets"));
}

TEST(InspectDiff, TableMayComeOnAnotherPidInAnotherRecording) {
    StreamBuilder yesterday;
    yesterday.section(PAT_PID, patOfProgram7()).section(PMT_PID, pmt(3, video("30")));
    StreamBuilder today;
    today.section(PAT_PID, patOfProgram7(1, 0x0102)).section(0x0102, pmt(3, video("30")));
    EXPECT_THAT(diff(yesterday, today),
                StartsWith("~ PAT 0x0001  PID 0x0000  version 0 -> 1  section 0/0  packet 1\n"
                           "    ~ programs[0x0007].program_map_pid  0x0101 (257) -> 0x0102 (258)\n"
                           "~ PMT 0x0007  PID 0x0102  version 3  section 0/0  packet 2  was on PID 0x0101\n"
                           "    no field differs\n"
                           "2 packets"));
}

TEST(InspectDiff, RejectedTableIsNotMissing) {
    StreamBuilder yesterday;
    yesterday.section(PAT_PID, patOfProgram7()).section(PMT_PID, pmt(3, video("30")));
    StreamBuilder today;
    today.section(PAT_PID, patOfProgram7()).section(PMT_PID, pmt(4, hex("1B E131 F002 5200")));
    const std::string output = diff(yesterday, today);
    EXPECT_THAT(output, StartsWith("! PMT 0x0007  PID 0x0101  version 4  section 0/0  packet 2  REJECTED\n"));
    EXPECT_THAT(output, Not(HasSubstr("not in this input")));
}

TEST(InspectDiff, SampleFitsInEightyColumns) {
    EXPECT_EQ(inspect({"--view", "diff", "--width", "80", SAMPLE_FILE}).output,
              readText(GOLDEN_FOLDER "/sample-diff-80.txt"));
}

TEST(InspectDiff, RecordedStreamEvents) {
    SKIP_WITHOUT_RECORDINGS();
    EXPECT_EQ(inspect({"--view", "diff", "--width", "80", "--table", "dsmcc", "--pid", "404",
                       recordedStream("tsduck-032.1.ts")})
                  .output,
              "+ DSM-CC 0x0001  PID 0x0194  version 0  section 0/0  packet 1  new\n"
              "~ DSM-CC 0x0001  PID 0x0194  version 0  section 0/0  packet 2  CHANGED WITHOUT A\n"
              "    NEW VERSION\n"
              "    ~ unknown_descriptors[0x1A].length  24 bytes -> 25 bytes\n"
              "    ~ unknown_descriptors[0x1A].bytes\n"
              "        - 00 01 00 00 00 00 00 00 00 00 54 65 73 74 20 4D\n"
              "        - 65 73 73 61 67 65 20 31\n"
              "        + 00 01 00 00 00 00 00 00 00 00 54 65 73 74 20 4D\n"
              "        + 65 73 73 61 67 65 20 31 61\n"
              "~ DSM-CC 0x0001  PID 0x0194  version 0 -> 1  section 0/0  packet 3\n"
              "    ~ unknown_descriptors[0x1A].length  25 bytes -> 24 bytes\n"
              "    ~ unknown_descriptors[0x1A].bytes\n"
              "        - 00 01 00 00 00 00 00 00 00 00 54 65 73 74 20 4D\n"
              "        - 65 73 73 61 67 65 20 31 61\n"
              "        + 00 01 00 00 00 00 00 00 00 00 54 65 73 74 20 4D\n"
              "        + 65 73 73 61 67 65 20 32\n"
              "~ DSM-CC 0x0001  PID 0x0194  version 1 -> 2  section 0/0  packet 4\n"
              "    ~ unknown_descriptors[0x1A].bytes\n"
              "        - 00 01 00 00 00 00 00 00 00 00 54 65 73 74 20 4D\n"
              "        - 65 73 73 61 67 65 20 32\n"
              "        + 00 01 00 00 00 00 00 00 00 00 54 65 73 74 20 4D\n"
              "        + 65 73 73 61 67 65 20 33\n"
              "4 packets of 188 bytes, 4 sections on 1 PID: 4 shown, 0 rejected, 0 CRC errors,\n"
              "  0 discontinuities\n");
}

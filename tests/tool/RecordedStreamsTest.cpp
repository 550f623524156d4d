#include "Process.h"
#include "support/RecordedFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class InspectRecordedStreams : public RecordedTest {};

} // namespace

/// The values are those of the independent readings beside the stream.
TEST_F(InspectRecordedStreams, ItalianMultiplexWithTwentyProgramsAndThreeTimes) {
    const Finished finished = inspectTables({recordedStream("tsduck-018.ts")});
    EXPECT_EQ(finished.status, 3); // one of its applications comes over a protocol that is not for these receivers
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, StartsWith("PAT  PID 0x0000  version 2  section 0/0  current  packet 3\n"
                                            "  transport_stream_id  0x1770 (6000)\n"
                                            "  network_pid          0x0000 (0)\n"
                                            "  programs (20)\n"
                                            "    program_number  program_map_pid\n"
                                            "    0x0001 (1)      0x0100 (256)\n"
                                            "    0x0002 (2)      0x0101 (257)\n"));
    EXPECT_THAT(finished.output, HasSubstr("    0x0383 (899)    0x010C (268)\n\n"));
    EXPECT_THAT(finished.output, HasSubstr("  unix_time  1518525305 = 2018-02-13 12:35:05 (UTC-3 assumed)\n"));
    EXPECT_THAT(finished.output, HasSubstr("  unix_time  1518525306 = 2018-02-13 12:35:06 (UTC-3 assumed)\n"));
    EXPECT_THAT(finished.output, HasSubstr("  unix_time  1518525307 = 2018-02-13 12:35:07 (UTC-3 assumed)\n"));
    EXPECT_THAT(finished.output, HasSubstr("        \"ITA\"         0                  0 ahead                     "
                                           "3600 s = +01:00\n"));
    EXPECT_THAT(finished.output, HasSubstr("10 shown, 1 rejected (2 times), 0 CRC errors, 0 discontinuities\n"));
}

TEST_F(InspectRecordedStreams, ClockOfATestStream) {
    const Finished finished = inspectTables({recordedStream("tsduck-182.1.ts")});
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, StartsWith("TOT  PID 0x0014  packet 1\n"
                                            "  unix_time  1903823940 = 2030-04-30 23:59:00 (UTC-3 assumed)\n"));
    EXPECT_THAT(finished.output, HasSubstr(": 91 shown, 0 rejected"));
}

TEST_F(InspectRecordedStreams, SectionsWithWrongLengths) {
    const Finished finished = inspectTables({recordedStream("tsduck-120.ts")});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr("30 packets of 188 bytes, 31 sections on 1 PID: 0 shown"));
}

TEST_F(InspectRecordedStreams, OneSegMultiplexFromALab) {
    const Finished finished = inspectTables({recordedStream("gr-isdbt-tx.ts")});
    EXPECT_EQ(finished.status, 3); // not all that it announces is sent
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr("PMT  PID 0x0218  version 23  section 0/0  current  packet 214\n"
                                           "  program_number  0x0211 (529)\n"
                                           "  pcr_pid         0x021E (542)\n"
                                           "  elementary_streams (5)\n"
                                           "    [0] stream_type 0x1B (27) H.264 video  elementary_pid 0x0219 (537)\n"
                                           "        stream_identifier_descriptor (0x52)  component_tag 0x81 (129)\n"));
    EXPECT_THAT(finished.output,
                HasSubstr("    [4] stream_type 0x05 (5) private sections  elementary_pid 0x021D (541)\n"
                          "        data_component_descriptor (0xFD)\n"
                          "          data_component_id     0x00A3 (163) Ginga application information table\n"));
    EXPECT_THAT(
        finished.output,
        HasSubstr(
            "        unknown_descriptors (1 skipped by the receiver)\n"
            "          descriptor_tag                        length    bytes\n"
            "          0x14 (20) association_tag_descriptor  13 bytes  00 80 00 00 08 80 00 00 00 FF FF FF FF\n"));
    EXPECT_THAT(finished.output, HasSubstr("          service_provider_name  \"RTVE\"\n"
                                           "          service_name           \"La 2\"\n"));
    EXPECT_THAT(finished.output, EndsWith("\n\n"
                                          "4 faults:\n"
                                          "! Transport stream 0x0001 (1): no NIT came\n"
                                          "! Service 0x0110 (272), Service 0x0111 (273): no PMT came\n"
                                          "! Component PID 0x021D: no AIT came\n"
                                          "2128 packets of 188 bytes, 32 sections on 3 PIDs: 3 shown, 0 rejected, "
                                          "0 CRC errors, 0 discontinuities\n"));
}

TEST_F(InspectRecordedStreams, ItalianApplications) {
    const std::string output = inspectTables({recordedStream("tsduck-018.ts")}).output;
    EXPECT_THAT(output, HasSubstr("AIT  PID 0x1EC6  version 0  section 0/0  current  packet 25\n"
                                  "  application_type  0x0001 (1) Ginga-J\n"
                                  "  applications (1)\n"
                                  "    [0] hash_id           \"0000000B1AB6\"\n"
                                  "        application_identifier  organization_id 0x0000000B (11)  application_id "
                                  "0x1AB6 (6838)\n"
                                  "        control_code      1 AUTOSTART\n"));
    EXPECT_THAT(output, HasSubstr("            \"eng\"          \"Launcher SAT\"\n"));
    EXPECT_THAT(output, HasSubstr("          component_tag             0x0A (10)\n"));
    EXPECT_THAT(output, HasSubstr("          base_directory       \"/\"\n"
                                  "          classpath_extension  \"\"\n"
                                  "          initial_class        \"bd.BDXlet\"\n"));
    EXPECT_THAT(output, HasSubstr("AIT  PID 0x1EC5  version 0  section 0/0  current  packet 15  REJECTED\n"
                                  "  error  ERROR_INVALID_ITEM (0x0A0A)\n"
                                  "  log    ISDBTUtils: TTransportProtocolDescriptor::parse: DataPiping not supported. "
                                  "Aborting!\n"));
    EXPECT_THAT(output,
                HasSubstr("    > 0068  0x02  transport_protocol_descriptor, 72 bytes  refused with ERROR_OK\n"
                          "                  right by the standard; this receiver refuses it because it has no data "
                          "piping (protocol_id 3)\n"));
}

TEST_F(InspectRecordedStreams, FrenchApplicationsForOtherReceivers) {
    const Finished finished = inspectTables({recordedStream("exoplayer-ait.ts")});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("PMT  PID 0x012C  version 22"));
    EXPECT_THAT(finished.output, HasSubstr("AIT  PID 0x0172  version 30  section 0/0  current  packet 47  REJECTED\n"));
    EXPECT_THAT(finished.output, HasSubstr("  descriptors of application 000001200071 (8)\n"
                                           "    > 0015  0x02  transport_protocol_descriptor, 41 bytes  refused with "
                                           "ERROR_OK\n"));
    EXPECT_THAT(finished.output, EndsWith("2 shown, 1 rejected (3 times), 0 CRC errors, 0 discontinuities\n"));
}

TEST_F(InspectRecordedStreams, JapaneseSatelliteWithAServiceListOfThreeBytesAnEntry) {
    const Finished finished = inspectTables({recordedStream("tsduck-101.ts")});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("PMT  PID 0x0101  version 9  section 0/0  current  packet 131\n"
                                           "  program_number  0x008D (141)\n"
                                           "  pcr_pid         0x0100 (256)\n"
                                           "  digital_copy_control_descriptor (0xC1)\n"
                                           "    digital_recording_control_data  2 copy once\n"));
    EXPECT_THAT(finished.output, HasSubstr("          still_picture        no\n"
                                           "          sequence_end_code    yes\n"
                                           "          video_encode_format  1 1080i\n"));
    EXPECT_THAT(finished.output, HasSubstr("    0x09 (9) ca_descriptor  4 bytes  00 05 E1 21\n"));
    EXPECT_THAT(finished.output, HasSubstr("NIT  PID 0x0010  version 10  section 0/0  current  packet 566  REJECTED\n"
                                           "  error  ERROR_INVALID_ITEM (0x0A0A)\n"));
    EXPECT_THAT(finished.output, HasSubstr("  descriptors of transport_stream 0x4010 (2)\n"
                                           "    > 0024  0x41  service_list_descriptor, 21 bytes  refused with "
                                           "ERROR_INVALID_DESCRIPTOR_LENGTH\n"));
    EXPECT_THAT(finished.output, HasSubstr(": 4 shown, 1 rejected"));
}

TEST_F(InspectRecordedStreams, JapaneseNetworkOnTwentyThreeFrequencies) {
    const Finished finished = inspectTables({"--table", "nit", recordedStream("tsduck-208.1.ts")});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("          area_code          0xAC6 (2758) Akita, Japan\n"
                                           "          guard_interval     2 1/8\n"
                                           "          transmission_mode  2 mode 3 (8K)\n"
                                           "          frequency_counter  23\n"
                                           "          frequencies (23)\n"
                                           "            [0]  3312 x 1/7 MHz = 473.142857 MHz\n"));
    EXPECT_THAT(finished.output, HasSubstr("            [22] 4950 x 1/7 MHz = 707.142857 MHz\n"));
    EXPECT_THAT(finished.output, HasSubstr("          service_ids (1)  0x49A0 (18848)\n"));
    EXPECT_THAT(finished.output, HasSubstr("          remote_control_key_id  5\n"));
}

/// They come under a tag that this library keeps for none of its classes.
TEST_F(InspectRecordedStreams, StreamEventsOfATestService) {
    EXPECT_THAT(inspectTables({recordedStream("tsduck-032.1.ts")}).output, HasSubstr("0 sections on 0 PIDs"));
    const Finished finished = inspectTables({"--pid", "404", recordedStream("tsduck-032.1.ts")});
    EXPECT_EQ(finished.status, 3); // the second one has the version of the first
    EXPECT_THAT(finished.output, StartsWith("DSM-CC  PID 0x0194  version 0  section 0/0  current  packet 1\n"
                                            "  data_event_id       0x0 (0)\n"
                                            "  event_msg_group_id  0x001 (1)\n"
                                            "  unknown_descriptors (1 skipped by the receiver)\n"
                                            "    [0] descriptor_tag  0x1A (26) stream_event_descriptor\n"
                                            "        length          24 bytes\n"
                                            "        bytes           00 01 00 00 00 00 00 00 00 00 54 65 73 74 20 "
                                            "4D 65 73 73 61 67 65 20 31\n"));
    EXPECT_THAT(finished.output, HasSubstr("packet 2  CHANGED WITHOUT A NEW VERSION\n"));
    EXPECT_THAT(finished.output, HasSubstr("DSM-CC  PID 0x0194  version 2  section 0/0  current  packet 4\n"));
    EXPECT_THAT(finished.output, HasSubstr("4 packets of 188 bytes, 4 sections on 1 PID: 4 shown, 0 rejected"));
}

TEST_F(InspectRecordedStreams, EachIsReadToItsEnd) {
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/streams")) {
        const Finished finished = inspectTables({entry.path().string()});
        EXPECT_TRUE(finished.status == 0 || finished.status == 3) << entry.path();
        EXPECT_EQ(finished.errors, "") << entry.path();
    }
}

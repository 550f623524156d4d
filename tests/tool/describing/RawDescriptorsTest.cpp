#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "describing/OnWire.h"
#include "nit/TNITTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "tool/describing/FieldLines.h"
#include "tot/TTOTTable.h"

#include <gtest/gtest.h>

namespace {

using inspect::describeDescriptors;
using inspect::DescriptorOnWire;
using inspect::LoopOnWire;

TEST(UnknownDescriptors, OfAProgramAndOfEachStreamStandUnderThem) {
    EXPECT_EQ(describedTable<Quor::TPMTTable>(longSection(
                  0x02, {0xE6A0}, hex("E100 F006 09 02 AABB 0A 00  1B E111 F003 520181  1B E111 F003 090101"))),
              (Lines{
                  "program_number 0xE6A0",
                  "pcr_pid 0x0100",
                  "unknown_descriptors [2] = skipped by the receiver",
                  "  -",
                  "    descriptor_tag 0x09 (ca_descriptor)",
                  "    length 2 bytes",
                  "    bytes <AA BB>",
                  "  -",
                  "    descriptor_tag 0x0A (iso_639_language_descriptor)",
                  "    length 0 bytes",
                  "    bytes <>",
                  "elementary_streams [2]",
                  "  -",
                  "    stream_type 0x1B (H.264 video)",
                  "    elementary_pid 0x0111",
                  "    stream_identifier_descriptor",
                  "      descriptor_tag 0x52",
                  "      component_tag 0x81",
                  "  -",
                  "    stream_type 0x1B (H.264 video)",
                  "    elementary_pid 0x0111",
                  "    unknown_descriptors [1] = skipped by the receiver",
                  "      -",
                  "        descriptor_tag 0x09 (ca_descriptor)",
                  "        length 1 bytes",
                  "        bytes <01>",
              }));
}

TEST(UnknownDescriptors, OfANetworkStandUnderTheStreamWhoseEntryIsKept) {
    EXPECT_EQ(
        describedTable<Quor::TNITTable>(longSection(
            0x40, {0x0735}, hex("F002 4200  F018  0736 0001 F002 5000  0735 0001 F002 5100  0736 0001 F002 5200"))),
        (Lines{
            "network_id 0x0735",
            "unknown_descriptors [1] = skipped by the receiver",
            "  -",
            "    descriptor_tag 0x42 (stuffing_descriptor)",
            "    length 0 bytes",
            "    bytes <>",
            "transport_streams [2] = of 3 sent; of each transport stream the last is kept",
            "  -",
            "    transport_stream_id 0x0735",
            "    original_network_id 0x0001",
            "    unknown_descriptors [1] = skipped by the receiver",
            "      -",
            "        descriptor_tag 0x51 (mosaic_descriptor)",
            "        length 0 bytes",
            "        bytes <>",
            "  -",
            "    transport_stream_id 0x0736",
            "    original_network_id 0x0001",
            "    unknown_descriptors [1] = skipped by the receiver",
            "      -",
            "        descriptor_tag 0x52 (stream_identifier_descriptor)",
            "        length 0 bytes",
            "        bytes <>",
        }));
}

TEST(UnknownDescriptors, OfAServiceStandUnderIt) {
    EXPECT_EQ(
        describedTable<Quor::TSDTTable>(longSection(0x42, {0x0735}, hex("0001 FF  E6B8 FF 8002 5000  E6A0 FC 0000"))),
        (Lines{
            "transport_stream_id 0x0735",
            "original_network_id 0x0001",
            "services [2]",
            "  -",
            "    service_id 0xE6A0",
            "    eit_schedule no",
            "    eit_present_following no",
            "    running_status 0 (undefined)",
            "    free_ca_mode 0 (not scrambled)",
            "  -",
            "    service_id 0xE6B8",
            "    eit_schedule yes",
            "    eit_present_following yes",
            "    running_status 4 (running)",
            "    free_ca_mode 0 (not scrambled)",
            "    unknown_descriptors [1] = skipped by the receiver",
            "      -",
            "        descriptor_tag 0x50 (component_descriptor)",
            "        length 0 bytes",
            "        bytes <>",
        }));
}

TEST(UnknownDescriptors, OfATimeOffsetStandInIt) {
    EXPECT_EQ(describedTable<Quor::TTOTTable>(shortSection(0x73, hex("EDA9 123456 F002 4200"))),
              (Lines{
                  "unix_time 1749990896 = 2025-06-15 12:34:56 (UTC-3 assumed)",
                  "unknown_descriptors [1] = skipped by the receiver",
                  "  -",
                  "    descriptor_tag 0x42 (stuffing_descriptor)",
                  "    length 0 bytes",
                  "    bytes <>",
              }));
}

TEST(UnknownDescriptors, OfAnApplicationStandUnderIt) {
    EXPECT_EQ(describedTable<Quor::TAITTable>(
                  longSection(0x74, {9}, hex("F002 5F00  F015  0000000A 0002 02 F003 6001FF 0000000A 0001 05 F000"))),
              (Lines{
                  "application_type 0x0009 (Ginga-NCL)",
                  "unknown_descriptors [1] = skipped by the receiver",
                  "  -",
                  "    descriptor_tag 0x5F",
                  "    length 0 bytes",
                  "    bytes <>",
                  "applications [2]",
                  "  -",
                  "    hash_id \"0000000A0001\"",
                  "    application_identifier",
                  "      organization_id 0x0000000A",
                  "      application_id 0x0001",
                  "    control_code 5 (PREFETCH)",
                  "    application_type 0x0009 (Ginga-NCL)",
                  "  -",
                  "    hash_id \"0000000A0002\"",
                  "    application_identifier",
                  "      organization_id 0x0000000A",
                  "      application_id 0x0002",
                  "    control_code 2 (PRESENT)",
                  "    application_type 0x0009 (Ginga-NCL)",
                  "    unknown_descriptors [1] = skipped by the receiver",
                  "      -",
                  "        descriptor_tag 0x60",
                  "        length 1 bytes",
                  "        bytes <FF>",
              }));
}

TEST(UnknownDescriptors, OfADownloadStandUnderItsContent) {
    EXPECT_EQ(describedTable<Quor::TSDTTTable>(
                  longSection(0xC3, {0x1234}, hex("0735 0001 E6A0 01  1001 0027 0020 0005 9900"))),
              (Lines{
                  "table_id_extension 0x1234",
                  "maker_id 0x12",
                  "model_id 0x34",
                  "transport_stream_id 0x0735",
                  "original_network_id 0x0001",
                  "service_id 0xE6A0",
                  "download_contents [1]",
                  "  -",
                  "    group 1",
                  "    target_version 1",
                  "    new_version 2",
                  "    download_level 1 (compulsory)",
                  "    version_indicator 3 (for target_version only)",
                  "    schedule_time_shift_info 5 (shifted by 5 h for each service)",
                  "    schedule_infos [0]",
                  "    unknown_descriptors [1] = skipped by the receiver",
                  "      -",
                  "        descriptor_tag 0x99 (broadcaster_defined_descriptor)",
                  "        length 0 bytes",
                  "        bytes <>",
              }));
}

TEST(UnknownDescriptors, OfADsmccSectionStandInIt) {
    EXPECT_EQ(describedTable<Quor::TDSMCCSectionTable>(longSection(0x3D, {0x3123}, hex("17 01 AA"))),
              (Lines{
                  "data_event_id 0x3",
                  "event_msg_group_id 0x123",
                  "unknown_descriptors [1] = skipped by the receiver",
                  "  -",
                  "    descriptor_tag 0x17 (npt_reference_descriptor)",
                  "    length 1 bytes",
                  "    bytes <AA>",
              }));
}

TEST(DisplacedDescriptors, StandUnderTheEntryThatKeepsTheLastOfTheirKind) {
    EXPECT_EQ(describedTable<Quor::TPMTTable>(
                  longSection(0x02, {0xE6A0}, hex("E100 F000  1B E111 F009 520181 520182 520183"))),
              (Lines{
                  "program_number 0xE6A0",
                  "pcr_pid 0x0100",
                  "elementary_streams [1]",
                  "  -",
                  "    stream_type 0x1B (H.264 video)",
                  "    elementary_pid 0x0111",
                  "    stream_identifier_descriptor",
                  "      descriptor_tag 0x52",
                  "      component_tag 0x83",
                  "    displaced_descriptors [2]",
                  "      -",
                  "        descriptor_tag 0x52 (stream_identifier_descriptor)",
                  "        length 1 bytes",
                  "        bytes <81>",
                  "      -",
                  "        descriptor_tag 0x52 (stream_identifier_descriptor)",
                  "        length 1 bytes",
                  "        bytes <82>",
              }));
}

TEST(DisplacedDescriptors, AreThoseOfGingaJByThoseOfGingaNcl) {
    EXPECT_EQ(describedTable<Quor::TAITTable>(longSection(0x74, {9}, hex("F006 0302 0161 0600  F000"))),
              (Lines{
                  "application_type 0x0009 (Ginga-NCL)",
                  "ginga_application_descriptor",
                  "  descriptor_tag 0x06 (Ginga-NCL)",
                  "  parameters [0]",
                  "displaced_descriptors [1]",
                  "  -",
                  "    descriptor_tag 0x03 (ginga_application_descriptor)",
                  "    length 2 bytes",
                  "    bytes <01 61>",
                  "applications [0]",
              }));
}

std::vector<LoopOnWire> loopsOf(const std::string& body) {
    const ByteVector section = longSection(0x02, {}, hex(body));
    return describeDescriptors(section.data(), section.size());
}

TEST(RejectedSections, ShowWhatTheLibrarySaysToEachDescriptor) {
    const std::vector<LoopOnWire> loops = loopsOf("E100 F007 520181 0902AABB  1B E111 F003 5504AA");
    ASSERT_EQ(loops.size(), 2U);
    EXPECT_EQ(loops[0].name, "program");
    EXPECT_EQ(loops[0].remark, "");
    ASSERT_EQ(loops[0].descriptors.size(), 2U);

    const DescriptorOnWire& taken = loops[0].descriptors[0];
    EXPECT_EQ(taken.raw.offset, 0x0CU);
    EXPECT_EQ(taken.raw.name, "stream_identifier_descriptor");
    EXPECT_EQ(taken.raw.body, hex("81"));
    EXPECT_EQ(taken.errorCode, std::nullopt);
    EXPECT_FALSE(taken.atFault());

    const DescriptorOnWire& skipped = loops[0].descriptors[1];
    EXPECT_EQ(skipped.raw.tag, 0x09);
    EXPECT_EQ(skipped.raw.name, "ca_descriptor");
    EXPECT_EQ(skipped.raw.kind, nullptr);
    EXPECT_EQ(skipped.raw.length, 2);
    EXPECT_EQ(skipped.errorCode, std::nullopt);
    EXPECT_FALSE(skipped.atFault());

    EXPECT_EQ(loops[1].name, "elementary_stream 0x0111");
    ASSERT_EQ(loops[1].descriptors.size(), 1U);
    const DescriptorOnWire& cutOff = loops[1].descriptors[0];
    EXPECT_EQ(cutOff.raw.offset, 0x18U);
    EXPECT_EQ(cutOff.raw.name, "parental_rating_descriptor");
    EXPECT_EQ(cutOff.raw.length, 4);
    EXPECT_EQ(cutOff.raw.body, hex("AA"));
    EXPECT_EQ(cutOff.errorCode, std::nullopt);
    EXPECT_TRUE(cutOff.atFault());
}

TEST(RejectedSections, NameTheErrorOfARefusedDescriptor) {
    const std::vector<LoopOnWire> loops = loopsOf("E100 F002 5200");
    EXPECT_EQ(loops.at(0).descriptors.at(0).errorCode, 0x0A08);
    EXPECT_TRUE(loops.at(0).descriptors.at(0).atFault());
}

TEST(RejectedSections, SayWhenALoopIsLongerThanTheSection) {
    const std::vector<LoopOnWire> loops = loopsOf("E100 F0FF 09");
    EXPECT_EQ(loops.at(0).remark, "in 1 of 255 bytes");
    ASSERT_EQ(loops.at(0).descriptors.size(), 1U);
    EXPECT_EQ(loops.at(0).descriptors[0].raw.length, std::nullopt);
    EXPECT_TRUE(loops.at(0).descriptors[0].atFault());
}

} // namespace

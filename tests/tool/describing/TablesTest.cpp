#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdtt/TSDTTTable.h"
#include "tool/describing/FieldLines.h"
#include "tot/TTOTTable.h"

#include <gmock/gmock.h>

namespace {

TEST(Tables, PatWithItsPrograms) {
    EXPECT_EQ(describedTable<Quor::TPATTable>(longSection(0x00, {0x0735}, hex("0000 E010 E6B8 FFC8 E6A0 E101"))),
              (Lines{
                  "transport_stream_id 0x0735",
                  "network_pid 0x0010",
                  "programs [2]",
                  "  -",
                  "    program_number 0xE6A0",
                  "    program_map_pid 0x0101",
                  "  -",
                  "    program_number 0xE6B8",
                  "    program_map_pid 0x1FC8",
              }));
}

TEST(Tables, PatSaysHowManyProgramsWereDisplaced) {
    const Lines lines = describedTable<Quor::TPATTable>(
        longSection(0x00, {0x0735}, hex("E6A0 E100 0000 E010 E6A0 E101 E6A0 E102 E6B8 FFC8")));
    EXPECT_THAT(lines, testing::Contains("programs [2] = of 4 sent; of each program the last is kept"));
}

TEST(Tables, PmtWithStreamsInTheOrderOfTheWire) {
    EXPECT_EQ(describedTable<Quor::TPMTTable>(longSection(
                  0x02, {0xE6A0}, hex("E100 F003 C80104  02 E112 F000  03 E111 F003 520110  FF E113 F000"))),
              (Lines{
                  "program_number 0xE6A0",
                  "pcr_pid 0x0100",
                  "video_decode_control_descriptor",
                  "  descriptor_tag 0xC8",
                  "  still_picture no",
                  "  sequence_end_code no",
                  "  video_encode_format 1 (1080i)",
                  "elementary_streams [3]",
                  "  -",
                  "    stream_type 0x02 (MPEG-2 video)",
                  "    elementary_pid 0x0112",
                  "  -",
                  "    stream_type 0x03 (MPEG-1 audio)",
                  "    elementary_pid 0x0111",
                  "    stream_identifier_descriptor",
                  "      descriptor_tag 0x52",
                  "      component_tag 0x10",
                  "  -",
                  "    stream_type 0xFF (user private)",
                  "    elementary_pid 0x0113",
              }));
}

/// The library counts the positions of streams in eight bits.
TEST(Tables, PmtOfMoreStreamsThanTheLibraryReachesSaysSo) {
    ByteVector body = hex("E100 F000");
    for (int stream = 0; stream < 300; ++stream) {
        body = join({body, hex("1B E111 F000")});
    }
    const Lines lines = describedTable<Quor::TPMTTable>(longSection(0x02, {}, body));
    EXPECT_THAT(lines, testing::Contains("elementary_streams [256] = of 300; the others are out of reach"));
    EXPECT_EQ(lines.size(), 3U + 256U * 3U);
}

TEST(Tables, TotSaysHowManyItemsOfItsOffsetWereDisplaced) {
    const ByteVector offsets = hex("F01C 58 1A  425241 09 0300 EE35030000 0200  425241 0D 0200 EE35030000 0200");
    EXPECT_EQ(describedTable<Quor::TTOTTable>(shortSection(0x73, join({hex("EDA9 213000"), offsets}))),
              (Lines{
                  "unix_time 1750023000 = 2025-06-15 21:30:00 (UTC-3 assumed)",
                  "local_time_offset_descriptor",
                  "  descriptor_tag 0x58",
                  "  items [1] = of 2 sent; of each country the last is kept",
                  "    -",
                  "      country_code \"BRA\"",
                  "      country_region_id 3",
                  "      local_time_offset_polarity 1 (behind)",
                  "      local_time_offset 7200 s = -02:00",
                  "  standard",
                  "    regions [2]",
                  "      -",
                  "        country_code \"BRA\"",
                  "        country_region_id 2",
                  "        local_time_offset -180 min = -03:00",
                  "        time_of_change 1762052400 s = 2025-11-02 03:00:00",
                  "        next_time_offset -120 min = -02:00",
                  "      -",
                  "        country_code \"BRA\"",
                  "        country_region_id 3",
                  "        local_time_offset -120 min = -02:00",
                  "        time_of_change 1762052400 s = 2025-11-02 03:00:00",
                  "        next_time_offset -120 min = -02:00",
              }));
}

TEST(Tables, AitSaysHowManyApplicationsWereDisplaced) {
    const Lines lines = describedTable<Quor::TAITTable>(
        longSection(0x74, {9}, hex("F000 F012  0000000A 0001 01 F000  0000000A 0001 02 F000")));
    EXPECT_THAT(lines, testing::IsSupersetOf({"applications [1] = of 2 sent; of each application the last is kept",
                                              "    control_code 2 (PRESENT)"}));
}

TEST(Tables, AitMarksWhatAnApplicationInherits) {
    const ByteVector common = hex("F00D  07 06 01 2F 00 6D2E6E  11 03 010203");
    const ByteVector applications = hex("F01A  0000000A 0001 01 F008  07 06 01 2F 00 782E6E  0000000A 0002 04 F000");
    EXPECT_EQ(describedTable<Quor::TAITTable>(longSection(0x74, {9}, join({common, applications}))),
              (Lines{
                  "application_type 0x0009 (Ginga-NCL)",
                  "ip_signaling_descriptor",
                  "  descriptor_tag 0x11",
                  "  platform_id 0x010203",
                  "ginga_application_location_descriptor",
                  "  descriptor_tag 0x07 (Ginga-NCL)",
                  "  base_directory \"/\"",
                  "  classpath_extension \"\"",
                  "  initial_class \"m.n\"",
                  "applications [2]",
                  "  -",
                  "    hash_id \"0000000A0001\"",
                  "    application_identifier",
                  "      organization_id 0x0000000A",
                  "      application_id 0x0001",
                  "    control_code 1 (AUTOSTART)",
                  "    application_type 0x0009 (Ginga-NCL)",
                  "    ip_signaling_descriptor",
                  "      inherited yes",
                  "      descriptor_tag 0x11",
                  "      platform_id 0x010203",
                  "    ginga_application_location_descriptor",
                  "      descriptor_tag 0x07 (Ginga-NCL)",
                  "      base_directory \"/\"",
                  "      classpath_extension \"\"",
                  "      initial_class \"x.n\"",
                  "  -",
                  "    hash_id \"0000000A0002\"",
                  "    application_identifier",
                  "      organization_id 0x0000000A",
                  "      application_id 0x0002",
                  "    control_code 4 (KILL)",
                  "    application_type 0x0009 (Ginga-NCL)",
                  "    ip_signaling_descriptor",
                  "      inherited yes",
                  "      descriptor_tag 0x11",
                  "      platform_id 0x010203",
                  "    ginga_application_location_descriptor",
                  "      inherited yes",
                  "      descriptor_tag 0x07 (Ginga-NCL)",
                  "      base_directory \"/\"",
                  "      classpath_extension \"\"",
                  "      initial_class \"m.n\"",
              }));
}

TEST(Tables, SdttWithItsSchedule) {
    const Lines lines = describedTable<Quor::TSDTTTable>(
        longSection(0xC3, {0x1234}, hex("0735 0001 E6A0 01  2FFF 0030 0100 0100 EDA9123456013000 EDA900000001300A")));
    EXPECT_THAT(lines, testing::IsSupersetOf({
                           "    group 2",
                           "    target_version 4095",
                           "    new_version 3",
                           "    download_level 0 (optional)",
                           "    version_indicator 0 (for all versions)",
                           "    schedule_infos [2]",
                           "        start_time 1749990896 = 2025-06-15 12:34:56 (UTC-3 assumed)",
                           "        duration 77824 = 01:30:00",
                           "        start_time 1749945600 = 2025-06-15 00:00:00 (UTC-3 assumed)",
                           "        duration 77834",
                       }));
}

TEST(Tables, DsmccSectionWithItsDescriptors) {
    EXPECT_EQ(describedTable<Quor::TDSMCCSectionTable>(longSection(0x3D, {0x3123}, hex("03 02 02 FF"))),
              (Lines{
                  "data_event_id 0x3",
                  "event_msg_group_id 0x123",
                  "stream_mode_descriptor",
                  "  descriptor_tag 0x03",
                  "  stream_mode 2 (transport)",
              }));
}

} // namespace

#include "Process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

Finished inspectDescriptor(const std::string& table, const std::string& digits) {
    return inspect({"--descriptor", table, "--hex", digits});
}

} // namespace

TEST(InspectDescriptor, IsShownAsInItsTable) {
    const Finished finished = inspectDescriptor("pmt", "52 01 07");
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, "stream_identifier_descriptor (0x52)  component_tag 0x07 (7)\n");
}

/// The same tag stands for other descriptors in other tables.
TEST(InspectDescriptor, DependsOnItsTable) {
    EXPECT_THAT(inspectDescriptor("ait", "01 06 656E67 02 4F4B").output,
                StartsWith("application_name_descriptor (0x01)"));
    EXPECT_EQ(inspectDescriptor("pmt", "01 06 656E67 02 4F4B").output, "  0000  0x01  unknown, skipped, 6 bytes\n"
                                                                       "              65 6E 67 02 4F 4B\n");
    EXPECT_THAT(inspectDescriptor("dsmcc", "03 04 0200 0100").output, StartsWith("stream_mode_descriptor (0x03)"));
    EXPECT_THAT(inspectDescriptor("tot", "58 0D 425241 0C 0300 C079 030000 0300").output,
                StartsWith("local_time_offset_descriptor (0x58)\n"));
}

TEST(InspectDescriptor, TextsAreDecoded) {
    EXPECT_EQ(inspectDescriptor("nit", "40 03 41 E7 42").output,
              "network_name_descriptor (0x40)  network_name \"AçB\"\n");
    const Finished finished = inspect({"--descriptor", "nit", "--hex", "40 02 C3A7", "--charset", "UTF-8"});
    EXPECT_EQ(finished.output, "network_name_descriptor (0x40)  network_name \"ç\"\n");
}

TEST(InspectDescriptor, SeveralBehindEachOther) {
    const Finished finished = inspectDescriptor("pmt", "52 01 07  09 02 AABB  52 01 08");
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, "stream_identifier_descriptor (0x52)  component_tag 0x07 (7)\n"
                               "  0003  0x09  ca_descriptor, skipped, 2 bytes\n"
                               "              AA BB\n"
                               "stream_identifier_descriptor (0x52)  component_tag 0x08 (8)\n");
}

TEST(InspectDescriptor, RefusedSaysWhy) {
    const Finished finished = inspectDescriptor("pmt", "52 01 07  52 00");
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, "stream_identifier_descriptor (0x52)  component_tag 0x07 (7)\n"
                               "stream_identifier_descriptor (0x52)  PMT  byte 3  REJECTED\n"
                               "  error  ERROR_INVALID_DESCRIPTOR_LENGTH (0x0A08)\n"
                               "  log    ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                               "required: 2 < 3. Aborting!\n"
                               "  descriptors of PMT (1)\n"
                               "    > 0003  0x52  stream_identifier_descriptor, 0 bytes  refused with "
                               "ERROR_INVALID_DESCRIPTOR_LENGTH\n"
                               "  bytes (2)\n"
                               "    0000  52 00\n");
}

/// It is handed to the library as it is.
TEST(InspectDescriptor, CutShort) {
    const Finished finished = inspectDescriptor("pmt", "55 04 AA");
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.output, "parental_rating_descriptor (0x55)  PMT  byte 0  DAMAGED  REJECTED\n"
                               "  error  ERROR_INVALID_DESCRIPTOR_LENGTH (0x0A08)\n"
                               "  log    ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (4) Longer data length is "
                               "required: 6 < 3. Aborting!\n"
                               "  descriptors of PMT (1)\n"
                               "    > 0000  0x55  parental_rating_descriptor, 4 bytes  does not fit: 1 left\n"
                               "                  AA\n"
                               "  bytes (3)\n"
                               "    0000  55 04 AA\n");
    EXPECT_EQ(inspectDescriptor("pmt", "52").status, 3);
    const Finished unknown = inspectDescriptor("pmt", "09 05 01");
    EXPECT_EQ(unknown.status, 3);
    EXPECT_EQ(unknown.output, "> 0000  0x09  ca_descriptor, skipped, 5 bytes  does not fit: 1 left\n"
                              "              01\n");
}

TEST(InspectDescriptor, LenientIsAboutItToo) {
    EXPECT_EQ(inspect({"--lenient", "--descriptor", "pmt", "--hex", "52 00"}).status, 0);
}

TEST(InspectDescriptor, WrongUsage) {
    EXPECT_EQ(inspectDescriptor("eit", "52 01 07").status, 2);
    EXPECT_EQ(inspectDescriptor("pmt", "52 0").status, 2);
    EXPECT_EQ(inspect({"--descriptor", "pmt", SAMPLE_FILE}).status, 2);
    EXPECT_THAT(inspectDescriptor("pat", "52 01 07").errors,
                StartsWith("isdbt-inspect: --descriptor: a PAT carries no descriptors\n"));
    EXPECT_THAT(inspect({"--descriptor", "pmt", "--hex", "52 01 07", "--view", "tables"}).errors,
                StartsWith("isdbt-inspect: --descriptor: --table, --without and --view are for sections\n"));
}

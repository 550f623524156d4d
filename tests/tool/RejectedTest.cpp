#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

LongHeader extension(QUOR_U16 number) {
    LongHeader header;
    header.extension = number;
    return header;
}

/// What is shown of a section that the library rejects.
std::string rejected(const ByteVector& section) {
    const TemporaryFile file(StreamBuilder().section(0x0321, section).bytes());
    const Finished finished = inspectTables({"--pid", "0x321", file.path()});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr(": 0 shown, 1 rejected"));
    return finished.output;
}

} // namespace

TEST(InspectRejected, PmtWithARefusedDescriptor) {
    const ByteVector pmt = longSection(
        0x02, extension(1), hex("E100 F007 52 01 81 0A 02 AABB  1B E111 F006 52 01 00 C8 01 FC  0F E112 F002 52 00"));
    EXPECT_THAT(rejected(pmt),
                StartsWith("PMT  PID 0x0321  version 0  section 0/0  current  packet 1  REJECTED\n"
                           "  error  ERROR_INVALID_ITEM (0x0A0A)\n"
                           "  log    ISDBTUtils: TPMTTable::parse: Unknown descriptor: 0x0A. Ignored!\n"
                           "  log    ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                           "required: 2 < 3. Aborting!\n"
                           "  log    ISDBTUtils: TPMTTable::parse: Invalid item. Aborting!\n"
                           "  descriptors of program (2)\n"
                           "      000C  0x52  stream_identifier_descriptor, 1 byte\n"
                           "                  81\n"
                           "      000F  0x0A  iso_639_language_descriptor, skipped, 2 bytes\n"
                           "                  AA BB\n"
                           "  descriptors of elementary_stream 0x0111 (2)\n"
                           "      0018  0x52  stream_identifier_descriptor, 1 byte\n"
                           "                  00\n"
                           "      001B  0xC8  video_decode_control_descriptor, 1 byte\n"
                           "                  FC\n"
                           "  descriptors of elementary_stream 0x0112 (1)\n"
                           "    > 0023  0x52  stream_identifier_descriptor, 0 bytes  refused with "
                           "ERROR_INVALID_DESCRIPTOR_LENGTH\n"
                           "  bytes (41)\n"
                           "    0000  02 B0 26 00 01 C1 00 00 E1 00 F0 07 52 01 81 0A\n"));
}

TEST(InspectRejected, PmtWithADescriptorThatDoesNotFit) {
    EXPECT_THAT(rejected(longSection(0x02, extension(1), hex("E100 F000  1B E111 F003 55 04 AA"))),
                HasSubstr("  descriptors of elementary_stream 0x0111 (1)\n"
                          "    > 0011  0x55  parental_rating_descriptor, 4 bytes  does not fit: 1 left\n"
                          "                  AA\n"));
}

TEST(InspectRejected, PmtWithALoopLongerThanTheSection) {
    EXPECT_THAT(rejected(longSection(0x02, extension(1), hex("E100 F0FF 09"))),
                HasSubstr("  descriptors of program (1 in 1 of 255 bytes)\n"
                          "    > 000C  0x09  ca_descriptor, skipped, no length  does not fit: 0 left\n"
                          "  bytes ("));
}

/// As many networks send it: entries of three bytes.
TEST(InspectRejected, NitWithAnOddServiceList) {
    const std::string output =
        rejected(longSection(0x40, extension(0x0735), hex("F003 40 01 41  F00B 0735 0735 F005 41 03 E6A001")));
    EXPECT_THAT(output, HasSubstr("  error  ERROR_INVALID_ITEM (0x0A0A)\n"
                                  "  log    ISDBTUtils: TServiceListDescriptorItem::parse: Descriptor length not "
                                  "valid: 1. Aborting!\n"
                                  "  log    ISDBTUtils: TServiceListDescriptor::parse: Invalid item. Aborting!\n"
                                  "  log    ISDBTUtils: TNITTable::parse: Invalid item. Aborting!\n"
                                  "  descriptors of network (1)\n"
                                  "      000A  0x40  network_name_descriptor, 1 byte\n"
                                  "                  41\n"
                                  "  descriptors of transport_stream 0x0735 (1)\n"
                                  "    > 0015  0x41  service_list_descriptor, 3 bytes  refused with "
                                  "ERROR_INVALID_DESCRIPTOR_LENGTH\n"
                                  "                  right by the standard; this receiver refuses it because it looks "
                                  "for services of two bytes, and the length is odd\n"
                                  "                  E6 A0 01\n"));
}

/// The tree is an overview: of what is refused it has the first, at which the receiver stopped.
TEST(InspectRejected, OverviewHasTheFirstDescriptorAtFault) {
    const TemporaryFile file(
        StreamBuilder()
            .section(0x0010, longSection(0x40, extension(0x0735),
                                         hex("F003 40 01 41  F010 0735 0735 F00A 41 03 E6A001 41 03 E6A101")))
            .bytes());
    const std::string output = inspect({"--width", "200", file.path()}).output;
    EXPECT_THAT(output, HasSubstr("  log    ISDBTUtils: TNITTable::parse: Invalid item. Aborting!\n"
                                  "  descriptor of transport_stream 0x0735\n"
                                  "    > 0015  0x41  service_list_descriptor, 3 bytes  refused with "
                                  "ERROR_INVALID_DESCRIPTOR_LENGTH\n"
                                  "                  right by the standard; this receiver refuses it because it looks "
                                  "for services of two bytes, and the length is odd\n"
                                  "                  E6 A0 01\n"
                                  "\n"));
    EXPECT_THAT(inspect({"--full", file.path()}).output, HasSubstr("  bytes (35)\n"));
}

TEST(InspectRejected, SdtWithAServiceWithoutName) {
    EXPECT_THAT(rejected(longSection(0x42, extension(0x0735), hex("0735 FF  E6A0 FD 8006 48 04 01 02 4142"))),
                HasSubstr("  descriptors of service 0xE6A0 (1)\n"
                          "    > 0010  0x48  service_descriptor, 4 bytes  refused with "
                          "ERROR_INVALID_DESCRIPTOR_LENGTH\n"
                          "                  01 02 41 42\n"));
}

TEST(InspectRejected, AitWithAnApplicationFromElsewhere) {
    EXPECT_THAT(rejected(longSection(0x74, extension(9),
                                     hex("F004 11 02 0001  F012 00000735 0001 01 F009 02 05 0003 01 7F 00  42 00"))),
                HasSubstr("  descriptors of common (1)\n"
                          "    > 000A  0x11  ip_signaling_descriptor, 2 bytes  refused with "
                          "ERROR_INVALID_DESCRIPTOR_LENGTH\n"
                          "                  00 01\n"
                          "  descriptors of application 000007350001 (2)\n"
                          "    > 0019  0x02  transport_protocol_descriptor, 5 bytes  refused with ERROR_OK\n"
                          "                  right by the standard; this receiver refuses it because it has no data "
                          "piping (protocol_id 3)\n"
                          "                  00 03 01 7F 00\n"
                          "      0020  0x42  unknown, skipped, 0 bytes\n"));
}

TEST(InspectRejected, AitWithATransportThatNobodyKnows) {
    EXPECT_THAT(rejected(longSection(0x74, extension(9), hex("F007 02 05 0009 01 7F 00  F000"))),
                HasSubstr("    > 000A  0x02  transport_protocol_descriptor, 5 bytes  refused with ERROR_OK\n"
                          "                  ERROR_OK is what this receiver says of a transport that it does not "
                          "support\n"
                          "                  00 09 01 7F 00\n"));
}

TEST(InspectRejected, SdttWithATruncatedDescriptor) {
    EXPECT_THAT(
        rejected(longSection(0xC3, extension(0x1234), hex("0735 0735 E6A0 01  0001 0020 0040 0000  C9 02 8000"))),
        HasSubstr("    > 0017  0xC9  download_content_descriptor, 2 bytes  refused with "
                  "ERROR_INVALID_DESCRIPTOR_LENGTH\n"
                  "                  80 00\n"));
}

TEST(InspectRejected, DsmccWithADescriptorThatDoesNotFit) {
    EXPECT_THAT(rejected(longSection(0x3D, extension(0x1001), hex("17 01 AA  03 04 0200"))),
                HasSubstr("  log    ISDBTUtils: TDSMCCSectionTable::parse: Item length not valid: 3 > 2. Aborting!\n"
                          "  descriptors of section (2)\n"
                          "      0008  0x17  npt_reference_descriptor, skipped, 1 byte\n"
                          "                  AA\n"
                          "    > 000B  0x03  stream_mode_descriptor, 4 bytes  does not fit: 2 left\n"
                          "                  02 00\n"));
}

TEST(InspectRejected, LongDescriptorsGoOnInTheNextLine) {
    const ByteVector name = descriptor(0x40, fill(20, 0x41));
    EXPECT_THAT(rejected(longSection(0x40, extension(0x0735), join({hex("F016"), name, hex("F001 00")}))),
                HasSubstr("      000A  0x40  network_name_descriptor, 20 bytes\n"
                          "                  41 41 41 41 41 41 41 41 41 41 41 41 41 41 41 41\n"
                          "                  41 41 41 41\n"));
}

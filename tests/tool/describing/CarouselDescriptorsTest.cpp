#include "descriptors/TCarouselCompatibleCompositeDescriptor.h"
#include "descriptors/TCarouselIdentifierDescriptor.h"
#include "descriptors/TDownloadContentDescriptor.h"
#include "descriptors/TNPTReferenceDescriptor.h"
#include "descriptors/TStreamEventDescriptor.h"
#include "descriptors/TStreamModeDescriptor.h"
#include "tool/describing/FieldLines.h"

#include <gmock/gmock.h>

namespace {

TEST(CarouselDescriptors, CarouselIdentifier) {
    EXPECT_EQ(described<Quor::TCarouselIdentifierDescriptor>("13 06 0000002A 01FF"),
              (Lines{
                  "carousel_identifier_descriptor",
                  "  descriptor_tag 0x13",
                  "  carousel_id 0x0000002A",
                  "  format_id 0 = not decoded; it begins private_data",
                  "  module_version 0",
                  "  module_id 0x0000",
                  "  block_size 0 bytes",
                  "  module_size 0 bytes",
                  "  compression_method 0",
                  "  original_size 0 bytes",
                  "  time_out 0 s",
                  "  object_key_length 0 bytes",
                  "  object_key_data <>",
                  "  private_data_size 2 bytes",
                  "  private_data <01 FF>",
              }));
}

TEST(CarouselDescriptors, CarouselCompatibleComposite) {
    EXPECT_EQ(described<Quor::TCarouselCompatibleCompositeDescriptor>("F7 04 01020304"),
              (Lines{
                  "carousel_compatible_composite_descriptor",
                  "  descriptor_tag 0xF7",
                  "  data <F7 04 01 02 03 04>",
              }));
}

TEST(CarouselDescriptors, NptReference) {
    EXPECT_EQ(described<Quor::TNPTReferenceDescriptor>("01 12 85 FF 00015F90 FFFFFF FE 0000AFC8 0001 0002"),
              (Lines{
                  "npt_reference_descriptor",
                  "  descriptor_tag 0x01",
                  "  post_discontinuity yes",
                  "  dsmcc_content_id 0x05",
                  "  stc_reference_h 1",
                  "  stc_reference_l 90000 = 47722.858844 s",
                  "  npt_reference_h 0",
                  "  npt_reference_l 45000 = 0.500000 s",
                  "  scale_numerator 1",
                  "  scale_denominator 2",
              }));
}

TEST(CarouselDescriptors, StreamMode) {
    EXPECT_EQ(described<Quor::TStreamModeDescriptor>("03 02 07 FF"), (Lines{
                                                                         "stream_mode_descriptor",
                                                                         "  descriptor_tag 0x03",
                                                                         "  stream_mode 7 (end of stream)",
                                                                     }));
}

TEST(CarouselDescriptors, StreamEvent) {
    EXPECT_EQ(described<Quor::TStreamEventDescriptor>("04 0B 0007 FFFFFF FE 00015F90 AA"),
              (Lines{
                  "stream_event_descriptor",
                  "  descriptor_tag 0x04",
                  "  event_id 0x0007",
                  "  event_npt_h 0",
                  "  event_npt_l 90000 = 1.000000 s",
                  "  private_data_size 1 bytes",
                  "  private_data <AA>",
              }));
}

TEST(DownloadDescriptors, DownloadContent) {
    EXPECT_EQ(described<Quor::TDownloadContentDescriptor>("C9 37 F8 00000100 0000000A 00000BB8 000643 40"
                                                          " 0011 0001 01 0D 01 00AABB 0104 0102 01 05 02 AABB"
                                                          " 0001 1234 00000200 02 CCDD"
                                                          " 01 EE"
                                                          " 706F72 02 4F6C"),
              (Lines{
                  "download_content_descriptor",
                  "  descriptor_tag 0xC9",
                  "  reboot 1 (necessary)",
                  "  add_on 1 (adds)",
                  "  compatibility_flag 1 (present)",
                  "  module_info_flag 1 (present)",
                  "  text_info_flag 1 (present)",
                  "  component_size 256 bytes",
                  "  download_id 0x0000000A",
                  "  time_out_value_dii 3000 ms",
                  "  leak_rate 400 x 50 bytes/s = 20000 bytes/s",
                  "  component_tag 0x40",
                  "  compatibility_descriptor",
                  "    items [1]",
                  "      -",
                  "        descriptor_type 0x01 (system hardware)",
                  "        specifier_type 0x01 (IEEE OUI)",
                  "        specifier_data 0x00AABB",
                  "        model 0x0010",
                  "        version 0x0004",
                  "        sub_items [1]",
                  "          -",
                  "            sub_descriptor_type 0x05",
                  "            additional_information_length 2 bytes",
                  "            additional_information <AA BB>",
                  "  modules [1]",
                  "    -",
                  "      module_id 0x3412",
                  "      module_size 512 bytes",
                  "      module_info_length 2 bytes",
                  "      module_info <CC DD>",
                  "  private_data_length 1 bytes",
                  "  private_data <EE>",
                  "  language_code \"por\"",
                  "  text \"Ol\"",
              }));
}

TEST(DownloadDescriptors, DownloadContentWithoutMore) {
    const Lines lines = described<Quor::TDownloadContentDescriptor>("C9 12 00 00000100 0000000A 00000BB8 000640 40 00");
    EXPECT_THAT(lines, testing::IsSupersetOf({"  reboot 0 (not necessary)", "  add_on 0 (replaces)",
                                              "  compatibility_flag 0 (absent)", "  compatibility_descriptor none",
                                              "  modules [0]", "  private_data <>", "  text \"\""}));
}

} // namespace

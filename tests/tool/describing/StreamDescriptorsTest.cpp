#include "descriptors/TAACDescriptor.h"
#include "descriptors/TAVCTimingAndHRDDescriptor.h"
#include "descriptors/TAVCVideoDescriptor.h"
#include "descriptors/TComponentDescriptor.h"
#include "descriptors/TCopyrightDescriptor.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "descriptors/THierarchicalTransmissionDescriptor.h"
#include "descriptors/TStreamIdentifierDescriptor.h"
#include "descriptors/TVideoDecodeControlDescriptor.h"
#include "tool/describing/FieldLines.h"

#include <gmock/gmock.h>

namespace {

TEST(StreamDescriptors, StreamIdentifier) {
    EXPECT_EQ(described<Quor::TStreamIdentifierDescriptor>("52 01 81"), (Lines{
                                                                            "stream_identifier_descriptor",
                                                                            "  descriptor_tag 0x52",
                                                                            "  component_tag 0x81",
                                                                        }));
}

TEST(StreamDescriptors, Component) {
    EXPECT_EQ(described<Quor::TComponentDescriptor>("50 08 F5 B3 81 706F72 4844"),
              (Lines{
                  "component_descriptor",
                  "  descriptor_tag 0x50",
                  "  stream_content 5 (H.264 video)",
                  "  component_type 0xB3 = 1080i 16:9",
                  "  stream_content_component_type 0x05B3",
                  "  component_tag 0x81",
                  "  language_code \"por\"",
                  "  text \"HD\"",
              }));
}

TEST(StreamDescriptors, ComponentReadsTypesThatHaveANameInItsContent) {
    EXPECT_THAT(described<Quor::TComponentDescriptor>("50 06 F1 01 00 706F72"),
                testing::Contains("  component_type 0x01 = 480i 4:3"));
    EXPECT_THAT(described<Quor::TComponentDescriptor>("50 06 F1 D2 00 706F72"),
                testing::Contains("  component_type 0xD2 = 240p 16:9 with pan vectors"));
    EXPECT_THAT(described<Quor::TComponentDescriptor>("50 06 F2 03 10 706F72"),
                testing::Contains("  component_type 0x03 = MPEG-2 AAC 2/0 (stereo)"));
    EXPECT_THAT(described<Quor::TComponentDescriptor>("50 06 F6 43 10 706F72"),
                testing::Contains("  component_type 0x43 = HE-AAC v2 1/0 (mono)"));
    for (const std::string type : {"00", "05", "13", "BF", "FF"}) {
        EXPECT_THAT(described<Quor::TComponentDescriptor>("50 06 F1 " + type + " 00 706F72"),
                    testing::Contains("  component_type 0x" + type));
    }
}

TEST(StreamDescriptors, Copyright) {
    EXPECT_EQ(described<Quor::TCopyrightDescriptor>("0D 03 01 E123"), (Lines{
                                                                          "copyright_descriptor",
                                                                          "  descriptor_tag 0x0D",
                                                                          "  hierarchical_level 1",
                                                                          "  reference_pid 0x0123",
                                                                      }));
}

TEST(StreamDescriptors, HierarchicalTransmission) {
    EXPECT_EQ(described<Quor::THierarchicalTransmissionDescriptor>("C0 03 01 E123"),
              (Lines{
                  "hierarchical_transmission_descriptor",
                  "  descriptor_tag 0xC0",
                  "  quality_level 1 (high)",
                  "  reference_pid 0x0123",
              }));
}

TEST(StreamDescriptors, DataComponent) {
    EXPECT_EQ(described<Quor::TDataComponentDescriptor>("FD 04 00A3 AABB"),
              (Lines{
                  "data_component_descriptor",
                  "  descriptor_tag 0xFD",
                  "  data_component_id 0x00A3 (Ginga application information table)",
                  "  additional_data_size 2 bytes",
                  "  additional_data <AA BB>",
              }));
}

TEST(StreamDescriptors, VideoDecodeControl) {
    EXPECT_EQ(described<Quor::TVideoDecodeControlDescriptor>("C8 01 84"), (Lines{
                                                                              "video_decode_control_descriptor",
                                                                              "  descriptor_tag 0xC8",
                                                                              "  still_picture yes",
                                                                              "  sequence_end_code no",
                                                                              "  video_encode_format 1 (1080i)",
                                                                          }));
}

TEST(StreamDescriptors, AvcVideo) {
    EXPECT_EQ(described<Quor::TAVCVideoDescriptor>("28 04 64 A5 28 80"), (Lines{
                                                                             "avc_video_descriptor",
                                                                             "  descriptor_tag 0x28",
                                                                             "  profile_idc 100 (High)",
                                                                             "  constraint_set0_flag yes",
                                                                             "  constraint_set1_flag no",
                                                                             "  constraint_set2_flag yes",
                                                                             "  avc_compatible_flags 0x05",
                                                                             "  level_idc 40 = level 4.0",
                                                                             "  avc_still_present yes",
                                                                             "  avc_24_hour_picture_flag no",
                                                                         }));
}

TEST(StreamDescriptors, AvcTimingAndHrd) {
    EXPECT_EQ(described<Quor::TAVCTimingAndHRDDescriptor>("2A 0F 81 80 00000001 00000002 A0000003 000000 00"),
              (Lines{
                  "avc_timing_and_hrd_descriptor",
                  "  descriptor_tag 0x2A",
                  "  hrd_management_valid yes",
                  "  picture_timing_info_present yes",
                  "  90khz_flag yes",
                  "  n 1",
                  "  k 2",
                  "  num_units_in_tick 2684354563",
                  "  fixed_frame_rate_flag yes",
                  "  temporal_poc_flag no",
                  "  picture_to_display_conversion_flag yes",
              }));
}

TEST(StreamDescriptors, Aac) {
    EXPECT_EQ(described<Quor::TAACDescriptor>("7C 04 29 80 03 AA"), (Lines{
                                                                        "aac_descriptor",
                                                                        "  descriptor_tag 0x7C",
                                                                        "  profile_and_level 41 (AAC level 2)",
                                                                        "  aac_type 0x03",
                                                                        "  additional_info_size 1 bytes",
                                                                        "  additional_info <AA>",
                                                                    }));
}

TEST(StreamDescriptors, AacWithoutAType) {
    EXPECT_EQ(described<Quor::TAACDescriptor>("7C 02 2D 00"), (Lines{
                                                                  "aac_descriptor",
                                                                  "  descriptor_tag 0x7C",
                                                                  "  profile_and_level 45 (HE-AAC level 3)",
                                                                  "  aac_type none",
                                                                  "  additional_info_size 0 bytes",
                                                                  "  additional_info <>",
                                                              }));
}

} // namespace

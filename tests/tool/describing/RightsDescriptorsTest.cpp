#include "descriptors/TCAIdentifierDescriptor.h"
#include "descriptors/TConditionalPlaybackDescriptor.h"
#include "descriptors/TContentAvailabilityDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TParentalRatingDescriptor.h"
#include "descriptors/TTargetRegionDescriptor.h"
#include "tool/describing/FieldLines.h"

#include <gtest/gtest.h>

namespace {

TEST(RightsDescriptors, CaIdentifier) {
    EXPECT_EQ(described<Quor::TCAIdentifierDescriptor>("53 05 0005 000E FF"), (Lines{
                                                                                  "ca_identifier_descriptor",
                                                                                  "  descriptor_tag 0x53",
                                                                                  "  ca_system_id_count 2",
                                                                                  "  ca_system_ids [2]",
                                                                                  "    - 0x0005",
                                                                                  "    - 0x000E",
                                                                              }));
}

TEST(RightsDescriptors, DigitalCopyControl) {
    EXPECT_EQ(described<Quor::TDigitalCopyControlDescriptor>("C1 06 B6 41 03 25 40 C0"),
              (Lines{
                  "digital_copy_control_descriptor",
                  "  descriptor_tag 0xC1",
                  "  digital_recording_control_data 2 (copy once)",
                  "  component_control yes",
                  "  copy_control_type 1 (SD free, original once)",
                  "  aps_control_data 2",
                  "  maximum_bitrate 65 x 0.25 Mbit/s = 16.25 Mbit/s",
                  "  items [2]",
                  "    -",
                  "      digital_recording_control_data 0 (copy freely)",
                  "      copy_control_type 1 (SD free, original once)",
                  "      aps_control_data 1",
                  "      maximum_bitrate 64 x 0.25 Mbit/s = 16.00 Mbit/s",
                  "    -",
                  "      digital_recording_control_data 3 (copy never)",
                  "      copy_control_type 0 (free)",
                  "      aps_control_data 0",
                  "      maximum_bitrate none",
              }));
}

TEST(RightsDescriptors, DigitalCopyControlWithoutMore) {
    EXPECT_EQ(described<Quor::TDigitalCopyControlDescriptor>("C1 01 48"),
              (Lines{
                  "digital_copy_control_descriptor",
                  "  descriptor_tag 0xC1",
                  "  digital_recording_control_data 1 (defined by the broadcaster, or no copy (sources differ))",
                  "  component_control no",
                  "  copy_control_type 2",
                  "  aps_control_data 0",
                  "  maximum_bitrate none",
                  "  items [0]",
              }));
}

TEST(RightsDescriptors, ContentAvailability) {
    EXPECT_EQ(described<Quor::TContentAvailabilityDescriptor>("DE 01 2E"),
              (Lines{
                  "content_availability_descriptor",
                  "  descriptor_tag 0xDE",
                  "  image_constrained no",
                  "  retention_allowed yes",
                  "  retention_state 7 (one and a half hours)",
                  "  encryption_mode_enabled yes",
              }));
}

TEST(RightsDescriptors, ParentalRating) {
    EXPECT_EQ(described<Quor::TParentalRatingDescriptor>("55 08 425241 26 415247 05"),
              (Lines{
                  "parental_rating_descriptor",
                  "  descriptor_tag 0x55",
                  "  items [2]",
                  "    -",
                  "      country_code \"BRA\"",
                  "      rating 0x26 = 18, violence",
                  "    -",
                  "      country_code \"ARG\"",
                  "      rating 0x05 = from 8 years",
              }));
}

TEST(RightsDescriptors, TargetRegion) {
    EXPECT_EQ(described<Quor::TTargetRegionDescriptor>("C6 03 01 AABB"), (Lines{
                                                                             "target_region_descriptor",
                                                                             "  descriptor_tag 0xC6",
                                                                             "  region_spec_type 1",
                                                                             "  spec_size 2 bytes",
                                                                             "  spec_data <AA BB>",
                                                                         }));
}

TEST(RightsDescriptors, ConditionalPlayback) {
    EXPECT_EQ(described<Quor::TConditionalPlaybackDescriptor>("F8 05 0005 E123 AA"),
              (Lines{
                  "conditional_playback_descriptor",
                  "  descriptor_tag 0xF8",
                  "  ca_system_id 0x0005",
                  "  ca_pid 0x0123",
                  "  private_data_size 1 bytes",
                  "  private_data <AA>",
              }));
}

} // namespace

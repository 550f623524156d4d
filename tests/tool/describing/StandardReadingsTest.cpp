#include "describing/StandardReadings.h"

#include "descriptors/TAVCTimingAndHRDDescriptor.h"
#include "descriptors/TCarouselIdentifierDescriptor.h"
#include "descriptors/TCopyrightDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TDownloadContentDescriptor.h"
#include "descriptors/TLocalTimeOffsetDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TNPTReferenceDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TStreamEventDescriptor.h"
#include "descriptors/TVideoDecodeControlDescriptor.h"
#include "tool/describing/FieldLines.h"

#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <set>

namespace {

using namespace inspect;

/// A descriptor in which the standard and the receiver differ, and what is said of it below its name and tag.
struct Example {
    const char* descriptor;
    Lines (*describe)(const std::string& wire);
    const char* wire;
    Lines forPeople;
};

/// The lines for people.
template <class Descriptor> Lines ordered(const std::string& wire) {
    const auto taken = takenDescriptor<Descriptor>(hex(wire));
    const Field field = describe(*taken.object);
    const Fields& fields = std::get<Object>(field.value).fields;
    return linesOf(standardFirst({fields.begin() + 1, fields.end()}));
}

const std::vector<Example> EXAMPLES{
    {"service_list_descriptor",
     ordered<Quor::TServiceListDescriptor>,
     "41 06 E6A0 01 E6B8 C0",
     {"services [2]", "  -", "    service_id 0xE6A0", "    service_type 0x01 (digital television)", "  -",
      "    service_id 0xE6B8", "    service_type 0xC0 (data or one-segment)", "the receiver reads", "  items [3]",
      "    -", "      service_id 0x01", "      service_type 0xE6 (reserved)", "    -", "      service_id 0xB8",
      "      service_type 0xC0 (data or one-segment)", "    -", "      service_id 0xE6",
      "      service_type 0xA0 (service provider defined)"}},
    {"local_time_offset_descriptor",
     ordered<Quor::TLocalTimeOffsetDescriptor>,
     "58 1A 425241 07 0330 EE35010000 0230 425241 0A 0100 FFFFFFFFFF 0A00",
     {"regions [2]",
      "  -",
      "    country_code \"BRA\"",
      "    country_region_id 1",
      "    local_time_offset -210 min = -03:30",
      "    time_of_change 1762045200 s = 2025-11-02 01:00:00",
      "    next_time_offset -150 min = -02:30",
      "  -",
      "    country_code \"BRA\"",
      "    country_region_id 2",
      "    local_time_offset 60 min = +01:00",
      "    time_of_change none",
      "    next_time_offset none",
      "the receiver reads",
      "  items [1] = of 2 sent; of each country the last is kept",
      "    -",
      "      country_code \"BRA\"",
      "      country_region_id 2",
      "      local_time_offset_polarity 0 (ahead)",
      "      local_time_offset 3600 s = +01:00"}},
    {"carousel_identifier_descriptor",
     ordered<Quor::TCarouselIdentifierDescriptor>,
     "13 18 0000002A 01 02 0003 0FA2 00000100 01 00000200 3C 02 ABCD EF",
     {"carousel_id 0x0000002A", "format_id 0x01", "module_version 2", "module_id 0x0003", "block_size 4002 bytes",
      "module_size 256 bytes", "compression_method 1", "original_size 512 bytes", "time_out 60 s",
      "object_key_data <AB CD>", "private_data <EF>", "the receiver reads", "  private_data_size 20 bytes",
      "  private_data <01 02 00 03 0F A2 00 00 01 00 01 00 00 02 00 3C 02 AB CD EF>"}},
    {"npt_reference_descriptor",
     ordered<Quor::TNPTReferenceDescriptor>,
     "01 12 85 01 00000000 00000001 00015F90 0001 0002",
     {"post_discontinuity yes", "dsmcc_content_id 0x05", "stc_reference 4294967296 x 1/90000 s = 47721.858844 s",
      "npt_reference 4295057296 x 1/90000 s = 47722.858844 s", "scale_numerator 1", "scale_denominator 2"}},
    {"stream_event_descriptor",
     ordered<Quor::TStreamEventDescriptor>,
     "04 0A 0007 00000001 00000000",
     {"event_id 0x0007", "event_npt 4294967296 x 1/90000 s = 47721.858844 s", "private_data_size 0 bytes",
      "private_data <>"}},
    {"video_decode_control_descriptor",
     ordered<Quor::TVideoDecodeControlDescriptor>,
     "C8 01 57",
     {"still_picture no", "sequence_end_code yes", "video_encode_format 5 (240p)", "the receiver reads",
      "  video_encode_format 1 (1080i)"}},
    {"mosaic_descriptor",
     ordered<Quor::TMosaicDescriptor>,
     "51 15 DA 07F9 02 C1C2 01 0102 0BFA 00 04 0001 0002 0003 0004",
     {"mosaic_entry_point yes",
      "number_of_horizontal_cells 5 (6 cells)",
      "number_of_vertical_cells 2 (3 cells)",
      "cells [2]",
      "  -",
      "    logical_cell_id 1",
      "    logical_cell_presentation_info 1 (video)",
      "    elementary_cell_ids [2]",
      "      - 1",
      "      - 2",
      "    cell_linkage_info 1 (bouquet)",
      "    bouquet_id 0x0102",
      "  -",
      "    logical_cell_id 2",
      "    logical_cell_presentation_info 2 (still picture)",
      "    elementary_cell_ids [0]",
      "    cell_linkage_info 4 (event)",
      "    original_network_id 0x0001",
      "    transport_stream_id 0x0002",
      "    service_id 0x0003",
      "    event_id 0x0004",
      "the receiver reads",
      "  number_of_horizontal_cells 1 (2 cells)",
      "  number_of_vertical_cells 2 (3 cells)",
      "  cells [2]",
      "    -",
      "      logical_cell_id 1",
      "      logical_cell_presentation_info 1 (video)",
      "      elementary_cell_field_length 2",
      "      elementary_cell_ids [2]",
      "        - 1",
      "        - 2",
      "      cell_linkage_info 1 (bouquet)",
      "      bouquet_id 0x0102",
      "      original_network_id 0x0000",
      "      transport_stream_id 0x0000",
      "      service_id 0x0000",
      "      event_id 0x0000",
      "    -",
      "      logical_cell_id 2",
      "      logical_cell_presentation_info 2 (still picture)",
      "      elementary_cell_field_length 0",
      "      elementary_cell_ids [0]",
      "      cell_linkage_info 4 (event)",
      "      bouquet_id 0x0000",
      "      original_network_id 0x0001",
      "      transport_stream_id 0x0002",
      "      service_id 0x0003",
      "      event_id 0x0004"}},
    {"digital_copy_control_descriptor",
     ordered<Quor::TDigitalCopyControlDescriptor>,
     "C1 05 F4 20 02 11 C8",
     {"digital_recording_control_data 3 (copy never)",
      "component_control yes",
      "copy_control_type 1 (SD free, original once)",
      "aps_control_data 0",
      "maximum_bitrate 32 x 0.25 Mbit/s = 8.00 Mbit/s",
      "components [1]",
      "  -",
      "    component_tag 0x11",
      "    digital_recording_control_data 3 (copy never)",
      "    copy_control_type 2",
      "    aps_control_data 0",
      "the receiver reads",
      "  items [2]",
      "    -",
      "      digital_recording_control_data 0 (copy freely)",
      "      copy_control_type 0 (free)",
      "      aps_control_data 0",
      "      maximum_bitrate none",
      "    -",
      "      digital_recording_control_data 3 (copy never)",
      "      copy_control_type 2",
      "      aps_control_data 0",
      "      maximum_bitrate none"}},
    {"copyright_descriptor",
     ordered<Quor::TCopyrightDescriptor>,
     "0D 05 42524131 AA",
     {"copyright_identifier 0x42524131", "additional_copyright_info <AA>", "the receiver reads",
      "  hierarchical_level 0", "  reference_pid 0x1241"}},
    {"avc_timing_and_hrd_descriptor",
     ordered<Quor::TAVCTimingAndHRDDescriptor>,
     "2A 0F 81 7F 00000002 00000003 00000004 A0",
     {"hrd_management_valid yes", "picture_timing_info_present yes", "90khz_flag no", "n 2", "k 3",
      "num_units_in_tick 4", "fixed_frame_rate_flag yes", "temporal_poc_flag no",
      "picture_to_display_conversion_flag yes", "the receiver reads", "  90khz_flag no", "  n 0", "  k 0",
      "  num_units_in_tick 2", "  fixed_frame_rate_flag no", "  temporal_poc_flag no",
      "  picture_to_display_conversion_flag no"}},
    {"download_content_descriptor",
     ordered<Quor::TDownloadContentDescriptor>,
     "C9 2E 37 00000064 00000001 00000002 000007 79 000D 0001 01 09 01 5A0021 0021 0300 00"
     "   0001 0203 00000064 00 00 706F72 00",
     {"reboot 0 (not necessary)",
      "add_on 0 (replaces)",
      "compatibility_flag 1 (present)",
      "module_info_flag 1 (present)",
      "text_info_flag 0 (absent)",
      "component_size 100 bytes",
      "download_id 0x00000001",
      "time_out_value_dii 2 ms",
      "leak_rate 1 x 50 bytes/s = 50 bytes/s",
      "component_tag 0x79",
      "compatibility [1]",
      "  -",
      "    specifier_data 0x5A0021",
      "    model 0x0021",
      "    version 0x0300",
      "modules [1]",
      "  -",
      "    module_id 0x0203",
      "    module_size 100 bytes",
      "private_data_length 0 bytes",
      "private_data <>",
      "language_code \"\"",
      "text \"\"",
      "the receiver reads",
      "  compatibility_descriptor",
      "    items [1]",
      "      -",
      "        descriptor_type 0x01 (system hardware)",
      "        specifier_type 0x01 (IEEE OUI)",
      "        specifier_data 0x5A0021",
      "        model 0x0000",
      "        version 0x0003",
      "        sub_items [0]",
      "  modules [1]",
      "    -",
      "      module_id 0x0302",
      "      module_size 100 bytes",
      "      module_info_length 0 bytes",
      "      module_info <>"}},
};

} // namespace

/// A field that the list does not have would be shown as if the standard had it so.
TEST(StandardReadings, HaveAnExampleEach) {
    std::set<std::string_view> examples;
    for (const Example& example : EXAMPLES) {
        examples.insert(example.descriptor);
        EXPECT_EQ(example.describe(example.wire), example.forPeople) << example.descriptor;
    }
    for (const OtherReading& reading : otherReadings()) {
        EXPECT_EQ(examples.count(reading.descriptor), 1U) << reading.descriptor;
    }
}

TEST(StandardReadings, AreNoneOfBytesThatTheStandardHasOtherwise) {
    EXPECT_EQ(ordered<Quor::TServiceListDescriptor>("41 04 E6A0 01 E6"),
              (Lines{"standard none = the bytes are not as the standard has them", "the receiver reads", "  items [2]",
                     "    -", "      service_id 0x01", "      service_type 0xE6 (reserved)", "    -",
                     "      service_id 0xE6", "      service_type 0xA0 (service provider defined)"}));
    EXPECT_EQ(ordered<Quor::TCarouselIdentifierDescriptor>("13 06 0000002A 01 02"),
              (Lines{"carousel_id 0x0000002A", "standard none = the bytes are not as the standard has them",
                     "the receiver reads", "  private_data_size 2 bytes", "  private_data <01 02>"}));
}

TEST(StandardReadings, AreNoneWhereBothReadTheSame) {
    EXPECT_EQ(ordered<Quor::TCarouselIdentifierDescriptor>("13 04 0000002A"),
              (Lines{"carousel_id 0x0000002A", "private_data_size 0 bytes", "private_data <>"}));
    EXPECT_EQ(ordered<Quor::TVideoDecodeControlDescriptor>("C8 01 47"),
              (Lines{"still_picture no", "sequence_end_code yes", "video_encode_format 1 (1080i)"}));
    EXPECT_EQ(ordered<Quor::TDigitalCopyControlDescriptor>("C1 01 00").size(), 6U);
}

/// A body that is right by the standard, and one that is not.
struct Refused {
    const char* descriptor;
    const char* right;
    const char* wrong;
};

TEST(StandardReadings, SayWhyTheReceiverRefusesWhatIsRight) {
    const Refused refused[] = {
        {"service_list_descriptor", "E6A0 01", "E6A0 01 E6"},
        {"transport_protocol_descriptor", "0003 01 7F", "0004 01 7F"},
        {"ts_information_descriptor", "21 02 0F 00 AF 00", "21 02 0F 01 AF"},
        {"emergency_information_descriptor", "E6A0 BF 00", "E6A0 BF 01 12"},
        {"mosaic_descriptor", "00 0000 01 05 00", "00 0000 01 05 02"},
        {"avc_timing_and_hrd_descriptor", "81 FF 00000004 A0", "81 FF 00000004"},
        {"digital_copy_control_descriptor", "D0 03 30 E0 20", "D0 02 30 E0"},
        {"terrestrial_delivery_system_descriptor", "1236", "1236 0F"},
        {"partial_reception_descriptor", "", "E6"},
        {"country_availability_descriptor", "80", "80 42"},
        {"prefetch_descriptor", "01", "01 02"},
        {"dii_location_descriptor", "01", "01 02"},
        {"application_name_descriptor", "", "70"},
    };
    ASSERT_EQ(std::size(refused), rightRefused().size());
    for (const Refused& each : refused) {
        EXPECT_NE(refusedBecause(each.descriptor, hex(each.right)), "") << each.descriptor;
        EXPECT_EQ(refusedBecause(each.descriptor, hex(each.wrong)), "") << each.descriptor;
    }
    EXPECT_EQ(refusedBecause("service_list_descriptor", hex("E6A001")),
              "it looks for services of two bytes, and the length is odd");
}

TEST(StandardReadings, StandInThePages) {
    const auto textOf = [](const char* path) {
        std::ifstream file(path);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    const std::string page = textOf(PROJECT_FOLDER "/docs/isdbt-inspect.md");
    const std::string manual = textOf(PROJECT_FOLDER "/tools/isdbt-inspect/isdbt-inspect.1");
    for (const OtherReading& each : otherReadings()) {
        EXPECT_THAT(
            page, testing::HasSubstr(fmt::format("| `{}` | {} | {} |", each.descriptor, each.standard, each.receiver)));
        EXPECT_THAT(manual, testing::HasSubstr(std::string(each.descriptor)));
    }
    for (const RightRefused& each : rightRefused()) {
        EXPECT_THAT(page, testing::HasSubstr(fmt::format("| `{}` | {} |", each.descriptor, each.because)));
    }
}

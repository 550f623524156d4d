#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TPartialReceptionDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "tool/describing/FieldLines.h"

#include <gmock/gmock.h>

namespace {

TEST(NetworkDescriptors, NetworkName) {
    EXPECT_EQ(described<Quor::TNetworkNameDescriptor>("40 04 52656465"), (Lines{
                                                                             "network_name_descriptor",
                                                                             "  descriptor_tag 0x40",
                                                                             "  network_name \"Rede\"",
                                                                         }));
}

TEST(NetworkDescriptors, SystemManagement) {
    EXPECT_EQ(described<Quor::TSystemManagementDescriptor>("FE 03 0301 AA"),
              (Lines{
                  "system_management_descriptor",
                  "  descriptor_tag 0xFE",
                  "  system_management_id 0x0301 = broadcast, terrestrial television, 0x01",
                  "  additional_identification_info_size 1 bytes",
                  "  additional_identification_info <AA>",
              }));
}

TEST(NetworkDescriptors, ServiceList) {
    EXPECT_EQ(described<Quor::TServiceListDescriptor>("41 04 02 C0 01 01"),
              (Lines{
                  "service_list_descriptor",
                  "  descriptor_tag 0x41",
                  "  items [2]",
                  "    -",
                  "      service_id 0x01",
                  "      service_type 0x01 (digital television)",
                  "    -",
                  "      service_id 0x02",
                  "      service_type 0xC0 (data or one-segment)",
              }));
}

TEST(NetworkDescriptors, ServiceListSaysHowManyItemsWereDisplaced) {
    EXPECT_THAT(described<Quor::TServiceListDescriptor>("41 06 01 C0 01 01 02 02"),
                testing::Contains("  items [2] = of 3 sent; of each service the last is kept"));
}

TEST(NetworkDescriptors, Linkage) {
    EXPECT_EQ(described<Quor::TLinkageDescriptor>("4A 08 0001 0002 0003 FE AA"),
              (Lines{
                  "linkage_descriptor",
                  "  descriptor_tag 0x4A",
                  "  transport_stream_id 0x0001",
                  "  original_network_id 0x0002",
                  "  service_id 0x0003",
                  "  linkage_type 0xFE (retransmission)",
                  "  private_data_size 1 bytes",
                  "  private_data <AA>",
              }));
}

TEST(NetworkDescriptors, TerrestrialDeliverySystem) {
    EXPECT_EQ(described<Quor::TTerrestrialDeliverySystemDescriptor>("FA 06 1236 0CF0 0D1A"),
              (Lines{
                  "terrestrial_delivery_system_descriptor",
                  "  descriptor_tag 0xFA",
                  "  area_code 0x123",
                  "  guard_interval 1 (1/16)",
                  "  transmission_mode 2 (mode 3 (8K))",
                  "  frequency_counter 2",
                  "  frequencies [2]",
                  "    - 3312 x 1/7 MHz = 473.142857 MHz",
                  "    - 3354 x 1/7 MHz = 479.142857 MHz",
              }));
}

TEST(NetworkDescriptors, EmergencyInformation) {
    EXPECT_EQ(described<Quor::TEmergencyInformationDescriptor>("FC 0E 0001 C0 04 123F 456F 0002 00 02 7890"),
              (Lines{
                  "emergency_information_descriptor",
                  "  descriptor_tag 0xFC",
                  "  items [2]",
                  "    -",
                  "      service_id 0x0001",
                  "      start yes",
                  "      signal_level 1 (class 2)",
                  "      area_code_counter 4 bytes",
                  "      area_codes [2]",
                  "        - 0x123",
                  "        - 0x456",
                  "    -",
                  "      service_id 0x0002",
                  "      start no",
                  "      signal_level 0 (class 1)",
                  "      area_code_counter 2 bytes",
                  "      area_codes [1]",
                  "        - 0x789",
              }));
}

TEST(NetworkDescriptors, PartialReception) {
    EXPECT_EQ(described<Quor::TPartialReceptionDescriptor>("FB 02 E6B8"), (Lines{
                                                                              "partial_reception_descriptor",
                                                                              "  descriptor_tag 0xFB",
                                                                              "  service_id_count 1",
                                                                              "  service_ids [1]",
                                                                              "    - 0xE6B8",
                                                                          }));
}

TEST(NetworkDescriptors, TsInformation) {
    EXPECT_EQ(described<Quor::TTSInformationDescriptor>("CD 0F 05 0E 545678 1F 02 E6A0 E6A1 AF 01 E6B8"),
              (Lines{
                  "ts_information_descriptor",
                  "  descriptor_tag 0xCD",
                  "  remote_control_key_id 5",
                  "  transport_stream_name \"TVx\"",
                  "  transmission_types [2]",
                  "    -",
                  "      transmission_type_info 0x1F",
                  "      transmission_parameter_type 0 (type A)",
                  "      modulation_system 1 (16QAM)",
                  "      number_of_services 2",
                  "      services [2]",
                  "        - 0xE6A0",
                  "        - 0xE6A1",
                  "    -",
                  "      transmission_type_info 0xAF",
                  "      transmission_parameter_type 2 (type C)",
                  "      modulation_system 2 (QPSK)",
                  "      number_of_services 1",
                  "      services [1]",
                  "        - 0xE6B8",
              }));
}

} // namespace

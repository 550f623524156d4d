#include "descriptors/TBouquetNameDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TLogoTransmissionDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TNVODReferenceDescriptor.h"
#include "descriptors/TServiceDescriptor.h"
#include "descriptors/TTimeShiftedServiceDescriptor.h"
#include "tool/describing/FieldLines.h"

#include <gtest/gtest.h>

namespace {

TEST(ServiceDescriptors, Service) {
    EXPECT_EQ(described<Quor::TServiceDescriptor>("48 08 01 02 5456 03 556D31"),
              (Lines{
                  "service_descriptor",
                  "  descriptor_tag 0x48",
                  "  service_type 0x01 (digital television)",
                  "  service_provider_name \"TV\"",
                  "  service_name \"Um1\"",
              }));
}

TEST(ServiceDescriptors, BouquetName) {
    EXPECT_EQ(described<Quor::TBouquetNameDescriptor>("47 03 414243"), (Lines{
                                                                           "bouquet_name_descriptor",
                                                                           "  descriptor_tag 0x47",
                                                                           "  bouquet_name \"ABC\"",
                                                                       }));
}

TEST(ServiceDescriptors, CountryAvailability) {
    EXPECT_EQ(described<Quor::TCountryAvailabilityDescriptor>("49 07 80 425241 410081"),
              (Lines{
                  "country_availability_descriptor",
                  "  descriptor_tag 0x49",
                  "  country_availability_flag 1 (in these countries)",
                  "  country_codes [2]",
                  "    - 0x425241 = BRA",
                  "    - 0x410081 = A\\x00\\x81",
              }));
}

TEST(ServiceDescriptors, NvodReference) {
    EXPECT_EQ(described<Quor::TNVODReferenceDescriptor>("4B 06 0001 0002 0003"), (Lines{
                                                                                     "nvod_reference_descriptor",
                                                                                     "  descriptor_tag 0x4B",
                                                                                     "  items [1]",
                                                                                     "    -",
                                                                                     "      transport_stream_id 0x0001",
                                                                                     "      original_network_id 0x0002",
                                                                                     "      service_id 0x0003",
                                                                                 }));
}

TEST(ServiceDescriptors, TimeShiftedService) {
    EXPECT_EQ(described<Quor::TTimeShiftedServiceDescriptor>("4C 02 E6A0"), (Lines{
                                                                                "time_shifted_service_descriptor",
                                                                                "  descriptor_tag 0x4C",
                                                                                "  reference_service_id 0xE6A0",
                                                                            }));
}

TEST(ServiceDescriptors, Mosaic) {
    EXPECT_EQ(described<Quor::TMosaicDescriptor>("51 14 01 04 01 02 05 06 04 0001 0002 0003 0004 08 03 00 01 0005"),
              (Lines{
                  "mosaic_descriptor",
                  "  descriptor_tag 0x51",
                  "  number_of_horizontal_cells 0 (1 cell)",
                  "  number_of_vertical_cells 1 (2 cells)",
                  "  cells [2]",
                  "    -",
                  "      logical_cell_id 1",
                  "      logical_cell_presentation_info 1 (video)",
                  "      elementary_cell_field_length 2",
                  "      elementary_cell_ids [2]",
                  "        - 5",
                  "        - 6",
                  "      cell_linkage_info 4 (event)",
                  "      bouquet_id 0x0000",
                  "      original_network_id 0x0001",
                  "      transport_stream_id 0x0002",
                  "      service_id 0x0003",
                  "      event_id 0x0004",
                  "    -",
                  "      logical_cell_id 2",
                  "      logical_cell_presentation_info 3 (graphics or text)",
                  "      elementary_cell_field_length 0",
                  "      elementary_cell_ids [0]",
                  "      cell_linkage_info 1 (bouquet)",
                  "      bouquet_id 0x0005",
                  "      original_network_id 0x0000",
                  "      transport_stream_id 0x0000",
                  "      service_id 0x0000",
                  "      event_id 0x0000",
              }));
}

TEST(ServiceDescriptors, LogoTransmission) {
    EXPECT_EQ(described<Quor::TLogoTransmissionDescriptor>("CF 07 01 01AA F123 4567"),
              (Lines{
                  "logo_transmission_descriptor",
                  "  descriptor_tag 0xCF",
                  "  logo_transm_type 1 (common data table, with its version)",
                  "  logo_id 0x1AA",
                  "  logo_version 291",
                  "  download_data_id 0x4567",
                  "  logo_data_length 0 bytes",
                  "  logo_data <>",
              }));
}

TEST(ServiceDescriptors, SimpleLogo) {
    EXPECT_EQ(described<Quor::TLogoTransmissionDescriptor>("CF 03 03 5456"), (Lines{
                                                                                 "logo_transmission_descriptor",
                                                                                 "  descriptor_tag 0xCF",
                                                                                 "  logo_transm_type 3 (simple logo)",
                                                                                 "  logo_id 0x000",
                                                                                 "  logo_version 0",
                                                                                 "  download_data_id 0x0000",
                                                                                 "  logo_data_length 2 bytes",
                                                                                 "  logo_data <54 56>",
                                                                             }));
}

} // namespace

#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationIconDescriptor.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"
#include "descriptors/TIPSignalingDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "tool/describing/FieldLines.h"

#include <gmock/gmock.h>

namespace {

TEST(ApplicationDescriptors, Application) {
    EXPECT_EQ(described<Quor::TApplicationDescriptor>("00 0F 0A 0002 01 02 03 0001 04 05 06 BF 05 01 02"),
              (Lines{
                  "application_descriptor",
                  "  descriptor_tag 0x00",
                  "  profiles [2]",
                  "    -",
                  "      application_profile 0x0001 = version 4.5.6",
                  "      version_major 4",
                  "      version_minor 5",
                  "      version_micro 6",
                  "    -",
                  "      application_profile 0x0002 = version 1.2.3",
                  "      version_major 1",
                  "      version_minor 2",
                  "      version_micro 3",
                  "  service_bound yes",
                  "  visibility 1 (to applications)",
                  "  visibile_for_users no",
                  "  visibile_for_applications yes",
                  "  application_priority 5",
                  "  transport_protocols_count 2",
                  "  transport_protocols [2]",
                  "    - 0x01",
                  "    - 0x02",
              }));
}

TEST(ApplicationDescriptors, ApplicationName) {
    EXPECT_EQ(described<Quor::TApplicationNameDescriptor>("01 0D 706F72 03 417070 656E67 02 4170"),
              (Lines{
                  "application_name_descriptor",
                  "  descriptor_tag 0x01",
                  "  items [2]",
                  "    -",
                  "      language_code \"eng\"",
                  "      name \"Ap\"",
                  "    -",
                  "      language_code \"por\"",
                  "      name \"App\"",
              }));
}

TEST(ApplicationDescriptors, SayHowManyItemsWereDisplaced) {
    EXPECT_THAT(described<Quor::TApplicationDescriptor>("00 0D 0A 0001 01 02 03 0001 04 05 06 BF 05"),
                testing::Contains("  profiles [1] = of 2 sent; of each profile the last is kept"));
    EXPECT_THAT(described<Quor::TApplicationNameDescriptor>("01 10 706F72 03 417070 706F72 00 656E67 01 41"),
                testing::Contains("  items [2] = of 3 sent; of each language the last is kept"));
    EXPECT_THAT(described<Quor::TExternalApplicationAuthorizationDescriptor>("05 0E 0000ABCD 0012 07 0000ABCD 0012 08"),
                testing::Contains("  items [1] = of 2 sent; of each application the last is kept"));
}

TEST(ApplicationDescriptors, ApplicationIcon) {
    EXPECT_EQ(described<Quor::TApplicationIconDescriptor>("0B 07 04 69636F6E 0109"),
              (Lines{
                  "application_icon_descriptor",
                  "  descriptor_tag 0x0B",
                  "  icon_locator \"icon\"",
                  "  icon_flags 0x0109 = 32x32 square, 64x64 square, 128x128 16:9",
              }));
}

TEST(ApplicationDescriptors, ExternalApplicationAuthorization) {
    EXPECT_EQ(described<Quor::TExternalApplicationAuthorizationDescriptor>("05 07 0000ABCD 0012 07"),
              (Lines{
                  "external_application_authorization_descriptor",
                  "  descriptor_tag 0x05",
                  "  items [1]",
                  "    -",
                  "      application_identifier",
                  "        organization_id 0x0000ABCD",
                  "        application_id 0x0012",
                  "      priority 7",
              }));
}

TEST(ApplicationDescriptors, IpSignaling) {
    EXPECT_EQ(described<Quor::TIPSignalingDescriptor>("11 03 010203"), (Lines{
                                                                           "ip_signaling_descriptor",
                                                                           "  descriptor_tag 0x11",
                                                                           "  platform_id 0x010203",
                                                                       }));
}

TEST(ApplicationDescriptors, Prefetch) {
    EXPECT_EQ(described<Quor::TPrefetchDescriptor>("0C 05 01 02 6162 32"), (Lines{
                                                                               "prefetch_descriptor",
                                                                               "  descriptor_tag 0x0C",
                                                                               "  transport_protocol_label 0x01",
                                                                               "  items [1]",
                                                                               "    -",
                                                                               "      label \"ab\"",
                                                                               "      priority 50",
                                                                           }));
}

TEST(ApplicationDescriptors, DiiLocation) {
    EXPECT_EQ(described<Quor::TDIILocationDescriptor>("0D 05 01 8003 0004"), (Lines{
                                                                                 "dii_location_descriptor",
                                                                                 "  descriptor_tag 0x0D",
                                                                                 "  transport_protocol_label 0x01",
                                                                                 "  items [1]",
                                                                                 "    -",
                                                                                 "      dii_identification 0x0003",
                                                                                 "      association_tag 0x0004",
                                                                             }));
}

TEST(ApplicationDescriptors, GingaParametersOfBothKinds) {
    EXPECT_EQ(described<Quor::TGingaJavaApplicationDescriptor>("03 05 01 61 02 6263"),
              (Lines{
                  "ginga_application_descriptor",
                  "  descriptor_tag 0x03 (Ginga-J)",
                  "  parameters [2]",
                  "    - \"a\"",
                  "    - \"bc\"",
              }));
    EXPECT_EQ(described<Quor::TGingaNCLApplicationDescriptor>("06 00"), (Lines{
                                                                            "ginga_application_descriptor",
                                                                            "  descriptor_tag 0x06 (Ginga-NCL)",
                                                                            "  parameters [0]",
                                                                        }));
}

TEST(ApplicationDescriptors, GingaLocationsOfBothKinds) {
    EXPECT_EQ(described<Quor::TGingaJavaApplicationLocationDescriptor>("04 09 01 2F 02 6370 4D61696E"),
              (Lines{
                  "ginga_application_location_descriptor",
                  "  descriptor_tag 0x04 (Ginga-J)",
                  "  base_directory \"/\"",
                  "  classpath_extension \"cp\"",
                  "  initial_class \"Main\"",
              }));
    EXPECT_EQ(described<Quor::TGingaNCLApplicationLocationDescriptor>("07 0B 01 2F 00 6D61696E2E6E636C"),
              (Lines{
                  "ginga_application_location_descriptor",
                  "  descriptor_tag 0x07 (Ginga-NCL)",
                  "  base_directory \"/\"",
                  "  classpath_extension \"\"",
                  "  initial_class \"main.ncl\"",
              }));
}

TEST(ApplicationDescriptors, TransportByCarousels) {
    EXPECT_EQ(described<Quor::TTransportProtocolDescriptor>("02 0B 0001 07 FF 0001 0002 0003 0B"),
              (Lines{
                  "transport_protocol_descriptor",
                  "  descriptor_tag 0x02",
                  "  type 1 (object carousel)",
                  "  protocol_id 0x0001",
                  "  transport_protocol_label 0x07",
                  "  remote_connection yes",
                  "  original_network_id 0x0001",
                  "  transport_stream_id 0x0002",
                  "  service_id 0x0003",
                  "  component_tag 0x0B",
              }));
    EXPECT_EQ(described<Quor::TTransportProtocolDescriptor>("02 05 0004 07 7F 0B"),
              (Lines{
                  "transport_protocol_descriptor",
                  "  descriptor_tag 0x02",
                  "  type 4 (data carousel)",
                  "  protocol_id 0x0004",
                  "  transport_protocol_label 0x07",
                  "  remote_connection no",
                  "  original_network_id 0x0000",
                  "  transport_stream_id 0x0000",
                  "  service_id 0x0000",
                  "  component_tag 0x0B",
              }));
}

TEST(ApplicationDescriptors, TransportByIp) {
    EXPECT_EQ(described<Quor::TTransportProtocolDescriptor>("02 0A 0002 07 7F 80 01 61 02 6263"),
              (Lines{
                  "transport_protocol_descriptor",
                  "  descriptor_tag 0x02",
                  "  type 2 (IP)",
                  "  protocol_id 0x0002",
                  "  transport_protocol_label 0x07",
                  "  remote_connection no",
                  "  original_network_id 0x0000",
                  "  transport_stream_id 0x0000",
                  "  service_id 0x0000",
                  "  aligned yes",
                  "  urls [2]",
                  "    - \"a\"",
                  "    - \"bc\"",
              }));
}

} // namespace

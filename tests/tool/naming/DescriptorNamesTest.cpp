#include "tables/DescriptorNames.h"

#include "describing/DescriptorKinds.h"
#include "tables/TableKinds.h"

#include <gtest/gtest.h>

namespace {

using namespace inspect;

TEST(DescriptorNames, DependOnTheTable) {
    EXPECT_EQ(descriptorName({PMT}, 0x14), "association_tag_descriptor");
    EXPECT_EQ(descriptorName({PMT}, 0x1A), "stream_event_descriptor");
    EXPECT_EQ(descriptorName({PMT}, 0x66), "data_broadcast_id_descriptor");
    EXPECT_EQ(descriptorName({SDT}, 0x5D), "multilingual_service_name_descriptor");
    EXPECT_EQ(descriptorName({NIT}, 0xF6), "access_control_descriptor");
    EXPECT_EQ(descriptorName({PMT}, 0x01), "");
    EXPECT_EQ(descriptorName({DSMCC_STREAM_DESCRIPTORS}, 0x17), "npt_reference_descriptor");
    EXPECT_EQ(descriptorName({DSMCC_STREAM_DESCRIPTORS}, 0x48), "");
    EXPECT_EQ(descriptorName({SDTT}, 0xE3), "download_protection_descriptor");
    EXPECT_EQ(descriptorName({SDTT}, 0xFE), "system_management_descriptor");
}

TEST(DescriptorNames, DependOnTheTypeOfTheApplications) {
    EXPECT_EQ(descriptorName({AIT}, 0x06), "ginga_ncl_application_descriptor");
    EXPECT_EQ(descriptorName({AIT, 0x0001}, 0x06), "ginga_ncl_application_descriptor");
    EXPECT_EQ(descriptorName({AIT, 0x0010}, 0x06), "application_recording_descriptor");
    EXPECT_EQ(descriptorName({AIT, 0x0010}, 0x15), "simple_application_location_descriptor");
    EXPECT_EQ(descriptorName({AIT}, 0x15), "");
}

/// One descriptor has one name, whether the library has a class for it or not.
TEST(DescriptorNames, AreThoseOfTheClasses) {
    std::size_t compared = 0;
    for (const TableKind& table : TABLE_KINDS) {
        for (unsigned tag = 0; tag <= 0xFF; ++tag) {
            const auto each = static_cast<std::uint8_t>(tag);
            const DescriptorKind* const kind = knownDescriptor(table.id, each);
            const std::string_view name = descriptorName({table.id}, each);
            const bool hasVariants = name.find("ginga_") == 0;
            if (kind != nullptr && !name.empty() && !hasVariants) {
                EXPECT_EQ(name, kind->name);
                ++compared;
            }
        }
    }
    EXPECT_GT(compared, 50U);
}

TEST(TableLabels, TellTablesApart) {
    EXPECT_EQ(tableLabel(PAT), "PAT");
    EXPECT_EQ(tableLabel(0x70), "TDT 0x70");
    EXPECT_EQ(tableLabel(0x51), "EIT schedule 0x51");
    EXPECT_EQ(tableLabel(0x0B), "0x0B");
    for (const TableKind& table : TABLE_KINDS) {
        EXPECT_EQ(tableLabel(table.id), table.name);
    }
}

} // namespace

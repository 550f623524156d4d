#include "descriptors/TSystemManagementDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TSystemManagementDescriptor;

TEST(TSystemManagementDescriptor, Constants) {
    EXPECT_EQ(TSystemManagementDescriptor::FLAG_OPEN, 0);
    EXPECT_EQ(TSystemManagementDescriptor::FLAG_CLOSE_1, 1);
    EXPECT_EQ(TSystemManagementDescriptor::FLAG_CLOSE_2, 2);
    EXPECT_EQ(TSystemManagementDescriptor::FLAG_UNDEFINED, 3);
    EXPECT_EQ(TSystemManagementDescriptor::IDENTIFIER_ISDB, 3);
}

TEST(TSystemManagementDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("FE 03 0301 AA"));
    const InDirtyMemory<TSystemManagementDescriptor> management(bytes.data(), bytes.size());
    EXPECT_EQ(management->getDescriptorTag(), 0xFE);
    EXPECT_EQ(management->getSystemManagementID(), 0);
    EXPECT_EQ(management->getAdditionalIdentificationInfoSize(), 0);
    EXPECT_EQ(management->getAdditionalIdentificationInfo(), nullptr);
}

TEST(TSystemManagementDescriptor, IdentifierIsNotSplit) {
    const auto management = expectDescriptor<TSystemManagementDescriptor>(hex("FE 02 C3A5"), 2);
    EXPECT_EQ(management->getSystemManagementID(), 0xC3A5);
}

TEST(TSystemManagementDescriptor, WithoutAdditionalInfoTheArrayIsNull) {
    const auto management = expectDescriptor<TSystemManagementDescriptor>(hex("FE 02 0301"), 2);
    EXPECT_EQ(management->getSystemManagementID(), 0x0301);
    EXPECT_EQ(management->getAdditionalIdentificationInfoSize(), 0);
    EXPECT_EQ(management->getAdditionalIdentificationInfo(), nullptr);
}

TEST(TSystemManagementDescriptor, CopiesTheAdditionalInfo) {
    const auto management = expectDescriptor<TSystemManagementDescriptor>(hex("FE 05 0301 0A00FF"), 5);
    management.bytes.data()[4] = 0x55;
    EXPECT_EQ(management->getAdditionalIdentificationInfoSize(), 3);
    EXPECT_EQ(elements(management->getAdditionalIdentificationInfo(), 3), hex("0A00FF"));
}

TEST(TSystemManagementDescriptor, AdditionalInfoRunsToTheEndOfTheGivenBytes) {
    const auto management = expectDescriptor<TSystemManagementDescriptor>(hex("FE 02 0301 0A0B"), 4);
    EXPECT_EQ(management->getAdditionalIdentificationInfoSize(), 2);
    EXPECT_EQ(elements(management->getAdditionalIdentificationInfo(), 2), hex("0A0B"));
}

TEST(TSystemManagementDescriptor, LongestDescriptorHolds253BytesOfInfo) {
    const auto management =
        expectDescriptor<TSystemManagementDescriptor>(descriptor(0xFE, join({hex("0301"), fill(253, 0x5A)})), 255);
    EXPECT_EQ(management->getAdditionalIdentificationInfoSize(), 253);
    EXPECT_EQ(elements(management->getAdditionalIdentificationInfo(), 253), fill(253, 0x5A));
}

TEST(TSystemManagementDescriptor, SizeOfTheInfoIsKeptInEightBits) {
    const auto wrapped = expectDescriptor<TSystemManagementDescriptor>(join({hex("FE 02 0301"), fill(256, 0x5A)}), 258);
    EXPECT_EQ(wrapped->getAdditionalIdentificationInfoSize(), 0);
    ASSERT_NE(wrapped->getAdditionalIdentificationInfo(), nullptr);
    EXPECT_EQ(elements(wrapped->getAdditionalIdentificationInfo(), 256), fill(256, 0x5A));

    const auto longer = expectDescriptor<TSystemManagementDescriptor>(join({hex("FE 02 0301"), fill(300, 0x5A)}), 302);
    EXPECT_EQ(longer->getAdditionalIdentificationInfoSize(), 44);
    EXPECT_EQ(elements(longer->getAdditionalIdentificationInfo(), 300), fill(300, 0x5A));
}

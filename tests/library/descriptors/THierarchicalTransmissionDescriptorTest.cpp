#include "descriptors/THierarchicalTransmissionDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::THierarchicalTransmissionDescriptor;

TEST(THierarchicalTransmissionDescriptor, HasAQualityLevelAndAReferencePid) {
    EXPECT_GETTER(QUOR_U8, THierarchicalTransmissionDescriptor, getQualityLevel);
    EXPECT_GETTER(QUOR_U16, THierarchicalTransmissionDescriptor, getReferencePID);
    const auto parsed = expectDescriptor<THierarchicalTransmissionDescriptor>(hex("C0 03  FF E1 11"), 3);
    EXPECT_EQ(parsed->getQualityLevel(), 1);
    EXPECT_EQ(parsed->getReferencePID(), 0x0111);
}

TEST(THierarchicalTransmissionDescriptor, StartsAtZero) {
    ByteVector bytes = hex("C0 03  FF E1 11");
    const InDirtyMemory<THierarchicalTransmissionDescriptor> descriptor(bytes.data(), QUOR_U32{5});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0xC0);
    EXPECT_EQ(descriptor->getQualityLevel(), 0);
    EXPECT_EQ(descriptor->getReferencePID(), 0);
}

TEST(THierarchicalTransmissionDescriptor, FieldsTakeOnlyTheirBits) {
    expectFields<THierarchicalTransmissionDescriptor>(
        hex("C0 03"), 3,
        {{"quality_level", 2, 0, 1, &THierarchicalTransmissionDescriptor::getQualityLevel},
         {"reference_PID", 3, 4, 13, &THierarchicalTransmissionDescriptor::getReferencePID}});
}

TEST(THierarchicalTransmissionDescriptor, TheRestOfALongerBodyIsNotCounted) {
    const auto parsed = expectDescriptor<THierarchicalTransmissionDescriptor>(hex("C0 05  FE E0 21  01 02"), 3);
    EXPECT_EQ(parsed->getQualityLevel(), 0);
    EXPECT_EQ(parsed->getReferencePID(), 0x0021);
}

TEST(THierarchicalTransmissionDescriptor, BytesBehindTheDescriptorAreNotCounted) {
    const auto parsed =
        expectDescriptor<THierarchicalTransmissionDescriptor>(join({hex("C0 03  FF E1 11"), fill(295, 0xEE)}), 3);
    EXPECT_EQ(parsed->getReferencePID(), 0x0111);
}

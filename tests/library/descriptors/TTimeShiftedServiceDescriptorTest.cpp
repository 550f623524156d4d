#include "descriptors/TTimeShiftedServiceDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TTimeShiftedServiceDescriptor;

TEST(TTimeShiftedServiceDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("4C 02 5C20"));
    const InDirtyMemory<TTimeShiftedServiceDescriptor> shifted(bytes.data(), bytes.size());
    EXPECT_EQ(shifted->getDescriptorTag(), 0x4C);
    EXPECT_EQ(shifted->getReferenceServiceID(), 0);
}

TEST(TTimeShiftedServiceDescriptor, ReadsTheReferenceService) {
    EXPECT_EQ(expectDescriptor<TTimeShiftedServiceDescriptor>(hex("4C 02 FEDC"), 2)->getReferenceServiceID(), 0xFEDC);
}

TEST(TTimeShiftedServiceDescriptor, BytesBehindAreIgnored) {
    EXPECT_EQ(expectDescriptor<TTimeShiftedServiceDescriptor>(hex("4C 04 0001 FFFF"), 2)->getReferenceServiceID(), 1);
    EXPECT_EQ(expectDescriptor<TTimeShiftedServiceDescriptor>(hex("4C 02 0001 FFFF"), 2)->getReferenceServiceID(), 1);
}

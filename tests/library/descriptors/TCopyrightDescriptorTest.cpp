#include "descriptors/TCopyrightDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TCopyrightDescriptor;

TEST(TCopyrightDescriptor, HasALevelAndAReferencePid) {
    EXPECT_GETTER(QUOR_U8, TCopyrightDescriptor, getHierarchicalLevel);
    EXPECT_GETTER(QUOR_U16, TCopyrightDescriptor, getReferencePID);
    const auto parsed = expectDescriptor<TCopyrightDescriptor>(hex("0D 03  01 E1 23"), 3);
    EXPECT_EQ(parsed->getHierarchicalLevel(), 1);
    EXPECT_EQ(parsed->getReferencePID(), 0x0123);
}

TEST(TCopyrightDescriptor, StartsAtZero) {
    ByteVector bytes = hex("0D 03  01 E1 23");
    const InDirtyMemory<TCopyrightDescriptor> descriptor(bytes.data(), QUOR_U32{5});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0x0D);
    EXPECT_EQ(descriptor->getHierarchicalLevel(), 0);
    EXPECT_EQ(descriptor->getReferencePID(), 0);
}

TEST(TCopyrightDescriptor, FieldsTakeOnlyTheirBits) {
    expectFields<TCopyrightDescriptor>(hex("0D 03"), 3,
                                       {{"hierarchical_level", 2, 0, 1, &TCopyrightDescriptor::getHierarchicalLevel},
                                        {"reference_PID", 3, 4, 13, &TCopyrightDescriptor::getReferencePID}});
}

TEST(TCopyrightDescriptor, TheRestOfALongerBodyIsNotCounted) {
    const auto parsed = expectDescriptor<TCopyrightDescriptor>(hex("0D 06  00 1F FF  01 02 03"), 3);
    EXPECT_EQ(parsed->getHierarchicalLevel(), 0);
    EXPECT_EQ(parsed->getReferencePID(), 0x1FFF);
}

TEST(TCopyrightDescriptor, BytesBehindTheDescriptorAreNotCounted) {
    const auto parsed = expectDescriptor<TCopyrightDescriptor>(join({hex("0D 03  01 E1 23"), fill(295, 0xEE)}), 3);
    EXPECT_EQ(parsed->getReferencePID(), 0x0123);
}

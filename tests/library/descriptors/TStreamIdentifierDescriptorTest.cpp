#include "descriptors/TStreamIdentifierDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TStreamIdentifierDescriptor;

TEST(TStreamIdentifierDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U8, TStreamIdentifierDescriptor, getComponentTag);
    EXPECT_EQ(expectDescriptor<TStreamIdentifierDescriptor>(hex("52 01  07"), 1)->getComponentTag(), 7);
}

TEST(TStreamIdentifierDescriptor, StartsWithoutATag) {
    ByteVector bytes = hex("52 01  07");
    const InDirtyMemory<TStreamIdentifierDescriptor> descriptor(bytes.data(), QUOR_U32{3});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0x52);
    EXPECT_EQ(descriptor->getComponentTag(), 0);
}

TEST(TStreamIdentifierDescriptor, ComponentTagIsTheWholeByte) {
    expectFields<TStreamIdentifierDescriptor>(
        hex("52 01"), 1, {{"component_tag", 2, 7, 8, &TStreamIdentifierDescriptor::getComponentTag}});
}

TEST(TStreamIdentifierDescriptor, TheRestOfALongerBodyIsNotCounted) {
    EXPECT_EQ(expectDescriptor<TStreamIdentifierDescriptor>(hex("52 03  07 08 09"), 1)->getComponentTag(), 7);
}

TEST(TStreamIdentifierDescriptor, BytesBehindTheDescriptorAreNotCounted) {
    const auto parsed = expectDescriptor<TStreamIdentifierDescriptor>(join({hex("52 01  07"), fill(297, 0xEE)}), 1);
    EXPECT_EQ(parsed->getComponentTag(), 7);
    EXPECT_EQ(parsed->getDataLength(), 300U);
}

#include "descriptors/TConditionalPlaybackDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TConditionalPlaybackDescriptor;

TEST(TConditionalPlaybackDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U16, TConditionalPlaybackDescriptor, getCASystemID);
    EXPECT_GETTER(QUOR_U16, TConditionalPlaybackDescriptor, getCAPID);
    EXPECT_GETTER(QUOR_U8, TConditionalPlaybackDescriptor, getPrivateDataSize);
    EXPECT_GETTER(QUOR_U8*, TConditionalPlaybackDescriptor, getPrivateData);
    EXPECT_NE(expectDescriptor<TConditionalPlaybackDescriptor>(hex("F8 04  0005 E100"), 4).object, nullptr);
}

TEST(TConditionalPlaybackDescriptor, StartsEmpty) {
    ByteVector bytes = hex("F8 05  0005 E100 01");
    const InDirtyMemory<TConditionalPlaybackDescriptor> descriptor(bytes.data(), QUOR_U32{7});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0xF8);
    EXPECT_EQ(descriptor->getCASystemID(), 0);
    EXPECT_EQ(descriptor->getCAPID(), 0);
    EXPECT_EQ(descriptor->getPrivateDataSize(), 0);
    EXPECT_EQ(descriptor->getPrivateData(), nullptr);
}

TEST(TConditionalPlaybackDescriptor, NamesASystemAndItsPid) {
    const auto parsed = expectDescriptor<TConditionalPlaybackDescriptor>(hex("F8 04  8005 F123"), 4);
    EXPECT_EQ(parsed->getCASystemID(), 0x8005);
    EXPECT_EQ(parsed->getCAPID(), 0x1123);
    EXPECT_EQ(parsed->getPrivateDataSize(), 0);
    EXPECT_EQ(parsed->getPrivateData(), nullptr);
}

TEST(TConditionalPlaybackDescriptor, PrivateDataIsKeptAsItIs) {
    const auto parsed = expectDescriptor<TConditionalPlaybackDescriptor>(hex("F8 07  0005 E100  11 22 33"), 7);
    ASSERT_EQ(parsed->getPrivateDataSize(), 3);
    EXPECT_EQ(elements(parsed->getPrivateData(), 3), hex("11 22 33"));
}

TEST(TConditionalPlaybackDescriptor, PrivateDataIsACopy) {
    const auto parsed = expectDescriptor<TConditionalPlaybackDescriptor>(hex("F8 05  0005 E100  11"), 5);
    parsed.bytes.data()[6] = 0x99;
    ASSERT_EQ(parsed->getPrivateDataSize(), 1);
    EXPECT_EQ(parsed->getPrivateData()[0], 0x11);
    EXPECT_EQ(parsed->getPrivateData(), parsed->getPrivateData());
}

TEST(TConditionalPlaybackDescriptor, FieldsTakeOnlyTheirBits) {
    expectFields<TConditionalPlaybackDescriptor>(
        hex("F8 04"), 4,
        {{"CA_system_ID", 2, 7, 16, &TConditionalPlaybackDescriptor::getCASystemID},
         {"CA_PID", 4, 4, 13, &TConditionalPlaybackDescriptor::getCAPID}});
}

TEST(TConditionalPlaybackDescriptor, TheLongestPrivateDataOfADescriptor) {
    const auto parsed =
        expectDescriptor<TConditionalPlaybackDescriptor>(join({hex("F8 FF  0005 E100"), fill(251, 0x5A)}), 255);
    ASSERT_EQ(parsed->getPrivateDataSize(), 251);
    EXPECT_EQ(elements(parsed->getPrivateData(), 251), fill(251, 0x5A));
}

TEST(TConditionalPlaybackDescriptor, PrivateDataRunsToTheEndOfTheBytesGiven) {
    const auto parsed = expectDescriptor<TConditionalPlaybackDescriptor>(hex("F8 04  0005 E100  11 22"), 6);
    ASSERT_EQ(parsed->getPrivateDataSize(), 2);
    EXPECT_EQ(elements(parsed->getPrivateData(), 2), hex("11 22"));
}

TEST(TConditionalPlaybackDescriptor, TheSizeIsCountedInEightBits) {
    const ByteVector fields = hex("F8 04  0005 E100");
    const auto most = expectDescriptor<TConditionalPlaybackDescriptor>(join({fields, fill(255, 0x5A)}), 259);
    ASSERT_EQ(most->getPrivateDataSize(), 255);
    EXPECT_EQ(elements(most->getPrivateData(), 255), fill(255, 0x5A));

    const auto none = expectDescriptor<TConditionalPlaybackDescriptor>(join({fields, fill(256, 0x5A)}), 260);
    EXPECT_EQ(none->getPrivateDataSize(), 0);
    EXPECT_NE(none->getPrivateData(), nullptr);

    const auto some = expectDescriptor<TConditionalPlaybackDescriptor>(join({fields, fill(294, 0x5A)}), 298);
    ASSERT_EQ(some->getPrivateDataSize(), 38);
    EXPECT_EQ(elements(some->getPrivateData(), 38), fill(38, 0x5A));
}

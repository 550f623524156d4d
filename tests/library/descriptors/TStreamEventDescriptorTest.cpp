#include "descriptors/TStreamEventDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TStreamEventDescriptor;

TEST(TStreamEventDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U16, TStreamEventDescriptor, getEventID);
    EXPECT_GETTER(QUOR_U8, TStreamEventDescriptor, getEventNPTH);
    EXPECT_GETTER(QUOR_U32, TStreamEventDescriptor, getEventNPTL);
    EXPECT_GETTER(QUOR_U8, TStreamEventDescriptor, getPrivateDataSize);
    EXPECT_GETTER(QUOR_U8*, TStreamEventDescriptor, getPrivateData);
    EXPECT_NE(expectDescriptor<TStreamEventDescriptor>(hex("04 0A  0001 FFFFFFFF 00015F90"), 10).object, nullptr);
}

TEST(TStreamEventDescriptor, StartsEmpty) {
    ByteVector bytes = hex("04 0B  0001 FFFFFFFF 00015F90 01");
    const InDirtyMemory<TStreamEventDescriptor> descriptor(bytes.data(), QUOR_U32{13});
    EXPECT_EQ(descriptor->getDescriptorTag(), 4);
    EXPECT_EQ(descriptor->getEventID(), 0);
    EXPECT_EQ(descriptor->getEventNPTH(), 0);
    EXPECT_EQ(descriptor->getEventNPTL(), 0U);
    EXPECT_EQ(descriptor->getPrivateDataSize(), 0);
    EXPECT_EQ(descriptor->getPrivateData(), nullptr);
}

TEST(TStreamEventDescriptor, TellsWhenAnEventFires) {
    const auto parsed = expectDescriptor<TStreamEventDescriptor>(hex("04 0A  0102 FFFFFFFF 89ABCDEF"), 10);
    EXPECT_EQ(parsed->getEventID(), 0x0102);
    EXPECT_EQ(parsed->getEventNPTH(), 1);
    EXPECT_EQ(parsed->getEventNPTL(), 0x89ABCDEFU);
    EXPECT_EQ(parsed->getPrivateDataSize(), 0);
    EXPECT_EQ(parsed->getPrivateData(), nullptr);
}

TEST(TStreamEventDescriptor, PrivateDataIsKeptAsItIs) {
    const auto parsed = expectDescriptor<TStreamEventDescriptor>(hex("04 0D  0102 00000000 00000000  11 22 33"), 13);
    ASSERT_EQ(parsed->getPrivateDataSize(), 3);
    EXPECT_EQ(elements(parsed->getPrivateData(), 3), hex("11 22 33"));
}

TEST(TStreamEventDescriptor, PrivateDataIsACopy) {
    const auto parsed = expectDescriptor<TStreamEventDescriptor>(hex("04 0B  0102 00000000 00000000  11"), 11);
    parsed.bytes.data()[12] = 0x99;
    ASSERT_EQ(parsed->getPrivateDataSize(), 1);
    EXPECT_EQ(parsed->getPrivateData()[0], 0x11);
    EXPECT_EQ(parsed->getPrivateData(), parsed->getPrivateData());
}

TEST(TStreamEventDescriptor, FieldsTakeOnlyTheirBits) {
    expectFields<TStreamEventDescriptor>(hex("04 0B"), 11,
                                         {{"eventId", 2, 7, 16, &TStreamEventDescriptor::getEventID},
                                          {"eventNPT, bit 32", 7, 0, 1, &TStreamEventDescriptor::getEventNPTH},
                                          {"eventNPT", 8, 7, 32, &TStreamEventDescriptor::getEventNPTL},
                                          {"privateDataByte", 12, 7, 8, [](const TStreamEventDescriptor& parsed) {
                                               return parsed.getPrivateData()[0];
                                           }}});
}

TEST(TStreamEventDescriptor, TheLongestPrivateDataOfADescriptor) {
    const auto parsed =
        expectDescriptor<TStreamEventDescriptor>(join({hex("04 FF  0102 00000000 00000000"), fill(245, 0x5A)}), 255);
    ASSERT_EQ(parsed->getPrivateDataSize(), 245);
    EXPECT_EQ(elements(parsed->getPrivateData(), 245), fill(245, 0x5A));
}

TEST(TStreamEventDescriptor, PrivateDataRunsToTheEndOfTheBytesGiven) {
    const auto parsed = expectDescriptor<TStreamEventDescriptor>(hex("04 0A  0102 00000000 00000000  11 22"), 12);
    ASSERT_EQ(parsed->getPrivateDataSize(), 2);
    EXPECT_EQ(elements(parsed->getPrivateData(), 2), hex("11 22"));
}

TEST(TStreamEventDescriptor, TheSizeIsCountedInEightBits) {
    const ByteVector fields = hex("04 0A  0102 00000000 00000000");
    const auto most = expectDescriptor<TStreamEventDescriptor>(join({fields, fill(255, 0x5A)}), 265);
    ASSERT_EQ(most->getPrivateDataSize(), 255);
    EXPECT_EQ(elements(most->getPrivateData(), 255), fill(255, 0x5A));

    const auto none = expectDescriptor<TStreamEventDescriptor>(join({fields, fill(256, 0x5A)}), 266);
    EXPECT_EQ(none->getPrivateDataSize(), 0);
    EXPECT_NE(none->getPrivateData(), nullptr);

    const auto some = expectDescriptor<TStreamEventDescriptor>(join({fields, fill(288, 0x5A)}), 298);
    ASSERT_EQ(some->getPrivateDataSize(), 32);
    EXPECT_EQ(elements(some->getPrivateData(), 32), fill(32, 0x5A));
}

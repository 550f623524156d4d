#include "descriptors/TCAIdentifierDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TCAIdentifierDescriptor;

namespace {

using Words = std::vector<QUOR_U16>;

} // namespace

TEST(TCAIdentifierDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U8, TCAIdentifierDescriptor, getCASystemIDCount);
    EXPECT_GETTER(QUOR_U16*, TCAIdentifierDescriptor, getCASystemIDs);
    EXPECT_NE(expectDescriptor<TCAIdentifierDescriptor>(hex("53 02  0005"), 2).object, nullptr);
}

TEST(TCAIdentifierDescriptor, StartsEmpty) {
    ByteVector bytes = hex("53 02  0005");
    const InDirtyMemory<TCAIdentifierDescriptor> descriptor(bytes.data(), QUOR_U32{4});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0x53);
    EXPECT_EQ(descriptor->getCASystemIDCount(), 0);
    EXPECT_EQ(descriptor->getCASystemIDs(), nullptr);
}

TEST(TCAIdentifierDescriptor, ListsTheSystemsInWireOrder) {
    const auto parsed = expectDescriptor<TCAIdentifierDescriptor>(hex("53 06  8001 0005 FFFE"), 6);
    ASSERT_EQ(parsed->getCASystemIDCount(), 3);
    EXPECT_EQ(elements(parsed->getCASystemIDs(), 3), (Words{0x8001, 0x0005, 0xFFFE}));
}

TEST(TCAIdentifierDescriptor, IdsHaveSixteenBits) {
    expectFields<TCAIdentifierDescriptor>(
        hex("53 04"), 4,
        {{"first", 2, 7, 16, [](const TCAIdentifierDescriptor& parsed) { return parsed.getCASystemIDs()[0]; }},
         {"second", 4, 7, 16, [](const TCAIdentifierDescriptor& parsed) { return parsed.getCASystemIDs()[1]; }}});
}

TEST(TCAIdentifierDescriptor, AnOddLastByteIsIgnoredButCounted) {
    const auto parsed = expectDescriptor<TCAIdentifierDescriptor>(hex("53 05  0001 0002 03"), 5);
    ASSERT_EQ(parsed->getCASystemIDCount(), 2);
    EXPECT_EQ(elements(parsed->getCASystemIDs(), 2), (Words{1, 2}));
}

TEST(TCAIdentifierDescriptor, TheArrayHasRoomForAWordPerByte) {
    const auto parsed = expectDescriptor<TCAIdentifierDescriptor>(hex("53 05  0001 0002 03"), 5);
    EXPECT_EQ(elements(parsed->getCASystemIDs(), 5), (Words{1, 2, 0, 0, 0}));
    parsed->getCASystemIDs()[4] = 0x1234;
    EXPECT_EQ(parsed->getCASystemIDs()[4], 0x1234);
    EXPECT_EQ(elements(parsed->getCASystemIDs(), 2), (Words{1, 2}));
}

TEST(TCAIdentifierDescriptor, TheIdsAreCopies) {
    const auto parsed = expectDescriptor<TCAIdentifierDescriptor>(hex("53 02  0005"), 2);
    parsed.bytes.data()[3] = 0x99;
    EXPECT_EQ(parsed->getCASystemIDs()[0], 5);
    EXPECT_EQ(parsed->getCASystemIDs(), parsed->getCASystemIDs());
}

TEST(TCAIdentifierDescriptor, TheLongestListOfADescriptor) {
    const auto parsed = expectDescriptor<TCAIdentifierDescriptor>(join({hex("53 FF"), fill(255, 0x5A)}), 255);
    ASSERT_EQ(parsed->getCASystemIDCount(), 127);
    EXPECT_EQ(elements(parsed->getCASystemIDs(), 127), Words(127, 0x5A5A));
}

TEST(TCAIdentifierDescriptor, TheListRunsToTheEndOfTheBytesGiven) {
    const auto parsed = expectDescriptor<TCAIdentifierDescriptor>(hex("53 02  0001 0002 0003"), 6);
    ASSERT_EQ(parsed->getCASystemIDCount(), 3);
    EXPECT_EQ(elements(parsed->getCASystemIDs(), 3), (Words{1, 2, 3}));
}

TEST(TCAIdentifierDescriptor, TheSystemsAreCountedInEightBits) {
    const auto most = expectDescriptor<TCAIdentifierDescriptor>(join({hex("53 02"), fill(511, 0x5A)}), 511);
    ASSERT_EQ(most->getCASystemIDCount(), 255);
    EXPECT_EQ(elements(most->getCASystemIDs(), 255), Words(255, 0x5A5A));

    const auto none = expectDescriptor<TCAIdentifierDescriptor>(join({hex("53 02"), fill(512, 0x5A)}), 512);
    EXPECT_EQ(none->getCASystemIDCount(), 0);
    EXPECT_NE(none->getCASystemIDs(), nullptr);

    const auto some = expectDescriptor<TCAIdentifierDescriptor>(join({hex("53 02"), fill(598, 0x5A)}), 598);
    ASSERT_EQ(some->getCASystemIDCount(), 43);
    EXPECT_EQ(elements(some->getCASystemIDs(), 43), Words(43, 0x5A5A));
}

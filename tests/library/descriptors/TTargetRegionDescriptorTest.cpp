#include "descriptors/TTargetRegionDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TTargetRegionDescriptor;

TEST(TTargetRegionDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U16, TTargetRegionDescriptor, getRegionSpecType);
    EXPECT_GETTER(QUOR_U8, TTargetRegionDescriptor, getSpecSize);
    EXPECT_GETTER(QUOR_U8*, TTargetRegionDescriptor, getSpecData);
    EXPECT_NE(expectDescriptor<TTargetRegionDescriptor>(hex("C6 01  01"), 1).object, nullptr);
}

TEST(TTargetRegionDescriptor, StartsEmpty) {
    ByteVector bytes = hex("C6 02  01 02");
    const InDirtyMemory<TTargetRegionDescriptor> descriptor(bytes.data(), QUOR_U32{4});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0xC6);
    EXPECT_EQ(descriptor->getRegionSpecType(), 0);
    EXPECT_EQ(descriptor->getSpecSize(), 0);
    EXPECT_EQ(descriptor->getSpecData(), nullptr);
}

TEST(TTargetRegionDescriptor, TheTypeAloneHasNoRegions) {
    const auto parsed = expectDescriptor<TTargetRegionDescriptor>(hex("C6 01  02"), 1);
    EXPECT_EQ(parsed->getRegionSpecType(), 2);
    EXPECT_EQ(parsed->getSpecSize(), 0);
    EXPECT_EQ(parsed->getSpecData(), nullptr);
}

TEST(TTargetRegionDescriptor, RegionsAreKeptAsTheyAre) {
    const auto parsed = expectDescriptor<TTargetRegionDescriptor>(hex("C6 08  01  11 22 33 44 55 66 77"), 8);
    EXPECT_EQ(parsed->getRegionSpecType(), 1);
    ASSERT_EQ(parsed->getSpecSize(), 7);
    EXPECT_EQ(elements(parsed->getSpecData(), 7), hex("11 22 33 44 55 66 77"));

    const auto one = expectDescriptor<TTargetRegionDescriptor>(hex("C6 02  01  11"), 2);
    ASSERT_EQ(one->getSpecSize(), 1);
    EXPECT_EQ(one->getSpecData()[0], 0x11);
}

TEST(TTargetRegionDescriptor, RegionsAreACopy) {
    const auto parsed = expectDescriptor<TTargetRegionDescriptor>(hex("C6 02  01  11"), 2);
    parsed.bytes.data()[3] = 0x99;
    EXPECT_EQ(parsed->getSpecData()[0], 0x11);
    EXPECT_EQ(parsed->getSpecData(), parsed->getSpecData());
}

TEST(TTargetRegionDescriptor, TheTypeIsTheWholeByte) {
    expectFields<TTargetRegionDescriptor>(hex("C6 02"), 2,
                                          {{"region_spec_type", 2, 7, 8, &TTargetRegionDescriptor::getRegionSpecType},
                                           {"target_region_spec", 3, 7, 8, [](const TTargetRegionDescriptor& parsed) {
                                                return parsed.getSpecData()[0];
                                            }}});
}

TEST(TTargetRegionDescriptor, TheLongestRegionsOfADescriptor) {
    const auto parsed = expectDescriptor<TTargetRegionDescriptor>(join({hex("C6 FF  01"), fill(254, 0x5A)}), 255);
    ASSERT_EQ(parsed->getSpecSize(), 254);
    EXPECT_EQ(elements(parsed->getSpecData(), 254), fill(254, 0x5A));
}

TEST(TTargetRegionDescriptor, RegionsRunToTheEndOfTheBytesGiven) {
    const auto parsed = expectDescriptor<TTargetRegionDescriptor>(hex("C6 01  01  11 22"), 3);
    ASSERT_EQ(parsed->getSpecSize(), 2);
    EXPECT_EQ(elements(parsed->getSpecData(), 2), hex("11 22"));
}

TEST(TTargetRegionDescriptor, TheSizeIsCountedInEightBits) {
    const auto most = expectDescriptor<TTargetRegionDescriptor>(join({hex("C6 01  01"), fill(255, 0x5A)}), 256);
    ASSERT_EQ(most->getSpecSize(), 255);
    EXPECT_EQ(elements(most->getSpecData(), 255), fill(255, 0x5A));

    const auto none = expectDescriptor<TTargetRegionDescriptor>(join({hex("C6 01  01"), fill(256, 0x5A)}), 257);
    EXPECT_EQ(none->getSpecSize(), 0);
    EXPECT_NE(none->getSpecData(), nullptr);

    const auto some = expectDescriptor<TTargetRegionDescriptor>(join({hex("C6 01  01"), fill(297, 0x5A)}), 298);
    ASSERT_EQ(some->getSpecSize(), 41);
    EXPECT_EQ(elements(some->getSpecData(), 41), fill(41, 0x5A));
}

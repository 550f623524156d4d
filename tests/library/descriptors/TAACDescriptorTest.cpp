#include "descriptors/TAACDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TAACDescriptor;
using Quor::TISDBTTable;

TEST(TAACDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TAACDescriptor::PROFILE_ACC_L1, 40);
    EXPECT_CONSTANT(QUOR_U8, TAACDescriptor::PROFILE_ACC_L2, 41);
    EXPECT_CONSTANT(QUOR_U8, TAACDescriptor::PROFILE_ACC_L4, 42);
    EXPECT_CONSTANT(QUOR_U8, TAACDescriptor::PROFILE_ACC_L5, 43);
    EXPECT_CONSTANT(QUOR_U8, TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L2, 44);
    EXPECT_CONSTANT(QUOR_U8, TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L3, 45);
    EXPECT_CONSTANT(QUOR_U8, TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L4, 46);
    EXPECT_CONSTANT(QUOR_U8, TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L5, 47);
    EXPECT_CONSTANT(QUOR_U8, TAACDescriptor::PROFILE_NOT_SPECIFIED, 254);
    EXPECT_CONSTANT(QUOR_U8, TAACDescriptor::PROFILE_NO_AUDIO_INFO, 255);
}

TEST(TAACDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U8, TAACDescriptor, getProfileAndLevel);
    EXPECT_GETTER(QUOR_BOOL, TAACDescriptor, hasAACType);
    EXPECT_GETTER(QUOR_U8, TAACDescriptor, getAACType);
    EXPECT_GETTER(QUOR_U8, TAACDescriptor, getAdditionalInfoSize);
    EXPECT_GETTER(QUOR_U8*, TAACDescriptor, getAdditionalInfo);
    EXPECT_NE(expectDescriptor<TAACDescriptor>(hex("7C 02  28 00"), 2).object, nullptr);
}

TEST(TAACDescriptor, StartsEmpty) {
    ByteVector bytes = hex("7C 04  28 80 01 02");
    const InDirtyMemory<TAACDescriptor> descriptor(bytes.data(), QUOR_U32{6});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0x7C);
    EXPECT_EQ(descriptor->getProfileAndLevel(), 0);
    EXPECT_EQ(descriptor->hasAACType(), 0);
    EXPECT_EQ(descriptor->getAACType(), 0);
    EXPECT_EQ(descriptor->getAdditionalInfoSize(), 0);
    EXPECT_EQ(descriptor->getAdditionalInfo(), nullptr);
}

TEST(TAACDescriptor, TwoBytesTellTheProfileOnly) {
    const auto parsed = expectDescriptor<TAACDescriptor>(hex("7C 02  2F 7F"), 2);
    EXPECT_EQ(parsed->getProfileAndLevel(), TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L5);
    EXPECT_EQ(parsed->hasAACType(), 0);
    EXPECT_EQ(parsed->getAACType(), 0);
    EXPECT_EQ(parsed->getAdditionalInfoSize(), 0);
    EXPECT_EQ(parsed->getAdditionalInfo(), nullptr);
}

TEST(TAACDescriptor, ATypeThatIsAnnouncedMustFollow) {
    expectFailure<TAACDescriptor>(
        hex("7C 02  28 80"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TAACDescriptor::parse: Longer data length is required: 0 < 1. Aborting!"});
    expectFailure<TAACDescriptor>(
        hex("7C 02  28 FF"), 2568,
        {"ISDBTUtils: TAACDescriptor::parse: Longer data length is required: 0 < 1. Aborting!"});
}

TEST(TAACDescriptor, TheTypeAloneCountsThree) {
    const auto parsed = expectDescriptor<TAACDescriptor>(hex("7C 03  2C 80 11"), 3);
    EXPECT_EQ(parsed->getProfileAndLevel(), 0x2C);
    EXPECT_EQ(parsed->hasAACType(), 1);
    EXPECT_EQ(parsed->getAACType(), 0x11);
    EXPECT_EQ(parsed->getAdditionalInfoSize(), 0);
    EXPECT_EQ(parsed->getAdditionalInfo(), nullptr);
}

TEST(TAACDescriptor, BehindTheTypeFollowsAdditionalInfo) {
    const auto parsed = expectDescriptor<TAACDescriptor>(hex("7C 05  2C 80 11  AA BB"), 5);
    EXPECT_EQ(parsed->getAACType(), 0x11);
    ASSERT_EQ(parsed->getAdditionalInfoSize(), 2);
    EXPECT_EQ(elements(parsed->getAdditionalInfo(), 2), hex("AA BB"));
}

TEST(TAACDescriptor, WithoutATypeAllTheRestIsAdditionalInfo) {
    const auto parsed = expectDescriptor<TAACDescriptor>(hex("7C 05  2C 7F  11 AA BB"), 5);
    EXPECT_EQ(parsed->hasAACType(), 0);
    EXPECT_EQ(parsed->getAACType(), 0);
    ASSERT_EQ(parsed->getAdditionalInfoSize(), 3);
    EXPECT_EQ(elements(parsed->getAdditionalInfo(), 3), hex("11 AA BB"));

    const auto one = expectDescriptor<TAACDescriptor>(hex("7C 03  2C 00  11"), 3);
    ASSERT_EQ(one->getAdditionalInfoSize(), 1);
    EXPECT_EQ(one->getAdditionalInfo()[0], 0x11);
}

TEST(TAACDescriptor, AdditionalInfoIsACopy) {
    const auto parsed = expectDescriptor<TAACDescriptor>(hex("7C 03  2C 00  11"), 3);
    parsed.bytes.data()[4] = 0x99;
    EXPECT_EQ(parsed->getAdditionalInfo()[0], 0x11);
    EXPECT_EQ(parsed->getAdditionalInfo(), parsed->getAdditionalInfo());
}

TEST(TAACDescriptor, FieldsTakeOnlyTheirBits) {
    expectFields<TAACDescriptor>(hex("7C 04"), 4,
                                 {{"profile_and_level", 2, 7, 8, &TAACDescriptor::getProfileAndLevel},
                                  {"AAC_type_flag", 3, 7, 1, &TAACDescriptor::hasAACType},
                                  {"last byte of the info", 5, 7, 8, [](const TAACDescriptor& parsed) {
                                       return parsed.getAdditionalInfo()[parsed.getAdditionalInfoSize() - 1];
                                   }}});
    expectFields<TAACDescriptor>(hex("7C 03  28 80"), 1, {{"AAC_type", 4, 7, 8, &TAACDescriptor::getAACType}});
}

TEST(TAACDescriptor, TheInfoRunsToTheEndOfTheBytesGiven) {
    const auto type = expectDescriptor<TAACDescriptor>(hex("7C 02  28 80  11"), 3);
    EXPECT_EQ(type->getAACType(), 0x11);

    const auto info = expectDescriptor<TAACDescriptor>(hex("7C 02  28 00  11 22"), 4);
    ASSERT_EQ(info->getAdditionalInfoSize(), 2);
    EXPECT_EQ(elements(info->getAdditionalInfo(), 2), hex("11 22"));
}

TEST(TAACDescriptor, TheLongestInfoOfADescriptor) {
    const auto plain = expectDescriptor<TAACDescriptor>(join({hex("7C FF  28 00"), fill(253, 0x5A)}), 255);
    ASSERT_EQ(plain->getAdditionalInfoSize(), 253);
    EXPECT_EQ(elements(plain->getAdditionalInfo(), 253), fill(253, 0x5A));

    const auto typed = expectDescriptor<TAACDescriptor>(join({hex("7C FF  28 80 11"), fill(252, 0x5A)}), 255);
    ASSERT_EQ(typed->getAdditionalInfoSize(), 252);
    EXPECT_EQ(elements(typed->getAdditionalInfo(), 252), fill(252, 0x5A));
}

TEST(TAACDescriptor, TheSizeIsCountedInEightBits) {
    const auto plain = expectDescriptor<TAACDescriptor>(join({hex("7C 02  28 00"), fill(296, 0x5A)}), 298);
    ASSERT_EQ(plain->getAdditionalInfoSize(), 40);
    EXPECT_EQ(elements(plain->getAdditionalInfo(), 40), fill(40, 0x5A));

    const auto typed = expectDescriptor<TAACDescriptor>(join({hex("7C 02  28 80 11"), fill(295, 0x5A)}), 298);
    ASSERT_EQ(typed->getAdditionalInfoSize(), 39);
    EXPECT_EQ(elements(typed->getAdditionalInfo(), 39), fill(39, 0x5A));

    const auto none = expectDescriptor<TAACDescriptor>(join({hex("7C 02  28 00"), fill(256, 0x5A)}), 258);
    EXPECT_EQ(none->getAdditionalInfoSize(), 0);
    EXPECT_NE(none->getAdditionalInfo(), nullptr);
}

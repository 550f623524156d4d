#include "descriptors/TContentAvailabilityDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TContentAvailabilityDescriptor;

TEST(TContentAvailabilityDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TContentAvailabilityDescriptor::RETENTION_STATE_NO_LIMIT, 0);
    EXPECT_CONSTANT(QUOR_U8, TContentAvailabilityDescriptor::RETENTION_STATE_ONE_WEEK, 1);
    EXPECT_CONSTANT(QUOR_U8, TContentAvailabilityDescriptor::RETENTION_STATE_2_DAYS, 2);
    EXPECT_CONSTANT(QUOR_U8, TContentAvailabilityDescriptor::RETENTION_STATE_1_DAY, 3);
    EXPECT_CONSTANT(QUOR_U8, TContentAvailabilityDescriptor::RETENTION_STATE_12_HOURS, 4);
    EXPECT_CONSTANT(QUOR_U8, TContentAvailabilityDescriptor::RETENTION_STATE_6_HOURS, 5);
    EXPECT_CONSTANT(QUOR_U8, TContentAvailabilityDescriptor::RETENTION_STATE_3_HOURS, 6);
    EXPECT_CONSTANT(QUOR_U8, TContentAvailabilityDescriptor::RETENTION_STATE_1_HALF_HOUR, 7);
}

TEST(TContentAvailabilityDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_BOOL, TContentAvailabilityDescriptor, isImageConstrained);
    EXPECT_GETTER(QUOR_BOOL, TContentAvailabilityDescriptor, isRetentionAllowed);
    EXPECT_GETTER(QUOR_U8, TContentAvailabilityDescriptor, getRetentionState);
    EXPECT_GETTER(QUOR_BOOL, TContentAvailabilityDescriptor, isEncryptionModeEnabled);
    EXPECT_NE(expectDescriptor<TContentAvailabilityDescriptor>(hex("DE 01  00"), 3).object, nullptr);
}

TEST(TContentAvailabilityDescriptor, StartsWithoutFlags) {
    ByteVector bytes = hex("DE 01  00");
    const InDirtyMemory<TContentAvailabilityDescriptor> descriptor(bytes.data(), QUOR_U32{3});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0xDE);
    EXPECT_EQ(descriptor->isImageConstrained(), 0);
    EXPECT_EQ(descriptor->isRetentionAllowed(), 0);
    EXPECT_EQ(descriptor->getRetentionState(), 0);
    EXPECT_EQ(descriptor->isEncryptionModeEnabled(), 0);
}

TEST(TContentAvailabilityDescriptor, ABitOfZeroReadsAsTrue) {
    const auto parsed = expectDescriptor<TContentAvailabilityDescriptor>(hex("DE 01  00"), 3);
    EXPECT_EQ(parsed->isImageConstrained(), 1);
    EXPECT_EQ(parsed->isRetentionAllowed(), 1);
    EXPECT_EQ(parsed->getRetentionState(), 0);
    EXPECT_EQ(parsed->isEncryptionModeEnabled(), 1);
}

TEST(TContentAvailabilityDescriptor, ABitOfOneReadsAsFalse) {
    const auto parsed = expectDescriptor<TContentAvailabilityDescriptor>(hex("DE 01  31"), 3);
    EXPECT_EQ(parsed->isImageConstrained(), 0);
    EXPECT_EQ(parsed->isRetentionAllowed(), 0);
    EXPECT_EQ(parsed->getRetentionState(), 0);
    EXPECT_EQ(parsed->isEncryptionModeEnabled(), 0);
}

TEST(TContentAvailabilityDescriptor, FieldsTakeOnlyTheirBits) {
    struct Expected {
        QUOR_U8 byte;
        QUOR_BOOL imageConstrained;
        QUOR_BOOL retentionAllowed;
        QUOR_U8 retentionState;
        QUOR_BOOL encryptionEnabled;
    };
    for (const Expected& expected : std::vector<Expected>{
             // each bit alone
             {0x01, 1, 1, 0, 0},
             {0x02, 1, 1, 1, 1},
             {0x04, 1, 1, 2, 1},
             {0x08, 1, 1, 4, 1},
             {0x10, 1, 0, 0, 1},
             {0x20, 0, 1, 0, 1},
             {0x40, 1, 1, 0, 1},
             {0x80, 1, 1, 0, 1},
             // each bit missing alone
             {0xFE, 0, 0, 7, 1},
             {0xFD, 0, 0, 6, 0},
             {0xFB, 0, 0, 5, 0},
             {0xF7, 0, 0, 3, 0},
             {0xEF, 0, 1, 7, 0},
             {0xDF, 1, 0, 7, 0},
             {0xBF, 0, 0, 7, 0},
             {0x7F, 0, 0, 7, 0},
             {0xFF, 0, 0, 7, 0},
         }) {
        SCOPED_TRACE(int{expected.byte});
        const auto parsed = expectDescriptor<TContentAvailabilityDescriptor>({0xDE, 0x01, expected.byte}, 3);
        EXPECT_EQ(parsed->isImageConstrained(), expected.imageConstrained);
        EXPECT_EQ(parsed->isRetentionAllowed(), expected.retentionAllowed);
        EXPECT_EQ(parsed->getRetentionState(), expected.retentionState);
        EXPECT_EQ(parsed->isEncryptionModeEnabled(), expected.encryptionEnabled);
    }
}

TEST(TContentAvailabilityDescriptor, TheWholeDescriptorIsCounted) {
    EXPECT_EQ(expectDescriptor<TContentAvailabilityDescriptor>(hex("DE 04  0E 01 02 03"), 6)->getRetentionState(), 7);
}

TEST(TContentAvailabilityDescriptor, BytesBehindTheDescriptorAreCounted) {
    const auto parsed =
        expectDescriptor<TContentAvailabilityDescriptor>(join({hex("DE 01  0E"), fill(297, 0xEE)}), 300);
    EXPECT_EQ(parsed->getRetentionState(), 7);
}

#include "descriptors/TIPSignalingDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"
#include "support/Survival.h"

using Quor::TIPSignalingDescriptor;

EXPECT_GETTER(QUOR_U32, TIPSignalingDescriptor, getPlatformID);

TEST(TIPSignalingDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(hex("11 03 FFFFFF"));
    const InDirtyMemory<TIPSignalingDescriptor> memory(bytes.data(), bytes.size());
    const TIPSignalingDescriptor& descriptor = *memory;
    EXPECT_EQ(descriptor.getDescriptorTag(), 0x11);
    EXPECT_EQ(descriptor.getData(), bytes.data());
    EXPECT_EQ(descriptor.getDataLength(), 5U);
    EXPECT_EQ(descriptor.getPlatformID(), 0U);
}

TEST(TIPSignalingDescriptor, ShowsThePlatform) {
    EXPECT_EQ(expectDescriptor<TIPSignalingDescriptor>(hex("11 03 010203"), 3)->getPlatformID(), 0x010203U);
}

TEST(TIPSignalingDescriptor, ThePlatformHasTwentyFourBits) {
    for (unsigned bit = 0; bit < 24; ++bit) {
        const unsigned platform = 1U << bit;
        const auto parsed = expectDescriptor<TIPSignalingDescriptor>(
            join({hex("11 03"), {static_cast<QUOR_U8>(platform >> 16)}, u16(platform & 0xFFFFU)}), 3);
        EXPECT_EQ(parsed->getPlatformID(), platform);
    }
    EXPECT_EQ(expectDescriptor<TIPSignalingDescriptor>(hex("11 03 FFFFFF"), 3)->getPlatformID(), 0xFFFFFFU);
}

TEST(TIPSignalingDescriptor, BytesBehindThePlatformAreIgnored) {
    EXPECT_EQ(expectDescriptor<TIPSignalingDescriptor>(hex("11 05 010203 FFFF"), 3)->getPlatformID(), 0x010203U);
    EXPECT_EQ(expectDescriptor<TIPSignalingDescriptor>(hex("11 03 010203 FFFF"), 3)->getPlatformID(), 0x010203U);
}

TEST(TIPSignalingDescriptor, ACopyNeedsNeitherSourceNorBytes) {
    std::unique_ptr<TIPSignalingDescriptor> copy;
    {
        const auto parsed = parseBytes<TIPSignalingDescriptor>(hex("11 03 010203"));
        ASSERT_NE(parsed.object, nullptr);
        copy = std::make_unique<TIPSignalingDescriptor>(parsed.object.get());
    }
    EXPECT_EQ(copy->getDescriptorTag(), 0x11);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    EXPECT_EQ(copy->getPlatformID(), 0x010203U);
}

TEST(TIPSignalingDescriptor, DamageIsSurvived) {
    const ByteVector good = hex("11 03 010203");
    expectEveryPrefixSurvives<TIPSignalingDescriptor>(good);
    expectEveryByteChangeSurvives<TIPSignalingDescriptor>(good);
}

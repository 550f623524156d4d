#include "descriptors/TDigitalCopyControlDescriptorItem.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Lifetime.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TDigitalCopyControlDescriptorItem;
using Quor::TISDBTTable;

TEST(TDigitalCopyControlDescriptorItem, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U8, TDigitalCopyControlDescriptorItem, getDigitalRecordingControlData);
    EXPECT_GETTER(QUOR_BOOL, TDigitalCopyControlDescriptorItem, hasMaximumBitrate);
    EXPECT_GETTER(QUOR_U8, TDigitalCopyControlDescriptorItem, getCopyControlType);
    EXPECT_GETTER(QUOR_U8, TDigitalCopyControlDescriptorItem, getAPSControlData);
    EXPECT_GETTER(QUOR_U8, TDigitalCopyControlDescriptorItem, getMaximumBitrate);
    static_assert(std::is_same_v<decltype(&TDigitalCopyControlDescriptorItem::parse),
                                 TDigitalCopyControlDescriptorItem* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>,
                  "parse");
    static_assert(std::has_virtual_destructor_v<TDigitalCopyControlDescriptorItem>, "subclasses are deleted by base");
    EXPECT_NE(expectSuccess<TDigitalCopyControlDescriptorItem>(hex("00"), 1).object, nullptr);
}

TEST(TDigitalCopyControlDescriptorItem, StartsAtZero) {
    const InDirtyMemory<TDigitalCopyControlDescriptorItem> item;
    EXPECT_EQ(item->getDigitalRecordingControlData(), 0);
    EXPECT_EQ(item->hasMaximumBitrate(), 0);
    EXPECT_EQ(item->getCopyControlType(), 0);
    EXPECT_EQ(item->getAPSControlData(), 0);
    EXPECT_EQ(item->getMaximumBitrate(), 0);
}

TEST(TDigitalCopyControlDescriptorItem, BeginsWithItsFlags) {
    // No component_tag stands before them.
    const auto parsed = expectSuccess<TDigitalCopyControlDescriptorItem>(hex("25 40"), 2);
    EXPECT_EQ(parsed->getDigitalRecordingControlData(), 0);
    EXPECT_EQ(parsed->hasMaximumBitrate(), 1);
    EXPECT_EQ(parsed->getCopyControlType(), 1);
    EXPECT_EQ(parsed->getAPSControlData(), 1);
    EXPECT_EQ(parsed->getMaximumBitrate(), 0x40);
}

TEST(TDigitalCopyControlDescriptorItem, EveryFlagByte) {
    for (unsigned flags = 0; flags < 0x100; ++flags) {
        SCOPED_TRACE(flags);
        const ByteVector wire{static_cast<QUOR_U8>(flags), 0x7E};
        const bool bitrate = (flags & 0x20U) != 0;
        const auto parsed = expectSuccess<TDigitalCopyControlDescriptorItem>(wire, bitrate ? 2 : 1);
        EXPECT_EQ(parsed->getDigitalRecordingControlData(), bitsAt(wire, 0, 7, 2));
        EXPECT_EQ(parsed->hasMaximumBitrate(), bitrate ? 1 : 0);
        EXPECT_EQ(parsed->getCopyControlType(), bitsAt(wire, 0, 3, 2));
        EXPECT_EQ(parsed->getAPSControlData(), (flags & 0x0CU) == 0 ? 0 : bitsAt(wire, 0, 1, 2));
        EXPECT_EQ(parsed->getMaximumBitrate(), bitrate ? 0x7E : 0);
    }
}

TEST(TDigitalCopyControlDescriptorItem, TheBitrateIsTheWholeByte) {
    expectFields<TDigitalCopyControlDescriptorItem>(
        hex("20"), 1, {{"maximum_bitrate", 1, 7, 8, &TDigitalCopyControlDescriptorItem::getMaximumBitrate}});
}

TEST(TDigitalCopyControlDescriptorItem, BytesBehindTheItemAreNotCounted) {
    EXPECT_EQ(expectSuccess<TDigitalCopyControlDescriptorItem>(fill(300, 0xC0), 1)->getDigitalRecordingControlData(),
              3);
    EXPECT_EQ(expectSuccess<TDigitalCopyControlDescriptorItem>(fill(300, 0xE1), 2)->getMaximumBitrate(), 0xE1);
}

TEST(TDigitalCopyControlDescriptorItem, NeedsAByte) {
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_DATA_LENGTH, 2563);
    expectFailure<TDigitalCopyControlDescriptorItem>(
        {}, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TDigitalCopyControlDescriptorItem::parse: Item length not valid: 0. Aborting!"});
}

TEST(TDigitalCopyControlDescriptorItem, AMaximumBitrateThatIsAnnouncedMustFollow) {
    const Lines lines{
        "ISDBTUtils: TDigitalCopyControlDescriptorItem::parse: Longer data length is required: 0 < 1. Aborting!"};
    expectFailure<TDigitalCopyControlDescriptorItem>(hex("20"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, lines);
    expectFailure<TDigitalCopyControlDescriptorItem>(hex("FF"), 2568, lines);
}

TEST(TDigitalCopyControlDescriptorItem, IsDestroyedThroughItsBase) {
    int destroyed = 0;
    std::unique_ptr<TDigitalCopyControlDescriptorItem> item(new Counted<TDigitalCopyControlDescriptorItem>(destroyed));
    EXPECT_EQ(destroyed, 0);
    item.reset();
    EXPECT_EQ(destroyed, 1);
}

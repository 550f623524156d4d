#include "descriptors/TDIILocationDescriptor.h"

#include "descriptors/TDIILocationDescriptorItem.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Lifetime.h"
#include "support/Outcome.h"
#include "support/Survival.h"

using Item = Quor::TDIILocationDescriptorItem;
using Quor::TDIILocationDescriptor;
using Quor::TISDBTTable;

EXPECT_GETTER(QUOR_U8, TDIILocationDescriptor, getTransportProtocolLabel);

TEST(TDIILocationDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(hex("0D 05 07 0001 0002"));
    const InDirtyMemory<TDIILocationDescriptor> memory(bytes.data(), bytes.size());
    const TDIILocationDescriptor& descriptor = *memory;
    EXPECT_EQ(descriptor.getDescriptorTag(), 0x0D);
    EXPECT_EQ(descriptor.getData(), bytes.data());
    EXPECT_EQ(descriptor.getDataLength(), 7U);
    EXPECT_EQ(descriptor.getTransportProtocolLabel(), 0);
    EXPECT_EQ(descriptor.size(), 0U);
}

TEST(TDIILocationDescriptor, ShowsItemsInTheirOrder) {
    // The length told is that of the last item alone.
    const auto parsed = expectDescriptor<TDIILocationDescriptor>(hex("0D 0D  07  FF02 000B  0001 000A  FF02 000C"), 4);
    EXPECT_EQ(parsed->getTransportProtocolLabel(), 7);
    ASSERT_EQ(parsed->size(), 3U);
    EXPECT_EQ(parsed->get(0)->getDIIIdentification(), 0x7F02);
    EXPECT_EQ(parsed->get(0)->getAssociationTag(), 0x0B);
    EXPECT_EQ(parsed->get(1)->getDIIIdentification(), 0x0001);
    EXPECT_EQ(parsed->get(1)->getAssociationTag(), 0x0A);
    EXPECT_EQ(parsed->get(2)->getDIIIdentification(), 0x7F02);
    EXPECT_EQ(parsed->get(2)->getAssociationTag(), 0x0C);
}

TEST(TDIILocationDescriptor, TheTransportLabelHasEightBits) {
    const auto parsed = expectDescriptor<TDIILocationDescriptor>(hex("0D 05  FF  0000 0000"), 4);
    EXPECT_EQ(parsed->getTransportProtocolLabel(), 0xFF);
    EXPECT_EQ(parsed->get(0)->getDIIIdentification(), 0);
}

TEST(TDIILocationDescriptor, PlacesBehindTheLastItemHoldNothing) {
    const auto parsed = expectDescriptor<TDIILocationDescriptor>(hex("0D 05  07  0001 0002"), 4);
    EXPECT_EQ(parsed->get(parsed->size()), nullptr);
    EXPECT_EQ(parsed->get(0xFFFFFFFF), nullptr);
    EXPECT_FALSE(parsed->remove(1));
    EXPECT_FALSE(parsed->remove(0xFFFFFFFF));
    EXPECT_EQ(parsed->size(), 1U);
}

TEST(TDIILocationDescriptor, AnItemThatIsCutOffFails) {
    for (unsigned left = 1; left < 4; ++left) {
        expectFailure<TDIILocationDescriptor>(
            descriptor(0x0D, join({hex("07  0001 0002"), fill(left, 0x00)})),
            TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
            {"ISDBTUtils: TDIILocationDescriptorItem::parse: Item length not valid: " + std::to_string(left) +
                 ". Aborting!",
             "ISDBTUtils: TDIILocationDescriptor::parse: Invalid item. Aborting!"});
    }
}

TEST(TDIILocationDescriptor, TheMinimumIsShortOfOneItem) {
    expectFailure<TDIILocationDescriptor>(
        hex("0D 04  07  000102"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TDIILocationDescriptorItem::parse: Item length not valid: 3. Aborting!",
         "ISDBTUtils: TDIILocationDescriptor::parse: Invalid item. Aborting!"});
}

TEST(TDIILocationDescriptor, ItemsRunToTheEndOfTheCallersLength) {
    const auto parsed = expectDescriptor<TDIILocationDescriptor>(hex("0D 05  07  0001 0002  0003 0004"), 4);
    EXPECT_EQ(parsed->size(), 2U);
    EXPECT_EQ(parsed->get(1)->getAssociationTag(), 4);
    const auto many = expectDescriptor<TDIILocationDescriptor>(join({hex("0D 05  07"), fill(400, 0x01)}), 4);
    EXPECT_EQ(many->size(), 100U);
}

TEST(TDIILocationDescriptor, NullTakesAPlaceAsWell) {
    int deleted = 0;
    {
        TDIILocationDescriptor source(nullptr, 0);
        source.add(nullptr);
        source.add(new Counted<Item>(deleted));
        EXPECT_EQ(source.size(), 2U);
        EXPECT_EQ(source.get(0), nullptr);
        EXPECT_NE(source.get(1), nullptr);

        const TDIILocationDescriptor copy(&source);
        EXPECT_EQ(copy.size(), 2U);
        EXPECT_EQ(copy.get(0), nullptr);
        EXPECT_NE(copy.get(1), nullptr);
    }
    EXPECT_EQ(deleted, 1);
}

TEST(TDIILocationDescriptor, ACopyNeedsNeitherSourceNorBytes) {
    std::unique_ptr<TDIILocationDescriptor> copy;
    {
        const auto parsed = parseBytes<TDIILocationDescriptor>(hex("0D 09  07  0003 000B  0001 000A"));
        ASSERT_NE(parsed.object, nullptr);
        copy = std::make_unique<TDIILocationDescriptor>(parsed.object.get());
        EXPECT_NE(copy->get(0), parsed->get(0));
        EXPECT_TRUE(parsed->remove(0));
    }
    EXPECT_EQ(copy->getDescriptorTag(), 0x0D);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    EXPECT_EQ(copy->getTransportProtocolLabel(), 7);
    ASSERT_EQ(copy->size(), 2U);
    EXPECT_EQ(copy->get(0)->getDIIIdentification(), 3);
    EXPECT_EQ(copy->get(0)->getAssociationTag(), 0x0B);
    EXPECT_EQ(copy->get(1)->getDIIIdentification(), 1);
    EXPECT_EQ(copy->get(1)->getAssociationTag(), 0x0A);
}

TEST(TDIILocationDescriptor, DamageIsSurvived) {
    const ByteVector good = hex("0D 09  07  FF02 000B  0001 000A");
    expectEveryPrefixSurvives<TDIILocationDescriptor>(good);
    expectEveryByteChangeSurvives<TDIILocationDescriptor>(good);
}

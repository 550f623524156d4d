#include "descriptors/TServiceListDescriptorItem.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TServiceListDescriptorItem;

TEST(TServiceListDescriptorItem, StartsWithZeros) {
    const InDirtyMemory<TServiceListDescriptorItem> item;
    EXPECT_EQ(item->getServiceID(), 0);
    EXPECT_EQ(item->getServiceType(), 0);
}

TEST(TServiceListDescriptorItem, IsOneByteOfIdAndOneOfType) {
    const auto item = expectSuccess<TServiceListDescriptorItem>(hex("FE C0"), 2);
    EXPECT_EQ(item->getServiceID(), 0xFE);
    EXPECT_EQ(item->getServiceType(), 0xC0);
}

TEST(TServiceListDescriptorItem, TakesTwoBytesOfMore) {
    const auto item = expectSuccess<TServiceListDescriptorItem>(hex("5C 38 C0"), 2);
    EXPECT_EQ(item->getServiceID(), 0x5C);
    EXPECT_EQ(item->getServiceType(), 0x38);
}

TEST(TServiceListDescriptorItem, NeedsTwoBytes) {
    expectFailure<TServiceListDescriptorItem>(
        hex("01"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TServiceListDescriptorItem::parse: Descriptor length not valid: 1. Aborting!"});
    expectFailure<TServiceListDescriptorItem>(
        hex(""), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TServiceListDescriptorItem::parse: Descriptor length not valid: 0. Aborting!"});
}

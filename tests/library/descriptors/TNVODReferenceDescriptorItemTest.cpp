#include "descriptors/TNVODReferenceDescriptorItem.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TNVODReferenceDescriptorItem;

TEST(TNVODReferenceDescriptorItem, StartsWithZeros) {
    const InDirtyMemory<TNVODReferenceDescriptorItem> item;
    EXPECT_EQ(item->getTransportStreamID(), 0);
    EXPECT_EQ(item->getOriginalNetworkID(), 0);
    EXPECT_EQ(item->getServiceID(), 0);
}

TEST(TNVODReferenceDescriptorItem, ReadsItsFields) {
    const auto item = expectSuccess<TNVODReferenceDescriptorItem>(hex("FFFE FDFC FBFA"), 6);
    EXPECT_EQ(item->getTransportStreamID(), 0xFFFE);
    EXPECT_EQ(item->getOriginalNetworkID(), 0xFDFC);
    EXPECT_EQ(item->getServiceID(), 0xFBFA);
    expectSuccess<TNVODReferenceDescriptorItem>(hex("0001 0002 0003 FF"), 6);
}

TEST(TNVODReferenceDescriptorItem, NeedsSixBytes) {
    expectFailure<TNVODReferenceDescriptorItem>(
        hex("0001 0002 00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TNVODReferenceDescriptorItem::parse: Descriptor length not valid: 5. Aborting!"});
    expectFailure<TNVODReferenceDescriptorItem>(
        hex(""), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TNVODReferenceDescriptorItem::parse: Descriptor length not valid: 0. Aborting!"});
}

#include "descriptors/TServiceListDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TServiceListDescriptor;
using Quor::TServiceListDescriptorItem;

using Ids = std::vector<QUOR_U8>;

TEST(TServiceListDescriptor, StartsWithoutServices) {
    HeapBytes bytes(hex("41 02 0102"));
    const InDirtyMemory<TServiceListDescriptor> services(bytes.data(), bytes.size());
    EXPECT_EQ(services->getDescriptorTag(), 0x41);
    EXPECT_EQ(services->getData(), bytes.data());
    EXPECT_EQ(services->size(), 0U);
    EXPECT_EQ(services->get(0), nullptr);
    EXPECT_EQ(taken(services->getServiceIDs()), Ids{});
}

TEST(TServiceListDescriptor, ReadsTwoByteItems) {
    const auto services = expectDescriptor<TServiceListDescriptor>(hex("41 04  01 02  03 04"), 2);
    EXPECT_EQ(services->size(), 2U);
    EXPECT_EQ(taken(services->getServiceIDs()), (Ids{0x01, 0x03}));
    ASSERT_NE(services->get(0x01), nullptr);
    EXPECT_EQ(services->get(0x01)->getServiceID(), 0x01);
    EXPECT_EQ(services->get(0x01)->getServiceType(), 0x02);
    EXPECT_EQ(services->get(0x03)->getServiceType(), 0x04);
    EXPECT_EQ(services->get(0x02), nullptr);
}

TEST(TServiceListDescriptor, ReadsTheThreeByteEntriesOfABroadcastInTwoByteItems) {
    const auto services = expectDescriptor<TServiceListDescriptor>(hex("41 06  5C 38  C0 5C  20 01"), 2);
    EXPECT_EQ(taken(services->getServiceIDs()), (Ids{0x20, 0x5C, 0xC0}));
    EXPECT_EQ(services->get(0x5C)->getServiceType(), 0x38);
    EXPECT_EQ(services->get(0xC0)->getServiceType(), 0x5C);
    EXPECT_EQ(services->get(0x20)->getServiceType(), 0x01);
}

TEST(TServiceListDescriptor, ListsIdsInAscendingOrder) {
    const auto services = expectDescriptor<TServiceListDescriptor>(hex("41 08  FF 01  00 02  80 03  7F 04"), 2);
    EXPECT_EQ(taken(services->getServiceIDs()), (Ids{0x00, 0x7F, 0x80, 0xFF}));
}

TEST(TServiceListDescriptor, LastItemOfAnIdWins) {
    const auto services = expectDescriptor<TServiceListDescriptor>(hex("41 06  01 02  05 03  01 04"), 2);
    EXPECT_EQ(services->size(), 2U);
    EXPECT_EQ(services->get(0x01)->getServiceType(), 0x04);
}

TEST(TServiceListDescriptor, OddBodyFailsOnItsLastItem) {
    expectFailure<TServiceListDescriptor>(
        hex("41 03  01 02  03"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TServiceListDescriptorItem::parse: Descriptor length not valid: 1. Aborting!",
         "ISDBTUtils: TServiceListDescriptor::parse: Invalid item. Aborting!"});
}

TEST(TServiceListDescriptor, ItemsRunToTheEndOfTheGivenBytes) {
    const auto services = expectDescriptor<TServiceListDescriptor>(hex("41 02  01 02  03 04  05 06"), 2);
    EXPECT_EQ(taken(services->getServiceIDs()), (Ids{0x01, 0x03, 0x05}));
    expectFailure<TServiceListDescriptor>(
        hex("41 02  01 02  03"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TServiceListDescriptorItem::parse: Descriptor length not valid: 1. Aborting!",
         "ISDBTUtils: TServiceListDescriptor::parse: Invalid item. Aborting!"});
}

TEST(TServiceListDescriptor, LongestEvenBodyHolds127Items) {
    ByteVector items;
    for (unsigned id = 0; id < 127; ++id) {
        items = join({items, {static_cast<QUOR_U8>(id), 0x01}});
    }
    EXPECT_EQ(expectDescriptor<TServiceListDescriptor>(descriptor(0x41, items), 2)->size(), 127U);
}

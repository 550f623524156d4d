#include "descriptors/TServiceListDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Lifetime.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TServiceListDescriptor;
using Quor::TServiceListDescriptorItem;

using Ids = std::vector<QUOR_U8>;

namespace {

TServiceListDescriptorItem* newItem(QUOR_U8 serviceId, QUOR_U8 serviceType) {
    QUOR_U8 bytes[] = {serviceId, serviceType};
    return TServiceListDescriptorItem::parse(bytes, sizeof bytes, nullptr, nullptr);
}

} // namespace

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

TEST(TServiceListDescriptor, MakesANewListOfIdsEachTime) {
    const auto services = expectDescriptor<TServiceListDescriptor>(hex("41 02  01 02"), 2);
    const std::unique_ptr<std::list<QUOR_U8>> first(services->getServiceIDs());
    first->clear();
    EXPECT_EQ(taken(services->getServiceIDs()), (Ids{0x01}));
}

TEST(TServiceListDescriptor, AddsUnderTheIdOfTheItem) {
    QUOR_U8 bytes[] = {0x41, 0x00};
    TServiceListDescriptor services(bytes, sizeof bytes);
    TServiceListDescriptorItem* const item = newItem(0x20, 0x01);
    services.add(item);
    services.add(newItem(0x10, 0xC0));
    EXPECT_EQ(services.size(), 2U);
    EXPECT_EQ(services.get(0x20), item);
    EXPECT_EQ(taken(services.getServiceIDs()), (Ids{0x10, 0x20}));
}

TEST(TServiceListDescriptor, AddDoesNotDeleteWhatItDisplaces) {
    int destroyed = 0;
    int displacedDestroyed = 0;
    const std::unique_ptr<TServiceListDescriptorItem> displaced(
        new Counted<TServiceListDescriptorItem>(displacedDestroyed));
    {
        QUOR_U8 bytes[] = {0x41, 0x00};
        TServiceListDescriptor services(bytes, sizeof bytes);
        services.add(displaced.get());
        auto* const item = new Counted<TServiceListDescriptorItem>(destroyed);
        services.add(item);
        EXPECT_EQ(displacedDestroyed, 0);
        EXPECT_EQ(services.size(), 1U);
        EXPECT_EQ(services.get(0), item);
    }
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(displacedDestroyed, 0);
}

TEST(TServiceListDescriptor, AddingTheSameItemAgainKeepsIt) {
    int destroyed = 0;
    {
        QUOR_U8 bytes[] = {0x41, 0x00};
        TServiceListDescriptor services(bytes, sizeof bytes);
        auto* const item = new Counted<TServiceListDescriptorItem>(destroyed);
        services.add(item);
        services.add(item);
        EXPECT_EQ(destroyed, 0);
        EXPECT_EQ(services.get(0), item);
        EXPECT_EQ(services.size(), 1U);
    }
    EXPECT_EQ(destroyed, 1);
}

TEST(TServiceListDescriptor, AddIgnoresNull) {
    QUOR_U8 bytes[] = {0x41, 0x00};
    TServiceListDescriptor services(bytes, sizeof bytes);
    services.add(nullptr);
    EXPECT_EQ(services.size(), 0U);
}

TEST(TServiceListDescriptor, RemoveDeletesTheItem) {
    int destroyed = 0;
    QUOR_U8 bytes[] = {0x41, 0x00};
    TServiceListDescriptor services(bytes, sizeof bytes);
    services.add(new Counted<TServiceListDescriptorItem>(destroyed));
    services.add(newItem(0x07, 0x01));
    EXPECT_FALSE(services.remove(0x01));
    EXPECT_EQ(services.size(), 2U);
    EXPECT_TRUE(services.remove(0x00));
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(taken(services.getServiceIDs()), (Ids{0x07}));
    EXPECT_FALSE(services.remove(0x00));
    EXPECT_EQ(services.size(), 1U);
}

TEST(TServiceListDescriptor, DeletesItsItems) {
    int destroyed = 0;
    {
        QUOR_U8 bytes[] = {0x41, 0x00};
        TServiceListDescriptor services(bytes, sizeof bytes);
        services.add(new Counted<TServiceListDescriptorItem>(destroyed));
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);
}

#include "descriptors/TDIILocationDescriptorItem.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <type_traits>

using Item = Quor::TDIILocationDescriptorItem;
using Quor::TISDBTTable;

static_assert(std::has_virtual_destructor<Item>::value, "receivers delete items through their own subclasses");

EXPECT_GETTER(QUOR_U16, Item, getDIIIdentification);
EXPECT_GETTER(QUOR_U16, Item, getAssociationTag);

TEST(TDIILocationDescriptorItem, StartsEmpty) {
    const InDirtyMemory<Item> memory;
    const Item& item = *memory;
    EXPECT_EQ(item.getDIIIdentification(), 0);
    EXPECT_EQ(item.getAssociationTag(), 0);
}

TEST(TDIILocationDescriptorItem, ShowsItsFields) {
    const auto parsed = expectSuccess<Item>(hex("1234 5678"), 4);
    EXPECT_EQ(parsed->getDIIIdentification(), 0x1234);
    EXPECT_EQ(parsed->getAssociationTag(), 0x5678);
}

TEST(TDIILocationDescriptorItem, TheIdentificationHasFifteenBits) {
    EXPECT_EQ(expectSuccess<Item>(hex("FF01 0000"), 4)->getDIIIdentification(), 0x7F01);
    EXPECT_EQ(expectSuccess<Item>(hex("8000 0000"), 4)->getDIIIdentification(), 0);
    const auto identification = expectSuccess<Item>(hex("7FFF 0000"), 4);
    EXPECT_EQ(identification->getDIIIdentification(), 0x7FFF);
    EXPECT_EQ(identification->getAssociationTag(), 0);
    const auto association = expectSuccess<Item>(hex("0000 FFFF"), 4);
    EXPECT_EQ(association->getDIIIdentification(), 0);
    EXPECT_EQ(association->getAssociationTag(), 0xFFFF);
}

TEST(TDIILocationDescriptorItem, LeavesTheBytesBehindIt) {
    EXPECT_EQ(expectSuccess<Item>(hex("0001 0002 0003 0004"), 4)->getAssociationTag(), 2);
}

TEST(TDIILocationDescriptorItem, LessThanFourBytesFail) {
    for (unsigned size = 0; size < 4; ++size) {
        expectFailure<Item>(fill(size, 0xFF), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                            {"ISDBTUtils: TDIILocationDescriptorItem::parse: Item length not valid: " +
                             std::to_string(size) + ". Aborting!"});
    }
}

TEST(TDIILocationDescriptorItem, ACopyHoldsTheSameFields) {
    auto parsed = expectSuccess<Item>(hex("1234 5678"), 4);
    const Item copy(parsed.object.get());
    parsed.object.reset();
    EXPECT_EQ(copy.getDIIIdentification(), 0x1234);
    EXPECT_EQ(copy.getAssociationTag(), 0x5678);
}

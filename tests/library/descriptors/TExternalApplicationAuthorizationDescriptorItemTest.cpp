#include "descriptors/TExternalApplicationAuthorizationDescriptorItem.h"

#include "ait/TApplicationIdentifier.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <type_traits>

using Item = Quor::TExternalApplicationAuthorizationDescriptorItem;
using Quor::TISDBTTable;

static_assert(std::has_virtual_destructor<Item>::value, "receivers delete items through their own subclasses");

EXPECT_GETTER(Quor::TApplicationIdentifier*, Item, getApplicationIdentifier);
EXPECT_GETTER(QUOR_U8, Item, getPriority);

TEST(TExternalApplicationAuthorizationDescriptorItem, DeclaresAMinimumThatItDoesNotUse) {
    const auto& minimum = Item::MINIMUM_DESCRIPTOR_LENGTH;
    EXPECT_EQ(minimum, 1U);
}

TEST(TExternalApplicationAuthorizationDescriptorItem, StartsEmpty) {
    const InDirtyMemory<Item> memory;
    const Item& item = *memory;
    EXPECT_EQ(item.getApplicationIdentifier(), nullptr);
    EXPECT_EQ(item.getPriority(), 0);
}

TEST(TExternalApplicationAuthorizationDescriptorItem, ShowsIdentifierAndPriority) {
    const auto parsed = expectSuccess<Item>(hex("01020304 0506 07"), 7);
    ASSERT_NE(parsed->getApplicationIdentifier(), nullptr);
    EXPECT_EQ(parsed->getApplicationIdentifier()->getOrganizationID(), 0x01020304U);
    EXPECT_EQ(parsed->getApplicationIdentifier()->getApplicationID(), 0x0506);
    EXPECT_EQ(parsed->getPriority(), 7);
}

TEST(TExternalApplicationAuthorizationDescriptorItem, EachFieldTakesAllItsBitsAndNoOthers) {
    const auto organisation = expectSuccess<Item>(hex("FFFFFFFF 0000 00"), 7);
    EXPECT_EQ(organisation->getApplicationIdentifier()->getOrganizationID(), 0xFFFFFFFFU);
    EXPECT_EQ(organisation->getApplicationIdentifier()->getApplicationID(), 0);
    const auto application = expectSuccess<Item>(hex("00000000 FFFF 00"), 7);
    EXPECT_EQ(application->getApplicationIdentifier()->getOrganizationID(), 0U);
    EXPECT_EQ(application->getApplicationIdentifier()->getApplicationID(), 0xFFFF);
    EXPECT_EQ(application->getPriority(), 0);
    const auto priority = expectSuccess<Item>(hex("00000000 0000 FF"), 7);
    EXPECT_EQ(priority->getApplicationIdentifier()->getApplicationID(), 0);
    EXPECT_EQ(priority->getPriority(), 0xFF);
}

TEST(TExternalApplicationAuthorizationDescriptorItem, LeavesTheBytesBehindIt) {
    const auto parsed = expectSuccess<Item>(hex("00000001 0002 03  00000004 0005 06"), 7);
    EXPECT_EQ(parsed->getPriority(), 3);
}

TEST(TExternalApplicationAuthorizationDescriptorItem, LessThanSevenBytesFail) {
    for (unsigned size = 0; size < 7; ++size) {
        expectFailure<Item>(fill(size, 0xFF), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                            {"ISDBTUtils: TExternalApplicationAuthorizationDescriptorItem::parse: Item length not "
                             "valid: " +
                             std::to_string(size) + ". Aborting!"});
    }
}

TEST(TExternalApplicationAuthorizationDescriptorItem, ACopyHasItsOwnIdentifier) {
    auto parsed = expectSuccess<Item>(hex("01020304 0506 07"), 7);
    const Item copy(parsed.object.get());
    EXPECT_NE(copy.getApplicationIdentifier(), parsed->getApplicationIdentifier());
    parsed.object.reset();
    ASSERT_NE(copy.getApplicationIdentifier(), nullptr);
    EXPECT_EQ(copy.getApplicationIdentifier()->getOrganizationID(), 0x01020304U);
    EXPECT_EQ(copy.getApplicationIdentifier()->getApplicationID(), 0x0506);
    EXPECT_EQ(copy.getPriority(), 7);
}

TEST(TExternalApplicationAuthorizationDescriptorItem, ACopyOfOneWithoutIdentifierHasNone) {
    Item source;
    const Item copy(&source);
    EXPECT_EQ(copy.getApplicationIdentifier(), nullptr);
    EXPECT_EQ(copy.getPriority(), 0);
}

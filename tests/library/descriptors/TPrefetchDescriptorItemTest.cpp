#include "descriptors/TPrefetchDescriptorItem.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <type_traits>

using Item = Quor::TPrefetchDescriptorItem;
using Quor::TISDBTTable;

static_assert(std::has_virtual_destructor<Item>::value, "receivers delete items through their own subclasses");

EXPECT_GETTER(std::string, Item, getLabel);
EXPECT_GETTER(QUOR_U8, Item, getPriority);

namespace {

Lines invalidLength(unsigned length) {
    return {"ISDBTUtils: TPrefetchDescriptorItem::parse: Item length not valid: " + std::to_string(length) +
            ". Aborting!"};
}

} // namespace

TEST(TPrefetchDescriptorItem, StartsEmpty) {
    const InDirtyMemory<Item> memory;
    const Item& item = *memory;
    EXPECT_EQ(item.getLabel(), "");
    EXPECT_EQ(item.getPriority(), 0);
}

TEST(TPrefetchDescriptorItem, ShowsLabelAndPriority) {
    const auto parsed = expectSuccess<Item>(join({hex("04"), text("menu"), hex("63")}), 6);
    EXPECT_EQ(parsed->getLabel(), "menu");
    EXPECT_EQ(parsed->getPriority(), 0x63);
}

TEST(TPrefetchDescriptorItem, ALabelMayBeEmpty) {
    const auto parsed = expectSuccess<Item>(hex("00 FF"), 2);
    EXPECT_EQ(parsed->getLabel(), "");
    EXPECT_EQ(parsed->getPriority(), 0xFF);
}

TEST(TPrefetchDescriptorItem, CharactersAreKeptAsReceived) {
    const auto parsed = expectSuccess<Item>(hex("03 00E741 01"), 5);
    EXPECT_EQ(parsed->getLabel(), std::string("\0\xE7"
                                              "A",
                                              3));
    EXPECT_EQ(parsed->getPriority(), 1);
}

TEST(TPrefetchDescriptorItem, LeavesTheBytesBehindIt) {
    const auto parsed = expectSuccess<Item>(hex("01 41 05  01 42 06"), 3);
    EXPECT_EQ(parsed->getLabel(), "A");
    EXPECT_EQ(parsed->getPriority(), 5);
}

TEST(TPrefetchDescriptorItem, LessThanTwoBytesFail) {
    expectFailure<Item>({}, TISDBTTable::ERROR_INVALID_DATA_LENGTH, invalidLength(0));
    expectFailure<Item>(hex("00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, invalidLength(1));
}

TEST(TPrefetchDescriptorItem, ALabelThatDoesNotFitFails) {
    expectFailure<Item>(
        hex("03 4142"), TISDBTTable::ERROR_INVALID_STRING,
        {"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 3 > 2.Aborting!",
         "ISDBTUtils: TPrefetchDescriptorItem:: parse: ERROR: parsing Label. Aborting!"});
}

TEST(TPrefetchDescriptorItem, ALabelThatLeavesNoRoomForThePriorityFails) {
    expectFailure<Item>(hex("02 4142"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, invalidLength(0));
    expectFailure<Item>(join({hex("FE"), fill(254, 'l')}), TISDBTTable::ERROR_INVALID_DATA_LENGTH, invalidLength(0));
}

TEST(TPrefetchDescriptorItem, ParsedLengthExceedsEightBits) {
    const auto parsed = expectSuccess<Item>(join({hex("FE"), fill(254, 'l'), hex("07")}), 256);
    EXPECT_EQ(parsed->getLabel(), std::string(254, 'l'));
    EXPECT_EQ(parsed->getPriority(), 7);
}

TEST(TPrefetchDescriptorItem, TheLongestLabelCountsNothing) {
    // Its 256 bytes count 0 in eight bits: only the priority is left to be counted.
    const auto parsed = expectSuccess<Item>(join({hex("FF"), fill(255, 'l'), hex("07")}), 1);
    EXPECT_EQ(parsed->getLabel(), std::string(255, 'l'));
}

TEST(TPrefetchDescriptorItem, ACopyHoldsTheSameFields) {
    auto parsed = expectSuccess<Item>(join({hex("14"), text("carousel/module/menu"), hex("63")}), 22);
    const Item copy(parsed.object.get());
    parsed.object.reset();
    EXPECT_EQ(copy.getLabel(), "carousel/module/menu");
    EXPECT_EQ(copy.getPriority(), 0x63);
}

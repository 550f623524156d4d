#include "descriptors/TLocalTimeOffsetDescriptorItem.h"

#include "support/DirtyMemory.h"
#include "support/Lifetime.h"
#include "support/Parse.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TISDBTTable;
using Item = Quor::TLocalTimeOffsetDescriptorItem;

namespace {

// time_of_change and next_time_offset, which no getter returns
const std::string CHANGE = " E35A010000 0200";

Parsed<Item> parseOffset(const std::string& bcd) {
    return parseBytes<Item>(hex("425241 0C " + bcd + CHANGE));
}

} // namespace

TEST(TLocalTimeOffsetDescriptorItem, StartsEmptyAndBehindUtc) {
    const InDirtyMemory<Item> item;
    EXPECT_EQ(std::string(item->getCountryCode(), 4), std::string(4, '\0'));
    EXPECT_EQ(item->getCountryRegionID(), 0);
    EXPECT_EQ(item->getLocalTimeOffsetPolarity(), 1);
    EXPECT_EQ(item->getLocalTimeOffset(), 0);
}

TEST(TLocalTimeOffsetDescriptorItem, NextTimeOffsetStartsAtZero) {
    struct Opened : Item {
        Opened() {} // its own, so that nothing is zeroed before the base is built
        QUOR_U16 nextTimeOffset() const { return m_iNextTimeOffset; }
    };
    const InDirtyMemory<Opened> item;
    EXPECT_EQ(item->nextTimeOffset(), 0);
}

TEST(TLocalTimeOffsetDescriptorItem, FieldsAreReadFromTheWire) {
    const auto parsed = parseOffset("0300");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 13U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(std::string(parsed->getCountryCode(), 4), std::string("BRA\0", 4));
    EXPECT_EQ(parsed->getCountryRegionID(), 3);
    EXPECT_EQ(parsed->getLocalTimeOffsetPolarity(), 0);
    EXPECT_EQ(parsed->getLocalTimeOffset(), 10800);
}

TEST(TLocalTimeOffsetDescriptorItem, RegionHasSixBitsAndPolarityOne) {
    const auto ones = parseBytes<Item>(hex("425241 FC 0300" + CHANGE));
    EXPECT_EQ(ones->getCountryRegionID(), 63);
    EXPECT_EQ(ones->getLocalTimeOffsetPolarity(), 0);
    const auto reserved = parseBytes<Item>(hex("425241 02 0300" + CHANGE));
    EXPECT_EQ(reserved->getCountryRegionID(), 0);
    EXPECT_EQ(reserved->getLocalTimeOffsetPolarity(), 0);
    const auto behind = parseBytes<Item>(hex("425241 05 0300" + CHANGE));
    EXPECT_EQ(behind->getCountryRegionID(), 1);
    EXPECT_EQ(behind->getLocalTimeOffsetPolarity(), 1);
}

TEST(TLocalTimeOffsetDescriptorItem, OffsetIsExactBelowTenHoursAndTenMinutes) {
    EXPECT_EQ(parseOffset("0000")->getLocalTimeOffset(), 0);
    EXPECT_EQ(parseOffset("0001")->getLocalTimeOffset(), 60);
    EXPECT_EQ(parseOffset("0200")->getLocalTimeOffset(), 7200);
    EXPECT_EQ(parseOffset("0909")->getLocalTimeOffset(), 32940);
}

TEST(TLocalTimeOffsetDescriptorItem, TensOfTheOffsetAreNotShiftedDown) {
    EXPECT_EQ(parseOffset("0130")->getLocalTimeOffset(), 32400); // 3600 + 480 * 60
    EXPECT_EQ(parseOffset("0010")->getLocalTimeOffset(), 9600);  // 160 * 60
}

TEST(TLocalTimeOffsetDescriptorItem, OffsetIsKeptInSixteenBits) {
    EXPECT_EQ(parseOffset("1000")->getLocalTimeOffset(), 51712); // 576000 - 8 * 65536
    EXPECT_EQ(parseOffset("1234")->getLocalTimeOffset(), 22416); // 162 * 3600 + 484 * 60 - 9 * 65536
    EXPECT_EQ(parseOffset("FFFF")->getLocalTimeOffset(), 57076); // 2415 * 3660 - 134 * 65536
}

TEST(TLocalTimeOffsetDescriptorItem, TimeOfChangeAndNextOffsetAreNotRead) {
    const auto parsed = parseBytes<Item>(hex("425241 0C 0300 FFFFFFFFFF FFFF"));
    EXPECT_EQ(parsed->getLocalTimeOffset(), 10800);
    EXPECT_EQ(parsed->getCountryRegionID(), 3);
}

TEST(TLocalTimeOffsetDescriptorItem, CountryCodeIsTakenAsItIs) {
    const auto parsed = parseBytes<Item>(hex("00FF80 0C 0300" + CHANGE));
    EXPECT_EQ(std::string(parsed->getCountryCode(), 4), std::string("\0\xFF\x80\0", 4));
}

TEST(TLocalTimeOffsetDescriptorItem, TakesThirteenBytesOfMore) {
    const auto parsed = parseBytes<Item>(hex("425241 0C 0300" + CHANGE + "415247 00"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 13U);
    EXPECT_STREQ(parsed->getCountryCode(), "BRA");
}

TEST(TLocalTimeOffsetDescriptorItem, FewerThanThirteenBytesFail) {
    const auto parsed = parseBytes<Item>(hex("425241 0C 0300 E35A010000 02"));
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(parsed.length, PRESET_LENGTH);
    EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TLocalTimeOffsetDescriptorItem::parse: Descriptor length not valid: 12. "
                                  "Aborting!"});
}

TEST(TLocalTimeOffsetDescriptorItem, NoByteFails) {
    const auto parsed = parseBytes<Item>({});
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TLocalTimeOffsetDescriptorItem::parse: Descriptor length not valid: 0. "
                                  "Aborting!"});
}

TEST(TLocalTimeOffsetDescriptorItem, LengthAndErrorCodeMayBeNull) {
    const HeapBytes bytes(hex("425241 0C 0300" + CHANGE));
    const LogCapture log;
    const std::unique_ptr<Item> item(Item::parse(bytes.data(), bytes.size(), nullptr, nullptr));
    EXPECT_NE(item, nullptr);
    EXPECT_EQ(Item::parse(bytes.data(), 12, nullptr, nullptr), nullptr);
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].level, 4);
    EXPECT_EQ(log.records()[0].tag, "ISDBTUtils");
}

TEST(TLocalTimeOffsetDescriptorItem, IsDestroyedThroughItsVirtualDestructor) {
    int deleted = 0;
    std::unique_ptr<Item> item(new Counted<Item>(deleted));
    item.reset();
    EXPECT_EQ(deleted, 1);
}

TEST(TLocalTimeOffsetDescriptorItem, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&Item::parse), Item* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>();
    testing::StaticAssertTypeEq<decltype(&Item::getCountryRegionID), QUOR_U8 (Item::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Item::getLocalTimeOffsetPolarity), QUOR_U16 (Item::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Item::getLocalTimeOffset), QUOR_U16 (Item::*)() const>();
    EXPECT_TRUE(std::is_default_constructible<Item>::value);
}

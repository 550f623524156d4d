#include "descriptors/TCompatibilityDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Lifetime.h"
#include "support/Parse.h"
#include "support/ParserLines.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TCompatibilityDescriptor;
using Quor::TCompatibilityDescriptorItem;
using Quor::TISDBTTable;

namespace {

const std::string INVALID_SUB_ITEM = "ISDBTUtils: TCompatibilityDescriptorItem::parse: Invalid sub item. Aborting!";
const std::string INVALID_ITEM = "ISDBTUtils: TCompatibilityDescriptor::parse: Invalid item. Aborting!";

std::string itemLength(unsigned left) {
    return "ISDBTUtils: TCompatibilityDescriptorItem::parse: Item length not valid: " + std::to_string(left) +
           ". Aborting!";
}

} // namespace

TEST(TCompatibilityDescriptor, HasItsMinimum) {
    testing::StaticAssertTypeEq<decltype(TCompatibilityDescriptor::MINIMUM_DESCRIPTOR_LENGTH), const QUOR_U32>();
    EXPECT_EQ(TCompatibilityDescriptor::MINIMUM_DESCRIPTOR_LENGTH, 2U);
    const QUOR_U32& bound = TCompatibilityDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
    EXPECT_EQ(bound, 2U);
}

TEST(TCompatibilityDescriptor, StartsEmpty) {
    const InDirtyMemory<TCompatibilityDescriptor> descriptor;
    EXPECT_EQ(descriptor->getCompatibilityDescriptorItemSize(), 0U);
    EXPECT_EQ(descriptor->getCompatibilityDescriptorItem(0), nullptr);
}

TEST(TCompatibilityDescriptor, WithoutItemsItReportsTwoBytes) {
    const auto parsed = parseBytes<TCompatibilityDescriptor>(hex("0002 0000"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 2U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getCompatibilityDescriptorItemSize(), 0U);
    const auto longer = parseBytes<TCompatibilityDescriptor>(hex("0002 0000  FFFFFFFF"));
    ASSERT_NE(longer.object, nullptr);
    EXPECT_EQ(longer.length, 2U);
}

TEST(TCompatibilityDescriptor, ReportsItsLeadingFourBytesAsTwo) {
    const auto parsed = parseBytes<TCompatibilityDescriptor>(hex("000D 0001  01 09 02 123456 0104 0301 00"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 13U); // of 15
    EXPECT_EQ(parsed.lines, Lines{});
    ASSERT_EQ(parsed->getCompatibilityDescriptorItemSize(), 1U);
    EXPECT_EQ(parsed->getCompatibilityDescriptorItem(0)->getSpecifierData(), 0x123456U);
}

TEST(TCompatibilityDescriptor, ItemsAreInWireOrder) {
    const auto parsed = parseBytes<TCompatibilityDescriptor>(
        hex("0028 0003  01 0C 01 000000 0000 0000 01  04 02 AABB  02 09 01 000000 0000 0000 00"
            "03 09 01 000000 0000 0000 01  07 01 CC"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 2U + 15U + 11U + 14U);
    EXPECT_EQ(parsed.lines, (Lines{INVALID_TARGET, INVALID_TARGET}));
    ASSERT_EQ(parsed->getCompatibilityDescriptorItemSize(), 3U);
    EXPECT_EQ(parsed->getCompatibilityDescriptorItem(0)->getDescriptorType(), 1);
    EXPECT_EQ(parsed->getCompatibilityDescriptorItem(0)->getCompatibilityDescriptorSubItemSize(), 1U);
    EXPECT_EQ(parsed->getCompatibilityDescriptorItem(1)->getDescriptorType(), 2);
    EXPECT_EQ(parsed->getCompatibilityDescriptorItem(1)->getCompatibilityDescriptorSubItemSize(), 0U);
    EXPECT_EQ(parsed->getCompatibilityDescriptorItem(2)->getDescriptorType(), 3);
    EXPECT_EQ(parsed->getCompatibilityDescriptorItem(2)->getCompatibilityDescriptorSubItemSize(), 1U);
    EXPECT_EQ(parsed->getCompatibilityDescriptorItem(3), nullptr);
}

TEST(TCompatibilityDescriptor, LengthFieldIsNotRead) {
    for (const char* const length : {"0000", "0001", "00FF", "FF00", "FFFF"}) {
        const auto parsed =
            parseBytes<TCompatibilityDescriptor>(hex(std::string(length) + "0001  01 09 01 000000 0000 0000 00"));
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(parsed.length, 13U);
        EXPECT_EQ(parsed->getCompatibilityDescriptorItemSize(), 1U);
    }
}

TEST(TCompatibilityDescriptor, ItemsAreAsManyAsTheirCountSays) {
    const auto parsed = parseBytes<TCompatibilityDescriptor>(
        hex("0018 0001  01 09 01 000000 0000 0000 00  02 09 01 000000 0000 0000 00"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 13U);
    EXPECT_EQ(parsed->getCompatibilityDescriptorItemSize(), 1U);
}

TEST(TCompatibilityDescriptor, CountHasSixteenBits) {
    const auto most = parseBytes<TCompatibilityDescriptor>(join({hex("0000 0101"), fill(257U * 11U, 0)}));
    ASSERT_NE(most.object, nullptr);
    EXPECT_EQ(most.length, 2U + 257U * 11U);
    EXPECT_EQ(most->getCompatibilityDescriptorItemSize(), 257U);
    const auto highByte = parseBytes<TCompatibilityDescriptor>(hex("0002 0100"));
    EXPECT_EQ(highByte.object, nullptr);
    EXPECT_EQ(highByte.length, PRESET_LENGTH);
    EXPECT_EQ(highByte.error, TISDBTTable::ERROR_INVALID_ITEM);
    EXPECT_EQ(highByte.lines, (Lines{itemLength(0), INVALID_ITEM}));
}

TEST(TCompatibilityDescriptor, FewerThanFourBytesFail) {
    const ByteVector descriptor = hex("0002 0000");
    for (std::ptrdiff_t size = 0; size < 4; ++size) {
        const auto parsed =
            parseBytes<TCompatibilityDescriptor>(ByteVector(descriptor.begin(), descriptor.begin() + size));
        EXPECT_EQ(parsed.object, nullptr);
        EXPECT_EQ(parsed.length, PRESET_LENGTH);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TCompatibilityDescriptor::parse: Item length not valid: " +
                                      std::to_string(size) + ". Aborting!"});
    }
}

TEST(TCompatibilityDescriptor, ItemsBeyondTheBytesFail) {
    const auto none = parseBytes<TCompatibilityDescriptor>(hex("0002 0001"));
    EXPECT_EQ(none.object, nullptr);
    EXPECT_EQ(none.length, PRESET_LENGTH);
    EXPECT_EQ(none.error, TISDBTTable::ERROR_INVALID_ITEM);
    EXPECT_EQ(none.lines, (Lines{itemLength(0), INVALID_ITEM}));
    const auto second =
        parseBytes<TCompatibilityDescriptor>(hex("0017 0002  01 09 01 000000 0000 0000 00  02 09 01 000000 0000 0000"));
    EXPECT_EQ(second.object, nullptr);
    EXPECT_EQ(second.length, PRESET_LENGTH);
    EXPECT_EQ(second.error, TISDBTTable::ERROR_INVALID_ITEM);
    EXPECT_EQ(second.lines, (Lines{itemLength(10), INVALID_ITEM}));
}

TEST(TCompatibilityDescriptor, SubItemsBeyondTheBytesFailTheWholeDescriptor) {
    const auto parsed =
        parseBytes<TCompatibilityDescriptor>(hex("000F 0001  01 09 01 000000 0000 0000 01  04 03 AABB"));
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, PRESET_LENGTH);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_ITEM);
    EXPECT_EQ(parsed.lines, (Lines{"ISDBTUtils: TCompatibilityDescriptorSubItem:: parse: ERROR: parsing Additional "
                                   "Information. Aborting!",
                                   INVALID_SUB_ITEM, INVALID_ITEM}));
}

TEST(TCompatibilityDescriptor, OutParametersMayBeNull) {
    const HeapBytes bytes(hex("000D 0001  01 09 01 000000 0000 0000 00"));
    const std::unique_ptr<TCompatibilityDescriptor> descriptor(
        TCompatibilityDescriptor::parse(bytes.data(), 15, nullptr, nullptr));
    EXPECT_NE(descriptor, nullptr);
    EXPECT_EQ(TCompatibilityDescriptor::parse(bytes.data(), 14, nullptr, nullptr), nullptr);
    EXPECT_EQ(TCompatibilityDescriptor::parse(bytes.data(), 3, nullptr, nullptr), nullptr);
    const HeapBytes empty(hex("0002 0000"));
    const std::unique_ptr<TCompatibilityDescriptor> without(
        TCompatibilityDescriptor::parse(empty.data(), 4, nullptr, nullptr));
    EXPECT_NE(without, nullptr);
}

TEST(TCompatibilityDescriptor, LogsAtLevelFourUnderTheTagOfTheParsers) {
    const HeapBytes bytes(hex("0002 0001"));
    const LogCapture log;
    TCompatibilityDescriptor::parse(bytes.data(), 4, nullptr, nullptr);
    TCompatibilityDescriptor::parse(bytes.data(), 3, nullptr, nullptr);
    ASSERT_EQ(log.records().size(), 3U);
    for (const LogCapture::Line& line : log.records()) {
        EXPECT_EQ(line.level, 4);
        EXPECT_EQ(line.tag, "ISDBTUtils");
    }
}

TEST(TCompatibilityDescriptor, HasNoBaseButAVirtualDestructor) {
    int deleted = 0;
    std::unique_ptr<TCompatibilityDescriptor> descriptor(new Counted<TCompatibilityDescriptor>(deleted));
    descriptor.reset();
    EXPECT_EQ(deleted, 1);
    const bool isDescriptor = std::is_base_of<Quor::TISDBTDataHolder, TCompatibilityDescriptor>::value;
    EXPECT_FALSE(isDescriptor);
    EXPECT_FALSE(std::is_copy_constructible<TCompatibilityDescriptor>::value);
}

TEST(TCompatibilityDescriptor, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&TCompatibilityDescriptor::parse),
                                TCompatibilityDescriptor* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>();
}

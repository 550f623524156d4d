#include "descriptors/TCompatibilityDescriptorItem.h"

#include "support/DirtyMemory.h"
#include "support/Lifetime.h"
#include "support/Parse.h"
#include "support/ParserLines.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TCompatibilityDescriptorItem;
using Quor::TCompatibilityDescriptorSubItem;
using Quor::TISDBTTable;

namespace {

const std::string INVALID_SUB_ITEM = "ISDBTUtils: TCompatibilityDescriptorItem::parse: Invalid sub item. Aborting!";

QUOR_U16 model(const std::string& bytes) {
    return parseBytes<TCompatibilityDescriptorItem>(hex("01 09 01 000000" + bytes + "0000 00"))->getModel();
}

QUOR_U16 version(const std::string& bytes) {
    return parseBytes<TCompatibilityDescriptorItem>(hex("01 09 01 000000 0000" + bytes + "00"))->getVersion();
}

QUOR_U32 specifierData(const std::string& bytes) {
    return parseBytes<TCompatibilityDescriptorItem>(hex("01 09 01" + bytes + "0000 0000 00"))->getSpecifierData();
}

} // namespace

TEST(TCompatibilityDescriptorItem, StartsEmpty) {
    const InDirtyMemory<TCompatibilityDescriptorItem> item;
    EXPECT_EQ(item->getDescriptorType(), 0);
    EXPECT_EQ(item->getSpecifierType(), 0);
    EXPECT_EQ(item->getSpecifierData(), 0U);
    EXPECT_EQ(item->getModel(), 0);
    EXPECT_EQ(item->getVersion(), 0);
    EXPECT_EQ(item->getCompatibilityDescriptorSubItemSize(), 0U);
}

TEST(TCompatibilityDescriptorItem, ReadsItsFields) {
    const auto parsed = parseBytes<TCompatibilityDescriptorItem>(hex("01 09 02 123456 0104 0301 00"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 11U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getDescriptorType(), 0x01);
    EXPECT_EQ(parsed->getSpecifierType(), 0x02);
    EXPECT_EQ(parsed->getSpecifierData(), 0x123456U);
    EXPECT_EQ(parsed->getModel(), 16);
    EXPECT_EQ(parsed->getVersion(), 6);
    EXPECT_EQ(parsed->getCompatibilityDescriptorSubItemSize(), 0U);
}

TEST(TCompatibilityDescriptorItem, TypesHaveAllTheirBits) {
    const auto parsed = parseBytes<TCompatibilityDescriptorItem>(hex("FF 09 FF 000000 0000 0000 00"));
    EXPECT_EQ(parsed->getDescriptorType(), 0xFF);
    EXPECT_EQ(parsed->getSpecifierType(), 0xFF);
    const auto other = parseBytes<TCompatibilityDescriptorItem>(hex("80 09 01 000000 0000 0000 00"));
    EXPECT_EQ(other->getDescriptorType(), 0x80);
    EXPECT_EQ(other->getSpecifierType(), 0x01);
}

TEST(TCompatibilityDescriptorItem, SpecifierDataHas24Bits) {
    EXPECT_EQ(specifierData("000001"), 0x000001U);
    EXPECT_EQ(specifierData("000100"), 0x000100U);
    EXPECT_EQ(specifierData("010000"), 0x010000U);
    EXPECT_EQ(specifierData("800000"), 0x800000U);
    EXPECT_EQ(specifierData("FFFFFF"), 0xFFFFFFU);
}

TEST(TCompatibilityDescriptorItem, ModelIsItsFirstByteShiftedByItsSecond) {
    EXPECT_EQ(model("0104"), 16); // not 0x0104
    EXPECT_EQ(model("0100"), 1);
    EXPECT_EQ(model("FF00"), 0xFF);
    EXPECT_EQ(model("00FF"), 0);
    EXPECT_EQ(model("AB08"), 0xAB00);
    EXPECT_EQ(model("AB0C"), 0xB000); // kept in 16 bits
    EXPECT_EQ(model("010F"), 0x8000);
    EXPECT_EQ(model("0110"), 0);
    EXPECT_EQ(model("FF0F"), 0x8000);
    EXPECT_EQ(model("FF1F"), 0);
    EXPECT_EQ(model("0120"), 1); // only the lower five bits of the second byte shift
    EXPECT_EQ(model("80E1"), 0x0100);
    EXPECT_EQ(model("01FF"), 0);
}

TEST(TCompatibilityDescriptorItem, VersionIsItsFirstByteShiftedByItsSecond) {
    EXPECT_EQ(version("0104"), 16);
    EXPECT_EQ(version("002A"), 0); // version 42
    EXPECT_EQ(version("0100"), 1);
    EXPECT_EQ(version("FF00"), 0xFF);
    EXPECT_EQ(version("AB08"), 0xAB00);
    EXPECT_EQ(version("AB0C"), 0xB000);
    EXPECT_EQ(version("010F"), 0x8000);
    EXPECT_EQ(version("0110"), 0);
    EXPECT_EQ(version("FF1F"), 0);
    EXPECT_EQ(version("0120"), 1);
    EXPECT_EQ(version("80E1"), 0x0100);
}

TEST(TCompatibilityDescriptorItem, ShiftsByEachOfTheLowerFiveBits) {
    for (unsigned shift = 0; shift < 256; ++shift) {
        const unsigned places = shift % 32;
        const unsigned expected = places < 16 ? (3U << places) % 65536 : 0;
        const ByteVector wire = join({hex("01 09 01 000000 03"), {static_cast<QUOR_U8>(shift)}, hex("0000 00")});
        EXPECT_EQ(parseBytes<TCompatibilityDescriptorItem>(wire)->getModel(), expected) << shift;
    }
}

TEST(TCompatibilityDescriptorItem, SubItemsAreInWireOrder) {
    const auto parsed =
        parseBytes<TCompatibilityDescriptorItem>(hex("01 12 01 000000 0000 0000 03  04 02 AABB  05 00  06 01 CC"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 20U);
    EXPECT_EQ(parsed.lines, (Lines{INVALID_TARGET, INVALID_TARGET}));
    ASSERT_EQ(parsed->getCompatibilityDescriptorSubItemSize(), 3U);
    EXPECT_EQ(parsed->getCompatibilityDescriptorSubItem(0)->getSubDescriptorType(), 4);
    EXPECT_EQ(parsed->getCompatibilityDescriptorSubItem(0)->getAdditionalInformation()[1], 0xBB);
    EXPECT_EQ(parsed->getCompatibilityDescriptorSubItem(1)->getSubDescriptorType(), 5);
    EXPECT_EQ(parsed->getCompatibilityDescriptorSubItem(2)->getSubDescriptorType(), 6);
    EXPECT_EQ(parsed->getCompatibilityDescriptorSubItem(2)->getAdditionalInformation()[0], 0xCC);
    EXPECT_EQ(parsed->getCompatibilityDescriptorSubItem(3), nullptr);
}

TEST(TCompatibilityDescriptorItem, DescriptorLengthIsNotRead) {
    for (const char* const length : {"00", "01", "0B", "FF"}) {
        const auto parsed =
            parseBytes<TCompatibilityDescriptorItem>(hex(std::string("01") + length + "01 000000 0000 0000 01  04 00"));
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(parsed.length, 13U);
        EXPECT_EQ(parsed->getCompatibilityDescriptorSubItemSize(), 1U);
    }
}

TEST(TCompatibilityDescriptorItem, SubItemsAreAsManyAsTheirCountSays) {
    const auto parsed = parseBytes<TCompatibilityDescriptorItem>(hex("01 0D 01 000000 0000 0000 01  04 00  05 00"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 13U);
    EXPECT_EQ(parsed->getCompatibilityDescriptorSubItemSize(), 1U);
    const auto most =
        parseBytes<TCompatibilityDescriptorItem>(join({hex("01 FF 01 000000 0000 0000 FF"), fill(510, 0)}));
    ASSERT_NE(most.object, nullptr);
    EXPECT_EQ(most.length, 521U);
    EXPECT_EQ(most->getCompatibilityDescriptorSubItemSize(), 255U);
}

TEST(TCompatibilityDescriptorItem, FewerThanElevenBytesFail) {
    const ByteVector item = hex("01 09 01 123456 0104 0301 00");
    for (std::ptrdiff_t size = 0; size < 11; ++size) {
        const auto parsed = parseBytes<TCompatibilityDescriptorItem>(ByteVector(item.begin(), item.begin() + size));
        EXPECT_EQ(parsed.object, nullptr);
        EXPECT_EQ(parsed.length, PRESET_LENGTH);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TCompatibilityDescriptorItem::parse: Item length not valid: " +
                                      std::to_string(size) + ". Aborting!"});
    }
}

TEST(TCompatibilityDescriptorItem, SubItemsBeyondTheBytesFail) {
    const auto none = parseBytes<TCompatibilityDescriptorItem>(hex("01 09 01 000000 0000 0000 01"));
    EXPECT_EQ(none.object, nullptr);
    EXPECT_EQ(none.length, PRESET_LENGTH);
    EXPECT_EQ(none.error, TISDBTTable::ERROR_INVALID_ITEM);
    EXPECT_EQ(none.lines,
              (Lines{"ISDBTUtils: TCompatibilityDescriptorSubItem::parse: Item length not valid: 0. Aborting!",
                     INVALID_SUB_ITEM}));
    const auto one = parseBytes<TCompatibilityDescriptorItem>(hex("01 09 01 000000 0000 0000 02  04 00  05"));
    EXPECT_EQ(one.object, nullptr);
    EXPECT_EQ(one.length, PRESET_LENGTH);
    EXPECT_EQ(one.error, TISDBTTable::ERROR_INVALID_ITEM);
    EXPECT_EQ(one.lines,
              (Lines{"ISDBTUtils: TCompatibilityDescriptorSubItem::parse: Item length not valid: 1. Aborting!",
                     INVALID_SUB_ITEM}));
}

TEST(TCompatibilityDescriptorItem, InformationOfASubItemBeyondTheBytesFails) {
    const auto parsed =
        parseBytes<TCompatibilityDescriptorItem>(hex("01 09 01 000000 0000 0000 02  04 01 AA  05 02 BB"));
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, PRESET_LENGTH);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_ITEM);
    EXPECT_EQ(parsed.lines, (Lines{INVALID_TARGET,
                                   "ISDBTUtils: TCompatibilityDescriptorSubItem:: parse: ERROR: parsing Additional "
                                   "Information. Aborting!",
                                   INVALID_SUB_ITEM}));
}

TEST(TCompatibilityDescriptorItem, OutParametersMayBeNull) {
    const HeapBytes bytes(hex("01 09 01 000000 0000 0000 01  04 00"));
    const std::unique_ptr<TCompatibilityDescriptorItem> item(
        TCompatibilityDescriptorItem::parse(bytes.data(), 13, nullptr, nullptr));
    EXPECT_NE(item, nullptr);
    EXPECT_EQ(TCompatibilityDescriptorItem::parse(bytes.data(), 12, nullptr, nullptr), nullptr);
    EXPECT_EQ(TCompatibilityDescriptorItem::parse(bytes.data(), 10, nullptr, nullptr), nullptr);
}

TEST(TCompatibilityDescriptorItem, LogsAtLevelFourUnderTheTagOfTheParsers) {
    const HeapBytes bytes(hex("01 09 01 000000 0000 0000 01"));
    const LogCapture log;
    TCompatibilityDescriptorItem::parse(bytes.data(), 11, nullptr, nullptr);
    TCompatibilityDescriptorItem::parse(bytes.data(), 10, nullptr, nullptr);
    ASSERT_EQ(log.records().size(), 3U);
    for (const LogCapture::Line& line : log.records()) {
        EXPECT_EQ(line.level, 4);
        EXPECT_EQ(line.tag, "ISDBTUtils");
    }
}

TEST(TCompatibilityDescriptorItem, HasNoBaseButAVirtualDestructor) {
    int deleted = 0;
    std::unique_ptr<TCompatibilityDescriptorItem> item(new Counted<TCompatibilityDescriptorItem>(deleted));
    item.reset();
    EXPECT_EQ(deleted, 1);
    const bool isDescriptor = std::is_base_of<Quor::TISDBTDataHolder, TCompatibilityDescriptorItem>::value;
    EXPECT_FALSE(isDescriptor);
    EXPECT_FALSE(std::is_copy_constructible<TCompatibilityDescriptorItem>::value);
}

TEST(TCompatibilityDescriptorItem, HasTheSignaturesThatReceiversCall) {
    using Item = TCompatibilityDescriptorItem;
    testing::StaticAssertTypeEq<decltype(&Item::parse), Item* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>();
    testing::StaticAssertTypeEq<decltype(&Item::getDescriptorType), QUOR_U8 (Item::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Item::getSpecifierType), QUOR_U8 (Item::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Item::getSpecifierData), QUOR_U32 (Item::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Item::getModel), QUOR_U16 (Item::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Item::getVersion), QUOR_U16 (Item::*)() const>();
}

#include "descriptors/TCompatibilityDescriptorSubItem.h"

#include "TISDBTDataHolder.h"
#include "support/DirtyMemory.h"
#include "support/Lifetime.h"
#include "support/Parse.h"
#include "support/ParserLines.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TCompatibilityDescriptorSubItem;
using Quor::TISDBTTable;

TEST(TCompatibilityDescriptorSubItem, StartsEmpty) {
    const InDirtyMemory<TCompatibilityDescriptorSubItem> item;
    EXPECT_EQ(item->getSubDescriptorType(), 0);
    EXPECT_EQ(item->getAdditionalInformationLength(), 0);
    EXPECT_EQ(item->getAdditionalInformation(), nullptr);
}

TEST(TCompatibilityDescriptorSubItem, ReadsTypeAndInformation) {
    const auto parsed = parseBytes<TCompatibilityDescriptorSubItem>(hex("A5 03 010203"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 5U);
    EXPECT_EQ(parsed.lines, Lines{INVALID_TARGET});
    EXPECT_EQ(parsed->getSubDescriptorType(), 0xA5);
    ASSERT_EQ(parsed->getAdditionalInformationLength(), 3);
    EXPECT_EQ(ByteVector(parsed->getAdditionalInformation(), parsed->getAdditionalInformation() + 3), hex("010203"));
    EXPECT_NE(parsed->getAdditionalInformation(), parsed.bytes.data() + 2); // a copy
}

TEST(TCompatibilityDescriptorSubItem, WithoutInformationItIsTwoBytes) {
    const auto parsed = parseBytes<TCompatibilityDescriptorSubItem>(hex("FF 00"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 2U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getSubDescriptorType(), 0xFF);
    EXPECT_EQ(parsed->getAdditionalInformationLength(), 0);
    EXPECT_EQ(parsed->getAdditionalInformation(), nullptr);
}

TEST(TCompatibilityDescriptorSubItem, InformationHasUpTo255Bytes) {
    const auto parsed = parseBytes<TCompatibilityDescriptorSubItem>(join({hex("01 FF"), fill(254, 0x11), hex("22")}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 257U);
    EXPECT_EQ(parsed->getAdditionalInformationLength(), 255);
    EXPECT_EQ(parsed->getAdditionalInformation()[0], 0x11);
    EXPECT_EQ(parsed->getAdditionalInformation()[254], 0x22);
}

TEST(TCompatibilityDescriptorSubItem, BytesBehindItAreIgnored) {
    const auto parsed = parseBytes<TCompatibilityDescriptorSubItem>(hex("01 01 AA  FFFFFF"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 3U);
    EXPECT_EQ(parsed->getAdditionalInformationLength(), 1);
}

TEST(TCompatibilityDescriptorSubItem, FewerThanTwoBytesFail) {
    const auto none = parseBytes<TCompatibilityDescriptorSubItem>({});
    EXPECT_EQ(none.object, nullptr);
    EXPECT_EQ(none.length, PRESET_LENGTH);
    EXPECT_EQ(none.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(none.lines,
              Lines{"ISDBTUtils: TCompatibilityDescriptorSubItem::parse: Item length not valid: 0. Aborting!"});
    const auto one = parseBytes<TCompatibilityDescriptorSubItem>(hex("01"));
    EXPECT_EQ(one.object, nullptr);
    EXPECT_EQ(one.length, PRESET_LENGTH);
    EXPECT_EQ(one.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(one.lines,
              Lines{"ISDBTUtils: TCompatibilityDescriptorSubItem::parse: Item length not valid: 1. Aborting!"});
}

TEST(TCompatibilityDescriptorSubItem, InformationBeyondTheBytesFails) {
    for (const char* const wire : {"01 01", "01 03 AABB", "01 FF AABB"}) {
        const auto parsed = parseBytes<TCompatibilityDescriptorSubItem>(hex(wire));
        EXPECT_EQ(parsed.object, nullptr);
        EXPECT_EQ(parsed.length, PRESET_LENGTH);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_STRING);
        EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TCompatibilityDescriptorSubItem:: parse: ERROR: parsing Additional "
                                      "Information. Aborting!"});
    }
}

TEST(TCompatibilityDescriptorSubItem, InformationOutlivesTheBytes) {
    std::unique_ptr<TCompatibilityDescriptorSubItem> item;
    {
        const HeapBytes bytes(hex("01 02 AABB"));
        item.reset(TCompatibilityDescriptorSubItem::parse(bytes.data(), bytes.size(), nullptr, nullptr));
    }
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->getAdditionalInformation()[0], 0xAA);
    EXPECT_EQ(item->getAdditionalInformation()[1], 0xBB);
}

TEST(TCompatibilityDescriptorSubItem, OutParametersMayBeNull) {
    const HeapBytes bytes(hex("01 02 AABB"));
    const std::unique_ptr<TCompatibilityDescriptorSubItem> item(
        TCompatibilityDescriptorSubItem::parse(bytes.data(), 4, nullptr, nullptr));
    EXPECT_NE(item, nullptr);
    EXPECT_EQ(TCompatibilityDescriptorSubItem::parse(bytes.data(), 3, nullptr, nullptr), nullptr);
    EXPECT_EQ(TCompatibilityDescriptorSubItem::parse(bytes.data(), 1, nullptr, nullptr), nullptr);
}

TEST(TCompatibilityDescriptorSubItem, LogsAtLevelFourUnderTwoTags) {
    const HeapBytes bytes(hex("01 01 AA"));
    const LogCapture log;
    delete TCompatibilityDescriptorSubItem::parse(bytes.data(), 3, nullptr, nullptr);
    TCompatibilityDescriptorSubItem::parse(bytes.data(), 2, nullptr, nullptr);
    TCompatibilityDescriptorSubItem::parse(bytes.data(), 1, nullptr, nullptr);
    ASSERT_EQ(log.records().size(), 3U);
    EXPECT_EQ(log.records()[0].level, 4);
    EXPECT_EQ(log.records()[0].tag, "ISDBTUils");
    EXPECT_EQ(log.records()[1].level, 4);
    EXPECT_EQ(log.records()[1].tag, "ISDBTUtils");
    EXPECT_EQ(log.records()[2].level, 4);
    EXPECT_EQ(log.records()[2].tag, "ISDBTUtils");
}

TEST(TCompatibilityDescriptorSubItem, HasNoBaseButAVirtualDestructor) {
    int deleted = 0;
    std::unique_ptr<TCompatibilityDescriptorSubItem> item(new Counted<TCompatibilityDescriptorSubItem>(deleted));
    item.reset();
    EXPECT_EQ(deleted, 1);
    const bool isDescriptor = std::is_base_of<Quor::TISDBTDataHolder, TCompatibilityDescriptorSubItem>::value;
    EXPECT_FALSE(isDescriptor);
    EXPECT_FALSE(std::is_copy_constructible<TCompatibilityDescriptorSubItem>::value);
}

TEST(TCompatibilityDescriptorSubItem, HasTheSignaturesThatReceiversCall) {
    using SubItem = TCompatibilityDescriptorSubItem;
    testing::StaticAssertTypeEq<decltype(&SubItem::parse), SubItem* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>();
    testing::StaticAssertTypeEq<decltype(&SubItem::getSubDescriptorType), QUOR_U8 (SubItem::*)() const>();
    testing::StaticAssertTypeEq<decltype(&SubItem::getAdditionalInformationLength), QUOR_U8 (SubItem::*)() const>();
    testing::StaticAssertTypeEq<decltype(&SubItem::getAdditionalInformation), QUOR_U8* (SubItem::*)() const>();
}

#include "descriptors/TDownloadContentDescriptorItem.h"

#include "TISDBTDataHolder.h"
#include "support/DirtyMemory.h"
#include "support/Lifetime.h"
#include "support/Parse.h"
#include "support/ParserLines.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TDownloadContentDescriptorItem;
using Quor::TISDBTTable;

namespace {

QUOR_U16 moduleId(const std::string& bytes) {
    return parseBytes<TDownloadContentDescriptorItem>(hex(bytes + "00000000 00"))->getModuleID();
}

QUOR_U32 moduleSize(const std::string& bytes) {
    return parseBytes<TDownloadContentDescriptorItem>(hex("0000" + bytes + "00"))->getModuleSize();
}

} // namespace

TEST(TDownloadContentDescriptorItem, StartsEmpty) {
    const InDirtyMemory<TDownloadContentDescriptorItem> item;
    EXPECT_EQ(item->getModuleID(), 0);
    EXPECT_EQ(item->getModuleSize(), 0U);
    EXPECT_EQ(item->getModuleInfoLength(), 0);
    EXPECT_EQ(item->getModuleInfo(), nullptr);
}

TEST(TDownloadContentDescriptorItem, ReadsItsFields) {
    const auto parsed = parseBytes<TDownloadContentDescriptorItem>(hex("1234 89ABCDEF 03 AABBCC"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 10U);
    EXPECT_EQ(parsed.lines, Lines{INVALID_TARGET});
    EXPECT_EQ(parsed->getModuleID(), 0x3412);
    EXPECT_EQ(parsed->getModuleSize(), 0x89ABCDEFU);
    ASSERT_EQ(parsed->getModuleInfoLength(), 3);
    EXPECT_EQ(ByteVector(parsed->getModuleInfo(), parsed->getModuleInfo() + 3), hex("AABBCC"));
    EXPECT_NE(parsed->getModuleInfo(), parsed.bytes.data() + 7); // a copy
}

TEST(TDownloadContentDescriptorItem, ModuleIdHasItsLowByteFirst) {
    EXPECT_EQ(moduleId("1234"), 0x3412);
    EXPECT_EQ(moduleId("0001"), 0x0100);
    EXPECT_EQ(moduleId("0100"), 0x0001);
    EXPECT_EQ(moduleId("8000"), 0x0080);
    EXPECT_EQ(moduleId("0080"), 0x8000);
    EXPECT_EQ(moduleId("FFFF"), 0xFFFF);
}

TEST(TDownloadContentDescriptorItem, ModuleSizeHasItsHighByteFirst) {
    EXPECT_EQ(moduleSize("00000001"), 0x00000001U);
    EXPECT_EQ(moduleSize("00000100"), 0x00000100U);
    EXPECT_EQ(moduleSize("00010000"), 0x00010000U);
    EXPECT_EQ(moduleSize("01000000"), 0x01000000U);
    EXPECT_EQ(moduleSize("80000000"), 0x80000000U);
    EXPECT_EQ(moduleSize("FFFFFFFF"), 0xFFFFFFFFU);
}

TEST(TDownloadContentDescriptorItem, WithoutInfoItIsSevenBytes) {
    const auto parsed = parseBytes<TDownloadContentDescriptorItem>(hex("0100 00000064 00"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 7U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getModuleInfoLength(), 0);
    EXPECT_EQ(parsed->getModuleInfo(), nullptr);
}

TEST(TDownloadContentDescriptorItem, InfoHasUpTo255Bytes) {
    const auto parsed =
        parseBytes<TDownloadContentDescriptorItem>(join({hex("0100 00000064 FF"), fill(254, 0x11), hex("22")}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 262U);
    EXPECT_EQ(parsed->getModuleInfoLength(), 255);
    EXPECT_EQ(parsed->getModuleInfo()[0], 0x11);
    EXPECT_EQ(parsed->getModuleInfo()[254], 0x22);
}

TEST(TDownloadContentDescriptorItem, BytesBehindItAreIgnored) {
    const auto parsed = parseBytes<TDownloadContentDescriptorItem>(hex("0100 00000064 01 AA  FFFF"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 8U);
    EXPECT_EQ(parsed->getModuleInfoLength(), 1);
}

TEST(TDownloadContentDescriptorItem, FewerThanSevenBytesFail) {
    const ByteVector item = hex("1234 89ABCDEF 00");
    for (std::ptrdiff_t size = 0; size < 7; ++size) {
        const auto parsed = parseBytes<TDownloadContentDescriptorItem>(ByteVector(item.begin(), item.begin() + size));
        EXPECT_EQ(parsed.object, nullptr);
        EXPECT_EQ(parsed.length, PRESET_LENGTH);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TDownloadContentDescriptorItem::parse: Item length not valid: " +
                                      std::to_string(size) + ". Aborting!"});
    }
}

TEST(TDownloadContentDescriptorItem, InfoBeyondTheBytesFails) {
    for (const char* const wire : {"0100 00000064 01", "0100 00000064 03 AABB", "0100 00000064 FF AABB"}) {
        const auto parsed = parseBytes<TDownloadContentDescriptorItem>(hex(wire));
        EXPECT_EQ(parsed.object, nullptr);
        EXPECT_EQ(parsed.length, PRESET_LENGTH);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_STRING);
        EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TDownloadContentDescriptorItem:: parse: ERROR: parsing Mondule "
                                      "Info. Aborting!"});
    }
}

TEST(TDownloadContentDescriptorItem, InfoOutlivesTheBytes) {
    std::unique_ptr<TDownloadContentDescriptorItem> item;
    {
        const HeapBytes bytes(hex("0100 00000064 02 AABB"));
        item.reset(TDownloadContentDescriptorItem::parse(bytes.data(), bytes.size(), nullptr, nullptr));
    }
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->getModuleInfo()[0], 0xAA);
    EXPECT_EQ(item->getModuleInfo()[1], 0xBB);
}

TEST(TDownloadContentDescriptorItem, OutParametersMayBeNull) {
    const HeapBytes bytes(hex("0100 00000064 01 AA"));
    const std::unique_ptr<TDownloadContentDescriptorItem> item(
        TDownloadContentDescriptorItem::parse(bytes.data(), 8, nullptr, nullptr));
    EXPECT_NE(item, nullptr);
    EXPECT_EQ(TDownloadContentDescriptorItem::parse(bytes.data(), 7, nullptr, nullptr), nullptr);
    EXPECT_EQ(TDownloadContentDescriptorItem::parse(bytes.data(), 6, nullptr, nullptr), nullptr);
}

TEST(TDownloadContentDescriptorItem, LogsAtLevelFourUnderTwoTags) {
    const HeapBytes bytes(hex("0100 00000064 01 AA"));
    const LogCapture log;
    delete TDownloadContentDescriptorItem::parse(bytes.data(), 8, nullptr, nullptr);
    TDownloadContentDescriptorItem::parse(bytes.data(), 7, nullptr, nullptr);
    TDownloadContentDescriptorItem::parse(bytes.data(), 6, nullptr, nullptr);
    ASSERT_EQ(log.records().size(), 3U);
    EXPECT_EQ(log.records()[0].level, 4);
    EXPECT_EQ(log.records()[0].tag, "ISDBTUils");
    EXPECT_EQ(log.records()[1].level, 4);
    EXPECT_EQ(log.records()[1].tag, "ISDBTUtils");
    EXPECT_EQ(log.records()[2].level, 4);
    EXPECT_EQ(log.records()[2].tag, "ISDBTUtils");
}

TEST(TDownloadContentDescriptorItem, HasNoBaseButAVirtualDestructor) {
    int deleted = 0;
    std::unique_ptr<TDownloadContentDescriptorItem> item(new Counted<TDownloadContentDescriptorItem>(deleted));
    item.reset();
    EXPECT_EQ(deleted, 1);
    const bool isDescriptor = std::is_base_of<Quor::TISDBTDataHolder, TDownloadContentDescriptorItem>::value;
    EXPECT_FALSE(isDescriptor);
    EXPECT_FALSE(std::is_copy_constructible<TDownloadContentDescriptorItem>::value);
}

TEST(TDownloadContentDescriptorItem, HasTheSignaturesThatReceiversCall) {
    using Item = TDownloadContentDescriptorItem;
    testing::StaticAssertTypeEq<decltype(&Item::parse), Item* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>();
    testing::StaticAssertTypeEq<decltype(&Item::getModuleID), QUOR_U16 (Item::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Item::getModuleSize), QUOR_U32 (Item::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Item::getModuleInfoLength), QUOR_U8 (Item::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Item::getModuleInfo), QUOR_U8* (Item::*)() const>();
}

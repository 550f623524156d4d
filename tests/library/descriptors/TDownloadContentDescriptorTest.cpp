#include "descriptors/TDownloadContentDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"
#include "support/ParserLines.h"
#include "support/Survival.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TDownloadContentDescriptor;
using Quor::TDownloadContentDescriptorItem;
using Quor::TISDBTTable;

namespace {

constexpr QUOR_U8 COMPATIBILITY = 0x20;
constexpr QUOR_U8 MODULES = 0x10;
constexpr QUOR_U8 TEXT = 0x08;

const std::string INVALID_ITEM = "ISDBTUtils: TDownloadContentDescriptor::parse: Invalid item. Aborting!";
const std::string BAD_PRIVATE_DATA =
    "ISDBTUtils: TDownloadContentDescriptor:: parse: ERROR: parsing Private Data. Aborting!";
const std::string BAD_LANGUAGE =
    "ISDBTUtils: TDownloadContentDescriptor:: parse: ERROR: parsing Language Code. Aborting!";
const std::string BAD_TEXT = "ISDBTUtils: TComponentDescriptor:: parse: ERROR: parsing Text. Aborting!";

std::string tooLong(unsigned needed, unsigned left) {
    return "ISDBTUtils: TDownloadContentDescriptor::parse: Item length not valid: " + std::to_string(needed) + " > " +
           std::to_string(left) + ". Aborting!";
}

std::string compatibilityLength(unsigned length) {
    return "ISDBTUtils: TCompatibilityDescriptor::parse: Item length not valid: " + std::to_string(length) +
           ". Aborting!";
}

std::string moduleLength(unsigned left) {
    return "ISDBTUtils: TDownloadContentDescriptorItem::parse: Item length not valid: " + std::to_string(left) +
           ". Aborting!";
}

/// A descriptor with the given flags, all fixed fields 0 and the rest behind them.
ByteVector download(QUOR_U8 flags, const ByteVector& rest) {
    return descriptor(0xC9, join({{flags}, hex("00000000 00000000 00000000 000000 00"), rest}));
}

Parsed<TDownloadContentDescriptor> parse(const ByteVector& wire) {
    return parseBytes<TDownloadContentDescriptor>(wire);
}

Parsed<TDownloadContentDescriptor> parse(QUOR_U8 flags, const std::string& rest) {
    return parse(download(flags, hex(rest)));
}

void expectFailure(const Parsed<TDownloadContentDescriptor>& parsed, QUOR_U16 error, const Lines& lines) {
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, error);
    EXPECT_EQ(parsed.lines, lines);
    EXPECT_EQ(parsed.length, PRESET_LENGTH);
}

/// Everything that a descriptor can hold.
const ByteVector FULL = descriptor(0xC9, join({hex("78 00000102 DEADBEEF 00000093 000B94 32"
                                                   "0027 0002"
                                                   "01 15 02 123456 AB08 0104 02  04 08 0123456789ABCDEF  05 00"
                                                   "02 0C 03 000456 0B45 002A 01  08 01 98"
                                                   "0002  0001 00000064 00  0002 000000CA 03 124578"
                                                   "03 987654"
                                                   "666F6F 08"),
                                               text("the text")}));

} // namespace

TEST(TDownloadContentDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(FULL);
    const InDirtyMemory<TDownloadContentDescriptor> descriptor(bytes.data(), bytes.size());
    EXPECT_EQ(descriptor->getDescriptorTag(), 0xC9);
    EXPECT_EQ(descriptor->getData(), bytes.data());
    EXPECT_EQ(descriptor->getDataLength(), bytes.size());
    EXPECT_EQ(descriptor->getReboot(), 0);
    EXPECT_EQ(descriptor->getAddOn(), 0);
    EXPECT_EQ(descriptor->getCompatibilityFlag(), 0);
    EXPECT_EQ(descriptor->getModuleInfoFlag(), 0);
    EXPECT_EQ(descriptor->getTextInfoFlag(), 0);
    EXPECT_EQ(descriptor->getComponentSize(), 0U);
    EXPECT_EQ(descriptor->getDownloadID(), 0U);
    EXPECT_EQ(descriptor->getTimeOutValueDII(), 0U);
    EXPECT_EQ(descriptor->getLeakRate(), 0U);
    EXPECT_EQ(descriptor->getComponentTag(), 0);
    EXPECT_EQ(descriptor->getPrivateDataLength(), 0);
    EXPECT_EQ(descriptor->getPrivateData(), nullptr);
    EXPECT_EQ(descriptor->getLanguageCode(), "");
    EXPECT_EQ(descriptor->getText(), "");
    EXPECT_EQ(descriptor->getCompatibilityDescriptor(), nullptr);
    EXPECT_EQ(descriptor->getDownloadContentDescriptorItemSize(), 0U);
    EXPECT_EQ(descriptor->getDownloadContentDescriptorItem(0), nullptr);
}

TEST(TDownloadContentDescriptor, TwentyBytesAreTheLeast) {
    const auto parsed = parse(hex("C9 12 00 00000000 00000000 00000000 000000 00 00"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 18U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getCompatibilityDescriptor(), nullptr);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItemSize(), 0U);
    EXPECT_EQ(parsed->getPrivateDataLength(), 0);
    EXPECT_EQ(parsed->getPrivateData(), nullptr);
    EXPECT_EQ(parsed->getLanguageCode(), "");
    EXPECT_EQ(parsed->getText(), "");
    EXPECT_EQ(parsed->getData(), parsed.bytes.data());
    EXPECT_EQ(parsed->getDataLength(), 20U);
    EXPECT_EQ(parsed->getDescriptorTag(), 0xC9);
}

TEST(TDownloadContentDescriptor, ReadsItsFixedFields) {
    const auto parsed = parse(hex("C9 12 C0 01234567 89ABCDEF FEDCBA98 123456 77 00"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getReboot(), 1);
    EXPECT_EQ(parsed->getAddOn(), 1);
    EXPECT_EQ(parsed->getComponentSize(), 0x01234567U);
    EXPECT_EQ(parsed->getDownloadID(), 0x89ABCDEFU);
    EXPECT_EQ(parsed->getTimeOutValueDII(), 0xFEDCBA98U);
    EXPECT_EQ(parsed->getLeakRate(), 0x048D15U); // 0x123456 without its lower two bits
    EXPECT_EQ(parsed->getComponentTag(), 0x77);
}

TEST(TDownloadContentDescriptor, FlagsAreSingleBits) {
    const auto flags = [](QUOR_U8 byte) {
        const bool compatibility = (byte & COMPATIBILITY) != 0;
        const bool modules = (byte & MODULES) != 0;
        const bool text = (byte & TEXT) != 0;
        const auto parsed = parse(byte, std::string(compatibility ? "0002 0000" : "") + (modules ? "0000" : "") + "00" +
                                            (text ? "706F72 00" : ""));
        return std::vector<int>{parsed->getReboot(), parsed->getAddOn(), parsed->getCompatibilityFlag(),
                                parsed->getModuleInfoFlag(), parsed->getTextInfoFlag()};
    };
    EXPECT_EQ(flags(0x00), (std::vector<int>{0, 0, 0, 0, 0}));
    EXPECT_EQ(flags(0x80), (std::vector<int>{1, 0, 0, 0, 0}));
    EXPECT_EQ(flags(0x40), (std::vector<int>{0, 1, 0, 0, 0}));
    EXPECT_EQ(flags(0x20), (std::vector<int>{0, 0, 1, 0, 0}));
    EXPECT_EQ(flags(0x10), (std::vector<int>{0, 0, 0, 1, 0}));
    EXPECT_EQ(flags(0x08), (std::vector<int>{0, 0, 0, 0, 1}));
    EXPECT_EQ(flags(0xF8), (std::vector<int>{1, 1, 1, 1, 1}));
    EXPECT_EQ(flags(0x07), (std::vector<int>{0, 0, 0, 0, 0})); // reserved bits
}

TEST(TDownloadContentDescriptor, WordsHaveAllTheirBits) {
    for (unsigned bit = 0; bit < 32; ++bit) {
        const QUOR_U32 word = 1U << bit;
        const ByteVector wire = join({u16(word >> 16), u16(word & 0xFFFF)});
        const ByteVector none = hex("00000000");
        const ByteVector behind = hex("000000 00 00");
        const auto size = parse(descriptor(0xC9, join({{0}, wire, none, none, behind})));
        EXPECT_EQ(size->getComponentSize(), word);
        EXPECT_EQ(size->getDownloadID(), 0U);
        const auto id = parse(descriptor(0xC9, join({{0}, none, wire, none, behind})));
        EXPECT_EQ(id->getDownloadID(), word);
        EXPECT_EQ(id->getTimeOutValueDII(), 0U);
        const auto timeOut = parse(descriptor(0xC9, join({{0}, none, none, wire, behind})));
        EXPECT_EQ(timeOut->getTimeOutValueDII(), word);
        EXPECT_EQ(timeOut->getComponentSize(), 0U);
        EXPECT_EQ(timeOut->getLeakRate(), 0U);
    }
}

TEST(TDownloadContentDescriptor, LeakRateIsTheUpper22Bits) {
    const auto leakRate = [](const std::string& bytes) {
        return parse(hex("C9 12 00 00000000 00000000 00000000" + bytes + "00 00"))->getLeakRate();
    };
    EXPECT_EQ(leakRate("000003"), 0U); // reserved bits
    EXPECT_EQ(leakRate("000004"), 1U);
    EXPECT_EQ(leakRate("000080"), 32U);
    EXPECT_EQ(leakRate("000100"), 64U);
    EXPECT_EQ(leakRate("008000"), 8192U);
    EXPECT_EQ(leakRate("010000"), 16384U);
    EXPECT_EQ(leakRate("800000"), 0x200000U);
    EXPECT_EQ(leakRate("FFFFFF"), 0x3FFFFFU);
}

TEST(TDownloadContentDescriptor, ComponentTagHasAllItsBits) {
    EXPECT_EQ(parse(hex("C9 12 00 00000000 00000000 00000000 000000 FF 00"))->getComponentTag(), 0xFF);
    EXPECT_EQ(parse(hex("C9 12 00 00000000 00000000 00000000 0000FF 01 00"))->getComponentTag(), 0x01);
}

TEST(TDownloadContentDescriptor, ReadsEverythingInWireOrder) {
    const auto parsed = parse(FULL);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, FULL.size() - 2);
    // Two subdescriptors with information, a module with info, private data.
    EXPECT_EQ(parsed.lines, (Lines{INVALID_TARGET, INVALID_TARGET, INVALID_TARGET, INVALID_TARGET}));
    EXPECT_EQ(parsed->getReboot(), 0);
    EXPECT_EQ(parsed->getAddOn(), 1);
    EXPECT_EQ(parsed->getComponentSize(), 258U);
    EXPECT_EQ(parsed->getDownloadID(), 0xDEADBEEFU);
    EXPECT_EQ(parsed->getTimeOutValueDII(), 147U);
    EXPECT_EQ(parsed->getLeakRate(), 741U);
    EXPECT_EQ(parsed->getComponentTag(), 0x32);

    const Quor::TCompatibilityDescriptor* const compatibility = parsed->getCompatibilityDescriptor();
    ASSERT_NE(compatibility, nullptr);
    ASSERT_EQ(compatibility->getCompatibilityDescriptorItemSize(), 2U);
    const Quor::TCompatibilityDescriptorItem* const hardware = compatibility->getCompatibilityDescriptorItem(0);
    EXPECT_EQ(hardware->getDescriptorType(), 1);
    EXPECT_EQ(hardware->getSpecifierType(), 2);
    EXPECT_EQ(hardware->getSpecifierData(), 0x123456U);
    EXPECT_EQ(hardware->getModel(), 0xAB00);
    EXPECT_EQ(hardware->getVersion(), 16);
    ASSERT_EQ(hardware->getCompatibilityDescriptorSubItemSize(), 2U);
    EXPECT_EQ(hardware->getCompatibilityDescriptorSubItem(0)->getSubDescriptorType(), 4);
    EXPECT_EQ(hardware->getCompatibilityDescriptorSubItem(0)->getAdditionalInformationLength(), 8);
    EXPECT_EQ(hardware->getCompatibilityDescriptorSubItem(1)->getSubDescriptorType(), 5);
    const Quor::TCompatibilityDescriptorItem* const software = compatibility->getCompatibilityDescriptorItem(1);
    EXPECT_EQ(software->getDescriptorType(), 2);
    EXPECT_EQ(software->getModel(), 0x0B << 5);
    EXPECT_EQ(software->getVersion(), 0);
    ASSERT_EQ(software->getCompatibilityDescriptorSubItemSize(), 1U);
    EXPECT_EQ(software->getCompatibilityDescriptorSubItem(0)->getAdditionalInformation()[0], 0x98);

    ASSERT_EQ(parsed->getDownloadContentDescriptorItemSize(), 2U);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(0)->getModuleID(), 0x0100);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(0)->getModuleSize(), 100U);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(0)->getModuleInfo(), nullptr);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(1)->getModuleID(), 0x0200);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(1)->getModuleSize(), 202U);
    ASSERT_EQ(parsed->getDownloadContentDescriptorItem(1)->getModuleInfoLength(), 3);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(1)->getModuleInfo()[2], 0x78);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(2), nullptr);

    ASSERT_EQ(parsed->getPrivateDataLength(), 3);
    EXPECT_EQ(ByteVector(parsed->getPrivateData(), parsed->getPrivateData() + 3), hex("987654"));
    EXPECT_EQ(parsed->getLanguageCode(), "foo");
    EXPECT_EQ(parsed->getText(), "the text");
}

TEST(TDownloadContentDescriptor, StaysReadableWhenTheCallersBytesAreGone) {
    std::unique_ptr<TDownloadContentDescriptor> descriptor;
    {
        const HeapBytes bytes(FULL);
        descriptor.reset(TDownloadContentDescriptor::parse(bytes.data(), bytes.size(), nullptr, nullptr));
    }
    ASSERT_NE(descriptor, nullptr);
    EXPECT_EQ(descriptor->getCompatibilityDescriptor()
                  ->getCompatibilityDescriptorItem(0)
                  ->getCompatibilityDescriptorSubItem(0)
                  ->getAdditionalInformation()[7],
              0xEF);
    EXPECT_EQ(descriptor->getDownloadContentDescriptorItem(1)->getModuleInfo()[0], 0x12);
    EXPECT_EQ(descriptor->getPrivateData()[0], 0x98);
    EXPECT_EQ(descriptor->getText(), "the text");
}

TEST(TDownloadContentDescriptor, BodyReachesAsFarAsTheCallerSays) {
    // descriptor_length 18 ends before the text, which the caller's length still covers.
    const auto parsed = parse(hex("C9 12 08 00000000 00000000 00000000 000000 00 00  706F72 02 4142"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 24U);
    EXPECT_EQ(parsed->getText(), "AB");
    EXPECT_EQ(parsed->getDataLength(), 26U);
}

TEST(TDownloadContentDescriptor, BytesBehindTheLastFieldAreIgnored) {
    const auto parsed = parse(0, "00  FFFFFF");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 18U);
    EXPECT_EQ(parsed->getDataLength(), 23U);
    const auto withText = parse(TEXT, "00  706F72 01 41  FFFF");
    ASSERT_NE(withText.object, nullptr);
    EXPECT_EQ(withText.length, 23U);
    EXPECT_EQ(withText->getText(), "A");
}

// The compatibility descriptor.

TEST(TDownloadContentDescriptor, CompatibilityDescriptorWithoutItemsIsKept) {
    const auto parsed = parse(COMPATIBILITY, "0002 0000  00");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 22U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getCompatibilityFlag(), 1);
    ASSERT_NE(parsed->getCompatibilityDescriptor(), nullptr);
    EXPECT_EQ(parsed->getCompatibilityDescriptor()->getCompatibilityDescriptorItemSize(), 0U);
}

TEST(TDownloadContentDescriptor, HighByteOfTheCompatibilityLengthIsIgnored) {
    for (const char* const high : {"00", "01", "80", "FF"}) {
        const auto parsed = parse(COMPATIBILITY, high + std::string("0D 0001  01 09 02 123456 0104 0301 00  01 AB"));
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(parsed.length, 34U);
        EXPECT_EQ(parsed->getCompatibilityDescriptor()->getCompatibilityDescriptorItemSize(), 1U);
        EXPECT_EQ(parsed->getPrivateDataLength(), 1);
    }
}

TEST(TDownloadContentDescriptor, RestFollowsTheCompatibilityLengthWhateverItsItemsTake) {
    const auto parsed = parse(COMPATIBILITY | TEXT, "0005 0000 FFFFFF  01 AB  706F72 01 41");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 31U);
    ASSERT_EQ(parsed->getPrivateDataLength(), 1);
    EXPECT_EQ(parsed->getPrivateData()[0], 0xAB);
    EXPECT_EQ(parsed->getText(), "A");
}

TEST(TDownloadContentDescriptor, CompatibilityLengthHasEightBits) {
    // More than a descriptor_length can say, offered by the caller all the same.
    const auto parsed = parse(join({hex("C9 FF 20"), fill(16, 0), hex("00FF 0000"), fill(253, 0xEE), hex("01 AB")}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 276U);
    ASSERT_EQ(parsed->getPrivateDataLength(), 1);
    EXPECT_EQ(parsed->getPrivateData()[0], 0xAB);
}

TEST(TDownloadContentDescriptor, WithoutItsFlagThereIsNoCompatibilityDescriptor) {
    const auto parsed = parse(0, "00  0002 0000");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getCompatibilityDescriptor(), nullptr);
}

TEST(TDownloadContentDescriptor, CompatibilityLengthWithNothingBehindTheFlagFails) {
    expectFailure(parse(COMPATIBILITY, "00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(2, 1)});
}

TEST(TDownloadContentDescriptor, CompatibilityLengthBelowFourBytesFails) {
    expectFailure(parse(COMPATIBILITY, "0000 0000  00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {compatibilityLength(2)});
    expectFailure(parse(COMPATIBILITY, "0001 0000  00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {compatibilityLength(3)});
}

TEST(TDownloadContentDescriptor, CompatibilityLengthBeyondTheEndFails) {
    expectFailure(parse(COMPATIBILITY, "0003 0000"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(5, 4)});
    expectFailure(parse(COMPATIBILITY, "0002 00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(4, 3)});
    expectFailure(parse(COMPATIBILITY, "00FF 0000  00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(257, 5)});
}

TEST(TDownloadContentDescriptor, CodeOfAFailingCompatibilityDescriptorStands) {
    expectFailure(parse(COMPATIBILITY, "0002 0001  00"), TISDBTTable::ERROR_INVALID_ITEM,
                  {"ISDBTUtils: TCompatibilityDescriptorItem::parse: Item length not valid: 0. Aborting!",
                   "ISDBTUtils: TCompatibilityDescriptor::parse: Invalid item. Aborting!"});
}

TEST(TDownloadContentDescriptor, ItemsOfTheCompatibilityDescriptorEndWithItsLength) {
    // The item's eleventh byte lies behind the compatibility descriptor, inside the download content descriptor.
    expectFailure(parse(COMPATIBILITY, "000C 0001  01 09 01 000000 0000 0000 00  00"), TISDBTTable::ERROR_INVALID_ITEM,
                  {"ISDBTUtils: TCompatibilityDescriptorItem::parse: Item length not valid: 10. Aborting!",
                   "ISDBTUtils: TCompatibilityDescriptor::parse: Invalid item. Aborting!"});
    expectFailure(parse(COMPATIBILITY, "000F 0001  01 0C 01 000000 0000 0000 01  04 01  AA"),
                  TISDBTTable::ERROR_INVALID_ITEM,
                  {"ISDBTUtils: TCompatibilityDescriptorSubItem:: parse: ERROR: parsing Additional Information. "
                   "Aborting!",
                   "ISDBTUtils: TCompatibilityDescriptorItem::parse: Invalid sub item. Aborting!",
                   "ISDBTUtils: TCompatibilityDescriptor::parse: Invalid item. Aborting!"});
}

// The modules.

TEST(TDownloadContentDescriptor, ModuleListMayBeEmpty) {
    const auto parsed = parse(MODULES, "0000  00");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 20U);
    EXPECT_EQ(parsed->getModuleInfoFlag(), 1);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItemSize(), 0U);
}

TEST(TDownloadContentDescriptor, ModulesAreInWireOrder) {
    const auto parsed = parse(MODULES, "0003  0300 00000001 00  0100 00000002 02 AABB  0200 00000003 00  00");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 17U + 2U + 7U + 9U + 7U + 1U);
    EXPECT_EQ(parsed.lines, Lines{INVALID_TARGET});
    ASSERT_EQ(parsed->getDownloadContentDescriptorItemSize(), 3U);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(0)->getModuleID(), 3);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(1)->getModuleID(), 1);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(1)->getModuleInfoLength(), 2);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(2)->getModuleID(), 2);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(3), nullptr);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItem(255), nullptr);
}

TEST(TDownloadContentDescriptor, WithoutItsFlagThereAreNoModules) {
    const auto parsed = parse(0, "00  0001 0300 00000001 00");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItemSize(), 0U);
}

TEST(TDownloadContentDescriptor, TwoModulesWithBytesForOneFail) {
    expectFailure(parse(MODULES, "0002  0300 00000001 00  00"), TISDBTTable::ERROR_INVALID_ITEM,
                  {moduleLength(1), INVALID_ITEM});
    expectFailure(parse(MODULES, "0002  0300 00000001 00"), TISDBTTable::ERROR_INVALID_ITEM,
                  {moduleLength(0), INVALID_ITEM});
}

TEST(TDownloadContentDescriptor, ModuleCountHasSixteenBits) {
    expectFailure(parse(MODULES, "0100  00"), TISDBTTable::ERROR_INVALID_ITEM, {moduleLength(1), INVALID_ITEM});
    const auto parsed = parse(join({hex("C9 FF 10"), fill(16, 0), hex("0101"), fill(257U * 7U, 0), hex("00")}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 17U + 2U + 257U * 7U + 1U);
    EXPECT_EQ(parsed->getDownloadContentDescriptorItemSize(), 257U);
}

TEST(TDownloadContentDescriptor, ModuleCountWithNothingBehindTheFlagFails) {
    expectFailure(parse(MODULES, "00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(2, 1)});
    expectFailure(parse(COMPATIBILITY | MODULES, "0002 0000"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(2, 0)});
    expectFailure(parse(COMPATIBILITY | MODULES, "0002 0000  00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {tooLong(2, 1)});
}

TEST(TDownloadContentDescriptor, ModuleInfoBeyondTheEndFails) {
    expectFailure(parse(MODULES, "0002  0300 00000001 01 AA  0100 00000002 03 AABB"), TISDBTTable::ERROR_INVALID_ITEM,
                  {INVALID_TARGET,
                   "ISDBTUtils: TDownloadContentDescriptorItem:: parse: ERROR: parsing Mondule Info. Aborting!",
                   INVALID_ITEM});
}

// The private data.

TEST(TDownloadContentDescriptor, PrivateDataAreCopied) {
    const auto parsed = parse(0, "03 AABBCC");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 21U);
    EXPECT_EQ(parsed.lines, Lines{INVALID_TARGET});
    ASSERT_EQ(parsed->getPrivateDataLength(), 3);
    EXPECT_EQ(ByteVector(parsed->getPrivateData(), parsed->getPrivateData() + 3), hex("AABBCC"));
    EXPECT_NE(parsed->getPrivateData(), parsed.bytes.data() + 20);
}

TEST(TDownloadContentDescriptor, PrivateDataHaveUpTo255Bytes) {
    const auto parsed = parse(join({hex("C9 FF 00"), fill(16, 0), hex("FF"), fill(254, 0x11), hex("22")}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 17U + 256U);
    EXPECT_EQ(parsed->getPrivateDataLength(), 255);
    EXPECT_EQ(parsed->getPrivateData()[254], 0x22);
}

TEST(TDownloadContentDescriptor, PrivateDataBeyondTheEndFail) {
    for (const char* const rest : {"01", "03 AABB", "FF AABB"}) {
        expectFailure(parse(0, rest), TISDBTTable::ERROR_INVALID_STRING, {BAD_PRIVATE_DATA});
    }
}

TEST(TDownloadContentDescriptor, PrivateDataLengthBeyondTheEndFails) {
    expectFailure(parse(COMPATIBILITY, "0002 0000"), TISDBTTable::ERROR_INVALID_STRING, {BAD_PRIVATE_DATA});
    expectFailure(parse(MODULES, "0000"), TISDBTTable::ERROR_INVALID_STRING, {BAD_PRIVATE_DATA});
    expectFailure(parse(MODULES, "0001  0300 00000001 01 AA"), TISDBTTable::ERROR_INVALID_STRING,
                  {INVALID_TARGET, BAD_PRIVATE_DATA});
}

// Language code and text.

TEST(TDownloadContentDescriptor, ReadsLanguageCodeAndText) {
    const auto parsed = parse(TEXT, "00  706F72 05 416C6CF47C");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 17U + 1U + 4U + 5U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getLanguageCode(), "por");
    EXPECT_EQ(parsed->getText(), "All\xF4|");
}

TEST(TDownloadContentDescriptor, TextKeepsZeroBytes) {
    const auto parsed = parse(TEXT, "00  700072 03 410042");
    EXPECT_EQ(parsed->getLanguageCode(), std::string("p\0r", 3));
    EXPECT_EQ(parsed->getText(), std::string("A\0B", 3));
}

TEST(TDownloadContentDescriptor, TextFollowsThePrivateData) {
    const auto parsed = parse(TEXT, "02 AABB  706F72 01 41");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 17U + 3U + 5U);
    EXPECT_EQ(parsed->getLanguageCode(), "por");
    EXPECT_EQ(parsed->getText(), "A");
}

TEST(TDownloadContentDescriptor, WithoutItsFlagThereIsNoText) {
    const auto parsed = parse(0, "00  706F72 01 41");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 18U);
    EXPECT_EQ(parsed->getLanguageCode(), "");
    EXPECT_EQ(parsed->getText(), "");
}

TEST(TDownloadContentDescriptor, EmptyTextEndsTheDescriptor) {
    const auto parsed = parse(TEXT, "00  706F72 00");
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 22U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getLanguageCode(), "por");
    EXPECT_EQ(parsed->getText(), "");
}

TEST(TDownloadContentDescriptor, EmptyTextWithBytesLeftFails) {
    // With a length of 0 the first byte behind it counts as a length: one that fits, and one that does not.
    expectFailure(parse(TEXT, "00  706F72 00  02 4142"), TISDBTTable::ERROR_INVALID_STRING, {BAD_TEXT});
    expectFailure(parse(TEXT, "00  706F72 00  00"), TISDBTTable::ERROR_INVALID_STRING, {BAD_TEXT});
    expectFailure(parse(TEXT, "00  706F72 00  03 4142"), TISDBTTable::ERROR_INVALID_STRING,
                  {textExceeds(3, 2), BAD_TEXT});
}

TEST(TDownloadContentDescriptor, EmptyTextBefore256BytesTakesThemForOneText) {
    // A text of 255 bytes with its length counts as 256, which in 8 bits is the 0 that is expected.
    const auto parsed = parse(join(
        {hex("C9 FF 08"), fill(16, 0), hex("00  706F72 00"), hex("FF"), fill(255, 0x41)})); // over-long direct call
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 22U);
    EXPECT_EQ(parsed->getText(), std::string(255, 'A'));
}

TEST(TDownloadContentDescriptor, TextHasUpTo255Bytes) {
    const auto parsed = parse(join({hex("C9 FF 08"), fill(16, 0), hex("00  706F72 FF"), fill(255, 0x41)}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 22U + 255U);
    EXPECT_EQ(parsed->getText(), std::string(255, 'A'));
}

TEST(TDownloadContentDescriptor, TextBeyondTheEndFailsWithTheLineOfTheComponentDescriptor) {
    expectFailure(parse(TEXT, "00  706F72 05 414243"), TISDBTTable::ERROR_INVALID_STRING,
                  {textExceeds(5, 3), BAD_TEXT});
    expectFailure(parse(TEXT, "00  706F72 01"), TISDBTTable::ERROR_INVALID_STRING, {textExceeds(1, 0), BAD_TEXT});
    expectFailure(parse(TEXT, "00  706F72 FF 41"), TISDBTTable::ERROR_INVALID_STRING, {textExceeds(255, 1), BAD_TEXT});
}

TEST(TDownloadContentDescriptor, ThreeBytesLeftForTheTextHaveNoLength) {
    expectFailure(parse(TEXT, "00  706F72"), TISDBTTable::ERROR_INVALID_STRING, {BAD_TEXT});
    expectFailure(parse(TEXT, "02 AABB  706F72"), TISDBTTable::ERROR_INVALID_STRING, {INVALID_TARGET, BAD_TEXT});
}

TEST(TDownloadContentDescriptor, LanguageCodeBeyondTheEndFails) {
    expectFailure(parse(TEXT, "00  706F"), TISDBTTable::ERROR_INVALID_STRING, {textExceeds(3, 2), BAD_LANGUAGE});
    expectFailure(parse(TEXT, "00  70"), TISDBTTable::ERROR_INVALID_STRING, {textExceeds(3, 1), BAD_LANGUAGE});
    expectFailure(parse(TEXT, "00"), TISDBTTable::ERROR_INVALID_STRING, {textExceeds(3, 0), BAD_LANGUAGE});
}

TEST(TDownloadContentDescriptor, FirstFieldThatDoesNotFitSpeaks) {
    // Compatibility descriptor, modules, private data, language code: each reaches beyond the end or is not there.
    expectFailure(parse(COMPATIBILITY | MODULES | TEXT, "0009 0000 0001"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {tooLong(11, 6)});
    expectFailure(parse(COMPATIBILITY | MODULES | TEXT, "0002 0000  0001 0300"), TISDBTTable::ERROR_INVALID_ITEM,
                  {moduleLength(2), INVALID_ITEM});
    expectFailure(parse(COMPATIBILITY | MODULES | TEXT, "0002 0000  0000  01"), TISDBTTable::ERROR_INVALID_STRING,
                  {BAD_PRIVATE_DATA});
    expectFailure(parse(COMPATIBILITY | MODULES | TEXT, "0002 0000  0000  00 70"), TISDBTTable::ERROR_INVALID_STRING,
                  {textExceeds(3, 1), BAD_LANGUAGE});
}

// Whatever the bytes.

TEST(TDownloadContentDescriptor, EveryPrefixFailsAtItsFirstMissingByte) {
    for (std::size_t size = 20; size < FULL.size(); ++size) {
        SCOPED_TRACE(size);
        const ByteVector prefix(FULL.begin(), FULL.begin() + static_cast<std::ptrdiff_t>(size));
        const auto parsed = parse(repairedDescriptor(prefix));
        EXPECT_EQ(parsed.object, nullptr);
        EXPECT_NE(parsed.error, TISDBTTable::ERROR_OK);
        ASSERT_FALSE(parsed.lines.empty());
        EXPECT_THAT(parsed.lines.back(), testing::EndsWith("Aborting!"));
    }
}

TEST(TDownloadContentDescriptor, EveryPrefixSurvives) {
    expectEveryPrefixSurvives<TDownloadContentDescriptor>(FULL);
}

TEST(TDownloadContentDescriptor, EveryByteChangeSurvives) {
    expectEveryByteChangeSurvives<TDownloadContentDescriptor>(FULL);
}

TEST(TDownloadContentDescriptor, OutParametersMayBeNull) {
    const HeapBytes good(FULL);
    const std::unique_ptr<TDownloadContentDescriptor> descriptor(
        TDownloadContentDescriptor::parse(good.data(), good.size(), nullptr, nullptr));
    EXPECT_NE(descriptor, nullptr);
    EXPECT_EQ(TDownloadContentDescriptor::parse(good.data(), 19, nullptr, nullptr), nullptr);
    for (std::size_t size = 20; size < FULL.size(); ++size) {
        const ByteVector prefix(FULL.begin(), FULL.begin() + static_cast<std::ptrdiff_t>(size));
        const HeapBytes cut(repairedDescriptor(prefix));
        EXPECT_EQ(TDownloadContentDescriptor::parse(cut.data(), cut.size(), nullptr, nullptr), nullptr);
    }
}

TEST(TDownloadContentDescriptor, LogsAtLevelFourUnderTwoTags) {
    const HeapBytes bytes(download(TEXT, hex("01 AA  706F72 02 41")));
    const LogCapture log;
    TDownloadContentDescriptor::parse(bytes.data(), bytes.size(), nullptr, nullptr);
    ASSERT_EQ(log.records().size(), 3U);
    EXPECT_EQ(log.records()[0].level, 4);
    EXPECT_EQ(log.records()[0].tag, "ISDBTUils");
    EXPECT_EQ(log.records()[0].text, INVALID_TARGET);
    EXPECT_EQ(log.records()[1].level, 4);
    EXPECT_EQ(log.records()[1].tag, "ISDBTUils");
    EXPECT_EQ(log.records()[1].text, textExceeds(2, 1));
    EXPECT_EQ(log.records()[2].level, 4);
    EXPECT_EQ(log.records()[2].tag, "ISDBTUtils");
    EXPECT_EQ(log.records()[2].text, BAD_TEXT);
}

TEST(TDownloadContentDescriptor, HasTheSignaturesThatReceiversCall) {
    using Descriptor = TDownloadContentDescriptor;
    testing::StaticAssertTypeEq<decltype(&Descriptor::parse),
                                Descriptor* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getReboot), QUOR_U8 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getAddOn), QUOR_U8 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getCompatibilityFlag), QUOR_U8 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getModuleInfoFlag), QUOR_U8 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getTextInfoFlag), QUOR_U8 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getComponentSize), QUOR_U32 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getDownloadID), QUOR_U32 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getTimeOutValueDII), QUOR_U32 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getLeakRate), QUOR_U32 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getComponentTag), QUOR_U8 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getPrivateDataLength), QUOR_U8 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getPrivateData), QUOR_U8* (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getLanguageCode), std::string (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getText), std::string (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getCompatibilityDescriptor),
                                Quor::TCompatibilityDescriptor* (Descriptor::*)() const>();
    const bool isDescriptor = std::is_base_of<Quor::TISDBTDescriptor, Descriptor>::value;
    EXPECT_TRUE(isDescriptor);
    EXPECT_FALSE(std::is_copy_constructible<Descriptor>::value);
}

#include "tot/TTOTTable.h"

#include "descriptors/TLocalTimeOffsetDescriptor.h"
#include "support/DirtyMemory.h"
#include "support/Lifetime.h"
#include "support/Sections.h"
#include "support/Survival.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;
using Quor::TLocalTimeOffsetDescriptor;
using Quor::TTOTTable;

namespace {

const std::string TIME = "C079 124500"; // 1993-10-13 12:45:00
constexpr QUOR_S32 UNIX_TIME = 750516300;

/// UTC_time | descriptors_loop_length | descriptors.
ByteVector tot(const ByteVector& descriptors, const std::string& time = TIME) {
    return shortSection(0x73, join({hex(time), loopOf(descriptors)}));
}

ByteVector withLoopLength(ByteVector section, unsigned loopLength) {
    section.at(8) = static_cast<QUOR_U8>((section.at(8) & 0xF0U) | loopLength >> 8);
    section.at(9) = static_cast<QUOR_U8>(loopLength);
    return section;
}

/// A local time offset descriptor of one country.
ByteVector localTime(const std::string& country, const std::string& region = "0C") {
    return descriptor(0x58, join({text(country), hex(region + " 0300 E35A010000 0200")}));
}

QUOR_S32 unixTime(const std::string& time) {
    const auto parsed = parseSection<TTOTTable>(tot({}, time));
    EXPECT_NE(parsed.object, nullptr);
    return parsed.object == nullptr ? -1 : parsed->getUnixTime();
}

/// Parses a section that must not be accepted, with descriptors.
void expectRefused(const ByteVector& section, QUOR_U16 code, const Lines& lines) {
    const auto parsed = parseSection<TTOTTable>(section);
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, code);
    EXPECT_EQ(parsed.lines, lines);

    const HeapBytes bytes(section);
    const LogCapture log;
    EXPECT_EQ(TTOTTable::parse(bytes.data(), bytes.size(), 1, 1, nullptr, nullptr), nullptr);
    EXPECT_EQ(log.lines(), lines);
    expectLevelAndTag(log);
}

std::string unknownLine(const std::string& tag) {
    return "ISDBTUtils: TTOTTable::parse: Unknown descriptor: 0x" + tag + ". Ignored!";
}

} // namespace

TEST(TTOTTable, ChecksTheSectionHeader) {
    expectSectionChecks<TTOTTable>(0x73, 10, tot(localTime("BRA")), [](const TTOTTable& table) {
        EXPECT_EQ(table.getUnixTime(), UNIX_TIME);
        EXPECT_NE(table.getLocalTimeOffsetDescriptor(), nullptr);
    });
}

TEST(TTOTTable, StartsIn1970OverACopy) {
    const HeapBytes bytes(tot(localTime("BRA")));
    const InDirtyMemory<TTOTTable> table(bytes.data(), bytes.size());
    EXPECT_EQ(table->getType(), TISDBTTable::TOT);
    EXPECT_NE(table->getData(), bytes.data());
    EXPECT_EQ(table->getDataLength(), 29U);
    EXPECT_EQ(table->getUnixTime(), 0);
    EXPECT_EQ(table->getLocalTimeOffsetDescriptor(), nullptr);
    EXPECT_EQ(table->getDescriptor(0x58), nullptr);
    EXPECT_EQ(taken(table->getDescriptorTags()), std::vector<QUOR_U8>{});
}

TEST(TTOTTable, ShowsTimeAndLocalTimeOffset) {
    const auto parsed = parseSection<TTOTTable>(tot(localTime("BRA")));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getType(), TISDBTTable::TOT);
    EXPECT_EQ(parsed->getUnixTime(), UNIX_TIME);
    ASSERT_NE(parsed->getLocalTimeOffsetDescriptor(), nullptr);
    ASSERT_NE(parsed->getLocalTimeOffsetDescriptor()->get("BRA"), nullptr);
    EXPECT_EQ(parsed->getLocalTimeOffsetDescriptor()->get("BRA")->getCountryRegionID(), 3);
    EXPECT_EQ(parsed->getLocalTimeOffsetDescriptor()->get("BRA")->getLocalTimeOffset(), 10800);
}

TEST(TTOTTable, DescriptorIsFoundByItsTag) {
    const auto parsed = parseSection<TTOTTable>(tot(localTime("BRA")));
    const TISDBTTable& base = *parsed.object;
    EXPECT_EQ(base.getDescriptor(0x58), parsed->getLocalTimeOffsetDescriptor());
    EXPECT_EQ(taken(base.getDescriptorTags()), std::vector<QUOR_U8>{0x58});
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        if (tag != 0x58) {
            EXPECT_EQ(base.getDescriptor(static_cast<QUOR_U8>(tag)), nullptr);
        }
    }
}

TEST(TTOTTable, DescriptorTagsAreANewListForTheCaller) {
    const auto parsed = parseSection<TTOTTable>(tot(localTime("BRA")));
    const std::unique_ptr<std::list<QUOR_U8>> first(parsed->getDescriptorTags());
    const std::unique_ptr<std::list<QUOR_U8>> second(parsed->getDescriptorTags());
    EXPECT_NE(first, second);
    EXPECT_EQ(*first, *second);
}

TEST(TTOTTable, TimeIsDateAndBcdTimeOfDay) {
    EXPECT_EQ(unixTime("C079 124500"), 750516300);
    EXPECT_EQ(unixTime("C079 000000"), 750470400);
    EXPECT_EQ(unixTime("C079 000001"), 750470401);
    EXPECT_EQ(unixTime("C079 235959"), 750556799);
    EXPECT_EQ(unixTime("9E8C 000000"), 86400); // MJD 40588, the second day of 1970
}

TEST(TTOTTable, DateBeforeTheSecondDayLeavesTheTimeOfDay) {
    EXPECT_EQ(unixTime("9E8B 010203"), 3723); // MJD 40587
    EXPECT_EQ(unixTime("0000 235959"), 86399);
    EXPECT_EQ(unixTime("9E8A 000000"), 0);
}

TEST(TTOTTable, DigitsAboveNineCountOn) {
    EXPECT_EQ(unixTime("0000 AB0000"), 399600); // 111 hours
    EXPECT_EQ(unixTime("0000 FFFFFF"), 165 * 3600 + 165 * 60 + 165);
}

TEST(TTOTTable, TimesFrom2038OnWrap) {
    EXPECT_EQ(unixTime("FFA2 031407"), 2147483647); // 2038-01-19 03:14:07
    EXPECT_EQ(unixTime("FFA2 031408"), -2147483647 - 1);
    EXPECT_EQ(unixTime("FFFF 235959"), -2139373697); // 2155593599 - 2^32
}

TEST(TTOTTable, EmptyLoopGivesNoDescriptor) {
    const auto parsed = parseSection<TTOTTable>(tot({}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getLocalTimeOffsetDescriptor(), nullptr);
    EXPECT_EQ(parsed->getDescriptor(0x58), nullptr);
    EXPECT_EQ(taken(parsed->getDescriptorTags()), std::vector<QUOR_U8>{});
}

TEST(TTOTTable, EmptyLoopEndsBeforeBytesThatFollow) {
    const auto parsed = parseSection<TTOTTable>(withLoopLength(tot(localTime("BRA")), 0));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getLocalTimeOffsetDescriptor(), nullptr);
}

TEST(TTOTTable, ReservedBitsOfTheLoopLengthAreMaskedOff) {
    ByteVector wire = tot(localTime("BRA"));
    wire[8] = 0x00;
    EXPECT_NE(parseSection<TTOTTable>(wire)->getLocalTimeOffsetDescriptor(), nullptr);
}

TEST(TTOTTable, UnknownDescriptorIsLoggedAndSkipped) {
    const auto parsed = parseSection<TTOTTable>(tot(hex("4A 00")));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{unknownLine("4A")});
    EXPECT_EQ(taken(parsed->getDescriptorTags()), std::vector<QUOR_U8>{});
}

TEST(TTOTTable, StuffingIsLoggedLikeAnyUnknownDescriptor) {
    const auto parsed = parseSection<TTOTTable>(tot(join({hex("42 03 FFFFFF"), localTime("BRA"), hex("05 01 AA")})));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, (Lines{unknownLine("42"), unknownLine("05")}));
    EXPECT_NE(parsed->getLocalTimeOffsetDescriptor()->get("BRA"), nullptr);
}

TEST(TTOTTable, LastLocalTimeOffsetDescriptorWins) {
    const auto parsed = parseSection<TTOTTable>(tot(join({localTime("ARG"), localTime("BRA")})));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(taken(parsed->getLocalTimeOffsetDescriptor()->getCountryCodes()), Lines{"BRA"});
    EXPECT_EQ(taken(parsed->getDescriptorTags()), std::vector<QUOR_U8>{0x58});
}

TEST(TTOTTable, DescriptorLivesInThePrivateCopy) {
    std::unique_ptr<TTOTTable> table;
    {
        const HeapBytes bytes(tot(join({hex("05 01 AA"), localTime("BRA")})));
        table.reset(TTOTTable::parse(bytes.data(), bytes.size(), 0, 1, nullptr, nullptr));
    }
    ASSERT_NE(table, nullptr);
    const TISDBTDescriptor* const held = table->getDescriptor(0x58);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->getData(), table->getData() + 13);
    ASSERT_EQ(held->getDataLength(), 13U);
    EXPECT_EQ(ByteVector(held->getData(), held->getData() + 5), hex("58 0D 425241"));
    EXPECT_EQ(table->getUnixTime(), UNIX_TIME);
    EXPECT_STREQ(table->getLocalTimeOffsetDescriptor()->get("BRA")->getCountryCode(), "BRA");
}

TEST(TTOTTable, WithoutDescriptorsTheErrorCodeStaysAsItWas) {
    const HeapBytes bytes(tot(localTime("BRA")));
    for (const int checkCRC32 : {0, 1}) {
        QUOR_U16 error = PRESET_ERROR;
        const std::unique_ptr<TTOTTable> table(
            TTOTTable::parse(bytes.data(), bytes.size(), checkCRC32, 0, &error, nullptr));
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(error, PRESET_ERROR);
        EXPECT_EQ(table->getUnixTime(), UNIX_TIME);
        EXPECT_EQ(table->getLocalTimeOffsetDescriptor(), nullptr);
        EXPECT_EQ(taken(table->getDescriptorTags()), std::vector<QUOR_U8>{});
    }
}

TEST(TTOTTable, WithoutDescriptorsTheLoopIsNotLookedAt) {
    const HeapBytes broken(withLoopLength(tot(descriptor(0x58, fill(14, 0))), 0xFFF));
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    const std::unique_ptr<TTOTTable> table(TTOTTable::parse(broken.data(), broken.size(), 1, 0, &error, nullptr));
    EXPECT_NE(table, nullptr);
    EXPECT_EQ(error, PRESET_ERROR);
    EXPECT_EQ(log.lines(), Lines{});
}

TEST(TTOTTable, WithoutDescriptorsTheHeaderIsCheckedAllTheSame) {
    const HeapBytes bytes(tot({}));
    QUOR_U16 error = PRESET_ERROR;
    EXPECT_EQ(TTOTTable::parse(bytes.data(), bytes.size() - 1, 1, 0, &error, nullptr), nullptr);
    EXPECT_EQ(error, TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG);
}

TEST(TTOTTable, AnyNumberButZeroAsksForDescriptors) {
    const HeapBytes bytes(tot(localTime("BRA")));
    for (const int parseDescriptors : {1, 2, -1}) {
        QUOR_U16 error = PRESET_ERROR;
        const std::unique_ptr<TTOTTable> table(
            TTOTTable::parse(bytes.data(), bytes.size(), 0, parseDescriptors, &error, nullptr));
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(error, TISDBTTable::ERROR_OK);
        EXPECT_NE(table->getLocalTimeOffsetDescriptor(), nullptr);
    }
}

TEST(TTOTTable, UnchangedSectionIsParsedAgain) {
    const auto first = parseSection<TTOTTable>(tot(localTime("BRA")));
    const auto again = parseSection<TTOTTable>(tot(localTime("BRA")), first.object.get());
    ASSERT_NE(again.object, nullptr);
    EXPECT_EQ(again.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(again->getUnixTime(), UNIX_TIME);
    EXPECT_NE(again->getLocalTimeOffsetDescriptor(), first->getLocalTimeOffsetDescriptor());
    EXPECT_NE(first->getLocalTimeOffsetDescriptor()->get("BRA"), nullptr); // the first stays as it is
}

TEST(TTOTTable, BrokenEntryDiscardsTheTable) {
    expectRefused(tot(descriptor(0x58, join({text("BRA"), hex("0C 0300 E35A010000 0200 41")}))),
                  TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                  {"ISDBTUtils: TLocalTimeOffsetDescriptorItem::parse: Descriptor length not valid: 1. Aborting!",
                   "ISDBTUtils: TLocalTimeOffsetDescriptor::parse: Descriptor length not valid: 1. Aborting!"});
}

TEST(TTOTTable, DescriptorBelowItsMinimumDiscardsTheTable) {
    expectRefused(tot(join({localTime("BRA"), descriptor(0x58, fill(10, 0))})),
                  TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                  {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                   "required: 12 < 13. Aborting!"});
}

TEST(TTOTTable, SectionShorterThanItsFieldsIsReadAllTheSame) {
    // Only the data bound the fields, not the section_length.
    for (unsigned sectionLength = 0; sectionLength < 4; ++sectionLength) {
        const auto parsed = parseSection<TTOTTable>(withSectionLength(tot(localTime("BRA")), sectionLength));
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
        EXPECT_EQ(parsed->getUnixTime(), UNIX_TIME);
        EXPECT_NE(parsed->getLocalTimeOffsetDescriptor(), nullptr);
    }
    EXPECT_NE(parseSection<TTOTTable>(hex("73 7000 C079 124500 F000")).object, nullptr);
}

TEST(TTOTTable, LoopMayReachBeyondTheSectionInsideTheData) {
    // The section ends behind its loop length; its descriptors follow all the same.
    const auto parsed =
        parseSection<TTOTTable>(join({hex("73 7007 C079 124500 F013"), hex("05 02 AAAA"), localTime("BRA")}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{unknownLine("05")});
    EXPECT_NE(parsed->getLocalTimeOffsetDescriptor()->get("BRA"), nullptr);
}

TEST(TTOTTable, LoopBeyondTheDataFails) {
    // One unknown descriptor, and a loop that goes on with the CRC_32 and then with nothing.
    ByteVector wire = withLoopLength(tot(hex("4A 00")), 0xFFF);
    std::copy_n(hex("06 00 07 00").begin(), 4, wire.end() - 4);
    expectRefused(wire, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {unknownLine("4A"), unknownLine("06"), unknownLine("07"),
                   "ISDBTUtils: TTOTTable::parse: Item length not valid: 2 > 0. Aborting!"});
}

TEST(TTOTTable, LoopThatEndsInADescriptorHeaderFails) {
    expectRefused(hex("73 7008 C079 124500 F003  4A"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {"ISDBTUtils: TTOTTable::parse: Item length not valid: 2 > 1. Aborting!"});
}

TEST(TTOTTable, KnownDescriptorBeyondTheDataFails) {
    ByteVector wire = join({hex("73 7007 C079 124500 F00F"), localTime("BRA")});
    wire.pop_back();
    expectRefused(wire, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {"ISDBTUtils: TTOTTable::parse: Item length not valid: 15 > 14. Aborting!"});
}

TEST(TTOTTable, KnownDescriptorBelowItsMinimumIsRefusedByItsHeaderAlone) {
    expectRefused(hex("73 7009 C079 124500 F007  58 05"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                  {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                   "required: 7 < 13. Aborting!"});
}

TEST(TTOTTable, BodyOfAnUnknownDescriptorIsNotNeeded) {
    const auto parsed = parseSection<TTOTTable>(hex("73 7009 C079 124500 F012  4A 10"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{unknownLine("4A")});
}

TEST(TTOTTable, LoopThatEndsInsideADescriptorWrapsAndFailsWhereTheDataEnd) {
    // 13 bytes of loop for a descriptor of 15: the count wraps to 65534 and the CRC_32 is taken for a descriptor.
    ByteVector wire = withLoopLength(tot(localTime("BRA")), 13);
    std::copy_n(hex("06 02 AAAA").begin(), 4, wire.end() - 4);
    expectRefused(wire, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {unknownLine("06"), "ISDBTUtils: TTOTTable::parse: Item length not valid: 2 > 0. Aborting!"});
}

TEST(TTOTTable, WrappedLoopIsWalkedInsideALongerBuffer) {
    // A loop of 1 byte: 2 bytes wrap its count to 65535, which 255 descriptors of 257 bytes take up.
    ByteVector wire = hex("73 7007 C079 124500 F001  4A 00");
    const ByteVector longest = join({hex("7F FF"), fill(255, 0)});
    for (int i = 0; i < 255; ++i) {
        wire.insert(wire.end(), longest.begin(), longest.end());
    }
    const auto parsed = parseSection<TTOTTable>(wire);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines.size(), 256U);
    EXPECT_EQ(parsed.lines.back(), unknownLine("7F"));

    wire.resize(wire.size() - 256); // the last descriptor has only its tag left
    const auto cut = parseSection<TTOTTable>(wire);
    EXPECT_EQ(cut.object, nullptr);
    EXPECT_EQ(cut.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(cut.lines.size(), 256U);
    EXPECT_EQ(cut.lines.back(), "ISDBTUtils: TTOTTable::parse: Item length not valid: 2 > 1. Aborting!");
}

TEST(TTOTTable, OverridesTheDescriptorGettersInTheirSlots) {
    EXPECT_EQ(slotOf(&TTOTTable::getDescriptor), slotOf(&TISDBTTable::getDescriptor));
    EXPECT_EQ(slotOf(&TTOTTable::getDescriptorTags), slotOf(&TISDBTTable::getDescriptorTags));
    EXPECT_EQ(slotOf(&TTOTTable::parseCommonHeader), slotOf(&TISDBTTable::parseCommonHeader));
}

TEST(TTOTTable, IsDestroyedThroughTheBases) {
    auto parsed = parseSection<TTOTTable>(tot(localTime("BRA")));
    std::unique_ptr<Quor::TISDBTDataHolder> base(std::move(parsed.object));
    base.reset(); // descriptor, copy and all: nothing may leak
    int deleted = 0;
    QUOR_U8 nothing = 0;
    std::unique_ptr<TISDBTTable> table(new Counted<TTOTTable>(deleted, &nothing, QUOR_U32{1}));
    table.reset();
    EXPECT_EQ(deleted, 1);
}

TEST(TTOTTable, EveryPrefixSurvives) {
    expectEveryPrefixSurvives<TTOTTable>(tot(join({localTime("BRA"), hex("05 01 AA"), localTime("ARG")})));
}

TEST(TTOTTable, EveryByteChangeSurvives) {
    expectEveryByteChangeSurvives<TTOTTable>(tot(join({localTime("BRA"), hex("05 01 AA"), localTime("ARG")})));
}

TEST(TTOTTable, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&TTOTTable::parse),
                                TTOTTable* (*)(QUOR_U8*, QUOR_U32, int, int, QUOR_U16*, TTOTTable*)>();
    testing::StaticAssertTypeEq<decltype(&TTOTTable::getUnixTime), QUOR_S32 (TTOTTable::*)() const>();
    testing::StaticAssertTypeEq<decltype(&TTOTTable::getLocalTimeOffsetDescriptor),
                                TLocalTimeOffsetDescriptor* (TTOTTable::*)() const>();
    const bool isTable = std::is_base_of<TISDBTTable, TTOTTable>::value;
    const bool isVersioned = std::is_base_of<Quor::TISDBTVersionedTable, TTOTTable>::value;
    EXPECT_TRUE(isTable);
    EXPECT_FALSE(isVersioned);
    EXPECT_FALSE(std::is_copy_constructible<TTOTTable>::value);
}

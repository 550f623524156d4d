#include "TISDBTTable.h"

#include "descriptors/TISDBTDescriptor.h"
#include "support/Header.h"
#include "support/Lifetime.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;

namespace {

Header parseHeader(const ByteVector& wire, QUOR_U32 minimum = 3, int checkCRC32 = 1, TISDBTTable* previous = nullptr) {
    TISDBTTable table = emptyTable<TISDBTTable>(TISDBTTable::SDT, minimum);
    return ::parseHeader(table, wire, previous, checkCRC32);
}

const Lines INVALID_DATA = {"ISDBTUtils: TISDBTTable::parse: Invalid data. Aborting!"};
const Lines TOO_BIG = {"ISDBTUtils: TISDBTTable::parse: Section length exceeds data length. Aborting!"};

} // namespace

TEST(TISDBTTable, ErrorCodesHaveTheNumbersThatCallersCompare) {
    EXPECT_EQ(TISDBTTable::ERROR_OK, 0);
    EXPECT_EQ(TISDBTTable::ERROR_INCOMPATIBLE_TABLE_TYPE, 2560);
    EXPECT_EQ(TISDBTTable::ERROR_TABLE_NOT_UPDATED, 2561);
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_DATA, 2562);
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_DATA_LENGTH, 2563);
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_TABLE_ID, 2564);
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG, 2565);
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_CRC32, 2566);
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_DESCRIPTOR_TAG, 2567);
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, 2568);
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_STRING, 2569);
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_ITEM, 2570);
}

TEST(TISDBTTable, ErrorCodesHave16Bits) {
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_OK), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_INCOMPATIBLE_TABLE_TYPE), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_TABLE_NOT_UPDATED), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_INVALID_DATA), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_INVALID_DATA_LENGTH), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_INVALID_TABLE_ID), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_INVALID_CRC32), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_INVALID_DESCRIPTOR_TAG), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_INVALID_STRING), const QUOR_U16>();
    testing::StaticAssertTypeEq<decltype(TISDBTTable::ERROR_INVALID_ITEM), const QUOR_U16>();
    EXPECT_EQ(sizeof TISDBTTable::ERROR_OK, 2U);
}

TEST(TISDBTTable, HeaderAndCrcHaveTheirLengths) {
    EXPECT_EQ(TISDBTTable::COMMON_HEADER_LENGTH, 3U);
    EXPECT_EQ(TISDBTTable::CRC_LENGTH, 4U);
}

TEST(TISDBTTable, TypesHaveTheirNumbers) {
    EXPECT_EQ(TISDBTTable::PAT, 0U);
    EXPECT_EQ(TISDBTTable::CAT, 65536U);
    EXPECT_EQ(TISDBTTable::NIT, 1048576U);
    EXPECT_EQ(TISDBTTable::SDT, 1114112U);
    EXPECT_EQ(TISDBTTable::HEIT, 1179648U);
    EXPECT_EQ(TISDBTTable::HEIT_PRESENT, 1179726U);
    EXPECT_EQ(TISDBTTable::HEIT_FOLLOWING, 1179727U);
    EXPECT_EQ(TISDBTTable::TOT, 1310720U);
    EXPECT_EQ(TISDBTTable::SDTT, 2293760U);
    EXPECT_EQ(TISDBTTable::BIT, 2359296U);
    EXPECT_EQ(TISDBTTable::MEIT, 2490368U);
    EXPECT_EQ(TISDBTTable::DSMCC_SECTION, 3997696U);
    EXPECT_EQ(TISDBTTable::PMT, 4294901762U);
    EXPECT_EQ(TISDBTTable::AIT, 4294901876U);
}

TEST(TISDBTTable, TypesHave32Bits) {
    EXPECT_EQ(sizeof(TISDBTTable::Type), 4U);
}

TEST(TISDBTTable, KeepsItsTypeAndACopyOfTheSection) {
    std::unique_ptr<TISDBTTable> table;
    {
        const HeapBytes bytes(hex("42 B0 00"));
        table.reset(new TISDBTTable(TISDBTTable::BIT, 3, 0x42, bytes.data(), bytes.size()));
        EXPECT_NE(table->getData(), bytes.data());
    }
    EXPECT_EQ(table->getType(), TISDBTTable::BIT);
    ASSERT_EQ(table->getDataLength(), 3U);
    EXPECT_EQ(ByteVector(table->getData(), table->getData() + 3), hex("42 B0 00"));
}

TEST(TISDBTTable, HasNoDescriptors) {
    const TISDBTTable table = emptyTable<TISDBTTable>(TISDBTTable::TOT);
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        EXPECT_EQ(table.getDescriptor(static_cast<QUOR_U8>(tag)), nullptr);
    }
}

TEST(TISDBTTable, DescriptorTagsAreANewListForTheCaller) {
    const TISDBTTable table = emptyTable<TISDBTTable>(TISDBTTable::TOT);
    const std::unique_ptr<std::list<QUOR_U8>> first(table.getDescriptorTags());
    const std::unique_ptr<std::list<QUOR_U8>> second(table.getDescriptorTags());
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->empty());
    EXPECT_NE(first, second);
}

TEST(TISDBTTable, SetDebugDoesNothing) {
    const LogCapture log;
    testing::internal::CaptureStdout();
    TISDBTTable::setDebug(1, 1);
    TISDBTTable::setDebug(0, 0);
    TISDBTTable::setDebug(-1, 2);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(log.lines(), Lines{});
    EXPECT_TRUE(parseHeader(hex("42 B004 00000000")).good);
}

TEST(TISDBTTable, SectionLengthCountsTheBytesBeforeTheCrc) {
    const Header header = parseHeader(hex("42 7006 AABB 00000000"));
    EXPECT_TRUE(header.good);
    EXPECT_EQ(header.sectionLength, 2);
    EXPECT_EQ(header.lines, Lines{});
}

TEST(TISDBTTable, GoodHeaderLeavesTheErrorCodeAlone) {
    EXPECT_EQ(parseHeader(hex("42 7004 00000000")).error, PRESET_ERROR);
}

TEST(TISDBTTable, NullDataIsInvalid) {
    TISDBTTable table = emptyTable<TISDBTTable>(TISDBTTable::TOT);
    QUOR_U16 error = PRESET_ERROR;
    QUOR_U16 sectionLength = 0;
    const LogCapture log;
    EXPECT_FALSE(table.parseCommonHeader(nullptr, 100, 1, &error, &sectionLength, nullptr));
    EXPECT_EQ(error, TISDBTTable::ERROR_INVALID_DATA);
    EXPECT_EQ(log.lines(), INVALID_DATA);
}

TEST(TISDBTTable, NullDataSpeaksBeforeTheirLength) {
    TISDBTTable table = emptyTable<TISDBTTable>(TISDBTTable::TOT);
    QUOR_U16 error = PRESET_ERROR;
    QUOR_U16 sectionLength = 0;
    const LogCapture log;
    EXPECT_FALSE(table.parseCommonHeader(nullptr, 0, 1, &error, &sectionLength, nullptr));
    EXPECT_EQ(error, TISDBTTable::ERROR_INVALID_DATA);
    EXPECT_EQ(log.lines(), INVALID_DATA);
}

TEST(TISDBTTable, DataShorterThanTheMinimumOfTheTableFail) {
    const Header header = parseHeader(hex("42 7004 00000000"), 8);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTTable::parse: Longer data length is required: 7 < 8. Aborting!"});
    EXPECT_TRUE(parseHeader(hex("42 7004 00000000"), 7).good);
}

TEST(TISDBTTable, NoDataFail) {
    const Header header = parseHeader({});
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTTable::parse: Longer data length is required: 0 < 3. Aborting!"});
}

TEST(TISDBTTable, LengthSpeaksBeforeTheTableId) {
    const Header header = parseHeader(hex("40 7FFF"), 4);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTTable::parse: Longer data length is required: 3 < 4. Aborting!"});
}

TEST(TISDBTTable, OtherTableIdFails) {
    const Header header = parseHeader(hex("46 7004 00000000"));
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_TABLE_ID);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTTable::parse: Unexpected table ID. Got 0x46, instead of 0x42. "
                                  "Aborting!"});
}

TEST(TISDBTTable, TableIdsAreLoggedWithTwoDigits) {
    QUOR_U8 nothing = 0;
    TISDBTTable table(TISDBTTable::PMT, 3, 0x02, &nothing, 0);
    EXPECT_EQ(::parseHeader(table, hex("0A 7000")).lines,
              Lines{"ISDBTUtils: TISDBTTable::parse: Unexpected table ID. Got 0x0A, instead of 0x02. Aborting!"});
}

TEST(TISDBTTable, TableIdSpeaksBeforeTheSectionLength) {
    const Header header = parseHeader(hex("FF 7FFF 00"));
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_TABLE_ID);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTTable::parse: Unexpected table ID. Got 0xFF, instead of 0x42. "
                                  "Aborting!"});
}

TEST(TISDBTTable, ExpectedTableIdHas16Bits) {
    QUOR_U8 nothing = 0;
    TISDBTTable table(TISDBTTable::PMT, 3, 0x142, &nothing, 0);
    EXPECT_EQ(::parseHeader(table, hex("42 7000")).error, TISDBTTable::ERROR_INVALID_TABLE_ID);
}

TEST(TISDBTTable, SectionMustFitIntoTheData) {
    const Header header = parseHeader(hex("42 7005 00000000"));
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG);
    EXPECT_EQ(header.lines, TOO_BIG);
    EXPECT_TRUE(parseHeader(hex("42 7005 00000000 00")).good);
}

TEST(TISDBTTable, HeaderWithoutAByteBehindItMayHaveSectionLengthZeroOnly) {
    EXPECT_TRUE(parseHeader(hex("42 7000")).good);
    EXPECT_EQ(parseHeader(hex("42 7001")).error, TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG);
}

TEST(TISDBTTable, SurplusBytesAreIgnored) {
    const Header header = parseHeader(hex("42 7005 AA 00000000 FFFFFFFFFFFF"));
    EXPECT_TRUE(header.good);
    EXPECT_EQ(header.sectionLength, 1);
    EXPECT_EQ(header.lines, Lines{});
}

TEST(TISDBTTable, SectionLengthHasTwelveBits) {
    const Header longest = parseHeader(join({hex("42 FFFF"), fill(0xFFF, 0)}));
    EXPECT_TRUE(longest.good);
    EXPECT_EQ(longest.sectionLength, 0xFFB);
    EXPECT_EQ(parseHeader(join({hex("42 FFFF"), fill(0xFFE, 0)})).error,
              TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG);
    const Header large = parseHeader(join({hex("42 0C00"), fill(0xC00, 0)}));
    EXPECT_TRUE(large.good);
    EXPECT_EQ(large.sectionLength, 0xBFC);
}

TEST(TISDBTTable, SyntaxIndicatorAndReservedBitsAreNotLookedAt) {
    EXPECT_EQ(parseHeader(hex("42 0004 00000000")).sectionLength, 0);
    EXPECT_TRUE(parseHeader(hex("42 8004 00000000")).good);
    EXPECT_TRUE(parseHeader(hex("42 F004 00000000")).good);
    EXPECT_EQ(parseHeader(hex("42 F004 00000000")).sectionLength, 0);
}

TEST(TISDBTTable, SectionShorterThanItsCrcWraps) {
    EXPECT_EQ(parseHeader(hex("42 7000")).sectionLength, 0xFFFC);
    EXPECT_EQ(parseHeader(hex("42 7003 000000")).sectionLength, 0xFFFF);
    EXPECT_EQ(parseHeader(hex("42 7004 00000000")).sectionLength, 0);
}

TEST(TISDBTTable, CrcIsNeverVerified) {
    const ByteVector wrong = hex("42 7006 AABB DEADBEEF");
    for (const int checkCRC32 : {0, 1, -1}) {
        const Header header = parseHeader(wrong, 3, checkCRC32);
        EXPECT_TRUE(header.good);
        EXPECT_EQ(header.error, PRESET_ERROR);
        EXPECT_EQ(header.lines, Lines{});
    }
}

TEST(TISDBTTable, PreviousTableIsIgnored) {
    TISDBTTable other = emptyTable<TISDBTTable>(TISDBTTable::NIT);
    TISDBTTable same = emptyTable<TISDBTTable>(TISDBTTable::SDT);
    EXPECT_TRUE(parseHeader(hex("42 7004 00000000"), 3, 1, &other).good);
    EXPECT_TRUE(parseHeader(hex("42 7004 00000000"), 3, 1, &same).good);
}

TEST(TISDBTTable, ErrorCodeMayBeNull) {
    TISDBTTable table = emptyTable<TISDBTTable>(TISDBTTable::SDT, 4);
    const HeapBytes shortOne(hex("42 7000"));
    const HeapBytes other(hex("40 7001 00"));
    const HeapBytes tooBig(hex("42 7002 00"));
    const HeapBytes good(hex("42 7001 00"));
    QUOR_U16 sectionLength = 0;
    const LogCapture log;
    EXPECT_FALSE(table.parseCommonHeader(nullptr, 4, 1, nullptr, &sectionLength, nullptr));
    EXPECT_FALSE(table.parseCommonHeader(shortOne.data(), shortOne.size(), 1, nullptr, &sectionLength, nullptr));
    EXPECT_FALSE(table.parseCommonHeader(other.data(), other.size(), 1, nullptr, &sectionLength, nullptr));
    EXPECT_FALSE(table.parseCommonHeader(tooBig.data(), tooBig.size(), 1, nullptr, &sectionLength, nullptr));
    EXPECT_EQ(log.lines().size(), 4U);
    EXPECT_TRUE(table.parseCommonHeader(good.data(), good.size(), 1, nullptr, &sectionLength, nullptr));
    EXPECT_EQ(log.lines().size(), 4U);
}

TEST(TISDBTTable, MinimumBelowTheHeaderReadsNoByteThatIsMissing) {
    for (QUOR_U32 size = 0; size < 3; ++size) {
        const Header header = parseHeader(ByteVector(size, 0x42), 0);
        EXPECT_FALSE(header.good);
        EXPECT_NE(header.error, PRESET_ERROR);
        EXPECT_EQ(header.lines.size(), 1U);
    }
}

TEST(TISDBTTable, LogsAtLevelFourUnderTheTagOfTheParsers) {
    TISDBTTable table = emptyTable<TISDBTTable>(TISDBTTable::SDT, 4);
    const LogCapture log;
    const HeapBytes shortOne(hex("42 7000"));
    const HeapBytes other(hex("40 7001 00"));
    const HeapBytes tooBig(hex("42 7002 00"));
    QUOR_U16 sectionLength = 0;
    table.parseCommonHeader(nullptr, 4, 1, nullptr, &sectionLength, nullptr);
    table.parseCommonHeader(shortOne.data(), shortOne.size(), 1, nullptr, &sectionLength, nullptr);
    table.parseCommonHeader(other.data(), other.size(), 1, nullptr, &sectionLength, nullptr);
    table.parseCommonHeader(tooBig.data(), tooBig.size(), 1, nullptr, &sectionLength, nullptr);
    ASSERT_EQ(log.records().size(), 4U);
    for (const LogCapture::Line& line : log.records()) {
        EXPECT_EQ(line.level, 4);
        EXPECT_EQ(line.tag, "ISDBTUtils");
    }
}

TEST(TISDBTTable, OperationsAreCalledThroughTheirVirtualSlots) {
    struct Other : TISDBTTable {
        explicit Other(QUOR_U8* data) : TISDBTTable(MEIT, 3, 0x42, data, 0), descriptor(0x99, data, 0) {}
        TISDBTDescriptor* getDescriptor(QUOR_U8 tag) const override {
            return tag == 0x99 ? const_cast<TISDBTDescriptor*>(&descriptor) : nullptr;
        }
        std::list<QUOR_U8>* getDescriptorTags() const override { return new std::list<QUOR_U8>{0x99}; }
        bool parseCommonHeader(QUOR_U8*, QUOR_U32, int, QUOR_U16*, QUOR_U16* sectionLength, TISDBTTable*) override {
            *sectionLength = 1234;
            return true;
        }
        TISDBTDescriptor descriptor;
    };
    QUOR_U8 nothing = 0;
    Other other(&nothing);
    TISDBTTable& base = other;
    QUOR_U16 sectionLength = 0;
    EXPECT_EQ(base.getDescriptor(0x99), &other.descriptor);
    EXPECT_EQ(taken(base.getDescriptorTags()), std::vector<QUOR_U8>{0x99});
    EXPECT_TRUE(base.parseCommonHeader(nullptr, 0, 0, nullptr, &sectionLength, nullptr));
    EXPECT_EQ(sectionLength, 1234);
}

TEST(TISDBTTable, VirtualSlotsStandInOrder) {
    const auto slot = static_cast<std::ptrdiff_t>(sizeof(void*));
    EXPECT_EQ(slotOf(&TISDBTTable::getDescriptor) / slot, 2); // behind the two entries of the destructor
    EXPECT_EQ(slotOf(&TISDBTTable::getDescriptorTags) - slotOf(&TISDBTTable::getDescriptor), slot);
    EXPECT_EQ(slotOf(&TISDBTTable::parseCommonHeader) - slotOf(&TISDBTTable::getDescriptorTags), slot);
}

TEST(TISDBTTable, IsDestroyedThroughTheBases) {
    int deleted = 0;
    QUOR_U8 nothing = 0;
    std::unique_ptr<TISDBTTable> table(
        new Counted<TISDBTTable>(deleted, TISDBTTable::TOT, QUOR_U32{3}, QUOR_U16{0x73}, &nothing, QUOR_U32{1}));
    table.reset();
    EXPECT_EQ(deleted, 1);
    std::unique_ptr<Quor::TISDBTDataHolder> holder(
        new Counted<TISDBTTable>(deleted, TISDBTTable::TOT, QUOR_U32{3}, QUOR_U16{0x73}, &nothing, QUOR_U32{1}));
    holder.reset();
    EXPECT_EQ(deleted, 2);
}

TEST(TISDBTTable, CannotBeCopied) {
    EXPECT_FALSE(std::is_copy_constructible<TISDBTTable>::value);
    EXPECT_FALSE(std::is_copy_assignable<TISDBTTable>::value);
}

TEST(TISDBTTable, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&TISDBTTable::getType), TISDBTTable::Type (TISDBTTable::*)() const>();
    testing::StaticAssertTypeEq<decltype(&TISDBTTable::getDescriptor),
                                TISDBTDescriptor* (TISDBTTable::*)(QUOR_U8) const>();
    testing::StaticAssertTypeEq<decltype(&TISDBTTable::getDescriptorTags),
                                std::list<QUOR_U8>* (TISDBTTable::*)() const>();
    testing::StaticAssertTypeEq<decltype(&TISDBTTable::parseCommonHeader),
                                bool (TISDBTTable::*)(QUOR_U8*, QUOR_U32, int, QUOR_U16*, QUOR_U16*, TISDBTTable*)>();
    testing::StaticAssertTypeEq<decltype(&TISDBTTable::setDebug), void (*)(int, int)>();
    const bool isHolder = std::is_base_of<Quor::TISDBTDataHolder, TISDBTTable>::value;
    EXPECT_TRUE(isHolder);
}

#include "TISDBTVersionedTable.h"

#include "support/DirtyMemory.h"
#include "support/Header.h"
#include "support/Lifetime.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TISDBTTable;
using Quor::TISDBTVersionedTable;

namespace {

/// A table of another or the same kind whose header was read already.
struct Earlier {
    TISDBTVersionedTable table;

    explicit Earlier(TISDBTTable::Type type, const LongHeader& fields = {})
        : table(emptyTable<TISDBTVersionedTable>(type)) {
        EXPECT_TRUE(parseHeader(table, longSection(0x42, fields, {})).good);
    }
};

Header parseHeader(const ByteVector& wire, TISDBTTable* previous = nullptr) {
    TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT);
    return ::parseHeader(table, wire, previous);
}

LongHeader version(unsigned number, QUOR_U8 section = 0) {
    LongHeader fields;
    fields.version = number;
    fields.section = section;
    return fields;
}

/// A section of the given size with a section_length to match.
ByteVector cutOff(unsigned size) {
    ByteVector wire = hex("42 B000 0001 C1 00 00");
    wire.resize(size);
    return withSectionLength(wire, size - 3);
}

const Lines MULTI_SECTION = {"ISDBTUtils: TISDBTVersionedTable::parse: Multi-section parsing not supported. TODO!"};

} // namespace

TEST(TISDBTVersionedTable, HeaderHasItsLength) {
    EXPECT_EQ(TISDBTVersionedTable::COMMON_HEADER_LENGTH, 8U);
    EXPECT_EQ(TISDBTTable::COMMON_HEADER_LENGTH, 3U);
}

TEST(TISDBTVersionedTable, FieldsAreZeroAtFirst) {
    const HeapBytes bytes(hex("42 F009 ABCD FF 11 22 00000000"));
    const InDirtyMemory<TISDBTVersionedTable> table(TISDBTTable::SDT, 3U, QUOR_U16{0x42}, bytes.data(), bytes.size());
    EXPECT_EQ(table->getGenericDataField(), 0);
    EXPECT_EQ(table->getVersion(), 0);
    EXPECT_EQ(table->getCurrentIndicator(), 0);
    EXPECT_EQ(table->getSectionNumber(), 0);
    EXPECT_EQ(table->getLastSectionNumber(), 0);
    EXPECT_EQ(table->getType(), TISDBTTable::SDT);
    EXPECT_EQ(table->getDataLength(), 12U);
    EXPECT_NE(table->getData(), bytes.data());
}

TEST(TISDBTVersionedTable, FieldsAreReadFromTheWire) {
    TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT);
    // reserved 11, version_number 10110, current_next_indicator 1
    const Header header = ::parseHeader(table, hex("42 B009 ABCD ED 03 07 00000000"));
    EXPECT_TRUE(header.good);
    EXPECT_EQ(header.error, PRESET_ERROR);
    EXPECT_EQ(header.lines, Lines{});
    EXPECT_EQ(table.getGenericDataField(), 0xABCD);
    EXPECT_EQ(table.getVersion(), 22);
    EXPECT_EQ(table.getCurrentIndicator(), 1);
    EXPECT_EQ(table.getSectionNumber(), 3);
    EXPECT_EQ(table.getLastSectionNumber(), 7);
}

TEST(TISDBTVersionedTable, VersionHasFiveBits) {
    TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT);
    ASSERT_TRUE(::parseHeader(table, hex("42 B009 0000 FE FF FF 00000000")).good);
    EXPECT_EQ(table.getVersion(), 31);
    EXPECT_EQ(table.getCurrentIndicator(), 0);
    EXPECT_EQ(table.getSectionNumber(), 255);
    EXPECT_EQ(table.getLastSectionNumber(), 255);
    ASSERT_TRUE(::parseHeader(table, hex("42 B009 0000 C1 00 00 00000000")).good);
    EXPECT_EQ(table.getVersion(), 0);
    EXPECT_EQ(table.getCurrentIndicator(), 1);
}

TEST(TISDBTVersionedTable, SectionLengthCountsTheBytesFromTheHeaderToTheCrc) {
    EXPECT_EQ(parseHeader(longSection(0x42, {}, {})).sectionLength, 0);
    EXPECT_EQ(parseHeader(longSection(0x42, {}, hex("AABBCC"))).sectionLength, 3);
    EXPECT_EQ(parseHeader(longSection(0x42, {}, fill(4086, 0))).sectionLength, 4086); // section_length 0xFFF
}

TEST(TISDBTVersionedTable, SectionShorterThanHeaderAndCrcWraps) {
    const ByteVector good = longSection(0x42, {}, {});
    EXPECT_EQ(parseHeader(withSectionLength(good, 8)).sectionLength, 0xFFFF);
    EXPECT_EQ(parseHeader(withSectionLength(good, 5)).sectionLength, 0xFFFC);
    EXPECT_EQ(parseHeader(withSectionLength(good, 4)).sectionLength, 0xFFFB);
    EXPECT_EQ(parseHeader(withSectionLength(good, 0)).sectionLength, 0xFFF7);
    EXPECT_TRUE(parseHeader(withSectionLength(good, 0)).good);
}

TEST(TISDBTVersionedTable, ShortHeaderSpeaksFirst) {
    Earlier other(TISDBTTable::NIT);
    TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT, 13);
    const Header tooShort = ::parseHeader(table, longSection(0x42, {}, {}), &other.table);
    EXPECT_FALSE(tooShort.good);
    EXPECT_EQ(tooShort.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(tooShort.lines,
              Lines{"ISDBTUtils: TISDBTTable::parse: Longer data length is required: 12 < 13. Aborting!"});
    EXPECT_EQ(parseHeader(longSection(0x46, {}, {}), &other.table).error, TISDBTTable::ERROR_INVALID_TABLE_ID);
    EXPECT_EQ(parseHeader(withSectionLength(longSection(0x42, {}, {}), 10), &other.table).error,
              TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG);
}

TEST(TISDBTVersionedTable, NullDataAreInvalid) {
    Earlier other(TISDBTTable::NIT);
    TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT);
    QUOR_U16 error = PRESET_ERROR;
    QUOR_U16 sectionLength = 0;
    const LogCapture log;
    EXPECT_FALSE(table.parseCommonHeader(nullptr, 12, 1, &error, &sectionLength, &other.table));
    EXPECT_EQ(error, TISDBTTable::ERROR_INVALID_DATA);
    EXPECT_EQ(log.lines(), Lines{"ISDBTUtils: TISDBTTable::parse: Invalid data. Aborting!"});
}

TEST(TISDBTVersionedTable, PreviousOfAnotherTypeIsRefusedSilently) {
    Earlier nit(TISDBTTable::NIT, version(3));
    const Header header = parseHeader(longSection(0x42, version(4), {}), &nit.table);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INCOMPATIBLE_TABLE_TYPE);
    EXPECT_EQ(header.lines, Lines{});
}

TEST(TISDBTVersionedTable, PreviousWithoutAVersionIsOfAnotherType) {
    TISDBTTable tot = emptyTable<TISDBTTable>(TISDBTTable::TOT);
    EXPECT_EQ(parseHeader(longSection(0x42, version(4), {}), &tot).error, TISDBTTable::ERROR_INCOMPATIBLE_TABLE_TYPE);
}

TEST(TISDBTVersionedTable, TypeOfPreviousSpeaksBeforeSectionNumberAndVersion) {
    Earlier nit(TISDBTTable::NIT, version(4));
    const Header header = parseHeader(longSection(0x42, version(4, 1), {}), &nit.table);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INCOMPATIBLE_TABLE_TYPE);
    EXPECT_EQ(header.lines, Lines{});
}

TEST(TISDBTVersionedTable, OtherSectionThanTheFirstIsRefusedAfterAPreviousOne) {
    Earlier sdt(TISDBTTable::SDT, version(3));
    const Header header = parseHeader(longSection(0x42, version(4, 1), {}), &sdt.table);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, PRESET_ERROR);
    EXPECT_EQ(header.lines, MULTI_SECTION);
}

TEST(TISDBTVersionedTable, SectionNumberSpeaksBeforeTheVersion) {
    Earlier sdt(TISDBTTable::SDT, version(4));
    const Header header = parseHeader(longSection(0x42, version(4, 255), {}), &sdt.table);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, PRESET_ERROR);
    EXPECT_EQ(header.lines, MULTI_SECTION);
}

TEST(TISDBTVersionedTable, SameVersionIsRefusedSilently) {
    Earlier sdt(TISDBTTable::SDT, version(4));
    const Header header = parseHeader(longSection(0x42, version(4), hex("AA")), &sdt.table);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_TABLE_NOT_UPDATED);
    EXPECT_EQ(header.lines, Lines{});
}

TEST(TISDBTVersionedTable, AnyOtherVersionIsAccepted) {
    Earlier sdt(TISDBTTable::SDT, version(4));
    for (const unsigned other : {0U, 3U, 5U, 31U}) {
        const Header header = parseHeader(longSection(0x42, version(other), {}), &sdt.table);
        EXPECT_TRUE(header.good);
        EXPECT_EQ(header.error, PRESET_ERROR);
        EXPECT_EQ(header.lines, Lines{});
    }
}

TEST(TISDBTVersionedTable, ExtensionAndSectionOfPreviousTakeNoPart) {
    Earlier sdt(TISDBTTable::SDT, {0x1111, 4, true, 2, 2});
    EXPECT_EQ(parseHeader(longSection(0x42, {0x2222, 4, true, 0, 0}, {}), &sdt.table).error,
              TISDBTTable::ERROR_TABLE_NOT_UPDATED);
    EXPECT_TRUE(parseHeader(longSection(0x42, {0x2222, 5, true, 0, 0}, {}), &sdt.table).good);
}

TEST(TISDBTVersionedTable, CurrentIndicatorTakesNoPart) {
    Earlier sdt(TISDBTTable::SDT, {0x0001, 4, true, 0, 0});
    EXPECT_TRUE(parseHeader(longSection(0x42, {0x0001, 5, false, 0, 0}, {})).good);
    EXPECT_TRUE(parseHeader(longSection(0x42, {0x0001, 5, false, 0, 0}, {}), &sdt.table).good);
    EXPECT_EQ(parseHeader(longSection(0x42, {0x0001, 4, false, 0, 0}, {}), &sdt.table).error,
              TISDBTTable::ERROR_TABLE_NOT_UPDATED);
}

TEST(TISDBTVersionedTable, EverySectionIsAcceptedWithoutAPreviousOne) {
    for (const QUOR_U8 number : {QUOR_U8{0}, QUOR_U8{1}, QUOR_U8{255}}) {
        const Header header = parseHeader(longSection(0x42, version(4, number), {}));
        EXPECT_TRUE(header.good);
        EXPECT_EQ(header.lines, Lines{});
    }
}

TEST(TISDBTVersionedTable, FieldsAreReadBeforeTheVersionIsCompared) {
    Earlier sdt(TISDBTTable::SDT, version(4));
    TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT);
    const Header header = ::parseHeader(table, longSection(0x42, {0x1234, 4, true, 0, 9}, hex("AA")), &sdt.table);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(table.getGenericDataField(), 0x1234);
    EXPECT_EQ(table.getLastSectionNumber(), 9);
    EXPECT_EQ(header.sectionLength, 1);
}

TEST(TISDBTVersionedTable, FieldsAreNotReadWhenTheTypeIsIncompatible) {
    Earlier nit(TISDBTTable::NIT);
    TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT);
    ::parseHeader(table, longSection(0x42, {0x1234, 4, true, 0, 9}, {}), &nit.table);
    EXPECT_EQ(table.getGenericDataField(), 0);
    EXPECT_EQ(table.getLastSectionNumber(), 0);
}

TEST(TISDBTVersionedTable, ErrorCodeMayBeNull) {
    Earlier nit(TISDBTTable::NIT);
    Earlier sdt(TISDBTTable::SDT, version(4));
    TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT);
    const HeapBytes same(longSection(0x42, version(4), {}));
    const HeapBytes second(longSection(0x42, version(5, 1), {}));
    const HeapBytes next(longSection(0x42, version(5), {}));
    QUOR_U16 sectionLength = 0;
    const LogCapture log;
    EXPECT_FALSE(table.parseCommonHeader(next.data(), next.size(), 1, nullptr, &sectionLength, &nit.table));
    EXPECT_FALSE(table.parseCommonHeader(same.data(), same.size(), 1, nullptr, &sectionLength, &sdt.table));
    EXPECT_FALSE(table.parseCommonHeader(second.data(), second.size(), 1, nullptr, &sectionLength, &sdt.table));
    EXPECT_TRUE(table.parseCommonHeader(next.data(), next.size(), 1, nullptr, &sectionLength, &sdt.table));
    EXPECT_EQ(log.lines(), MULTI_SECTION);
}

TEST(TISDBTVersionedTable, LogsAtLevelFourUnderTheTagOfTheParsers) {
    Earlier sdt(TISDBTTable::SDT, version(4));
    TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT);
    const HeapBytes second(longSection(0x42, version(5, 1), {}));
    QUOR_U16 sectionLength = 0;
    const LogCapture log;
    table.parseCommonHeader(second.data(), second.size(), 1, nullptr, &sectionLength, &sdt.table);
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].level, 4);
    EXPECT_EQ(log.records()[0].tag, "ISDBTUtils");
}

TEST(TISDBTVersionedTable, LongHeaderBeyondTheDataIsRefused) {
    // Every check of the short header passes, and the long one would be read past the end.
    for (unsigned size = 3; size < 8; ++size) {
        const Header header = parseHeader(cutOff(size));
        EXPECT_FALSE(header.good);
        EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTVersionedTable::parse: Longer data length is required: " +
                                      std::to_string(size) + " < 8. Aborting!"});
    }
    EXPECT_TRUE(parseHeader(cutOff(8)).good);
}

TEST(TISDBTVersionedTable, LongHeaderMayReachBeyondTheSectionInsideTheData) {
    TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT);
    const Header header = ::parseHeader(table, hex("42 7000 1234 C3 00 01"));
    EXPECT_TRUE(header.good);
    EXPECT_EQ(table.getGenericDataField(), 0x1234);
    EXPECT_EQ(table.getVersion(), 1);
    EXPECT_EQ(table.getLastSectionNumber(), 1);
}

TEST(TISDBTVersionedTable, TypeOfPreviousSpeaksBeforeALongHeaderBeyondTheData) {
    Earlier nit(TISDBTTable::NIT);
    const Header header = parseHeader(hex("42 7000"), &nit.table);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INCOMPATIBLE_TABLE_TYPE);
    EXPECT_EQ(header.lines, Lines{});
}

TEST(TISDBTVersionedTable, OverridesTheHeaderAndNothingElse) {
    EXPECT_EQ(slotOf(&TISDBTVersionedTable::parseCommonHeader), slotOf(&TISDBTTable::parseCommonHeader));
    const TISDBTVersionedTable table = emptyTable<TISDBTVersionedTable>(TISDBTTable::SDT);
    const TISDBTTable& base = table;
    EXPECT_EQ(base.getDescriptor(0x48), nullptr);
    EXPECT_EQ(taken(base.getDescriptorTags()), std::vector<QUOR_U8>{});
}

TEST(TISDBTVersionedTable, IsDestroyedThroughTheBases) {
    int deleted = 0;
    QUOR_U8 nothing = 0;
    std::unique_ptr<TISDBTTable> table(new Counted<TISDBTVersionedTable>(deleted, TISDBTTable::SDT, QUOR_U32{3},
                                                                         QUOR_U16{0x42}, &nothing, QUOR_U32{1}));
    table.reset();
    EXPECT_EQ(deleted, 1);
    EXPECT_FALSE(std::is_copy_constructible<TISDBTVersionedTable>::value);
}

TEST(TISDBTVersionedTable, HasTheSignaturesThatReceiversCall) {
    using Table = TISDBTVersionedTable;
    testing::StaticAssertTypeEq<decltype(&Table::getGenericDataField), QUOR_U16 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getVersion), QUOR_U8 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getCurrentIndicator), QUOR_BOOL (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getSectionNumber), QUOR_U8 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getLastSectionNumber), QUOR_U8 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::parseCommonHeader),
                                bool (Table::*)(QUOR_U8*, QUOR_U32, int, QUOR_U16*, QUOR_U16*, TISDBTTable*)>();
    const bool isTable = std::is_base_of<TISDBTTable, TISDBTVersionedTable>::value;
    EXPECT_TRUE(isTable);
}

#pragma once

#include "TISDBTVersionedTable.h"
#include "support/Header.h"
#include "support/Outcome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// A section with the long header as it goes out, whatever its section_length says and whatever stands at its end.
inline ByteVector rawSection(QUOR_U8 tableId, unsigned sectionLength, const ByteVector& afterHeader) {
    return join({{tableId}, u16(sectionLength, 0xB000), hex("0001 C1 00 00"), afterHeader});
}

/// The bytes without their last @p count.
inline ByteVector withoutLast(const ByteVector& bytes, std::size_t count) {
    return ByteVector(bytes.begin(), bytes.end() - static_cast<std::ptrdiff_t>(count));
}

/// A byte as a log line shows it.
inline std::string numberAt(const ByteVector& bytes, std::size_t place) {
    return std::to_string(unsigned{bytes.at(place)});
}

/// A line of @p place about a length, with whatever numbers.
inline testing::Matcher<std::string> lengthLine(const std::string& place) {
    return testing::MatchesRegex("ISDBTUtils: " + place +
                                 "::parse: Item length not valid: [0-9]+( > [0-9]+)?\\. Aborting!");
}

/// Any one line that gives a parse up.
inline testing::Matcher<std::string> abortingLine() {
    return testing::MatchesRegex("ISDBTUtils: T[A-Za-z]+::parse: .*Aborting!");
}

/// Parses a section that must be accepted, with these lines.
template <class T> Parsed<T> expectTable(const ByteVector& section, const Lines& lines = {}, T* previous = nullptr) {
    auto parsed = parseSection<T>(section, previous);
    if (parsed.object == nullptr) {
        throw std::runtime_error("rejected with code " + std::to_string(parsed.error) + ": " +
                                 testing::PrintToString(parsed.lines));
    }
    EXPECT_EQ(parsed.error, Quor::TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, lines);
    return parsed;
}

/// Parses a section that must not be accepted. @param lines what the lines must be, or a matcher for them
template <class T, class Matcher> void expectNoTable(const ByteVector& section, QUOR_U16 code, const Matcher& lines) {
    const auto parsed = parseSection<T>(section);
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, code);
    EXPECT_THAT(parsed.lines, lines);

    const HeapBytes bytes(section);
    const LogCapture log;
    EXPECT_EQ(T::parse(bytes.data(), bytes.size(), 0, 0, nullptr, nullptr), nullptr);
    EXPECT_EQ(log.lines(), parsed.lines);
    expectLevelAndTag(log);
}

template <class T> void expectNoTable(const ByteVector& section, QUOR_U16 code, const Lines& lines) {
    expectNoTable<T, Lines>(section, code, lines);
}

/// Parses an entry that must be accepted and takes @p length bytes; the same with the switch off and nowhere to write.
template <class T> Parsed<T> expectEntry(const ByteVector& wire, QUOR_U32 length, const Lines& lines = {}) {
    auto parsed = parseEntry<T>(wire);
    if (parsed.object == nullptr) {
        throw std::runtime_error("rejected with code " + std::to_string(parsed.error) + ": " +
                                 testing::PrintToString(parsed.lines));
    }
    EXPECT_EQ(parsed.error, Quor::TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, length);
    EXPECT_EQ(parsed.lines, lines);

    const HeapBytes bytes(wire);
    const LogCapture log;
    const std::unique_ptr<T> object(T::parse(bytes.data(), bytes.size(), 0, nullptr, nullptr));
    EXPECT_NE(object, nullptr);
    EXPECT_EQ(log.lines(), lines);
    expectLevelAndTag(log);
    return parsed;
}

/// Parses an entry that must not be accepted. @param lines what the lines must be, or a matcher for them
template <class T, class Matcher> void expectNoEntry(const ByteVector& wire, QUOR_U16 code, const Matcher& lines) {
    const auto parsed = parseEntry<T>(wire);
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, code);
    EXPECT_EQ(parsed.length, PRESET_LENGTH);
    EXPECT_THAT(parsed.lines, lines);

    const HeapBytes bytes(wire);
    const LogCapture log;
    EXPECT_EQ(T::parse(bytes.data(), bytes.size(), 0, nullptr, nullptr), nullptr);
    EXPECT_EQ(log.lines(), parsed.lines);
    expectLevelAndTag(log);
}

/// All that a table keeps of the caller's bytes.
inline ByteVector copyIn(const Quor::TISDBTTable& table) {
    return ByteVector(table.getData(), table.getData() + table.getDataLength());
}

template <class T> constexpr bool IS_VERSIONED = std::is_base_of<Quor::TISDBTVersionedTable, T>::value;

/// What the header check says to another table_id.
inline std::string otherTableId(unsigned got, unsigned expected) {
    char line[100];
    std::snprintf(line, sizeof line,
                  "ISDBTUtils: TISDBTTable::parse: Unexpected table ID. Got 0x%02X, instead of 0x%02X. Aborting!", got,
                  expected);
    return line;
}

/// What the header check refuses, in its order.
template <class T> void expectHeadersRefused(QUOR_U8 tableId, QUOR_U32 minimum, const ByteVector& good) {
    using Table = Quor::TISDBTTable;
    const std::string place = "ISDBTUtils: TISDBTTable::parse: ";

    for (const QUOR_U32 length : {0U, 24U}) {
        QUOR_U16 error = PRESET_ERROR;
        const LogCapture log;
        EXPECT_EQ(T::parse(nullptr, length, 1, 1, &error, nullptr), nullptr);
        EXPECT_EQ(T::parse(nullptr, length, 1, 1, nullptr, nullptr), nullptr);
        EXPECT_EQ(error, Table::ERROR_INVALID_DATA);
        EXPECT_EQ(log.lines(), Lines(2, place + "Invalid data. Aborting!"));
        expectLevelAndTag(log);
    }
    // Neither table_id nor section_length is right here, and neither is looked at.
    for (QUOR_U32 size = 0; size < minimum; ++size) {
        expectNoTable<T>(fill(size, static_cast<QUOR_U8>(~tableId)), Table::ERROR_INVALID_DATA_LENGTH,
                         {place + "Longer data length is required: " + std::to_string(size) + " < " +
                          std::to_string(minimum) + ". Aborting!"});
    }
    for (unsigned id = 0; id <= 0xFF; ++id) {
        if (id != tableId) {
            ByteVector other = withSectionLength(good, 0xFFF);
            other[0] = static_cast<QUOR_U8>(id);
            expectNoTable<T>(other, Table::ERROR_INVALID_TABLE_ID, {otherTableId(id, tableId)});
        }
    }
    expectNoTable<T>(withoutLast(good, 1), Table::ERROR_INVALID_SECTION_LEN_TOO_BIG,
                     {place + "Section length exceeds data length. Aborting!"});
    for (QUOR_U32 size = minimum; IS_VERSIONED<T> && size < 8; ++size) {
        const ByteVector cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size));
        for (unsigned sectionLength = 0; sectionLength <= size - 3; ++sectionLength) {
            expectNoTable<T>(withSectionLength(cut, sectionLength), Table::ERROR_INVALID_DATA_LENGTH,
                             {"ISDBTUtils: TISDBTVersionedTable::parse: Longer data length is required: " +
                              std::to_string(size) + " < 8. Aborting!"});
        }
    }
}

/// The checks of the section header, and what none of them looks at.
/// @param good  a section of the table
/// @param whole what holds of each table that is read from it
template <class T, class Whole>
void expectSectionChecks(QUOR_U8 tableId, QUOR_U32 minimum, const ByteVector& good, Whole whole) {
    EXPECT_CONSTANT(QUOR_U32, T::MINIMUM_DATA_LENGTH, minimum);
    expectHeadersRefused<T>(tableId, minimum, good);

    ByteVector unmarked = good;
    unmarked[1] &= 0x0FU; // section_syntax_indicator and the reserved bits
    if (IS_VERSIONED<T>) {
        unmarked[5] &= 0x3FU;
    }
    ByteVector damaged = good;
    damaged.back() ^= 0xFFU; // a CRC_32 that is not right
    for (const ByteVector& accepted : {good, join({good, fill(100, 0xFF)}), unmarked, damaged}) {
        const auto table = expectTable<T>(accepted);
        EXPECT_EQ(copyIn(*table.object), accepted);
        whole(*table.object);
    }
    const HeapBytes bytes(good);
    const std::unique_ptr<T> untold(T::parse(bytes.data(), bytes.size(), 1, 1, nullptr, nullptr));
    EXPECT_NE(untold, nullptr);
}

/// A section is read whole, whatever the caller says of descriptors and of the CRC_32, which is wrong here.
/// @param whole what holds of each table that is read from it
template <class T, class Whole> void expectSwitchesMakeNoDifference(ByteVector section, Whole whole) {
    section.back() ^= 0x01U;
    const HeapBytes bytes(section);
    for (const int third : {0, 1}) {
        for (const int fourth : {0, 1}) {
            QUOR_U16 error = PRESET_ERROR;
            const std::unique_ptr<T> table(T::parse(bytes.data(), bytes.size(), third, fourth, &error, nullptr));
            ASSERT_NE(table, nullptr);
            EXPECT_EQ(error, Quor::TISDBTTable::ERROR_OK);
            whole(*table);
        }
    }
}

/// A table and the one of the next version.
template <class T> struct Versions {
    Parsed<T> previous; ///< version 5
    Parsed<T> next;     ///< version 6
};

/// What a table does with the table of an earlier version. @param make a section from its long header
template <class T, class Make> Versions<T> expectVersionChecks(Make make) {
    using Table = Quor::TISDBTTable;
    const auto header = [](unsigned version, QUOR_U8 section, bool current = true) {
        return LongHeader{0x0001, version, current, section, 1};
    };
    auto previous = expectTable<T>(make(header(5, 0)));
    const ByteVector wire = copyIn(*previous.object);
    const auto expectNone = [&](const ByteVector& section, QUOR_U16 code, const Lines& lines) {
        const auto none = parseSection<T>(section, previous.object.get());
        EXPECT_EQ(none.object, nullptr);
        EXPECT_EQ(none.error, code);
        EXPECT_EQ(none.lines, lines);
        const HeapBytes bytes(section);
        EXPECT_EQ(T::parse(bytes.data(), bytes.size(), 1, 1, nullptr, previous.object.get()), nullptr);
    };

    expectNone(wire, Table::ERROR_TABLE_NOT_UPDATED, {});
    expectNone(make(header(5, 0, false)), Table::ERROR_TABLE_NOT_UPDATED, {});
    expectNone(make(LongHeader{0xFEDC, 5}), Table::ERROR_TABLE_NOT_UPDATED, {});
    // The section_number is looked at before the version, and the code stays what it was.
    for (const unsigned version : {5U, 6U}) {
        expectNone(make(header(version, 1)), PRESET_ERROR,
                   {"ISDBTUtils: TISDBTVersionedTable::parse: Multi-section parsing not supported. TODO!"});
    }
    // The short header is looked at first.
    expectNone(withoutLast(wire, 1), Table::ERROR_INVALID_SECTION_LEN_TOO_BIG,
               {"ISDBTUtils: TISDBTTable::parse: Section length exceeds data length. Aborting!"});
    expectNone(join({{static_cast<QUOR_U8>(~wire[0])}, ByteVector(wire.begin() + 1, wire.end())}),
               Table::ERROR_INVALID_TABLE_ID, {otherTableId(~wire[0] & 0xFFU, wire[0])});

    auto next = expectTable<T>(make(header(6, 0)), {}, previous.object.get());
    EXPECT_EQ(next->getVersion(), 6);
    EXPECT_EQ(previous->getVersion(), 5);
    EXPECT_EQ(copyIn(*previous.object), wire);

    const auto alone = expectTable<T>(make(LongHeader{0xFEDC, 31, false, 1, 2}));
    EXPECT_EQ(alone->getGenericDataField(), 0xFEDC);
    EXPECT_EQ(alone->getVersion(), 31);
    EXPECT_FALSE(alone->getCurrentIndicator());
    EXPECT_EQ(alone->getSectionNumber(), 1);
    EXPECT_EQ(alone->getLastSectionNumber(), 2);
    return {std::move(previous), std::move(next)};
}

/// A previous table of another type ends the header check without a line, once the short header has proved good.
template <class T> void expectTypeCheck(ByteVector good) {
    using Table = Quor::TISDBTTable;
    good.at(6) = 1; // a section_number that would end it with a line
    const HeapBytes bytes(good);
    T table(bytes.data(), bytes.size());
    auto versioned = emptyTable<Quor::TISDBTVersionedTable>(table.getType() == Table::SDT ? Table::NIT : Table::SDT);
    auto unversioned = emptyTable<Table>(Table::TOT);
    for (Table* const other : {static_cast<Table*>(&versioned), &unversioned}) {
        const Header header = parseHeader(table, good, other);
        EXPECT_FALSE(header.good);
        EXPECT_EQ(header.error, Table::ERROR_INCOMPATIBLE_TABLE_TYPE);
        EXPECT_EQ(header.lines, Lines{});
    }
}

/// A section that ends within its headers, with a section_length that says so, is refused wherever it ends.
/// @param fixed the bytes before the first loop
template <class T> void expectNoTableWithin(QUOR_U8 tableId, QUOR_U32 minimum, QUOR_U32 fixed) {
    for (QUOR_U32 size = minimum; size < fixed; ++size) {
        SCOPED_TRACE(size);
        ByteVector section = rawSection(tableId, size - 3, fill(fixed, 0x00));
        section.resize(size);
        expectNoTable<T>(section, Quor::TISDBTTable::ERROR_INVALID_DATA_LENGTH, testing::ElementsAre(abortingLine()));
    }
}

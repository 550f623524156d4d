#pragma once

#include "TISDBTVersionedTable.h"
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
template <class T> Parsed<T> expectTable(const ByteVector& section, const Lines& lines = {}) {
    auto parsed = parseSection<T>(section);
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

/// The checks of the section header, in their order. @param good a section of the table
template <class T> void expectSectionChecks(QUOR_U8 tableId, QUOR_U32 minimum, const ByteVector& good) {
    using Table = Quor::TISDBTTable;
    const std::string place = "ISDBTUtils: TISDBTTable::parse: ";
    const auto wrongId = static_cast<QUOR_U8>(tableId ^ 0x80U);
    char ids[64];
    std::snprintf(ids, sizeof ids, "Got 0x%02X, instead of 0x%02X", unsigned{wrongId}, unsigned{tableId});

    EXPECT_CONSTANT(QUOR_U32, T::MINIMUM_DATA_LENGTH, minimum);
    for (const QUOR_U32 length : {0U, 20U}) {
        QUOR_U16 error = PRESET_ERROR;
        const LogCapture log;
        EXPECT_EQ(T::parse(nullptr, length, 1, 1, &error, nullptr), nullptr);
        EXPECT_EQ(error, Table::ERROR_INVALID_DATA);
        EXPECT_EQ(log.lines(), Lines{place + "Invalid data. Aborting!"});
    }
    // Neither table_id nor section_length is right here, and neither is looked at.
    expectNoTable<T>(join({{wrongId, 0xFF}, fill(minimum - 3, 0xFF)}), Table::ERROR_INVALID_DATA_LENGTH,
                     Lines{place + "Longer data length is required: " + std::to_string(minimum - 1) + " < " +
                           std::to_string(minimum) + ". Aborting!"});
    expectNoTable<T>(join({{wrongId, 0xFF}, fill(minimum - 2, 0xFF)}), Table::ERROR_INVALID_TABLE_ID,
                     Lines{place + "Unexpected table ID. " + ids + ". Aborting!"});
    expectNoTable<T>(withoutLast(good, 1), Table::ERROR_INVALID_SECTION_LEN_TOO_BIG,
                     Lines{place + "Section length exceeds data length. Aborting!"});

    expectTable<T>(good);
    expectTable<T>(join({good, fill(100, 0xFF)}));
    ByteVector unmarked = good;
    unmarked[1] &= 0x0FU; // section_syntax_indicator and the reserved bits
    expectTable<T>(unmarked);

    ByteVector damaged = good;
    damaged.back() ^= 0xFFU; // a CRC_32 that is not right
    for (const int third : {0, 1}) {
        for (const int fourth : {0, 1}) {
            QUOR_U16 error = PRESET_ERROR;
            const HeapBytes bytes(damaged);
            const std::unique_ptr<T> table(T::parse(bytes.data(), bytes.size(), third, fourth, &error, nullptr));
            EXPECT_NE(table, nullptr);
            EXPECT_EQ(error, Table::ERROR_OK);
        }
    }
}

/// What a table does with the table of an earlier version. @param make a section from its long header
template <class T, class Make> void expectVersionChecks(Make make) {
    using Table = Quor::TISDBTTable;
    const Lines notSupported{"ISDBTUtils: TISDBTVersionedTable::parse: Multi-section parsing not supported. TODO!"};
    const auto header = [](unsigned version, QUOR_U8 section, bool current = true) {
        return LongHeader{0x0001, version, current, section, 1};
    };
    const auto previous = expectTable<T>(make(header(5, 0)));

    const auto repeated = parseSection<T>(make(header(5, 0)), previous.object.get());
    EXPECT_EQ(repeated.object, nullptr);
    EXPECT_EQ(repeated.error, Table::ERROR_TABLE_NOT_UPDATED);
    EXPECT_EQ(repeated.lines, Lines{});

    const auto next = parseSection<T>(make(header(6, 0)), previous.object.get());
    ASSERT_NE(next.object, nullptr);
    EXPECT_EQ(next.error, Table::ERROR_OK);
    EXPECT_EQ(next->getVersion(), 6);

    const auto notCurrent = parseSection<T>(make(header(5, 0, false)), previous.object.get());
    EXPECT_EQ(notCurrent.object, nullptr);
    EXPECT_EQ(notCurrent.error, Table::ERROR_TABLE_NOT_UPDATED);

    // The section_number is looked at before the version, and the code stays what it was.
    for (const unsigned version : {5U, 6U}) {
        const auto second = parseSection<T>(make(header(version, 1)), previous.object.get());
        EXPECT_EQ(second.object, nullptr);
        EXPECT_EQ(second.error, PRESET_ERROR);
        EXPECT_EQ(second.lines, notSupported);
    }

    const auto alone = expectTable<T>(make(LongHeader{0xFEDC, 31, false, 1, 2}));
    EXPECT_EQ(alone->getGenericDataField(), 0xFEDC);
    EXPECT_EQ(alone->getVersion(), 31);
    EXPECT_FALSE(alone->getCurrentIndicator());
    EXPECT_EQ(alone->getSectionNumber(), 1);
    EXPECT_EQ(alone->getLastSectionNumber(), 2);
}

/// A previous table of another type ends the header check without a line, once the short header has proved good.
template <class T, class Other> void expectTypeCheck(const ByteVector& good, Other& other) {
    const HeapBytes bytes(good);
    T table(bytes.data(), bytes.size());
    Quor::TISDBTTable& base = table;
    QUOR_U16 error = PRESET_ERROR;
    QUOR_U16 remaining = 0;
    const LogCapture log;
    EXPECT_FALSE(base.parseCommonHeader(bytes.data(), bytes.size(), 0, &error, &remaining, &other));
    EXPECT_EQ(error, Quor::TISDBTTable::ERROR_INCOMPATIBLE_TABLE_TYPE);
    EXPECT_EQ(log.lines(), Lines{});
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

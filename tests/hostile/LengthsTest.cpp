// Sections shorter than their header, cut anywhere, and with lengths that are not right.

#include "TISDBTVersionedTable.h"
#include "hostile/Tables.h"
#include "support/Survival.h"

#include <gmock/gmock.h>

using Quor::TISDBTTable;
using Quor::TISDBTVersionedTable;

namespace {

class Lengths : public testing::TestWithParam<TableClass> {
protected:
    const QUOR_U32 minimum = GetParam().minimum;
    const ByteVector full = GetParam().full;

    static Parsed<TISDBTTable> parse(const ByteVector& wire) { return GetParam().parse(wire, nullptr); }

    /// The full section with other twelve bits of its 16 at @p at.
    ByteVector withLength(std::size_t at, unsigned length) const {
        ByteVector wire = full;
        wire[at] = static_cast<QUOR_U8>((wire[at] & 0xF0U) | (length >> 8 & 0x0FU));
        wire[at + 1] = static_cast<QUOR_U8>(length);
        return wire;
    }
};

constexpr std::size_t SECTION_LENGTH_AT = 1;
constexpr unsigned BEFORE_SECTION = 3;

} // namespace

INSTANTIATE_TEST_SUITE_P(Each, Lengths, testing::ValuesIn(tableClasses()), caseName<TableClass>);

TEST_P(Lengths, TheFullSectionIsGood) {
    const auto parsed = parse(full);
    ASSERT_NE(parsed.object, nullptr) << testing::PrintToString(parsed.lines);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
}

TEST_P(Lengths, ASectionShorterThanItsMinimum) {
    for (QUOR_U32 size = 0; size < minimum; ++size) {
        SCOPED_TRACE(size);
        const auto parsed = parse(cut(full, size));
        expectRefused(parsed, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TISDBTTable::parse: Longer data length is required: " +
                                      std::to_string(size) + " < " + std::to_string(minimum) + ". Aborting!"});
    }
}

TEST_P(Lengths, ASectionThatEndsWithinItsLongHeader) {
    for (QUOR_U32 size = minimum; size < GetParam().header; ++size) {
        SCOPED_TRACE(size);
        const auto parsed = parse(repairedSection(cut(full, size)));
        expectRefused(parsed, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TISDBTVersionedTable::parse: Longer data length is required: " +
                                      std::to_string(size) + " < 8. Aborting!"});
    }
}

TEST_P(Lengths, TruncationWithTheFormerSectionLength) {
    for (std::size_t size = minimum; size < full.size(); ++size) {
        SCOPED_TRACE(size);
        const auto parsed = parse(cut(full, size));
        expectRefused(parsed, TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG);
        EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TISDBTTable::parse: Section length exceeds data length. Aborting!"});
    }
}

TEST_P(Lengths, TruncationWithAFittingSectionLength) {
    for (std::size_t size = minimum; size < full.size(); ++size) {
        SCOPED_TRACE(size);
        expectTakenOrRefused(parse(repairedSection(cut(full, size))));
    }
}

TEST_P(Lengths, SectionLengthsThatWrapWhatIsSubtractedFromThem) {
    std::vector<unsigned> lengths{0xFFE, 0xFFF, static_cast<unsigned>(full.size()) - BEFORE_SECTION + 1};
    for (unsigned length = 0; length <= 20; ++length) {
        lengths.push_back(length);
    }
    for (const unsigned length : lengths) {
        SCOPED_TRACE(length);
        for (const ByteVector& more : {ByteVector(), fill(300, 0x00), fill(300, 0xFF), fill(5000, 0xFF)}) {
            const ByteVector wire = join({withLength(SECTION_LENGTH_AT, length), more});
            const auto parsed = parse(wire);
            if (length + BEFORE_SECTION > wire.size()) {
                expectRefused(parsed, TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG);
            } else {
                expectTakenOrRefused(parsed);
            }
        }
        if (length + BEFORE_SECTION < full.size()) {
            expectTakenOrRefused(parse(withLength(SECTION_LENGTH_AT, length)));
        }
    }
}

TEST_P(Lengths, AnySixteenBitsAsALength) {
    // Each loop's length is among them; short, one less, one more and the longest, with and without bytes to run into.
    for (std::size_t at = SECTION_LENGTH_AT + 2; at + 1 < full.size(); ++at) {
        const unsigned now = (full[at] & 0x0FU) << 8 | full[at + 1];
        for (const unsigned length : {0U, 1U, now - 1, now + 1, 0xFFFU}) {
            SCOPED_TRACE("at " + std::to_string(at) + ": " + std::to_string(length));
            const ByteVector wire = withLength(at, length);
            expectTakenOrRefused(parse(wire));
            expectTakenOrRefused(parse(join({wire, fill(300, 0xFF)})));
        }
    }
}

TEST_P(Lengths, DataBehindTheSectionIsNotItsOwn) {
    const auto alone = parse(full);
    for (const QUOR_U8 more : hex("00 FF")) {
        const auto parsed = parse(join({full, fill(300, more)}));
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(taken(parsed->getDescriptorTags()), taken(alone->getDescriptorTags()));
        EXPECT_EQ(parsed.lines, alone.lines);
    }
}

TEST_P(Lengths, ASectionNumberAboveTheLast) {
    if (GetParam().header == 3) { // has no such number: the byte is part of the time
        ByteVector wire = full;
        wire[6] = 0xFF;
        expectTakenOrRefused(parse(wire));
        EXPECT_EQ(dynamic_cast<TISDBTVersionedTable*>(parse(wire).object.get()), nullptr);
        return;
    }
    ByteVector wire = full;
    wire[5] ^= 0x02; // another version_number
    wire[6] = 7;
    wire[7] = 3;
    const auto parsed = parse(wire);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    const auto* const table = dynamic_cast<const TISDBTVersionedTable*>(parsed.object.get());
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->getSectionNumber(), 7);
    EXPECT_EQ(table->getLastSectionNumber(), 3);

    const auto first = parse(full);
    const auto next = GetParam().parse(wire, first.object.get());
    expectRefused(next, PRESET_ERROR);
    EXPECT_EQ(next.lines, Lines{"ISDBTUtils: TISDBTVersionedTable::parse: Multi-section parsing not supported. TODO!"});
}

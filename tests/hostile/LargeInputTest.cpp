// 64 KiB at once: far more than a section, which a receiver should not give but can.

#include "hostile/Tables.h"
#include "support/Survival.h"

#include <gmock/gmock.h>

using Quor::TISDBTTable;

namespace {

constexpr std::size_t SIZE = 0x10000;

class LargeInput : public testing::TestWithParam<TableClass> {};
class LargeLoops : public testing::TestWithParam<DescriptorLoop> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(Each, LargeInput, testing::ValuesIn(tableClasses()), caseName<TableClass>);
INSTANTIATE_TEST_SUITE_P(Each, LargeLoops, testing::ValuesIn(descriptorLoops()), caseName<DescriptorLoop>);

TEST_P(LargeInput, OfOneByteValue) {
    for (const QUOR_U8 value : hex("01 7F 80 FF")) { // no table_id
        expectRefused(GetParam().parse(fill(SIZE, value), nullptr), TISDBTTable::ERROR_INVALID_TABLE_ID);
    }
    for (const QUOR_U8 value : hex("00 01 7F 80 FF")) {
        ByteVector wire = fill(SIZE, value);
        wire[0] = GetParam().full[0];
        expectTakenOrRefused(GetParam().parse(wire, nullptr));
    }
}

TEST_P(LargeInput, OfSectionAfterSection) {
    const ByteVector& full = GetParam().full;
    const auto alone = GetParam().parse(full, nullptr);
    ByteVector wire;
    while (wire.size() < SIZE) {
        wire.insert(wire.end(), full.begin(), full.end());
    }
    wire.resize(SIZE);
    const auto parsed = GetParam().parse(wire, nullptr);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, alone.lines);
    EXPECT_EQ(taken(parsed->getDescriptorTags()), taken(alone->getDescriptorTags()));
}

TEST_P(LargeLoops, OfOneDescriptorAgainAndAgain) {
    const ByteVector known = GetParam().known;
    for (const ByteVector& tags : {known, hex("7E 42 FF")}) {
        for (const QUOR_U8 tag : tags) {
            for (const ByteVector& body : {fill(255, 0x00), fill(255, 0xFF), fill(16, 0x01), ByteVector()}) {
                SCOPED_TRACE(std::to_string(tag) + ", " + std::to_string(body.size()) + " bytes");
                const ByteVector one = descriptor(tag, body);
                ByteVector all;
                while (all.size() + one.size() <= SIZE) {
                    all.insert(all.end(), one.begin(), one.end());
                }
                // Every length as long as its twelve bits let it be.
                all.resize(SIZE - 1, 0x00);
                const ByteVector wire = withSectionLength(GetParam().section(all), 0xFFF);
                expectTakenOrRefused(GetParam().parse(wire, nullptr));
            }
        }
    }
}

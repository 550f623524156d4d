#include "OutOfMemory.h"

#include "DSMCCSection/TDSMCCSectionTable.h"
#include "pat/TPATTable.h"
#include "sdtt/TSDTTTable.h"
#include "support/Bytes.h"
#include "tot/TTOTTable.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

using Quor::TDSMCCSectionTable;
using Quor::TPATTable;
using Quor::TSDTTTable;
using Quor::TTOTTable;

namespace {

/// Parses a section with the switches on, once with room for no object, then for one, two and so on until all fit.
/// @return how many allocations the parse needs.
template <class Table> int expectNothingIsLeftBehind(const ByteVector& wire) {
    const HeapBytes bytes(wire);
    for (int allowed = 0; allowed < 10000; ++allowed) {
        const int before = allocationsAlive();
        std::unique_ptr<Table> table;
        try {
            const OutOfMemory limit(allowed);
            table.reset(Table::parse(bytes.data(), bytes.size(), 1, 1, nullptr, nullptr));
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(allocationsAlive(), before) << "with room for " << allowed;
            continue;
        }
        EXPECT_NE(table, nullptr);
        table.reset();
        EXPECT_EQ(allocationsAlive(), before);
        return allowed;
    }
    ADD_FAILURE() << "never enough";
    return 0;
}

const ByteVector BRAZIL = hex("58 0D 425241 0C 0300 E35A010000 0200");
const ByteVector TWO_COUNTRIES = hex("58 1A 415247 0C 0300 E35A010000 0200  425241 0C 0300 E35A010000 0200");

} // namespace

TEST(OutOfMemory, IsThrownBehindTheLimitOnly) {
    std::unique_ptr<int> first;
    std::unique_ptr<int> second;
    bool thrown = false;
    {
        const OutOfMemory limit(1);
        try {
            first.reset(new int(1));
            second.reset(new int(2));
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
    }
    EXPECT_TRUE(thrown);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(second, nullptr);
}

TEST(OutOfMemory, PatLeavesNothingBehind) {
    // The table, its copy, and for each of three services an entry and a place in the map, one of them twice.
    const int needed =
        expectNothingIsLeftBehind<TPATTable>(longSection(0x00, {}, hex("0000 E010  0001 E100  0002 E101  0002 E102")));
    EXPECT_GE(needed, 6);
}

TEST(OutOfMemory, TotLeavesNothingBehind) {
    const int needed = expectNothingIsLeftBehind<TTOTTable>(
        shortSection(0x73, join({hex("C079 124500 F02B"), BRAZIL, TWO_COUNTRIES})));
    EXPECT_GE(needed, 8);
}

TEST(OutOfMemory, SdttLeavesNothingBehind) {
    const ByteVector download = descriptor(0xC9, hex("38 00000000 00000000 00000000 000000 00"
                                                     "0011 0001  01 0D 01 000000 0000 0000 01  04 02 AABB"
                                                     "0001  0100 00000064 02 AABB"
                                                     "02 AABB  706F72 14 4120746578742074686174206973206C6F6E672E"));
    const ByteVector schedule = hex("C079 123456 013000");
    const auto contentLength = static_cast<unsigned>(schedule.size() + 2 * download.size());
    const int needed = expectNothingIsLeftBehind<TSDTTTable>(
        longSection(0xC3, {},
                    join({hex("5678 9ABC DEF0 01  12 00 20 81"), u16(contentLength << 4), hex("0080"), schedule,
                          download, download})));
    // The table, its copy, a content and its place, a slot and its place, and twice all that a descriptor holds.
    EXPECT_GE(needed, 6 + 2 * 12);
}

TEST(OutOfMemory, DsmccSectionLeavesNothingBehind) {
    const ByteVector event = hex("04 0C  1234 000000 01 89ABCDEF AABB");
    const int needed =
        expectNothingIsLeftBehind<TDSMCCSectionTable>(longSection(0x3D, {}, join({event, hex("03 02 02FF"), event})));
    // The table, its copy, the mode, and two events with their private data.
    EXPECT_GE(needed, 7);
}

TEST(OutOfMemory, ListsForTheCallerLeaveNothingBehind) {
    const HeapBytes bytes(longSection(0x00, {}, hex("0001 E100  0002 E101")));
    const std::unique_ptr<TPATTable> table(TPATTable::parse(bytes.data(), bytes.size(), 1, 1, nullptr, nullptr));
    ASSERT_NE(table, nullptr);
    const int before = allocationsAlive();
    for (int allowed = 0; allowed < 3; ++allowed) { // the list and its two elements
        const OutOfMemory limit(allowed);
        EXPECT_THROW(delete table->getProgramNumbers(), std::bad_alloc);
        EXPECT_EQ(allocationsAlive(), before);
    }
}

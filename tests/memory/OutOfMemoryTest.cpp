#include "OutOfMemory.h"

#include "pat/TPATTable.h"
#include "support/Bytes.h"
#include "tot/TTOTTable.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

using Quor::TPATTable;
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

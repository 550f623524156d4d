#include "OutOfMemory.h"

#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "support/FullSections.h"
#include "tot/TTOTTable.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>

using Quor::TAITTable;
using Quor::TDSMCCSectionTable;
using Quor::TNITTable;
using Quor::TPATTable;
using Quor::TPMTTable;
using Quor::TSDTTable;
using Quor::TSDTTTable;
using Quor::TTOTTable;

namespace {

/// Whether a table and what its parse builds lie in blocks, or else each object by itself.
constexpr bool BLOCKS = QUOR_ISDBT_BLOCKS;

/// A logger that writes lines asks the heap, too; what counts here is what the library asks for.
const int QUIET = setenv("QUOR_LOG_LEVEL", "0", 1);

/// Parses a section with the switches on, once with room for no object, then for one, two and so on until all fit.
/// @return how many allocations the parse needs.
template <class Table> int expectNothingIsLeftBehind(const ByteVector& wire) {
    EXPECT_EQ(QUIET, 0);
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

/// As many requests as there are objects at least, or as few as there may be blocks.
void expectRequests(int needed, int objects, int blocks) {
    if (BLOCKS) {
        EXPECT_LE(needed, blocks);
    } else {
        EXPECT_GE(needed, objects);
    }
}

/// Too long to lie in the string itself.
const ByteVector NAME = text("A name that is long.");

/// Descriptors that more than one table carries, with everything that they can hold.
const ByteVector LINKAGE = hex("4A 09 02E1 7ED4 5C20 06 1122");
const ByteVector EMERGENCY = hex("FC 0E 5C20 80 02 1230 5C38 40 04 4560 7890");
const ByteVector SYSTEM_MANAGEMENT = hex("FE 04 0301 1122");
const ByteVector COUNTRIES = hex("49 07 80 425241 415247");
const ByteVector COPY_CONTROL = hex("C1 06 70 7F 03 25 40 C0");
const ByteVector MOSAIC =
    hex("51 1E 12  04 01 01 05 01 0001  08 02 00 02 0001 0002 0003  0C 03 00 04 0001 0002 0003 0004");
const ByteVector CA_IDENTIFIERS = hex("53 05 0005 8001 02");

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
    expectRequests(needed, 6, 2);
}

TEST(OutOfMemory, TotLeavesNothingBehind) {
    const int needed = expectNothingIsLeftBehind<TTOTTable>(
        shortSection(0x73, join({hex("C079 124500 F02B"), BRAZIL, TWO_COUNTRIES})));
    expectRequests(needed, 8, 2);
}

TEST(OutOfMemory, PmtLeavesNothingBehind) {
    const ByteVector descriptors =
        join({CA_IDENTIFIERS, hex("0D 05 01E12345 AA"), COUNTRIES, LINKAGE,
              descriptor(0x50, join({hex("F1 B3 10 706F72"), NAME})), MOSAIC, hex("52 01 10"),
              hex("55 08 425241 05 415247 07"), hex("C0 03 01E111"), COPY_CONTROL, EMERGENCY, hex("FD 05 00A0 112233"),
              SYSTEM_MANAGEMENT, hex("C6 05 01 11223344  C8 01 47  DE 01 31  F7 05 01020304 05"),
              hex("F8 06 0005 E100 1122  28 04 64 00 28 3F  2A 0F 81 80 00000001 0000012C A0000BB8 1F"),
              hex("7C 05 2C 80 11 AABB  13 07 0000002A 01 0500")});
    const ByteVector stream = join({hex("1B E111"), loopOf(join({descriptors, descriptors}))});
    const int needed = expectNothingIsLeftBehind<TPMTTable>(
        longSection(0x02, {}, join({hex("E100"), loopOf(join({descriptors, descriptors})), stream, stream})));
    // The table, its copy, two streams and their places, and three loops with every kind twice.
    expectRequests(needed, 6 + 3 * 2 * 22, 3);
}

TEST(OutOfMemory, NitLeavesNothingBehind) {
    const ByteVector descriptors =
        join({descriptor(0x40, NAME), SYSTEM_MANAGEMENT, hex("41 06 2001 38C0 2002"), LINKAGE,
              hex("FA 06 8916 0F90 0E27"), EMERGENCY, hex("FB 04 5C38 5C20"),
              descriptor(0xCD, join({hex("07 52"), NAME, hex("AF 01 5C38 0F 02 5C20 5C21")}))});
    const ByteVector stream = join({hex("02E1 7ED4"), loopOf(join({descriptors, descriptors}))});
    const int needed = expectNothingIsLeftBehind<TNITTable>(
        longSection(0x40, {}, join({loopOf(join({descriptors, descriptors})), loopOf(join({stream, stream}))})));
    expectRequests(needed, 6 + 3 * 2 * 8, 3);
}

TEST(OutOfMemory, SdtLeavesNothingBehind) {
    const ByteVector descriptors =
        join({descriptor(0x48, join({hex("01 14"), NAME, hex("14"), NAME})), descriptor(0x47, NAME), COUNTRIES, LINKAGE,
              COPY_CONTROL, hex("CF 07 01 0123 0456 FEDC  DE 01 31"),
              hex("4B 0C 0001 0002 0003 0004 0005 0006  4C 02 5C20"), MOSAIC, CA_IDENTIFIERS});
    const ByteVector service = join({hex("5C20 FD"), loopOf(join({descriptors, descriptors}))});
    const int needed =
        expectNothingIsLeftBehind<TSDTTable>(longSection(0x42, {}, join({hex("7ED4 FF"), service, service})));
    expectRequests(needed, 6 + 2 * 2 * 11, 2);
}

TEST(OutOfMemory, AitLeavesNothingBehind) {
    const ByteVector common =
        join({hex("00 0A 05 0001 01 02 03 FF 05 01 02"), descriptor(0x01, join({hex("706F72 14"), NAME})),
              descriptor(0x0B, join({hex("14"), NAME, hex("0009")})), hex("05 0E 0000ABCD 0012 07 0000ABCD 0013 08"),
              hex("02 0B 0001 01 80 0001 0002 0003 0B  11 03 010203"),
              descriptor(0x0C, join({hex("01 14"), NAME, hex("05 14"), NAME, hex("06")})),
              hex("0D 09 01 0003 0004 0005 0006")});
    const ByteVector java = join({descriptor(0x03, join({hex("14"), NAME, hex("14"), NAME})),
                                  descriptor(0x04, join({hex("14"), NAME, hex("14"), NAME, NAME}))});
    const ByteVector ncl = join({descriptor(0x06, join({hex("14"), NAME, hex("14"), NAME})),
                                 descriptor(0x07, join({hex("14"), NAME, hex("14"), NAME, NAME}))});
    const ByteVector own = join({common, ncl, common, java});
    // One of the applications takes all that it has from the table, copied.
    const ByteVector applications = join(
        {hex("0000000A 0001 01"), loopOf(own), hex("0000000A 0002 01 F000"), hex("0000000A 0001 02"), loopOf(own)});
    const int needed = expectNothingIsLeftBehind<TAITTable>(
        longSection(0x74, {}, join({loopOf(join({common, java, common, ncl})), loopOf(applications)})));
    expectRequests(needed, 6 + 5 * 10, 3);
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
    expectRequests(needed, 6 + 2 * 12, 3);
}

TEST(OutOfMemory, DsmccSectionLeavesNothingBehind) {
    const ByteVector event = hex("04 0C  1234 000000 01 89ABCDEF AABB");
    const int needed =
        expectNothingIsLeftBehind<TDSMCCSectionTable>(longSection(0x3D, {}, join({event, hex("03 02 02FF"), event})));
    // The table, its copy, the mode, and two events with their private data.
    expectRequests(needed, 7, 2);
}

/// More than the table can expect of so many bytes, as the memory of a descriptor that the next one displaces stays.
TEST(OutOfMemory, ManyChainedBlocksLeaveNothingBehind) {
    ByteVector descriptors;
    while (descriptors.size() < 1000) {
        descriptors = join({descriptors, descriptor(0x55, {})});
    }
    const int needed =
        expectNothingIsLeftBehind<TPMTTable>(longSection(0x02, {}, join({hex("E100"), loopOf(descriptors)})));
    EXPECT_GT(needed, 10);
}

#if QUOR_ISDBT_BLOCKS
/// A receiver's heap is asked once or twice for a section that holds every entry, descriptor and item of its table, and
/// once more where the objects are largest.
TEST(HeapRequests, AreFewForAFullSection) {
    EXPECT_LE(expectNothingIsLeftBehind<TPATTable>(fullPat()), 1);
    EXPECT_LE(expectNothingIsLeftBehind<TPMTTable>(fullPmt()), 2);
    EXPECT_LE(expectNothingIsLeftBehind<TTOTTable>(fullTot()), 1);
    EXPECT_LE(expectNothingIsLeftBehind<TNITTable>(fullNit()), 2);
    EXPECT_LE(expectNothingIsLeftBehind<TSDTTable>(fullSdt()), 2);
    EXPECT_LE(expectNothingIsLeftBehind<TAITTable>(fullAit()), 3);
    EXPECT_LE(expectNothingIsLeftBehind<TSDTTTable>(fullSdtt()), 1);
    EXPECT_LE(expectNothingIsLeftBehind<TDSMCCSectionTable>(fullDsmccSection()), 1);
}
#endif

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

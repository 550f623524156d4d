#include "pat/TPATTable.h"

#include "support/Parse.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TPATTable;
using Quor::TProgramAssociation;

namespace {

ByteVector pat(const ByteVector& entries, const LongHeader& header = {}) {
    return longSection(0x00, header, entries);
}

} // namespace

TEST(TPATTable, ListsServicesAndNetworkPid) {
    const auto parsed = parseSection<TPATTable>(pat(hex("0000 E010  0001 E100  0002 E101"), {0x02E1, 12}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getTransportStreamID(), 0x02E1);
    EXPECT_EQ(parsed->getVersion(), 12);
    EXPECT_EQ(parsed->getNetworkPid(), 0x0010);
    EXPECT_EQ(parsed->size(), 2U);
    EXPECT_EQ(taken(parsed->getProgramNumbers()), (std::vector<QUOR_U16>{1, 2}));
    EXPECT_EQ(parsed->get(2)->getProgramMapPid(), 0x0101);
    EXPECT_EQ(parsed->get(3), nullptr);
}

TEST(TPATTable, EntriesThatDoNotEndAtTheCrcFail) {
    // Two bytes too many in the loop: the walk goes on through the CRC_32 until the data ends.
    const auto parsed = parseSection<TPATTable>(pat(hex("0001 E100  0002")));
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TPATTable::parse: Item length not valid: 4 > 2. Aborting!"});
}

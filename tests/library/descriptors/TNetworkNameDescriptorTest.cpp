#include "descriptors/TNetworkNameDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TNetworkNameDescriptor;

namespace {

const std::string failed = "ISDBTUtils: TNetworkNameDescriptor:: parse: ERROR: parsing Network Name. Aborting!";

} // namespace

TEST(TNetworkNameDescriptor, StartsWithoutAName) {
    HeapBytes bytes(hex("40 02 4142"));
    const InDirtyMemory<TNetworkNameDescriptor> network(bytes.data(), bytes.size());
    EXPECT_EQ(network->getDescriptorTag(), 0x40);
    EXPECT_EQ(network->getData(), bytes.data());
    EXPECT_EQ(network->getDataLength(), 4U);
    EXPECT_EQ(network->getNetworkName(), "");
}

TEST(TNetworkNameDescriptor, KeepsTheCharactersAsTheyAre) {
    const auto network = expectDescriptor<TNetworkNameDescriptor>(hex("40 06 52 C2 00 20 FF 0A"), 6);
    EXPECT_EQ(network->getNetworkName(), std::string("R\xC2\0 \xFF\n", 6));
}

TEST(TNetworkNameDescriptor, ShortestNameIsOneCharacter) {
    EXPECT_EQ(expectDescriptor<TNetworkNameDescriptor>(hex("40 01 41"), 1)->getNetworkName(), "A");
}

TEST(TNetworkNameDescriptor, NameRunsToTheEndOfTheGivenBytes) {
    const auto network = expectDescriptor<TNetworkNameDescriptor>(hex("40 01 41 4243"), 3);
    EXPECT_EQ(network->getNetworkName(), "ABC");
}

TEST(TNetworkNameDescriptor, LongestDescriptorHoldsA255ByteName) {
    const auto network = expectDescriptor<TNetworkNameDescriptor>(descriptor(0x40, fill(255, 'n')), 255);
    EXPECT_EQ(network->getNetworkName(), std::string(255, 'n'));
}

TEST(TNetworkNameDescriptor, NameWhoseLengthDoesNotFitEightBitsFails) {
    expectFailure<TNetworkNameDescriptor>(join({hex("40 FF"), fill(256, 'n')}), TISDBTTable::ERROR_INVALID_STRING,
                                          {failed});
    expectFailure<TNetworkNameDescriptor>(join({hex("40 01"), fill(300, 'n')}), TISDBTTable::ERROR_INVALID_STRING,
                                          {failed});
}

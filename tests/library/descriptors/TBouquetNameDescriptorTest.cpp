#include "descriptors/TBouquetNameDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TBouquetNameDescriptor;

TEST(TBouquetNameDescriptor, StartsWithoutAName) {
    HeapBytes bytes(hex("47 02 4142"));
    const InDirtyMemory<TBouquetNameDescriptor> bouquet(bytes.data(), bytes.size());
    EXPECT_EQ(bouquet->getDescriptorTag(), 0x47);
    EXPECT_EQ(bouquet->getBouquetName(), "");
}

TEST(TBouquetNameDescriptor, KeepsTheCharactersAsTheyAre) {
    const auto bouquet = expectDescriptor<TBouquetNameDescriptor>(hex("47 06 52 C2 00 20 FF 0A"), 6);
    EXPECT_EQ(bouquet->getBouquetName(), std::string("R\xC2\0 \xFF\n", 6));
}

TEST(TBouquetNameDescriptor, NameRunsToTheEndOfTheGivenBytes) {
    EXPECT_EQ(expectDescriptor<TBouquetNameDescriptor>(hex("47 01 41 4243"), 3)->getBouquetName(), "ABC");
}

TEST(TBouquetNameDescriptor, LongestDescriptorHoldsA255ByteName) {
    const auto bouquet = expectDescriptor<TBouquetNameDescriptor>(descriptor(0x47, fill(255, 'n')), 255);
    EXPECT_EQ(bouquet->getBouquetName(), std::string(255, 'n'));
}

TEST(TBouquetNameDescriptor, NameWhoseLengthDoesNotFitEightBitsIsAccepted) {
    const auto wrapped = expectDescriptor<TBouquetNameDescriptor>(join({hex("47 FF"), fill(256, 'n')}), 0);
    EXPECT_EQ(wrapped->getBouquetName(), std::string(256, 'n'));
    const auto longer = expectDescriptor<TBouquetNameDescriptor>(join({hex("47 01"), fill(300, 'n')}), 44);
    EXPECT_EQ(longer->getBouquetName(), std::string(300, 'n'));
}

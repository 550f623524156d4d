#include "descriptors/TCountryAvailabilityDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TCountryAvailabilityDescriptor;

namespace {

constexpr QUOR_U32 BRA = 0x425241;
constexpr QUOR_U32 ARG = 0x415247;

} // namespace

TEST(TCountryAvailabilityDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("49 04 80 425241"));
    const InDirtyMemory<TCountryAvailabilityDescriptor> countries(bytes.data(), bytes.size());
    EXPECT_EQ(countries->getDescriptorTag(), 0x49);
    EXPECT_EQ(countries->getCountryAvailabilityFlag(), 0);
    EXPECT_EQ(countries->size(), 0U);
    EXPECT_EQ(countries->get(0), 0U);
}

TEST(TCountryAvailabilityDescriptor, PacksThreeCharactersOfACountry) {
    const auto countries = expectDescriptor<TCountryAvailabilityDescriptor>(hex("49 04 80 425241"), 0);
    EXPECT_EQ(countries->getCountryAvailabilityFlag(), 1);
    EXPECT_EQ(countries->size(), 1U);
    EXPECT_EQ(countries->get(0), BRA);
}

TEST(TCountryAvailabilityDescriptor, FlagIsOneBit) {
    EXPECT_EQ(expectDescriptor<TCountryAvailabilityDescriptor>(hex("49 04 7F 425241"), 0)->getCountryAvailabilityFlag(),
              0);
    EXPECT_EQ(expectDescriptor<TCountryAvailabilityDescriptor>(hex("49 04 FF 425241"), 0)->getCountryAvailabilityFlag(),
              1);
}

TEST(TCountryAvailabilityDescriptor, KeepsCountriesInWireOrderDuplicatesToo) {
    const auto countries =
        expectDescriptor<TCountryAvailabilityDescriptor>(hex("49 0D 80 425241 415247 425241 FFFEFD"), 0);
    ASSERT_EQ(countries->size(), 4U);
    EXPECT_EQ(countries->get(0), BRA);
    EXPECT_EQ(countries->get(1), ARG);
    EXPECT_EQ(countries->get(2), BRA);
    EXPECT_EQ(countries->get(3), 0xFFFEFDU);
    EXPECT_EQ(countries->get(4), 0U);
    EXPECT_EQ(countries->get(0xFFFFFFFF), 0U);
}

TEST(TCountryAvailabilityDescriptor, RemainderIsIgnored) {
    const auto one = expectDescriptor<TCountryAvailabilityDescriptor>(hex("49 05 80 425241 41"), 0);
    EXPECT_EQ(one->size(), 1U);
    const auto two = expectDescriptor<TCountryAvailabilityDescriptor>(hex("49 06 80 425241 4152"), 0);
    EXPECT_EQ(two->size(), 1U);
    EXPECT_EQ(two->get(0), BRA);
}

TEST(TCountryAvailabilityDescriptor, CountriesRunToTheEndOfTheGivenBytes) {
    const auto countries = expectDescriptor<TCountryAvailabilityDescriptor>(hex("49 04 80 425241 415247 42"), 0);
    ASSERT_EQ(countries->size(), 2U);
    EXPECT_EQ(countries->get(1), ARG);
}

TEST(TCountryAvailabilityDescriptor, AddAppendsAndRemoveUnlinks) {
    QUOR_U8 bytes[] = {0x49, 0x00};
    TCountryAvailabilityDescriptor countries(bytes, sizeof bytes);
    countries.add(BRA);
    countries.add(0xFFFFFFFF);
    countries.add(ARG);
    EXPECT_EQ(countries.size(), 3U);
    EXPECT_EQ(countries.get(1), 0xFFFFFFFFU);
    EXPECT_FALSE(countries.remove(3));
    EXPECT_FALSE(countries.remove(0xFFFFFFFF));
    EXPECT_EQ(countries.size(), 3U);
    EXPECT_TRUE(countries.remove(1));
    EXPECT_EQ(countries.size(), 2U);
    EXPECT_EQ(countries.get(0), BRA);
    EXPECT_EQ(countries.get(1), ARG);
    EXPECT_TRUE(countries.remove(0));
    EXPECT_TRUE(countries.remove(0));
    EXPECT_FALSE(countries.remove(0));
    EXPECT_EQ(countries.size(), 0U);
}

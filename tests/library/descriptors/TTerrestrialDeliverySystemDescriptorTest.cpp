#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TTerrestrialDeliverySystemDescriptor;

using Words = std::vector<QUOR_U16>;

TEST(TTerrestrialDeliverySystemDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TTerrestrialDeliverySystemDescriptor::GUARD_INTERNVAL_1_32, 0);
    EXPECT_CONSTANT(QUOR_U8, TTerrestrialDeliverySystemDescriptor::GUARD_INTERNVAL_1_16, 1);
    EXPECT_CONSTANT(QUOR_U8, TTerrestrialDeliverySystemDescriptor::GUARD_INTERNVAL_1_8, 2);
    EXPECT_CONSTANT(QUOR_U8, TTerrestrialDeliverySystemDescriptor::GUARD_INTERNVAL_1_4, 3);
    EXPECT_CONSTANT(QUOR_U8, TTerrestrialDeliverySystemDescriptor::TRANSMISSION_MODE_1, 0);
    EXPECT_CONSTANT(QUOR_U8, TTerrestrialDeliverySystemDescriptor::TRANSMISSION_MODE_2, 1);
    EXPECT_CONSTANT(QUOR_U8, TTerrestrialDeliverySystemDescriptor::TRANSMISSION_MODE_3, 2);
}

TEST(TTerrestrialDeliverySystemDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("FA 02 1234"));
    const InDirtyMemory<TTerrestrialDeliverySystemDescriptor> delivery(bytes.data(), bytes.size());
    EXPECT_EQ(delivery->getDescriptorTag(), 0xFA);
    EXPECT_EQ(delivery->getAreaCode(), 0);
    EXPECT_EQ(delivery->getGuardInterval(), 0);
    EXPECT_EQ(delivery->getTransmissionMode(), 0);
    EXPECT_EQ(delivery->getFrequencyCounter(), 0);
    EXPECT_EQ(delivery->getFrequencies(), nullptr);
}

TEST(TTerrestrialDeliverySystemDescriptor, ReadsAreaGuardIntervalModeAndFrequency) {
    const auto delivery = expectDescriptor<TTerrestrialDeliverySystemDescriptor>(hex("FA 04 1234 0F90"), 4);
    EXPECT_EQ(delivery->getAreaCode(), 0x123);
    EXPECT_EQ(delivery->getGuardInterval(), 1);
    EXPECT_EQ(delivery->getTransmissionMode(), 0);
    EXPECT_EQ(delivery->getFrequencyCounter(), 1);
    EXPECT_EQ(elements(delivery->getFrequencies(), 1), (Words{0x0F90}));
}

TEST(TTerrestrialDeliverySystemDescriptor, FieldsTakeTheirBitsAlone) {
    const auto area = expectDescriptor<TTerrestrialDeliverySystemDescriptor>(hex("FA 04 FFF0 0000"), 4);
    EXPECT_EQ(area->getAreaCode(), 0xFFF);
    EXPECT_EQ(area->getGuardInterval(), 0);
    EXPECT_EQ(area->getTransmissionMode(), 0);
    const auto guard = expectDescriptor<TTerrestrialDeliverySystemDescriptor>(hex("FA 04 000C 0000"), 4);
    EXPECT_EQ(guard->getAreaCode(), 0);
    EXPECT_EQ(guard->getGuardInterval(), 3);
    EXPECT_EQ(guard->getTransmissionMode(), 0);
    const auto mode = expectDescriptor<TTerrestrialDeliverySystemDescriptor>(hex("FA 04 0003 0000"), 4);
    EXPECT_EQ(mode->getAreaCode(), 0);
    EXPECT_EQ(mode->getGuardInterval(), 0);
    EXPECT_EQ(mode->getTransmissionMode(), 3);
}

TEST(TTerrestrialDeliverySystemDescriptor, KeepsFrequencyWordsAsTheyAre) {
    const auto delivery = expectDescriptor<TTerrestrialDeliverySystemDescriptor>(hex("FA 08 8916 0F90 FFFF 0001"), 8);
    EXPECT_EQ(delivery->getAreaCode(), 0x891);
    EXPECT_EQ(delivery->getGuardInterval(), TTerrestrialDeliverySystemDescriptor::GUARD_INTERNVAL_1_16);
    EXPECT_EQ(delivery->getTransmissionMode(), TTerrestrialDeliverySystemDescriptor::TRANSMISSION_MODE_3);
    EXPECT_EQ(delivery->getFrequencyCounter(), 3);
    EXPECT_EQ(elements(delivery->getFrequencies(), 3), (Words{0x0F90, 0xFFFF, 0x0001}));
}

TEST(TTerrestrialDeliverySystemDescriptor, OddLastByteIsIgnored) {
    const auto delivery = expectDescriptor<TTerrestrialDeliverySystemDescriptor>(hex("FA 05 1234 0F90 AB"), 5);
    EXPECT_EQ(delivery->getFrequencyCounter(), 1);
    EXPECT_EQ(elements(delivery->getFrequencies(), 1), (Words{0x0F90}));
}

TEST(TTerrestrialDeliverySystemDescriptor, FrequenciesRunToTheEndOfTheGivenBytes) {
    const auto delivery = expectDescriptor<TTerrestrialDeliverySystemDescriptor>(hex("FA 04 1234 0F90 0E27"), 6);
    EXPECT_EQ(delivery->getFrequencyCounter(), 2);
    EXPECT_EQ(elements(delivery->getFrequencies(), 2), (Words{0x0F90, 0x0E27}));
}

TEST(TTerrestrialDeliverySystemDescriptor, LongestDescriptorHolds126Frequencies) {
    const auto delivery = expectDescriptor<TTerrestrialDeliverySystemDescriptor>(
        descriptor(0xFA, join({hex("1234"), fill(253, 0x0F)})), 255);
    EXPECT_EQ(delivery->getFrequencyCounter(), 126);
    EXPECT_EQ(elements(delivery->getFrequencies(), 126), Words(126, 0x0F0F));
}

TEST(TTerrestrialDeliverySystemDescriptor, NumberOfFrequenciesIsKeptInEightBits) {
    const auto wrapped =
        expectDescriptor<TTerrestrialDeliverySystemDescriptor>(join({hex("FA 04 1234"), fill(512, 0x0F)}), 514);
    EXPECT_EQ(wrapped->getFrequencyCounter(), 0);
    EXPECT_NE(wrapped->getFrequencies(), nullptr);
    const auto longer =
        expectDescriptor<TTerrestrialDeliverySystemDescriptor>(join({hex("FA 04 1234"), fill(516, 0x0F)}), 518);
    EXPECT_EQ(longer->getFrequencyCounter(), 2);
    EXPECT_EQ(elements(longer->getFrequencies(), 2), (Words{0x0F0F, 0x0F0F}));
}

#include "descriptors/TTSInformationDescriptorItem.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TTSInformationDescriptorItem;

using Words = std::vector<QUOR_U16>;

namespace {

Lines tooShort(int length) {
    return {"ISDBTUtils: TTSInformationDescriptorItem::parse: Item length not valid: " + std::to_string(length) +
            ". Aborting!"};
}

} // namespace

TEST(TTSInformationDescriptorItem, Constants) {
    EXPECT_EQ(TTSInformationDescriptorItem::TRANSMISSION_PARAMETER_TYPE_A, 0);
    EXPECT_EQ(TTSInformationDescriptorItem::TRANSMISSION_PARAMETER_TYPE_B, 1);
    EXPECT_EQ(TTSInformationDescriptorItem::TRANSMISSION_PARAMETER_TYPE_C, 2);
    EXPECT_EQ(TTSInformationDescriptorItem::MODULATION_SYSTEM_64QAM, 0);
    EXPECT_EQ(TTSInformationDescriptorItem::MODULATION_SYSTEM_16QAM, 1);
    EXPECT_EQ(TTSInformationDescriptorItem::MODULATION_SYSTEM_QPSK, 2);
}

TEST(TTSInformationDescriptorItem, StartsWithZeros) {
    const InDirtyMemory<TTSInformationDescriptorItem> item;
    EXPECT_EQ(item->getTransmissionTypeInfo(), 0);
    EXPECT_EQ(item->getTransmissionParameterType(), 0);
    EXPECT_EQ(item->getModulationSystem(), 0);
    EXPECT_EQ(item->getNumberOfServices(), 0);
    EXPECT_EQ(item->getServices(), nullptr);
}

TEST(TTSInformationDescriptorItem, ReadsItsFields) {
    const auto item = expectSuccess<TTSInformationDescriptorItem>(hex("AF 02 5C38 FFFE"), 6);
    EXPECT_EQ(item->getTransmissionTypeInfo(), 0xAF);
    EXPECT_EQ(item->getTransmissionParameterType(), TTSInformationDescriptorItem::TRANSMISSION_PARAMETER_TYPE_C);
    EXPECT_EQ(item->getModulationSystem(), TTSInformationDescriptorItem::MODULATION_SYSTEM_QPSK);
    EXPECT_EQ(item->getNumberOfServices(), 2);
    EXPECT_EQ(elements(item->getServices(), 2), (Words{0x5C38, 0xFFFE}));
}

TEST(TTSInformationDescriptorItem, SplitsTheTransmissionTypeInfo) {
    const auto parameter = expectSuccess<TTSInformationDescriptorItem>(hex("C0 01 5C20"), 4);
    EXPECT_EQ(parameter->getTransmissionParameterType(), 3);
    EXPECT_EQ(parameter->getModulationSystem(), 0);
    const auto modulation = expectSuccess<TTSInformationDescriptorItem>(hex("30 01 5C20"), 4);
    EXPECT_EQ(modulation->getTransmissionParameterType(), 0);
    EXPECT_EQ(modulation->getModulationSystem(), 3);
    const auto rest = expectSuccess<TTSInformationDescriptorItem>(hex("0F 01 5C20"), 4);
    EXPECT_EQ(rest->getTransmissionTypeInfo(), 0x0F);
    EXPECT_EQ(rest->getTransmissionParameterType(), 0);
    EXPECT_EQ(rest->getModulationSystem(), 0);
    EXPECT_EQ(expectSuccess<TTSInformationDescriptorItem>(hex("5F 01 5C20"), 4)->getModulationSystem(), 1);
}

TEST(TTSInformationDescriptorItem, WithoutServicesTakesTwoBytesButNeedsFour) {
    const auto item = expectSuccess<TTSInformationDescriptorItem>(hex("0F 00 FFFF"), 2);
    EXPECT_EQ(item->getNumberOfServices(), 0);
    expectFailure<TTSInformationDescriptorItem>(hex("0F 00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, tooShort(2));
    expectFailure<TTSInformationDescriptorItem>(hex("0F 00 FF"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, tooShort(3));
    expectFailure<TTSInformationDescriptorItem>(hex(""), TISDBTTable::ERROR_INVALID_DATA_LENGTH, tooShort(0));
}

TEST(TTSInformationDescriptorItem, MoreServicesThanBytesFail) {
    expectFailure<TTSInformationDescriptorItem>(hex("0F 02 5C20"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, tooShort(4));
    expectFailure<TTSInformationDescriptorItem>(hex("0F 02 5C20 5C"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                                tooShort(5));
}

TEST(TTSInformationDescriptorItem, HoldsUpTo255Services) {
    const auto item = expectSuccess<TTSInformationDescriptorItem>(join({hex("0F FF"), fill(510, 0x5C)}), 512);
    EXPECT_EQ(item->getNumberOfServices(), 255);
    EXPECT_EQ(elements(item->getServices(), 255), Words(255, 0x5C5C));
}

#include "descriptors/TEmergencyInformationDescriptorItem.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TEmergencyInformationDescriptorItem;
using Quor::TISDBTTable;

using Words = std::vector<QUOR_U16>;

namespace {

Lines tooShort(int length) {
    return {"ISDBTUtils: TEmergencyInformationDescriptorItem::parse: Item length not valid: " + std::to_string(length) +
            ". Aborting!"};
}

} // namespace

TEST(TEmergencyInformationDescriptorItem, StartsWithZeros) {
    const InDirtyMemory<TEmergencyInformationDescriptorItem> item;
    EXPECT_EQ(item->getServiceID(), 0);
    EXPECT_FALSE(item->isStart());
    EXPECT_EQ(item->getSignalLevel(), 0);
    EXPECT_EQ(item->getAreaCodeCounter(), 0);
    EXPECT_EQ(item->getAreaCodes(), nullptr);
}

TEST(TEmergencyInformationDescriptorItem, ReadsItsFields) {
    const auto item = expectSuccess<TEmergencyInformationDescriptorItem>(hex("5C20 FF 04 123F FFF0"), 8);
    EXPECT_EQ(item->getServiceID(), 0x5C20);
    EXPECT_TRUE(item->isStart());
    EXPECT_EQ(item->getSignalLevel(), 1);
    EXPECT_EQ(elements(item->getAreaCodes(), 2), (Words{0x123, 0xFFF}));
}

TEST(TEmergencyInformationDescriptorItem, FlagsTakeTheirBitsAlone) {
    const auto start = expectSuccess<TEmergencyInformationDescriptorItem>(hex("0001 80 02 0010"), 6);
    EXPECT_TRUE(start->isStart());
    EXPECT_EQ(start->getSignalLevel(), 0);
    const auto level = expectSuccess<TEmergencyInformationDescriptorItem>(hex("0001 40 02 0010"), 6);
    EXPECT_FALSE(level->isStart());
    EXPECT_EQ(level->getSignalLevel(), 1);
    const auto reserved = expectSuccess<TEmergencyInformationDescriptorItem>(hex("0001 3F 02 0010"), 6);
    EXPECT_FALSE(reserved->isStart());
    EXPECT_EQ(reserved->getSignalLevel(), 0);
}

TEST(TEmergencyInformationDescriptorItem, CounterIsTheNumberOfBytesOfTheAreaCodes) {
    const auto item = expectSuccess<TEmergencyInformationDescriptorItem>(hex("0001 80 06 0010 0020 0030  FFFF"), 10);
    EXPECT_EQ(item->getAreaCodeCounter(), 6);
    EXPECT_EQ(elements(item->getAreaCodes(), 6), (Words{0x001, 0x002, 0x003, 0, 0, 0}));
}

TEST(TEmergencyInformationDescriptorItem, LastByteOfAnOddLengthIsDropped) {
    const auto item = expectSuccess<TEmergencyInformationDescriptorItem>(hex("0001 80 03 0010 FF"), 6);
    EXPECT_EQ(item->getAreaCodeCounter(), 3);
    EXPECT_EQ(elements(item->getAreaCodes(), 1), (Words{0x001}));
    // The odd byte is not needed either.
    expectSuccess<TEmergencyInformationDescriptorItem>(hex("0001 80 03 0010"), 6);
}

TEST(TEmergencyInformationDescriptorItem, WithoutAreaCodesTakesFourBytesButNeedsSix) {
    const auto item = expectSuccess<TEmergencyInformationDescriptorItem>(hex("5C20 80 00 FFFF"), 4);
    EXPECT_EQ(item->getServiceID(), 0x5C20);
    EXPECT_EQ(item->getAreaCodeCounter(), 0);
    expectFailure<TEmergencyInformationDescriptorItem>(hex("5C20 80 00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                                       tooShort(4));
    expectFailure<TEmergencyInformationDescriptorItem>(hex("5C20 80 00 FF"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                                       tooShort(5));
    expectFailure<TEmergencyInformationDescriptorItem>(hex(""), TISDBTTable::ERROR_INVALID_DATA_LENGTH, tooShort(0));
}

TEST(TEmergencyInformationDescriptorItem, SingleByteOfAreaCodesIsNone) {
    const auto item = expectSuccess<TEmergencyInformationDescriptorItem>(hex("5C20 80 01 FFFF"), 4);
    EXPECT_EQ(item->getAreaCodeCounter(), 1);
}

TEST(TEmergencyInformationDescriptorItem, MoreAreaCodesThanBytesFail) {
    expectFailure<TEmergencyInformationDescriptorItem>(hex("5C20 80 04 0010 00"),
                                                       TISDBTTable::ERROR_INVALID_DATA_LENGTH, tooShort(7));
    expectFailure<TEmergencyInformationDescriptorItem>(join({hex("5C20 80 FF"), fill(253, 0x12)}),
                                                       TISDBTTable::ERROR_INVALID_DATA_LENGTH, tooShort(257));
}

TEST(TEmergencyInformationDescriptorItem, HoldsUpTo127AreaCodes) {
    const auto item =
        expectSuccess<TEmergencyInformationDescriptorItem>(join({hex("5C20 80 FF"), fill(254, 0x12)}), 258);
    EXPECT_EQ(item->getAreaCodeCounter(), 255);
    EXPECT_EQ(elements(item->getAreaCodes(), 127), Words(127, 0x121));
}

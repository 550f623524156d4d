#include "descriptors/TEmergencyInformationDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TEmergencyInformationDescriptor;
using Quor::TEmergencyInformationDescriptorItem;
using Quor::TISDBTTable;

namespace {

Lines invalidItem(int length) {
    return {"ISDBTUtils: TEmergencyInformationDescriptorItem::parse: Item length not valid: " + std::to_string(length) +
                ". Aborting!",
            "ISDBTUtils: TEmergencyInformationDescriptor::parse: Invalid item. Aborting!"};
}

} // namespace

TEST(TEmergencyInformationDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("FC 06 5C20 80 02 1230"));
    const InDirtyMemory<TEmergencyInformationDescriptor> emergency(bytes.data(), bytes.size());
    EXPECT_EQ(emergency->getDescriptorTag(), 0xFC);
    EXPECT_EQ(emergency->size(), 0U);
    EXPECT_EQ(emergency->get(0), nullptr);
}

TEST(TEmergencyInformationDescriptor, KeepsItemsInWireOrderDuplicatesToo) {
    const auto emergency = expectDescriptor<TEmergencyInformationDescriptor>(
        hex("FC 14  5C20 80 02 1230  0001 40 04 4560 7890  5C20 00 02 ABC0"), 6);
    ASSERT_EQ(emergency->size(), 3U);
    EXPECT_EQ(emergency->get(0)->getServiceID(), 0x5C20);
    EXPECT_TRUE(emergency->get(0)->isStart());
    EXPECT_EQ(emergency->get(0)->getAreaCodes()[0], 0x123);
    EXPECT_EQ(emergency->get(1)->getServiceID(), 0x0001);
    EXPECT_EQ(emergency->get(1)->getAreaCodes()[1], 0x789);
    EXPECT_EQ(emergency->get(2)->getServiceID(), 0x5C20);
    EXPECT_FALSE(emergency->get(2)->isStart());
    EXPECT_EQ(emergency->get(3), nullptr);
    EXPECT_EQ(emergency->get(255), nullptr);
}

TEST(TEmergencyInformationDescriptor, ReportsTheBytesOfTheLastItem) {
    expectDescriptor<TEmergencyInformationDescriptor>(hex("FC 06  5C20 80 02 1230"), 6);
    expectDescriptor<TEmergencyInformationDescriptor>(hex("FC 0E  5C20 80 02 1230  5C38 80 04 1230 4560"), 8);
}

TEST(TEmergencyInformationDescriptor, SingleItemWithoutAreaCodesFails) {
    expectFailure<TEmergencyInformationDescriptor>(hex("FC 04  5C20 80 00"),
                                                   TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(4));
}

TEST(TEmergencyInformationDescriptor, ItemWithoutAreaCodesIsReadBeforeAnother) {
    const auto emergency =
        expectDescriptor<TEmergencyInformationDescriptor>(hex("FC 0A  5C20 80 00  5C38 40 02 1230"), 6);
    ASSERT_EQ(emergency->size(), 2U);
    EXPECT_EQ(emergency->get(0)->getAreaCodeCounter(), 0);
    EXPECT_EQ(emergency->get(1)->getServiceID(), 0x5C38);
}

TEST(TEmergencyInformationDescriptor, OddByteOfAreaCodesBeginsTheNextItem) {
    // Three bytes of area codes, of which two are taken: the third is the first of the next service_id.
    const auto emergency =
        expectDescriptor<TEmergencyInformationDescriptor>(hex("FC 0C  5C20 80 03 1230  5C38 40 02 4560"), 6);
    ASSERT_EQ(emergency->size(), 2U);
    EXPECT_EQ(emergency->get(1)->getServiceID(), 0x5C38);
    expectFailure<TEmergencyInformationDescriptor>(hex("FC 07  5C20 80 03 1230 AB"),
                                                   TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(1));
}

TEST(TEmergencyInformationDescriptor, AreaCodesPastTheEndFail) {
    expectFailure<TEmergencyInformationDescriptor>(hex("FC 06  5C20 80 04 1230"),
                                                   TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(6));
    expectFailure<TEmergencyInformationDescriptor>(hex("FC 0C  5C20 80 02 1230  5C20 80 FF 1230"),
                                                   TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(6));
}

TEST(TEmergencyInformationDescriptor, ItemsRunToTheEndOfTheGivenBytes) {
    const auto emergency =
        expectDescriptor<TEmergencyInformationDescriptor>(hex("FC 06  5C20 80 02 1230  5C38 80 02 4560"), 6);
    EXPECT_EQ(emergency->size(), 2U);
    expectFailure<TEmergencyInformationDescriptor>(hex("FC 06  5C20 80 02 1230  5C"),
                                                   TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(1));
}

#include "descriptors/TNVODReferenceDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TNVODReferenceDescriptor;
using Quor::TNVODReferenceDescriptorItem;

namespace {

Lines invalidItem(int length) {
    return {"ISDBTUtils: TNVODReferenceDescriptorItem::parse: Descriptor length not valid: " + std::to_string(length) +
                ". Aborting!",
            "ISDBTUtils: TNVODReferenceDescriptor::parse: Invalid item. Aborting!"};
}

} // namespace

TEST(TNVODReferenceDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("4B 06 0001 0002 0003"));
    const InDirtyMemory<TNVODReferenceDescriptor> references(bytes.data(), bytes.size());
    EXPECT_EQ(references->getDescriptorTag(), 0x4B);
    EXPECT_EQ(references->size(), 0U);
    EXPECT_EQ(references->get(0), nullptr);
}

TEST(TNVODReferenceDescriptor, KeepsItemsInWireOrderDuplicatesToo) {
    const auto references =
        expectDescriptor<TNVODReferenceDescriptor>(hex("4B 12  0001 0002 0009  0004 0005 0006  0001 0002 0009"), 6);
    ASSERT_EQ(references->size(), 3U);
    EXPECT_EQ(references->get(0)->getServiceID(), 9);
    EXPECT_EQ(references->get(1)->getTransportStreamID(), 4);
    EXPECT_EQ(references->get(1)->getOriginalNetworkID(), 5);
    EXPECT_EQ(references->get(1)->getServiceID(), 6);
    EXPECT_EQ(references->get(2)->getServiceID(), 9);
    EXPECT_EQ(references->get(3), nullptr);
    EXPECT_EQ(references->get(255), nullptr);
}

TEST(TNVODReferenceDescriptor, BodyOfEightBytesFailsOnItsSecondItem) {
    expectFailure<TNVODReferenceDescriptor>(hex("4B 08  0001 0002 0003  0004"),
                                            TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(2));
}

TEST(TNVODReferenceDescriptor, ItemsRunToTheEndOfTheGivenBytes) {
    const auto references = expectDescriptor<TNVODReferenceDescriptor>(hex("4B 06  0001 0002 0003  0004 0005 0006"), 6);
    EXPECT_EQ(references->size(), 2U);
    expectFailure<TNVODReferenceDescriptor>(hex("4B 06  0001 0002 0003  00"),
                                            TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(1));
}

#include "descriptors/TPartialReceptionDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TPartialReceptionDescriptor;

using Words = std::vector<QUOR_U16>;

TEST(TPartialReceptionDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("FB 00"));
    const InDirtyMemory<TPartialReceptionDescriptor> partial(bytes.data(), bytes.size());
    EXPECT_EQ(partial->getDescriptorTag(), 0xFB);
    EXPECT_EQ(partial->getServiceIDCount(), 0);
    EXPECT_EQ(partial->getServiceIDs(), nullptr);
}

TEST(TPartialReceptionDescriptor, ReadsServiceIdsInWireOrder) {
    const auto partial = expectDescriptor<TPartialReceptionDescriptor>(hex("FB 06 5C38 0001 FFFE"), 6);
    EXPECT_EQ(partial->getServiceIDCount(), 3);
    EXPECT_EQ(elements(partial->getServiceIDs(), 3), (Words{0x5C38, 0x0001, 0xFFFE}));
}

TEST(TPartialReceptionDescriptor, OddLastByteIsNoServiceId) {
    const auto partial = expectDescriptor<TPartialReceptionDescriptor>(hex("FB 03 5C38 AB"), 3);
    EXPECT_EQ(partial->getServiceIDCount(), 1);
    EXPECT_EQ(elements(partial->getServiceIDs(), 1), (Words{0x5C38}));
}

TEST(TPartialReceptionDescriptor, ServiceIdsRunToTheEndOfTheGivenBytes) {
    const auto partial = expectDescriptor<TPartialReceptionDescriptor>(hex("FB 02 5C38 5C20"), 4);
    EXPECT_EQ(partial->getServiceIDCount(), 2);
    EXPECT_EQ(elements(partial->getServiceIDs(), 2), (Words{0x5C38, 0x5C20}));
}

TEST(TPartialReceptionDescriptor, NumberOfServiceIdsIsKeptInEightBits) {
    const auto wrapped = expectDescriptor<TPartialReceptionDescriptor>(join({hex("FB 02"), fill(512, 0x5C)}), 512);
    EXPECT_EQ(wrapped->getServiceIDCount(), 0);
    EXPECT_NE(wrapped->getServiceIDs(), nullptr);
    const auto longer = expectDescriptor<TPartialReceptionDescriptor>(join({hex("FB 02"), fill(514, 0x5C)}), 514);
    EXPECT_EQ(longer->getServiceIDCount(), 1);
    EXPECT_EQ(elements(longer->getServiceIDs(), 1), (Words{0x5C5C}));
}

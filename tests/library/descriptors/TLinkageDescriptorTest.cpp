#include "descriptors/TLinkageDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TLinkageDescriptor;

TEST(TLinkageDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TLinkageDescriptor::SERVICE_INFORMATION, 1);
    EXPECT_CONSTANT(QUOR_U8, TLinkageDescriptor::SERVICE_EPG, 2);
    EXPECT_CONSTANT(QUOR_U8, TLinkageDescriptor::SERVICE_CA_SUBSTITUTION, 3);
    EXPECT_CONSTANT(QUOR_U8, TLinkageDescriptor::SERVICE_TS_NETWORK_OR_BOUQUET, 4);
    EXPECT_CONSTANT(QUOR_U8, TLinkageDescriptor::SERVICE_SUBSTITUTION, 5);
    EXPECT_CONSTANT(QUOR_U8, TLinkageDescriptor::SERVICE_DATA_BROADCAST, 6);
    EXPECT_CONSTANT(QUOR_U8, TLinkageDescriptor::SERVICE_RETRANSMISSION, 0xFE);
}

TEST(TLinkageDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("4A 08 0001 0002 0003 04 05"));
    const InDirtyMemory<TLinkageDescriptor> linkage(bytes.data(), bytes.size());
    EXPECT_EQ(linkage->getDescriptorTag(), 0x4A);
    EXPECT_EQ(linkage->getTransportStreamID(), 0);
    EXPECT_EQ(linkage->getOriginalNetworkID(), 0);
    EXPECT_EQ(linkage->getServiceID(), 0);
    EXPECT_EQ(linkage->getLinkageType(), 0);
    EXPECT_EQ(linkage->getPrivateDataSize(), 0);
    EXPECT_EQ(linkage->getPrivateData(), nullptr);
}

TEST(TLinkageDescriptor, ReadsItsFields) {
    const auto linkage = expectDescriptor<TLinkageDescriptor>(hex("4A 0A  02E1 7ED4 5C20 06  A1B2C3"), 10);
    EXPECT_EQ(linkage->getTransportStreamID(), 0x02E1);
    EXPECT_EQ(linkage->getOriginalNetworkID(), 0x7ED4);
    EXPECT_EQ(linkage->getServiceID(), 0x5C20);
    EXPECT_EQ(linkage->getLinkageType(), 6);
    EXPECT_EQ(linkage->getPrivateDataSize(), 3);
    linkage.bytes.data()[9] = 0x00;
    EXPECT_EQ(elements(linkage->getPrivateData(), 3), hex("A1B2C3"));
}

TEST(TLinkageDescriptor, FieldsAreWhole) {
    const auto linkage = expectDescriptor<TLinkageDescriptor>(hex("4A 07  FFFF FFFE FFFD FC"), 7);
    EXPECT_EQ(linkage->getTransportStreamID(), 0xFFFF);
    EXPECT_EQ(linkage->getOriginalNetworkID(), 0xFFFE);
    EXPECT_EQ(linkage->getServiceID(), 0xFFFD);
    EXPECT_EQ(linkage->getLinkageType(), 0xFC);
}

TEST(TLinkageDescriptor, OfSevenBytesHasNoPrivateData) {
    const auto linkage = expectDescriptor<TLinkageDescriptor>(hex("4A 07  0001 0002 0003 01"), 7);
    EXPECT_EQ(linkage->getPrivateDataSize(), 0);
    EXPECT_EQ(linkage->getPrivateData(), nullptr);
}

TEST(TLinkageDescriptor, KeepsALinkageTypeThatNobodyKnows) {
    EXPECT_EQ(expectDescriptor<TLinkageDescriptor>(hex("4A 07  0001 0002 0003 00"), 7)->getLinkageType(), 0x00);
    EXPECT_EQ(expectDescriptor<TLinkageDescriptor>(hex("4A 07  0001 0002 0003 FF"), 7)->getLinkageType(), 0xFF);
}

TEST(TLinkageDescriptor, PrivateDataRunToTheEndOfTheGivenBytes) {
    const auto linkage = expectDescriptor<TLinkageDescriptor>(hex("4A 07  0001 0002 0003 01  0A0B"), 9);
    EXPECT_EQ(linkage->getPrivateDataSize(), 2);
    EXPECT_EQ(elements(linkage->getPrivateData(), 2), hex("0A0B"));
}

TEST(TLinkageDescriptor, LongestDescriptorHolds248BytesOfPrivateData) {
    const auto linkage =
        expectDescriptor<TLinkageDescriptor>(descriptor(0x4A, join({hex("0001 0002 0003 01"), fill(248, 0x5A)})), 255);
    EXPECT_EQ(linkage->getPrivateDataSize(), 248);
    EXPECT_EQ(elements(linkage->getPrivateData(), 248), fill(248, 0x5A));
}

TEST(TLinkageDescriptor, SizeOfThePrivateDataIsKeptInEightBits) {
    const auto wrapped =
        expectDescriptor<TLinkageDescriptor>(join({hex("4A 07  0001 0002 0003 01"), fill(256, 0x5A)}), 263);
    EXPECT_EQ(wrapped->getPrivateDataSize(), 0);
    ASSERT_NE(wrapped->getPrivateData(), nullptr);
    EXPECT_EQ(elements(wrapped->getPrivateData(), 256), fill(256, 0x5A));

    const auto longer =
        expectDescriptor<TLinkageDescriptor>(join({hex("4A 07  0001 0002 0003 01"), fill(300, 0x5A)}), 307);
    EXPECT_EQ(longer->getPrivateDataSize(), 44);
    EXPECT_EQ(elements(longer->getPrivateData(), 300), fill(300, 0x5A));
}

#include "descriptors/TCarouselIdentifierDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TCarouselIdentifierDescriptor;

namespace {

/// The members that the wire never fills.
template <class Pointer> void expectNoFormat(const Pointer& descriptor) {
    EXPECT_EQ(descriptor->getFormatID(), 0);
    EXPECT_EQ(descriptor->getModuleVersion(), 0);
    EXPECT_EQ(descriptor->getModuleID(), 0);
    EXPECT_EQ(descriptor->getBlockSize(), 0);
    EXPECT_EQ(descriptor->getModuleSize(), 0U);
    EXPECT_EQ(descriptor->getCompressionMethod(), 0);
    EXPECT_EQ(descriptor->getOriginalSize(), 0U);
    EXPECT_EQ(descriptor->getTimeOut(), 0);
    EXPECT_EQ(descriptor->getObjectKeyLength(), 0);
    EXPECT_EQ(descriptor->getObjectKeyData(), nullptr);
}

} // namespace

TEST(TCarouselIdentifierDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TCarouselIdentifierDescriptor::FORMAT_TYPE_NOT_AVAILABLE, 0);
    EXPECT_CONSTANT(QUOR_U8, TCarouselIdentifierDescriptor::FORMAT_TYPE_SERVIC_GATEWAY, 1);
}

TEST(TCarouselIdentifierDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U32, TCarouselIdentifierDescriptor, getCarouselID);
    EXPECT_GETTER(QUOR_U8, TCarouselIdentifierDescriptor, getFormatID);
    EXPECT_GETTER(QUOR_U8, TCarouselIdentifierDescriptor, getModuleVersion);
    EXPECT_GETTER(QUOR_U16, TCarouselIdentifierDescriptor, getModuleID);
    EXPECT_GETTER(QUOR_U16, TCarouselIdentifierDescriptor, getBlockSize);
    EXPECT_GETTER(QUOR_U32, TCarouselIdentifierDescriptor, getModuleSize);
    EXPECT_GETTER(QUOR_U8, TCarouselIdentifierDescriptor, getCompressionMethod);
    EXPECT_GETTER(QUOR_U32, TCarouselIdentifierDescriptor, getOriginalSize);
    EXPECT_GETTER(QUOR_U8, TCarouselIdentifierDescriptor, getTimeOut);
    EXPECT_GETTER(QUOR_U8, TCarouselIdentifierDescriptor, getObjectKeyLength);
    EXPECT_GETTER(QUOR_U8*, TCarouselIdentifierDescriptor, getObjectKeyData);
    EXPECT_GETTER(QUOR_U8, TCarouselIdentifierDescriptor, getPrivateDataSize);
    EXPECT_GETTER(QUOR_U8*, TCarouselIdentifierDescriptor, getPrivateData);
    EXPECT_NE(expectDescriptor<TCarouselIdentifierDescriptor>(hex("13 04  0000002A"), 4).object, nullptr);
}

TEST(TCarouselIdentifierDescriptor, StartsEmpty) {
    ByteVector bytes = hex("13 05  0000002A 01");
    const InDirtyMemory<TCarouselIdentifierDescriptor> descriptor(bytes.data(), QUOR_U32{7});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0x13);
    EXPECT_EQ(descriptor->getCarouselID(), 0U);
    expectNoFormat(descriptor);
    EXPECT_EQ(descriptor->getPrivateDataSize(), 0);
    EXPECT_EQ(descriptor->getPrivateData(), nullptr);
}

TEST(TCarouselIdentifierDescriptor, TheIdAloneHasNoPrivateData) {
    const auto parsed = expectDescriptor<TCarouselIdentifierDescriptor>(hex("13 04  0000002A"), 4);
    EXPECT_EQ(parsed->getCarouselID(), 42U);
    expectNoFormat(parsed.object);
    EXPECT_EQ(parsed->getPrivateDataSize(), 0);
    EXPECT_EQ(parsed->getPrivateData(), nullptr);
}

TEST(TCarouselIdentifierDescriptor, TheFormatStaysInThePrivateData) {
    // FormatID 1 with its fields: moduleVersion, moduleId, blockSize, moduleSize, compressionMethod, OriginalSize,
    // TimeOut, objectKeyLength, objectKeyData.
    const auto parsed = expectDescriptor<TCarouselIdentifierDescriptor>(
        hex("13 17  0000002A 01  05 0001 0FA0 00001234 01 00005678 0A 02 AABB"), 23);
    EXPECT_EQ(parsed->getCarouselID(), 42U);
    expectNoFormat(parsed.object);
    ASSERT_EQ(parsed->getPrivateDataSize(), 19);
    EXPECT_EQ(elements(parsed->getPrivateData(), 19), hex("01  05 0001 0FA0 00001234 01 00005678 0A 02 AABB"));
}

TEST(TCarouselIdentifierDescriptor, PrivateDataIsACopy) {
    const auto parsed = expectDescriptor<TCarouselIdentifierDescriptor>(hex("13 05  0000002A 01"), 5);
    parsed.bytes.data()[6] = 0x99;
    ASSERT_EQ(parsed->getPrivateDataSize(), 1);
    EXPECT_EQ(parsed->getPrivateData()[0], 0x01);
    EXPECT_EQ(parsed->getPrivateData(), parsed->getPrivateData());
}

TEST(TCarouselIdentifierDescriptor, FieldsTakeOnlyTheirBits) {
    expectFields<TCarouselIdentifierDescriptor>(
        hex("13 05"), 5,
        {{"carousel_id", 2, 7, 32, &TCarouselIdentifierDescriptor::getCarouselID},
         {"private data", 6, 7, 8,
          [](const TCarouselIdentifierDescriptor& parsed) { return parsed.getPrivateData()[0]; }},
         {"no format", 6, 7, 0, &TCarouselIdentifierDescriptor::getFormatID}});
}

TEST(TCarouselIdentifierDescriptor, TheLongestPrivateDataOfADescriptor) {
    const auto parsed =
        expectDescriptor<TCarouselIdentifierDescriptor>(join({hex("13 FF  0000002A"), fill(251, 0x5A)}), 255);
    ASSERT_EQ(parsed->getPrivateDataSize(), 251);
    EXPECT_EQ(elements(parsed->getPrivateData(), 251), fill(251, 0x5A));
}

TEST(TCarouselIdentifierDescriptor, PrivateDataRunsToTheEndOfTheBytesGiven) {
    const auto parsed = expectDescriptor<TCarouselIdentifierDescriptor>(hex("13 04  0000002A  11 22"), 6);
    ASSERT_EQ(parsed->getPrivateDataSize(), 2);
    EXPECT_EQ(elements(parsed->getPrivateData(), 2), hex("11 22"));
}

TEST(TCarouselIdentifierDescriptor, TheSizeIsCountedInEightBits) {
    const ByteVector fields = hex("13 04  0000002A");
    const auto most = expectDescriptor<TCarouselIdentifierDescriptor>(join({fields, fill(255, 0x5A)}), 259);
    ASSERT_EQ(most->getPrivateDataSize(), 255);
    EXPECT_EQ(elements(most->getPrivateData(), 255), fill(255, 0x5A));

    EXPECT_EQ(
        expectDescriptor<TCarouselIdentifierDescriptor>(join({fields, fill(256, 0x5A)}), 260)->getPrivateDataSize(), 0);

    const auto some = expectDescriptor<TCarouselIdentifierDescriptor>(join({fields, fill(294, 0x5A)}), 298);
    ASSERT_EQ(some->getPrivateDataSize(), 38);
    EXPECT_EQ(elements(some->getPrivateData(), 38), fill(38, 0x5A));
}

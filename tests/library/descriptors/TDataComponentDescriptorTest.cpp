#include "descriptors/TDataComponentDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TDataComponentDescriptor;

TEST(TDataComponentDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U16, TDataComponentDescriptor::COMPONENT_ID_GINGA_XML_BASE_MMEDIA_CODING, 7);
    EXPECT_CONSTANT(QUOR_U16, TDataComponentDescriptor::COMPONENT_ID_CAPTION_AND_SUPERIMPOSED, 8);
    EXPECT_CONSTANT(QUOR_U16, TDataComponentDescriptor::COMPONENT_ID_DATA_DOWNLOAD_SBTVD, 9);
    EXPECT_CONSTANT(QUOR_U16, TDataComponentDescriptor::COMPONENT_ID_OBJECT_CAROUSEL, 12);
    EXPECT_CONSTANT(QUOR_U16, TDataComponentDescriptor::COMPONENT_ID_CAPTION_1_SEG, 18);
    EXPECT_CONSTANT(QUOR_U16, TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_EXECUTING_ENGINE, 160);
    EXPECT_CONSTANT(QUOR_U16, TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_INFORMATION_TABLE, 163);
    EXPECT_CONSTANT(QUOR_U16, TDataComponentDescriptor::COMPONENT_ID_SBTVD_PROGRAM_INDEX_CONFIG, 164);
}

TEST(TDataComponentDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U16, TDataComponentDescriptor, getDataComponentID);
    EXPECT_GETTER(QUOR_U8, TDataComponentDescriptor, getAdditionalDataSize);
    EXPECT_GETTER(QUOR_U8*, TDataComponentDescriptor, getAdditionalData);
    EXPECT_NE(expectDescriptor<TDataComponentDescriptor>(hex("FD 02  00A0"), 2).object, nullptr);
}

TEST(TDataComponentDescriptor, StartsEmpty) {
    ByteVector bytes = hex("FD 03  00A0 01");
    const InDirtyMemory<TDataComponentDescriptor> descriptor(bytes.data(), QUOR_U32{5});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0xFD);
    EXPECT_EQ(descriptor->getDataComponentID(), 0);
    EXPECT_EQ(descriptor->getAdditionalDataSize(), 0);
    EXPECT_EQ(descriptor->getAdditionalData(), nullptr);
}

TEST(TDataComponentDescriptor, FourBytesHaveNoAdditionalData) {
    const auto parsed = expectDescriptor<TDataComponentDescriptor>(hex("FD 02  00A3"), 2);
    EXPECT_EQ(parsed->getDataComponentID(), TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_INFORMATION_TABLE);
    EXPECT_EQ(parsed->getAdditionalDataSize(), 0);
    EXPECT_EQ(parsed->getAdditionalData(), nullptr);
}

TEST(TDataComponentDescriptor, TenBytesHaveSixOfAdditionalData) {
    const auto parsed = expectDescriptor<TDataComponentDescriptor>(hex("FD 08  00A0  11 22 33 44 55 66"), 8);
    EXPECT_EQ(parsed->getDataComponentID(), 0x00A0);
    ASSERT_EQ(parsed->getAdditionalDataSize(), 6);
    EXPECT_EQ(elements(parsed->getAdditionalData(), 6), hex("11 22 33 44 55 66"));
}

TEST(TDataComponentDescriptor, AdditionalDataIsACopy) {
    const auto parsed = expectDescriptor<TDataComponentDescriptor>(hex("FD 03  00A0  11"), 3);
    parsed.bytes.data()[4] = 0x99;
    ASSERT_EQ(parsed->getAdditionalDataSize(), 1);
    EXPECT_EQ(parsed->getAdditionalData()[0], 0x11);
    EXPECT_EQ(parsed->getAdditionalData(), parsed->getAdditionalData());
}

TEST(TDataComponentDescriptor, TheIdHasSixteenBits) {
    expectFields<TDataComponentDescriptor>(
        hex("FD 02"), 2, {{"data_component_id", 2, 7, 16, &TDataComponentDescriptor::getDataComponentID}});
}

TEST(TDataComponentDescriptor, TheLongestAdditionalDataOfADescriptor) {
    const auto parsed = expectDescriptor<TDataComponentDescriptor>(join({hex("FD FF  00A0"), fill(253, 0x5A)}), 255);
    ASSERT_EQ(parsed->getAdditionalDataSize(), 253);
    EXPECT_EQ(elements(parsed->getAdditionalData(), 253), fill(253, 0x5A));
}

TEST(TDataComponentDescriptor, AdditionalDataRunsToTheEndOfTheBytesGiven) {
    const auto parsed = expectDescriptor<TDataComponentDescriptor>(hex("FD 02  00A0  11 22"), 4);
    ASSERT_EQ(parsed->getAdditionalDataSize(), 2);
    EXPECT_EQ(elements(parsed->getAdditionalData(), 2), hex("11 22"));
}

TEST(TDataComponentDescriptor, TheSizeIsCountedInEightBits) {
    const auto most = expectDescriptor<TDataComponentDescriptor>(join({hex("FD 02  00A0"), fill(255, 0x5A)}), 257);
    EXPECT_EQ(most->getAdditionalDataSize(), 255);
    EXPECT_EQ(elements(most->getAdditionalData(), 255), fill(255, 0x5A));

    const auto none = expectDescriptor<TDataComponentDescriptor>(join({hex("FD 02  00A0"), fill(256, 0x5A)}), 258);
    EXPECT_EQ(none->getAdditionalDataSize(), 0);
    EXPECT_NE(none->getAdditionalData(), nullptr);

    const auto some = expectDescriptor<TDataComponentDescriptor>(join({hex("FD 02  00A0"), fill(296, 0x5A)}), 298);
    ASSERT_EQ(some->getAdditionalDataSize(), 40);
    EXPECT_EQ(elements(some->getAdditionalData(), 40), fill(40, 0x5A));
}

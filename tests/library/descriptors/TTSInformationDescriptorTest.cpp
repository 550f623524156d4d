#include "descriptors/TTSInformationDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TTSInformationDescriptor;
using Quor::TTSInformationDescriptorItem;

namespace {

const std::string badName = "ISDBTUtils: TTSInformationDescriptor:: parse: ERROR: parsing TS Name. Aborting!";

std::string longString(int length, int left) {
    return "ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: " +
           std::to_string(length) + " > " + std::to_string(left) + ".Aborting!";
}

Lines invalidItem(int length) {
    return {"ISDBTUtils: TTSInformationDescriptorItem::parse: Item length not valid: " + std::to_string(length) +
                ". Aborting!",
            "ISDBTUtils: TTSInformationDescriptor::parse: Invalid item. Aborting!"};
}

} // namespace

TEST(TTSInformationDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("CD 09  07 0D 474C42  0F 01 5C20"));
    const InDirtyMemory<TTSInformationDescriptor> information(bytes.data(), bytes.size());
    EXPECT_EQ(information->getDescriptorTag(), 0xCD);
    EXPECT_EQ(information->getRemoteControlKeyID(), 0);
    EXPECT_EQ(information->getTransportStreamName(), "");
    EXPECT_EQ(information->getTransmissionTypeCount(), 0U);
    EXPECT_EQ(information->getTransmissionType(0), nullptr);
}

TEST(TTSInformationDescriptor, ReadsKeyNameAndTransmissionTypes) {
    // The name of three bytes counts twice, the two fixed bytes not at all: 3 + 3 + 4 + 6.
    const auto information =
        expectDescriptor<TTSInformationDescriptor>(hex("CD 0F  07 0E 474C42  AF 01 5C38  0F 02 5C20 5C21"), 16);
    EXPECT_EQ(information->getRemoteControlKeyID(), 7);
    EXPECT_EQ(information->getTransportStreamName(), "GLB");
    ASSERT_EQ(information->getTransmissionTypeCount(), 2U);
    EXPECT_EQ(information->getTransmissionType(0)->getTransmissionTypeInfo(), 0xAF);
    EXPECT_EQ(information->getTransmissionType(0)->getServices()[0], 0x5C38);
    EXPECT_EQ(information->getTransmissionType(1)->getNumberOfServices(), 2);
    EXPECT_EQ(information->getTransmissionType(1)->getServices()[1], 0x5C21);
    EXPECT_EQ(information->getTransmissionType(2), nullptr);
    EXPECT_EQ(information->getTransmissionType(255), nullptr);
}

TEST(TTSInformationDescriptor, NameIsKeptAsItIs) {
    const auto information = expectDescriptor<TTSInformationDescriptor>(hex("CD 08  FF 18 00 C2 FF 0A 20 7F"), 12);
    EXPECT_EQ(information->getRemoteControlKeyID(), 0xFF);
    EXPECT_EQ(information->getTransportStreamName(), std::string("\0\xC2\xFF\n \x7F", 6));
}

TEST(TTSInformationDescriptor, ReadsAsManyTransmissionTypesAsItCounts) {
    const auto none = expectDescriptor<TTSInformationDescriptor>(hex("CD 09  07 0C 474C42  AF 01 5C38"), 6);
    EXPECT_EQ(none->getTransmissionTypeCount(), 0U);
    const auto one = expectDescriptor<TTSInformationDescriptor>(hex("CD 0D  07 0D 474C42  AF 01 5C38  0F 02 5C20"), 10);
    EXPECT_EQ(one->getTransmissionTypeCount(), 1U);
    const auto three =
        expectDescriptor<TTSInformationDescriptor>(hex("CD 11  07 0F 474C42  AF 01 5C38  0F 01 5C20  5F 01 5C21"), 18);
    EXPECT_EQ(three->getTransmissionTypeCount(), 3U);
}

TEST(TTSInformationDescriptor, LongestNameHas63Bytes) {
    const auto information =
        expectDescriptor<TTSInformationDescriptor>(join({hex("CD 41  07 FC"), fill(63, 'n')}), 126);
    EXPECT_EQ(information->getTransportStreamName(), std::string(63, 'n'));
}

TEST(TTSInformationDescriptor, NamePastTheEndFails) {
    expectFailure<TTSInformationDescriptor>(hex("CD 08  07 1C 474C42474C42"), TISDBTTable::ERROR_INVALID_STRING,
                                            {longString(7, 6), badName});
    expectFailure<TTSInformationDescriptor>(hex("CD 08  07 FF 474C42474C42"), TISDBTTable::ERROR_INVALID_STRING,
                                            {longString(63, 6), badName});
}

TEST(TTSInformationDescriptor, NameOfLengthZeroFails) {
    // The string reader takes the first byte behind as the length of the name, and that is never 0 bytes.
    expectFailure<TTSInformationDescriptor>(hex("CD 08  07 01  00 00 0F 01 5C20"), TISDBTTable::ERROR_INVALID_STRING,
                                            {badName});
    expectFailure<TTSInformationDescriptor>(hex("CD 08  07 01  05 4142434445"), TISDBTTable::ERROR_INVALID_STRING,
                                            {badName});
    expectFailure<TTSInformationDescriptor>(hex("CD 08  07 01  06 4142434445"), TISDBTTable::ERROR_INVALID_STRING,
                                            {longString(6, 5), badName});
}

TEST(TTSInformationDescriptor, NameOfLengthZeroIsReadWhereItsOwnLengthWrapsToZero) {
    // Only in more bytes than a descriptor can have: 1 + 255 in eight bits is 0, the length that is stated.
    const auto information =
        expectDescriptor<TTSInformationDescriptor>(join({hex("CD 08  07 00  FF"), fill(255, 'n')}), 0);
    EXPECT_EQ(information->getTransportStreamName(), std::string(255, 'n'));
    EXPECT_EQ(information->getTransmissionTypeCount(), 0U);

    // The transmission types then begin where the name does: FF 6E and 110 services of "nn".
    const auto item = expectDescriptor<TTSInformationDescriptor>(join({hex("CD 08  07 01  FF"), fill(255, 'n')}), 222);
    ASSERT_EQ(item->getTransmissionTypeCount(), 1U);
    EXPECT_EQ(item->getTransmissionType(0)->getTransmissionTypeInfo(), 0xFF);
    EXPECT_EQ(item->getTransmissionType(0)->getNumberOfServices(), 110);
    EXPECT_EQ(item->getTransmissionType(0)->getServices()[0], 0x6E6E);
}

TEST(TTSInformationDescriptor, MissingTransmissionTypesFail) {
    expectFailure<TTSInformationDescriptor>(hex("CD 09  07 0E 474C42  AF 01 5C38"),
                                            TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(0));
    expectFailure<TTSInformationDescriptor>(hex("CD 08  07 0D 474C42  AF 01 5C"),
                                            TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(3));
    expectFailure<TTSInformationDescriptor>(hex("CD 08  07 19 474C42474C42"),
                                            TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(0));
}

TEST(TTSInformationDescriptor, LastTransmissionTypeNeedsAService) {
    expectFailure<TTSInformationDescriptor>(hex("CD 0B  07 0E 474C42  AF 01 5C38  0F 00"),
                                            TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(2));
    const auto information =
        expectDescriptor<TTSInformationDescriptor>(hex("CD 0B  07 0E 474C42  0F 00  AF 01 5C38"), 12);
    ASSERT_EQ(information->getTransmissionTypeCount(), 2U);
    EXPECT_EQ(information->getTransmissionType(0)->getNumberOfServices(), 0);
    EXPECT_EQ(information->getTransmissionType(1)->getServices()[0], 0x5C38);
}

TEST(TTSInformationDescriptor, ServicesPastTheEndFail) {
    expectFailure<TTSInformationDescriptor>(hex("CD 09  07 0D 474C42  AF 02 5C38"),
                                            TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(4));
}

TEST(TTSInformationDescriptor, ReadsToTheEndOfTheGivenBytes) {
    const auto information =
        expectDescriptor<TTSInformationDescriptor>(hex("CD 08  07 0D 474C42  AF 02 5C38 5C20"), 12);
    ASSERT_EQ(information->getTransmissionTypeCount(), 1U);
    EXPECT_EQ(information->getTransmissionType(0)->getServices()[1], 0x5C20);
}

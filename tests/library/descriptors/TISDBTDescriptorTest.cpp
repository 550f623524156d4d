#include "descriptors/TISDBTDescriptor.h"

#include "support/Lifetime.h"
#include "support/Parse.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;

namespace {

struct Header {
    bool good = false;
    QUOR_U16 error = PRESET_ERROR;
    Lines lines;
};

Header parseHeader(const ByteVector& wire, QUOR_U8 minimum, QUOR_U16 tag = 0x52) {
    const HeapBytes bytes(wire);
    Header header;
    const LogCapture log;
    header.good = TISDBTDescriptor::parseCommonHeader(bytes.data(), bytes.size(), &header.error, minimum, tag);
    header.lines = log.lines();
    return header;
}

const Lines INVALID_DATA = {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (1) Invalid data. Aborting!"};

} // namespace

TEST(TISDBTDescriptor, HeaderHasItsLength) {
    EXPECT_EQ(TISDBTDescriptor::COMMON_HEADER_LENGTH, 2U);
}

TEST(TISDBTDescriptor, RefersToTheCallersBytes) {
    const HeapBytes bytes(hex("52 01 07"));
    const TISDBTDescriptor descriptor(0x52, bytes.data(), bytes.size());
    EXPECT_EQ(descriptor.getData(), bytes.data());
    EXPECT_EQ(descriptor.getDataLength(), 3U);
}

TEST(TISDBTDescriptor, DoesNotFreeTheCallersBytes) {
    const HeapBytes bytes(hex("52 01 07"));
    { const TISDBTDescriptor descriptor(0x52, bytes.data(), bytes.size()); }
    EXPECT_EQ(bytes.data()[2], 0x07);
}

TEST(TISDBTDescriptor, TagIsThatOfTheClassNotOfTheBytes) {
    const HeapBytes bytes(hex("52 01 07"));
    EXPECT_EQ(TISDBTDescriptor(0xFD, bytes.data(), bytes.size()).getDescriptorTag(), 0xFD);
    EXPECT_EQ(TISDBTDescriptor(0x00, nullptr, 0).getDescriptorTag(), 0x00);
}

TEST(TISDBTDescriptor, GoodHeaderSetsErrorOk) {
    const Header header = parseHeader(hex("52 01 07"), 1);
    EXPECT_TRUE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(header.lines, Lines{});
}

TEST(TISDBTDescriptor, MinimumZeroAcceptsAnEmptyBody) {
    const Header header = parseHeader(hex("55 00"), 0, 0x55);
    EXPECT_TRUE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_OK);
}

TEST(TISDBTDescriptor, BytesBehindTheDescriptorAreAccepted) {
    EXPECT_TRUE(parseHeader(hex("52 01 07 FF FF FF"), 1).good);
}

TEST(TISDBTDescriptor, LongestDescriptorIsAccepted) {
    EXPECT_TRUE(parseHeader(join({hex("52 FF"), fill(255, 0)}), 1).good);
}

TEST(TISDBTDescriptor, NullDataAreInvalid) {
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    EXPECT_FALSE(TISDBTDescriptor::parseCommonHeader(nullptr, 3, &error, 1, 0x52));
    EXPECT_EQ(error, TISDBTTable::ERROR_INVALID_DATA);
    EXPECT_EQ(log.lines(), INVALID_DATA);
}

TEST(TISDBTDescriptor, NullDataSpeakBeforeTheirLength) {
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    EXPECT_FALSE(TISDBTDescriptor::parseCommonHeader(nullptr, 0, &error, 1, 0x52));
    EXPECT_EQ(error, TISDBTTable::ERROR_INVALID_DATA);
    EXPECT_EQ(log.lines(), INVALID_DATA);
}

TEST(TISDBTDescriptor, DataShorterThanTheMinimumAndItsHeaderFail) {
    const Header header = parseHeader(hex("52 01"), 1);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                                  "required: 2 < 3. Aborting!"});
}

TEST(TISDBTDescriptor, NoDataFail) {
    const Header header = parseHeader({}, 0);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                                  "required: 0 < 2. Aborting!"});
}

TEST(TISDBTDescriptor, LengthSpeaksBeforeTheTag) {
    const Header header = parseHeader(hex("53 01"), 1);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                                  "required: 2 < 3. Aborting!"});
}

TEST(TISDBTDescriptor, OtherTagFails) {
    const Header header = parseHeader(hex("53 01 07"), 1);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_TAG);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (3) Unexpected Descriptor Tag. Got "
                                  "0x53, instead of 0x52. Aborting!"});
}

TEST(TISDBTDescriptor, TagsAreLoggedWithTwoDigits) {
    EXPECT_EQ(parseHeader(hex("0B 00"), 0, 0x02).lines,
              Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (3) Unexpected Descriptor Tag. Got 0x0B, instead "
                    "of 0x02. Aborting!"});
}

TEST(TISDBTDescriptor, ExpectedTagHas16Bits) {
    const Header header = parseHeader(hex("52 01 07"), 1, 0x152);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_TAG);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (3) Unexpected Descriptor Tag. Got "
                                  "0x52, instead of 0x152. Aborting!"});
}

TEST(TISDBTDescriptor, TagSpeaksBeforeTheDescriptorLength) {
    EXPECT_EQ(parseHeader(hex("53 05 07"), 1).error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_TAG);
    EXPECT_EQ(parseHeader(hex("53 00 07"), 1).error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_TAG);
}

TEST(TISDBTDescriptor, DescriptorLongerThanTheDataFailsWithTheNeededLengthFirst) {
    const Header header = parseHeader(hex("52 05 07"), 1);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (4) Longer data length is "
                                  "required: 7 < 3. Aborting!"});
}

TEST(TISDBTDescriptor, DescriptorOneByteLongerThanTheDataFails) {
    EXPECT_EQ(parseHeader(hex("52 02 07"), 1).lines,
              Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (4) Longer data length is required: 4 < 3. "
                    "Aborting!"});
    EXPECT_EQ(parseHeader(join({hex("52 FF"), fill(254, 0)}), 1).lines,
              Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (4) Longer data length is required: 257 < 256. "
                    "Aborting!"});
}

TEST(TISDBTDescriptor, DescriptorLengthBelowTheMinimumFails) {
    const Header header = parseHeader(hex("52 00 07"), 1);
    EXPECT_FALSE(header.good);
    EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    EXPECT_EQ(header.lines, Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (5) Longer descriptor length is "
                                  "required: 0 < 1. Aborting!"});
}

TEST(TISDBTDescriptor, LargestMinimumThatFitsEightBitsIsChecked) {
    EXPECT_EQ(parseHeader(hex("52 00"), 253).lines,
              Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 2 < 255. "
                    "Aborting!"});
}

TEST(TISDBTDescriptor, NeededLengthIsCutToEightBits) {
    // 254 + 2 comes to 0 and 255 + 2 to 1, so that only the descriptor_length is left to complain about.
    EXPECT_EQ(parseHeader(hex("52 00"), 254).lines,
              Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (5) Longer descriptor length is required: 0 < "
                    "254. Aborting!"});
    EXPECT_EQ(parseHeader(hex("52 02 00 00"), 255).lines,
              Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (5) Longer descriptor length is required: 2 < "
                    "255. Aborting!"});
    EXPECT_EQ(parseHeader(hex("52 05"), 254).lines,
              Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (4) Longer data length is required: 7 < 2. "
                    "Aborting!"});
    EXPECT_EQ(parseHeader(hex("53"), 255).lines,
              Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (3) Unexpected Descriptor Tag. Got 0x53, instead "
                    "of 0x52. Aborting!"});
}

TEST(TISDBTDescriptor, NeededLengthCutToEightBitsReadsNoByteThatIsMissing) {
    for (const Header& header : {parseHeader({}, 254), parseHeader({}, 255), parseHeader(hex("52"), 255)}) {
        EXPECT_FALSE(header.good);
        EXPECT_EQ(header.error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
        EXPECT_EQ(header.lines.size(), 1U);
    }
}

TEST(TISDBTDescriptor, LongestBodyMeetsTheLargestMinimum) {
    EXPECT_TRUE(parseHeader(join({hex("52 FF"), fill(255, 0)}), 255).good);
}

TEST(TISDBTDescriptor, ErrorCodeMayBeNull) {
    const HeapBytes bytes(hex("52 01 07"));
    const HeapBytes longer(hex("52 05 07"));
    const HeapBytes empty(hex("52 00 07"));
    const LogCapture log;
    EXPECT_TRUE(TISDBTDescriptor::parseCommonHeader(bytes.data(), bytes.size(), nullptr, 1, 0x52));
    EXPECT_EQ(log.lines(), Lines{});
    EXPECT_FALSE(TISDBTDescriptor::parseCommonHeader(nullptr, 3, nullptr, 1, 0x52));
    EXPECT_FALSE(TISDBTDescriptor::parseCommonHeader(bytes.data(), 2, nullptr, 1, 0x52));
    EXPECT_FALSE(TISDBTDescriptor::parseCommonHeader(bytes.data(), bytes.size(), nullptr, 1, 0x53));
    EXPECT_FALSE(TISDBTDescriptor::parseCommonHeader(longer.data(), longer.size(), nullptr, 1, 0x52));
    EXPECT_FALSE(TISDBTDescriptor::parseCommonHeader(empty.data(), empty.size(), nullptr, 1, 0x52));
    EXPECT_EQ(log.lines().size(), 5U);
}

TEST(TISDBTDescriptor, LogsAtLevelFourUnderTheTagOfTheParsers) {
    const HeapBytes bytes(hex("52 01 07"));
    const HeapBytes longer(hex("52 05 07"));
    const HeapBytes empty(hex("52 00 07"));
    const LogCapture log;
    TISDBTDescriptor::parseCommonHeader(nullptr, 3, nullptr, 1, 0x52);
    TISDBTDescriptor::parseCommonHeader(bytes.data(), 2, nullptr, 1, 0x52);
    TISDBTDescriptor::parseCommonHeader(bytes.data(), bytes.size(), nullptr, 1, 0x53);
    TISDBTDescriptor::parseCommonHeader(longer.data(), longer.size(), nullptr, 1, 0x52);
    TISDBTDescriptor::parseCommonHeader(empty.data(), empty.size(), nullptr, 1, 0x52);
    ASSERT_EQ(log.records().size(), 5U);
    for (const LogCapture::Line& line : log.records()) {
        EXPECT_EQ(line.level, 4);
        EXPECT_EQ(line.tag, "ISDBTUtils");
    }
}

TEST(TISDBTDescriptor, IsDestroyedThroughTheBases) {
    int deleted = 0;
    std::unique_ptr<TISDBTDescriptor> descriptor(
        new Counted<TISDBTDescriptor>(deleted, QUOR_U8{0x52}, nullptr, QUOR_U32{0}));
    descriptor.reset();
    EXPECT_EQ(deleted, 1);
    std::unique_ptr<Quor::TISDBTDataHolder> holder(
        new Counted<TISDBTDescriptor>(deleted, QUOR_U8{0x52}, nullptr, QUOR_U32{0}));
    holder.reset();
    EXPECT_EQ(deleted, 2);
}

TEST(TISDBTDescriptor, CannotBeCopied) {
    EXPECT_FALSE(std::is_copy_constructible<TISDBTDescriptor>::value);
    EXPECT_FALSE(std::is_copy_assignable<TISDBTDescriptor>::value);
}

TEST(TISDBTDescriptor, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&TISDBTDescriptor::getDescriptorTag), QUOR_U8 (TISDBTDescriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&TISDBTDescriptor::parseCommonHeader),
                                bool (*)(QUOR_U8*, QUOR_U32, QUOR_U16*, QUOR_U8, QUOR_U16)>();
    const bool isHolder = std::is_base_of<Quor::TISDBTDataHolder, TISDBTDescriptor>::value;
    EXPECT_TRUE(isHolder);
}

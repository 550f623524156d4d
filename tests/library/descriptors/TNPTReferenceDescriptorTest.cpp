#include "descriptors/TNPTReferenceDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TNPTReferenceDescriptor;

namespace {

// post discontinuity, content 0x25; STC 1 89ABCDEF; NPT 1 01234567; scale 1/2
const char* const NPT_REFERENCE = "01 12  A5 01 89ABCDEF  FFFFFF 01 01234567  0001 0002";

} // namespace

TEST(TNPTReferenceDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_BOOL, TNPTReferenceDescriptor, isPostDiscontinuity);
    EXPECT_GETTER(QUOR_U8, TNPTReferenceDescriptor, getDSMCCContentID);
    EXPECT_GETTER(QUOR_U8, TNPTReferenceDescriptor, getSTCReferenceH);
    EXPECT_GETTER(QUOR_U32, TNPTReferenceDescriptor, getSTCReferenceL);
    EXPECT_GETTER(QUOR_U8, TNPTReferenceDescriptor, getNPTReferenceH);
    EXPECT_GETTER(QUOR_U32, TNPTReferenceDescriptor, getNPTReferenceL);
    EXPECT_GETTER(QUOR_U16, TNPTReferenceDescriptor, getScaleNumerator);
    EXPECT_GETTER(QUOR_U16, TNPTReferenceDescriptor, getScaleDenominator);
    EXPECT_NE(expectDescriptor<TNPTReferenceDescriptor>(hex(NPT_REFERENCE), PRESET_LENGTH).object, nullptr);
}

TEST(TNPTReferenceDescriptor, StartsAtZero) {
    ByteVector bytes = hex(NPT_REFERENCE);
    const InDirtyMemory<TNPTReferenceDescriptor> descriptor(bytes.data(), QUOR_U32{20});
    EXPECT_EQ(descriptor->getDescriptorTag(), 1);
    EXPECT_EQ(descriptor->isPostDiscontinuity(), 0);
    EXPECT_EQ(descriptor->getDSMCCContentID(), 0);
    EXPECT_EQ(descriptor->getSTCReferenceH(), 0);
    EXPECT_EQ(descriptor->getSTCReferenceL(), 0U);
    EXPECT_EQ(descriptor->getNPTReferenceH(), 0);
    EXPECT_EQ(descriptor->getNPTReferenceL(), 0U);
    EXPECT_EQ(descriptor->getScaleNumerator(), 0);
    EXPECT_EQ(descriptor->getScaleDenominator(), 0);
}

TEST(TNPTReferenceDescriptor, RelatesTheClocks) {
    const auto parsed = expectDescriptor<TNPTReferenceDescriptor>(hex(NPT_REFERENCE), PRESET_LENGTH);
    EXPECT_EQ(parsed->isPostDiscontinuity(), 1);
    EXPECT_EQ(parsed->getDSMCCContentID(), 0x25);
    EXPECT_EQ(parsed->getSTCReferenceH(), 1);
    EXPECT_EQ(parsed->getSTCReferenceL(), 0x89ABCDEFU);
    EXPECT_EQ(parsed->getNPTReferenceH(), 1);
    EXPECT_EQ(parsed->getNPTReferenceL(), 0x01234567U);
    EXPECT_EQ(parsed->getScaleNumerator(), 1);
    EXPECT_EQ(parsed->getScaleDenominator(), 2);
}

TEST(TNPTReferenceDescriptor, FieldsTakeOnlyTheirBits) {
    expectFields<TNPTReferenceDescriptor>(
        hex("01 12"), 18,
        {{"postDiscontinuityIndicator", 2, 7, 1, &TNPTReferenceDescriptor::isPostDiscontinuity},
         {"contentId", 2, 6, 7, &TNPTReferenceDescriptor::getDSMCCContentID},
         {"STC_Reference, bit 32", 3, 0, 1, &TNPTReferenceDescriptor::getSTCReferenceH},
         {"STC_Reference", 4, 7, 32, &TNPTReferenceDescriptor::getSTCReferenceL},
         {"NPT_Reference, bit 32", 11, 0, 1, &TNPTReferenceDescriptor::getNPTReferenceH},
         {"NPT_Reference", 12, 7, 32, &TNPTReferenceDescriptor::getNPTReferenceL},
         {"scaleNumerator", 16, 7, 16, &TNPTReferenceDescriptor::getScaleNumerator},
         {"scaleDenominator", 18, 7, 16, &TNPTReferenceDescriptor::getScaleDenominator}});
}

TEST(TNPTReferenceDescriptor, LeavesTheParsedLengthAlone) {
    const HeapBytes bytes(hex(NPT_REFERENCE));
    QUOR_U32 parsedLength = 77;
    QUOR_U16 error = PRESET_ERROR;
    const std::unique_ptr<TNPTReferenceDescriptor> parsed(
        TNPTReferenceDescriptor::parse(bytes.data(), bytes.size(), &parsedLength, &error));
    ASSERT_NE(parsed, nullptr);
    EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsedLength, 77U);
}

TEST(TNPTReferenceDescriptor, LongerBodiesReadTheSame) {
    const auto longer = expectDescriptor<TNPTReferenceDescriptor>(
        hex("01 14  A5 01 89ABCDEF  FFFFFF 01 01234567  0001 0002  EEEE"), PRESET_LENGTH);
    EXPECT_EQ(longer->getScaleDenominator(), 2);
    const auto beyond =
        expectDescriptor<TNPTReferenceDescriptor>(join({hex(NPT_REFERENCE), fill(280, 0xEE)}), PRESET_LENGTH);
    EXPECT_EQ(beyond->getScaleDenominator(), 2);
}

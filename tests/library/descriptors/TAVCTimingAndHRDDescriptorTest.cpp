#include "descriptors/TAVCTimingAndHRDDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TAVCTimingAndHRDDescriptor;
using Quor::TISDBTTable;

namespace {

Lines longerLengthRequired(const std::string& lengths) {
    return {"ISDBTUtils: TAVCTimingAndHRDDescriptor::parse: Longer data length is required: " + lengths +
            ". Aborting!"};
}

} // namespace

TEST(TAVCTimingAndHRDDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_BOOL, TAVCTimingAndHRDDescriptor, isHRDManagementValid);
    EXPECT_GETTER(QUOR_BOOL, TAVCTimingAndHRDDescriptor, isPictureTimingInfoPresent);
    EXPECT_GETTER(QUOR_BOOL, TAVCTimingAndHRDDescriptor, is90kHzFlag);
    EXPECT_GETTER(QUOR_U32, TAVCTimingAndHRDDescriptor, getN);
    EXPECT_GETTER(QUOR_U32, TAVCTimingAndHRDDescriptor, getK);
    EXPECT_GETTER(QUOR_U32, TAVCTimingAndHRDDescriptor, getNumUnitsInTick);
    EXPECT_GETTER(QUOR_BOOL, TAVCTimingAndHRDDescriptor, isFixedFrameRateFlag);
    EXPECT_GETTER(QUOR_BOOL, TAVCTimingAndHRDDescriptor, isTemporalPOCFlag);
    EXPECT_GETTER(QUOR_BOOL, TAVCTimingAndHRDDescriptor, isPictureToDisplayConversionFlag);
    EXPECT_NE(expectDescriptor<TAVCTimingAndHRDDescriptor>(hex("2A 02  00 00"), 2).object, nullptr);
}

TEST(TAVCTimingAndHRDDescriptor, StartsAtZero) {
    ByteVector bytes = hex("2A 02  FE FF");
    const InDirtyMemory<TAVCTimingAndHRDDescriptor> descriptor(bytes.data(), QUOR_U32{4});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0x2A);
    EXPECT_EQ(descriptor->isHRDManagementValid(), 0);
    EXPECT_EQ(descriptor->isPictureTimingInfoPresent(), 0);
    EXPECT_EQ(descriptor->is90kHzFlag(), 0);
    EXPECT_EQ(descriptor->getN(), 0U);
    EXPECT_EQ(descriptor->getK(), 0U);
    EXPECT_EQ(descriptor->getNumUnitsInTick(), 0U);
    EXPECT_EQ(descriptor->isFixedFrameRateFlag(), 0);
    EXPECT_EQ(descriptor->isTemporalPOCFlag(), 0);
    EXPECT_EQ(descriptor->isPictureToDisplayConversionFlag(), 0);
}

TEST(TAVCTimingAndHRDDescriptor, WithoutPictureTimingTheFlagsFollow) {
    const auto parsed = expectDescriptor<TAVCTimingAndHRDDescriptor>(hex("2A 02  FE A0"), 2);
    EXPECT_EQ(parsed->isHRDManagementValid(), 1);
    EXPECT_EQ(parsed->isPictureTimingInfoPresent(), 0);
    EXPECT_EQ(parsed->is90kHzFlag(), 0);
    EXPECT_EQ(parsed->getN(), 0U);
    EXPECT_EQ(parsed->getK(), 0U);
    EXPECT_EQ(parsed->getNumUnitsInTick(), 0U);
    EXPECT_EQ(parsed->isFixedFrameRateFlag(), 1);
    EXPECT_EQ(parsed->isTemporalPOCFlag(), 0);
    EXPECT_EQ(parsed->isPictureToDisplayConversionFlag(), 1);
}

TEST(TAVCTimingAndHRDDescriptor, WithoutPictureTimingTheRestIsNotRead) {
    const auto parsed = expectDescriptor<TAVCTimingAndHRDDescriptor>(join({hex("2A 0F  00 80"), fill(13, 0xFF)}), 2);
    EXPECT_EQ(parsed->is90kHzFlag(), 0);
    EXPECT_EQ(parsed->getN(), 0U);
    EXPECT_EQ(parsed->getK(), 0U);
    EXPECT_EQ(parsed->getNumUnitsInTick(), 0U);
    EXPECT_EQ(parsed->isFixedFrameRateFlag(), 1);
    EXPECT_EQ(parsed->isTemporalPOCFlag(), 0);
}

TEST(TAVCTimingAndHRDDescriptor, WithoutPictureTimingFlagsTakeOnlyTheirBits) {
    for (const QUOR_U8 first : hex("00 7E 80 FE")) {
        expectFields<TAVCTimingAndHRDDescriptor>(
            {0x2A, 0x02, first}, 1,
            {{"hrd_management_valid", 2, 7, 1, &TAVCTimingAndHRDDescriptor::isHRDManagementValid},
             {"picture_and_timing_info_present", 2, 0, 1, &TAVCTimingAndHRDDescriptor::isPictureTimingInfoPresent},
             {"fixed_frame_rate_flag", 3, 7, 1, &TAVCTimingAndHRDDescriptor::isFixedFrameRateFlag},
             {"temporal_poc_flag", 3, 6, 1, &TAVCTimingAndHRDDescriptor::isTemporalPOCFlag},
             {"picture_to_display_conversion_flag", 3, 5, 1,
              &TAVCTimingAndHRDDescriptor::isPictureToDisplayConversionFlag}});
    }
}

TEST(TAVCTimingAndHRDDescriptor, TheFlagOf90kHzBringsNAndK) {
    // num_units_in_tick begins with the byte that the three flags are taken from.
    const auto parsed =
        expectDescriptor<TAVCTimingAndHRDDescriptor>(hex("2A 0F  81 80  00000001 0000012C  A0000BB8  1F"), 11);
    EXPECT_EQ(parsed->isHRDManagementValid(), 1);
    EXPECT_EQ(parsed->isPictureTimingInfoPresent(), 1);
    EXPECT_EQ(parsed->is90kHzFlag(), 1);
    EXPECT_EQ(parsed->getN(), 1U);
    EXPECT_EQ(parsed->getK(), 300U);
    EXPECT_EQ(parsed->getNumUnitsInTick(), 0xA0000BB8U);
    EXPECT_EQ(parsed->isFixedFrameRateFlag(), 1);
    EXPECT_EQ(parsed->isTemporalPOCFlag(), 0);
    EXPECT_EQ(parsed->isPictureToDisplayConversionFlag(), 1);
}

TEST(TAVCTimingAndHRDDescriptor, WithNAndKFieldsTakeOnlyTheirBits) {
    expectFields<TAVCTimingAndHRDDescriptor>(
        hex("2A 0F  01 80"), 13,
        {{"hrd_management_valid", 2, 7, 1, &TAVCTimingAndHRDDescriptor::isHRDManagementValid},
         {"N", 4, 7, 32, &TAVCTimingAndHRDDescriptor::getN},
         {"K", 8, 7, 32, &TAVCTimingAndHRDDescriptor::getK},
         {"num_units_in_tick", 12, 7, 32, &TAVCTimingAndHRDDescriptor::getNumUnitsInTick},
         {"fixed_frame_rate_flag", 12, 7, 1, &TAVCTimingAndHRDDescriptor::isFixedFrameRateFlag},
         {"temporal_poc_flag", 12, 6, 1, &TAVCTimingAndHRDDescriptor::isTemporalPOCFlag},
         {"picture_to_display_conversion_flag", 12, 5, 1,
          &TAVCTimingAndHRDDescriptor::isPictureToDisplayConversionFlag}});
}

TEST(TAVCTimingAndHRDDescriptor, WithoutTheFlagOf90kHzTheTicksFollow) {
    const auto parsed = expectDescriptor<TAVCTimingAndHRDDescriptor>(hex("2A 07  81 00  40000BB8  FF"), 3);
    EXPECT_EQ(parsed->isHRDManagementValid(), 1);
    EXPECT_EQ(parsed->isPictureTimingInfoPresent(), 1);
    EXPECT_EQ(parsed->is90kHzFlag(), 0);
    EXPECT_EQ(parsed->getN(), 0U);
    EXPECT_EQ(parsed->getK(), 0U);
    EXPECT_EQ(parsed->getNumUnitsInTick(), 0x40000BB8U);
    EXPECT_EQ(parsed->isFixedFrameRateFlag(), 0);
    EXPECT_EQ(parsed->isTemporalPOCFlag(), 1);
    EXPECT_EQ(parsed->isPictureToDisplayConversionFlag(), 0);
}

TEST(TAVCTimingAndHRDDescriptor, WithoutNAndKFieldsTakeOnlyTheirBits) {
    const auto nothing = [](const TAVCTimingAndHRDDescriptor& parsed) { return parsed.getN() | parsed.getK(); };
    for (const QUOR_U8 first : hex("01 7F 81 FF")) {
        for (const QUOR_U8 second : hex("00 7F")) {
            expectFields<TAVCTimingAndHRDDescriptor>(
                {0x2A, 0x07, first, second}, 5,
                {{"hrd_management_valid", 2, 7, 1, &TAVCTimingAndHRDDescriptor::isHRDManagementValid},
                 {"90kHz_flag", 3, 7, 1, &TAVCTimingAndHRDDescriptor::is90kHzFlag},
                 {"neither N nor K", 4, 7, 0, nothing},
                 {"num_units_in_tick", 4, 7, 32, &TAVCTimingAndHRDDescriptor::getNumUnitsInTick},
                 {"fixed_frame_rate_flag", 4, 7, 1, &TAVCTimingAndHRDDescriptor::isFixedFrameRateFlag},
                 {"temporal_poc_flag", 4, 6, 1, &TAVCTimingAndHRDDescriptor::isTemporalPOCFlag},
                 {"picture_to_display_conversion_flag", 4, 5, 1,
                  &TAVCTimingAndHRDDescriptor::isPictureToDisplayConversionFlag}});
        }
    }
}

TEST(TAVCTimingAndHRDDescriptor, PictureTimingNeedsSixBytes) {
    // The first check comes first: the flag of 90 kHz makes no difference yet.
    const std::vector<std::string> lengths{"1 < 6", "2 < 6", "3 < 6", "4 < 6", "5 < 6"};
    for (const QUOR_U8 second : hex("00 80")) {
        for (std::size_t more = 0; more < lengths.size(); ++more) {
            SCOPED_TRACE(lengths[more]);
            expectFailure<TAVCTimingAndHRDDescriptor>(descriptor(0x2A, join({{0x81, second}, fill(more, 0x00)})),
                                                      TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                                                      longerLengthRequired(lengths[more]));
        }
    }
}

TEST(TAVCTimingAndHRDDescriptor, NAndKNeedThirteenBytes) {
    for (unsigned more = 5; more < 13; ++more) {
        const std::string lengths = std::to_string(more) + " < 13";
        SCOPED_TRACE(lengths);
        expectFailure<TAVCTimingAndHRDDescriptor>(descriptor(0x2A, join({hex("81 80"), fill(more, 0x00)})), 2568,
                                                  longerLengthRequired(lengths));
    }
}

TEST(TAVCTimingAndHRDDescriptor, LengthsAreThoseOfTheBytesGiven) {
    // descriptor_length 2, with the parts that it leaves out behind it.
    const auto ticks = expectDescriptor<TAVCTimingAndHRDDescriptor>(hex("2A 02  01 00  00000BB8 00"), 3);
    EXPECT_EQ(ticks->getNumUnitsInTick(), 3000U);

    const auto all = expectDescriptor<TAVCTimingAndHRDDescriptor>(
        join({hex("2A 02  01 80  00000001 00000002  00000003"), fill(284, 0xEE)}), 11);
    EXPECT_EQ(all->getN(), 1U);
    EXPECT_EQ(all->getK(), 2U);
    EXPECT_EQ(all->getNumUnitsInTick(), 3U);

    expectFailure<TAVCTimingAndHRDDescriptor>(
        hex("2A 02  01 80  00000BB8 00"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, longerLengthRequired("5 < 13"));
}

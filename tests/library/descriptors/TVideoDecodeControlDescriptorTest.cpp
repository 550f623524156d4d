#include "descriptors/TVideoDecodeControlDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TVideoDecodeControlDescriptor;

TEST(TVideoDecodeControlDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_1080P, 0);
    EXPECT_CONSTANT(QUOR_U8, TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_1080I, 1);
    EXPECT_CONSTANT(QUOR_U8, TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_720P, 2);
    EXPECT_CONSTANT(QUOR_U8, TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_480P, 3);
    EXPECT_CONSTANT(QUOR_U8, TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_480I, 4);
    EXPECT_CONSTANT(QUOR_U8, TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_240P, 5);
    EXPECT_CONSTANT(QUOR_U8, TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_120P, 6);
}

TEST(TVideoDecodeControlDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_BOOL, TVideoDecodeControlDescriptor, isStillPicture);
    EXPECT_GETTER(QUOR_BOOL, TVideoDecodeControlDescriptor, hasSequenceEndCode);
    EXPECT_GETTER(QUOR_U8, TVideoDecodeControlDescriptor, getVideoEncodeFormat);
    EXPECT_NE(expectDescriptor<TVideoDecodeControlDescriptor>(hex("C8 01  47"), 1).object, nullptr);
}

TEST(TVideoDecodeControlDescriptor, StartsAtZero) {
    ByteVector bytes = hex("C8 01  FF");
    const InDirtyMemory<TVideoDecodeControlDescriptor> descriptor(bytes.data(), QUOR_U32{3});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0xC8);
    EXPECT_EQ(descriptor->isStillPicture(), 0);
    EXPECT_EQ(descriptor->hasSequenceEndCode(), 0);
    EXPECT_EQ(descriptor->getVideoEncodeFormat(), 0);
}

TEST(TVideoDecodeControlDescriptor, FormatFifteenReadsAsEleven) {
    const auto parsed = expectDescriptor<TVideoDecodeControlDescriptor>(hex("C8 01  FC"), 1);
    EXPECT_EQ(parsed->isStillPicture(), 1);
    EXPECT_EQ(parsed->hasSequenceEndCode(), 1);
    EXPECT_EQ(parsed->getVideoEncodeFormat(), 11);
}

TEST(TVideoDecodeControlDescriptor, FormatsLoseTheirBitOfValueFour) {
    const std::vector<int> formats{0, 1, 2, 3, 0, 1, 2, 3, 8, 9, 10, 11, 8, 9, 10, 11};
    for (unsigned format = 0; format < formats.size(); ++format) {
        for (const unsigned others : {0x00U, 0xC3U}) {
            const auto byte = static_cast<QUOR_U8>(format << 2 | others);
            SCOPED_TRACE(int{byte});
            const auto parsed = expectDescriptor<TVideoDecodeControlDescriptor>({0xC8, 0x01, byte}, 1);
            EXPECT_EQ(parsed->getVideoEncodeFormat(), formats[format]);
        }
    }
}

TEST(TVideoDecodeControlDescriptor, FlagsTakeOnlyTheirBits) {
    expectFields<TVideoDecodeControlDescriptor>(
        hex("C8 01"), 1,
        {{"still_picture_flag", 2, 7, 1, &TVideoDecodeControlDescriptor::isStillPicture},
         {"sequence_end_code_flag", 2, 6, 1, &TVideoDecodeControlDescriptor::hasSequenceEndCode},
         {"high bit of the format", 2, 5, 1,
          [](const TVideoDecodeControlDescriptor& parsed) { return parsed.getVideoEncodeFormat() >> 3; }},
         {"low bits of the format", 2, 3, 2,
          [](const TVideoDecodeControlDescriptor& parsed) { return parsed.getVideoEncodeFormat() & 0x07; }}});
}

TEST(TVideoDecodeControlDescriptor, TheRestOfALongerBodyIsNotCounted) {
    EXPECT_EQ(expectDescriptor<TVideoDecodeControlDescriptor>(hex("C8 02  04 FF"), 1)->getVideoEncodeFormat(), 1);
}

TEST(TVideoDecodeControlDescriptor, BytesBehindTheDescriptorAreNotCounted) {
    const auto parsed = expectDescriptor<TVideoDecodeControlDescriptor>(join({hex("C8 01  8C"), fill(297, 0xEE)}), 1);
    EXPECT_EQ(parsed->isStillPicture(), 1);
    EXPECT_EQ(parsed->hasSequenceEndCode(), 0);
    EXPECT_EQ(parsed->getVideoEncodeFormat(), 3);
}

#include "descriptors/TAVCVideoDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TAVCVideoDescriptor;

TEST(TAVCVideoDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_1080P, 0);
    EXPECT_CONSTANT(QUOR_U8, TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_1080I, 1);
    EXPECT_CONSTANT(QUOR_U8, TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_720P, 2);
    EXPECT_CONSTANT(QUOR_U8, TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_480P, 3);
    EXPECT_CONSTANT(QUOR_U8, TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_480I, 4);
    EXPECT_CONSTANT(QUOR_U8, TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_240P, 5);
    EXPECT_CONSTANT(QUOR_U8, TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_120P, 6);
}

TEST(TAVCVideoDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U8, TAVCVideoDescriptor, getProfileIDC);
    EXPECT_GETTER(QUOR_BOOL, TAVCVideoDescriptor, getConstraintSet0Flag);
    EXPECT_GETTER(QUOR_BOOL, TAVCVideoDescriptor, getConstraintSet1Flag);
    EXPECT_GETTER(QUOR_BOOL, TAVCVideoDescriptor, getConstraintSet2Flag);
    EXPECT_GETTER(QUOR_U8, TAVCVideoDescriptor, getAVCCompatibleFlags);
    EXPECT_GETTER(QUOR_U8, TAVCVideoDescriptor, getLevelIDC);
    EXPECT_GETTER(QUOR_BOOL, TAVCVideoDescriptor, isAVCStillPresent);
    EXPECT_GETTER(QUOR_BOOL, TAVCVideoDescriptor, getAVC24HourPictureFlag);
    EXPECT_NE(expectDescriptor<TAVCVideoDescriptor>(hex("28 04  64 00 28 3F"), 4).object, nullptr);
}

TEST(TAVCVideoDescriptor, StartsAtZero) {
    ByteVector bytes = hex("28 04  FF FF FF FF");
    const InDirtyMemory<TAVCVideoDescriptor> descriptor(bytes.data(), QUOR_U32{6});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0x28);
    EXPECT_EQ(descriptor->getProfileIDC(), 0);
    EXPECT_EQ(descriptor->getConstraintSet0Flag(), 0);
    EXPECT_EQ(descriptor->getConstraintSet1Flag(), 0);
    EXPECT_EQ(descriptor->getConstraintSet2Flag(), 0);
    EXPECT_EQ(descriptor->getAVCCompatibleFlags(), 0);
    EXPECT_EQ(descriptor->getLevelIDC(), 0);
    EXPECT_EQ(descriptor->isAVCStillPresent(), 0);
    EXPECT_EQ(descriptor->getAVC24HourPictureFlag(), 0);
}

TEST(TAVCVideoDescriptor, TellsProfileAndLevel) {
    const auto parsed = expectDescriptor<TAVCVideoDescriptor>(hex("28 04  64 B5 28 7F"), 4);
    EXPECT_EQ(parsed->getProfileIDC(), 100);
    EXPECT_EQ(parsed->getConstraintSet0Flag(), 1);
    EXPECT_EQ(parsed->getConstraintSet1Flag(), 0);
    EXPECT_EQ(parsed->getConstraintSet2Flag(), 1);
    EXPECT_EQ(parsed->getAVCCompatibleFlags(), 0x15);
    EXPECT_EQ(parsed->getLevelIDC(), 40);
    EXPECT_EQ(parsed->isAVCStillPresent(), 0);
    EXPECT_EQ(parsed->getAVC24HourPictureFlag(), 1);
}

TEST(TAVCVideoDescriptor, FieldsTakeOnlyTheirBits) {
    expectFields<TAVCVideoDescriptor>(
        hex("28 04"), 4,
        {{"profile_idc", 2, 7, 8, &TAVCVideoDescriptor::getProfileIDC},
         {"constraint_set0_flag", 3, 7, 1, &TAVCVideoDescriptor::getConstraintSet0Flag},
         {"constraint_set1_flag", 3, 6, 1, &TAVCVideoDescriptor::getConstraintSet1Flag},
         {"constraint_set2_flag", 3, 5, 1, &TAVCVideoDescriptor::getConstraintSet2Flag},
         {"AVC_compatible_flags", 3, 4, 5, &TAVCVideoDescriptor::getAVCCompatibleFlags},
         {"level_idc", 4, 7, 8, &TAVCVideoDescriptor::getLevelIDC},
         {"AVC_still_present", 5, 7, 1, &TAVCVideoDescriptor::isAVCStillPresent},
         {"AVC_24_hour_picture_flag", 5, 6, 1, &TAVCVideoDescriptor::getAVC24HourPictureFlag}});
}

TEST(TAVCVideoDescriptor, TheRestOfALongerBodyIsNotCounted) {
    EXPECT_EQ(expectDescriptor<TAVCVideoDescriptor>(hex("28 06  42 C0 1E 80  FF FF"), 4)->getLevelIDC(), 30);
}

TEST(TAVCVideoDescriptor, BytesBehindTheDescriptorAreNotCounted) {
    const auto parsed = expectDescriptor<TAVCVideoDescriptor>(join({hex("28 04  42 C0 1E 80"), fill(294, 0xEE)}), 4);
    EXPECT_EQ(parsed->isAVCStillPresent(), 1);
    EXPECT_EQ(parsed->getAVC24HourPictureFlag(), 0);
}
